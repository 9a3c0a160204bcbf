#pragma once

#include <memory_resource>
#include <string>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// The content of the object file: the object code of every object line, CR LF behind each, as far
/// as kMostBytesWritten. It lies in the compilation's memory.
std::pmr::string ObjectFileText(Compilation& compilation);

/// Appends one line to an object file's text. A line of 256 characters or more is cut at its
/// commas, each piece a line of its own.
void WriteObjectFileLine(std::string_view objectCode, std::pmr::string& text);

}  // namespace zentro
