#pragma once

#include <cstdint>
#include <string>

#include "apps/zentro-board/board_run.h"
#include "apps/zentro-board/exit_status.h"

namespace zentro {

struct RunOptions {
    std::string objectFile;
    std::string inputFile;    ///< empty: none
    std::string worldFile;    ///< "none": the board stands alone; empty: the program's own world
    std::string recordFile;   ///< to be written; empty: none
    std::uint32_t noise = 0;  ///< seed of the noise of the world's sensors; 0: none
    std::uint32_t seed = 1;
    RunLimits limits;
    ShowOptions show;
};

/// Runs a program to its end, in a world until its goals are decided, and prints what it left in
/// its variables and what became of the goals.
ExitStatus RunProgram(const RunOptions& options);

struct ReplayOptions {
    std::string recordingFile;
    ShowOptions show;
};

/// Runs a recording again, prints the same as RunProgram, and compares the outputs.
ExitStatus ReplayRecording(const ReplayOptions& options);

}  // namespace zentro
