#pragma once

#include <string_view>

#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"

namespace zentro {

// Each tells one failure on standard error and returns its status.

ExitStatus TellLost(const Options& options);

/// The board said nothing to what was asked, or nothing that is an answer: because the line is
/// lost, or because it would not.
ExitStatus TellNoAnswer(const BoardLine& line, const Options& options);

/// The board refused, in these words.
ExitStatus TellRefusal(std::string_view words);

}  // namespace zentro
