#pragma once

#include "apps/zentro-link/exit_status.h"
#include "apps/zentro-link/options.h"

namespace zentro {

/// Does what the command line asks for, but for the terminal. Needs an application object.
ExitStatus CarryOut(const Options& options);

}  // namespace zentro
