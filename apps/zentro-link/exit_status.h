#pragma once

namespace zentro {

/// What the program's exit status tells.
enum class ExitStatus : int {
    Done = 0,
    Refused = 1,       ///< the board refused what was asked, or did not answer
    BadUsage = 2,      ///< wrong options, or a file that cannot be read
    NoConnection = 3,  ///< the port cannot be opened, or the connection was lost
};

}  // namespace zentro
