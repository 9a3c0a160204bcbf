#pragma once

#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// True when a name may be declared: three characters or more, the first a letter, no operator
/// characters. Posts what is wrong against the line.
bool IsValidName(Compilation& compilation, std::string_view name, SourceLine& line);

/// Enters what a line declares. Its name must be valid, not a word of the language, and new to its
/// parent and among the constants. Posts what is wrong and returns nothing then.
Symbol* DeclareSymbol(Compilation& compilation, Symbol symbol, SourceLine& line);

/// The same for a named constant, whose name must be new to the whole program.
void DeclareConstant(Compilation& compilation, std::string_view name, std::string_view value,
                     SourceLine& line);

}  // namespace zentro
