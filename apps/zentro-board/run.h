#pragma once

#include <cstdint>
#include <string>

#include "apps/zentro-board/exit_status.h"

namespace zentro {

/// How many instructions the board carries out in 1/100 second: a million a second.
inline constexpr std::uint64_t kStepsPerTick = 10'000;

struct RunOptions {
    std::string objectFile;
    std::string symbolFile;      ///< empty: none
    std::string inputFile;       ///< empty: none
    std::string worldFile;       ///< empty: the board stands alone
    std::string pictureFile;     ///< of the way in the world; empty: none
    std::uint32_t noise = 0;     ///< seed of the noise of the world's sensors; 0: none
    std::uint64_t maxSteps = 0;  ///< 0: as many as it takes
    std::uint64_t seconds = 0;   ///< of the board's own time; 0: as many as it takes
    std::uint32_t seed = 1;
    bool trace = false;
    bool events = false;
    bool realTime = false;  ///< at the pace of the world instead of as fast as it goes
};

/// Runs a program to its end, in a world until its goals are decided, and prints what it left in
/// its variables and what became of the goals.
ExitStatus RunProgram(const RunOptions& options);

}  // namespace zentro
