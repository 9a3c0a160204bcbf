#pragma once

#include <cstdint>
#include <string>

#include "apps/zentro-board/exit_status.h"

namespace zentro {

struct ServeOptions {
    unsigned baud = 0;  ///< bits a second, 10 to a character; 0: as fast as it goes
    std::string link;   ///< a second name for the pseudo-terminal; empty: none
};

/// Makes a pseudo-terminal, prints its name and is a board on it in real time until SIGINT or
/// SIGTERM.
ExitStatus ServeBoard(const ServeOptions& options);

}  // namespace zentro
