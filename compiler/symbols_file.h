#pragma once

#include <string>

#include "model/compilation.h"

namespace zentro {

/// The variables and tables of a compiled program, one a line: resolved name, type, address and
/// size in bytes, separated by tabs. UTF-8.
std::string SymbolsFileText(const Compilation& compilation);

}  // namespace zentro
