#pragma once

#include <optional>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// The declaration pass over one line: normalises it, enters what it declares and checks how
/// tables, routines and events nest. Returns the name of the file that the line includes, which the
/// caller has to read next.
std::optional<std::string_view> ParseDeclares(Compilation& compilation, SourceLine& line);

/// Whether that pass opens and ends the block: a table, a routine, an event.
bool IsDeclaredBlock(CompileState block);

/// Whether that pass looks at a line with the text at all.
bool MayDeclare(const Compilation& compilation, std::string_view text);

}  // namespace zentro
