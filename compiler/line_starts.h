#pragma once

#include <cstdint>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// Where a source line begins in memory.
struct LineStart {
    std::int32_t lineNumber = 0;  ///< of the compilation
    std::uint16_t address = 0;

    bool operator==(const LineStart&) const = default;
};

/// For each source line with code the address at which the program is before it has done anything
/// of the line, in the order of the addresses. A line begins at one place only: the jump that leads
/// out of a branch of IF or SELECT stands in the line that ends the branch and is no beginning of
/// it, nor is the jump over the routines to the program.
std::vector<LineStart> LineStartsOf(const Compilation& compilation);

/// The address; but where the instruction there only leads over the routines to the program, that
/// of the program's first instruction.
std::uint16_t BehindJumpToProgram(const Compilation& compilation, std::uint16_t address);

}  // namespace zentro
