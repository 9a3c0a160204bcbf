#pragma once

#include <cstddef>
#include <string>

#include "model/compilation.h"

namespace zentro {

/// How many bytes of the board's memory a variable or table takes.
std::size_t SizeInMemory(const Symbol& variable);

/// The variables and tables of a compiled program, one a line: resolved name, type, address and
/// size in bytes, separated by tabs. UTF-8.
std::string SymbolsFileText(const Compilation& compilation);

}  // namespace zentro
