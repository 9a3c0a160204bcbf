#pragma once

#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"

namespace zentro {

/// Connects the keyboard with the board and the board with the screen until Ctrl+]. The settings of
/// the keyboard's terminal are as before on every return. `signal` gets the signal that ended it,
/// or 0; the caller ends the program by it. Needs an application object.
ExitStatus TalkToBoard(const Options& options, int& signal);

}  // namespace zentro
