#pragma once

#include "model/compilation.h"

namespace zentro {

/// Appends the instructions of a parsed line to the object lines, in the order in which they are to
/// run. A line that generates no code adds none.
void GenerateObjectLines(Compilation& compilation, SourceLine& line);

/// Appends the jump to the main program. The first line that generates code needs it when it is
/// not the beginning of the program itself, because the board starts at the first instruction.
void GenerateJumpToProgram(Compilation& compilation, const SourceLine& line);

/// Appends the data area: the variables and tables in the order of their declaration, then the
/// constants in the order of their entry.
void MakeDataArea(Compilation& compilation);

}  // namespace zentro
