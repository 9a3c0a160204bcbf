#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"
#include "comms/debug_variables.h"

namespace zentro {

/// Reads the compiler's list of variables. False when it is none, which has been told.
bool ReadVariables(const std::string& path, std::string_view text,
                   std::vector<DebugVariable>& variables);

/// Reads the variables from a board in debug mode and prints them as a run of the virtual board
/// does, but of a table only the first bytes. Carries out no instruction.
ExitStatus PrintVariables(BoardLine& line, const Options& options,
                          std::vector<DebugVariable> variables);

}  // namespace zentro
