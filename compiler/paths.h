#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// True for a file name that says where the file is by itself: on Windows one that holds ":",
/// elsewhere one that begins with "/".
bool IsAbsoluteName(std::string_view fileName);

/// The path of a file in a folder. An empty folder is the current one; an absolute name stands
/// alone.
std::string PathOf(std::string_view directory, std::string_view fileName);

/// The file name with another extension. Everything after the first "." goes; a name without one
/// gets it.
std::string ChangeExtension(std::string_view fileName, std::string_view extension);

}  // namespace zentro
