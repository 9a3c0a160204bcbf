#pragma once

#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"

namespace zentro {

/// Does what the command line asks for, but for the terminal. `signal` gets the signal that ended
/// it, or 0; the caller ends the program by it. Needs an application object.
ExitStatus CarryOut(const Options& options, int& signal);

}  // namespace zentro
