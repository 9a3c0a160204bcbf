#pragma once

namespace zentro {

/// What the program's exit status tells.
enum class ExitStatus : int {
    Ended = 0,     ///< END, POWER OFF or another end that was wanted
    BadUsage = 2,  ///< wrong options, a file that cannot be read or written, no pseudo-terminal
    Fault = 3,     ///< the board stopped the program
    StepsRanOut = 4,
    GoalsMissed = 5,  ///< the program ran, but its robot did not meet all goals of its world
    Differs = 6,      ///< a replay did not do what the recording says
};

}  // namespace zentro
