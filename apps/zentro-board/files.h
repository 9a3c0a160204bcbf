#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace zentro {

/// Says on standard error what is wrong with a file or an option. Returns false.
bool Complain(const std::string& what, const std::string& wrong);

/// Reads a file and hands its text on; `use` returns what is wrong with it. No path: nothing to do.
bool UseFile(const std::string& path, const std::function<std::string(const std::string&)>& use);

/// Writes a file. No path: nothing to do.
bool MakeFile(const std::string& path, const std::string& content);

/// A folder that is shipped with the program: beside it, or in the share folder of an installation.
std::filesystem::path ShippedFolder(const std::string& name);

}  // namespace zentro
