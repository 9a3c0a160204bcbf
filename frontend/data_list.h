#pragma once

#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// Appends to the table the bytes that a line of table data stands for: numbers, texts in quotes
/// and constants between commas. Posts what is wrong against the line.
void ExpandDataList(Compilation& compilation, std::string_view data, SourceLine& line,
                    TableData& table);

}  // namespace zentro
