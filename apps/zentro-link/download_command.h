#pragma once

#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"

namespace zentro {

/// Sends the program and prints what the board says about it; failures are told. A signal that asks
/// to end ends the load first, so that the board holds no part of the program, and is put in
/// `signal`; the caller ends the program by it.
ExitStatus Download(BoardLine& line, const Options& options, int& signal);

}  // namespace zentro
