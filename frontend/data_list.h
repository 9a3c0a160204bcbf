#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// Appends the bytes that a line of table data stands for: numbers, texts in quotes and constants
/// between commas. Posts what is wrong against the line.
void ExpandDataList(Compilation& compilation, std::string_view data, SourceLine& line,
                    std::vector<std::uint8_t>& bytes);

}  // namespace zentro
