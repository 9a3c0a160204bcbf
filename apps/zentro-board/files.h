#pragma once

#include <functional>
#include <string>

namespace zentro {

/// Says on standard error what is wrong with a file or an option. Returns false.
bool Complain(const std::string& what, const std::string& wrong);

/// Reads a file and hands its text on; `use` returns what is wrong with it. No path: nothing to do.
bool UseFile(const std::string& path, const std::function<std::string(const std::string&)>& use);

/// Writes a file. No path: nothing to do.
bool MakeFile(const std::string& path, const std::string& content);

}  // namespace zentro
