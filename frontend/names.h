#pragma once

#include <optional>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// Why a name may not be declared, whatever else is; nothing when it may. It has three characters
/// or more, the first a letter, no signs of the language, and is not kept for the language itself.
std::optional<MessageCode> FindNameFault(const CommandCatalogue& commands, std::string_view name);

/// Enters what a line declares. Its name must be valid, not a word of the language, and new to its
/// parent and among the constants. Posts what is wrong and returns nothing then.
Symbol* DeclareSymbol(Compilation& compilation, Symbol symbol, SourceLine& line);

/// The same for a named constant, whose name must be new to the whole program.
void DeclareConstant(Compilation& compilation, std::string_view name, std::string_view value,
                     SourceLine& line);

}  // namespace zentro
