#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "apps/zentro-board/exit_status.h"
#include "apps/zentro-board/symbol_file.h"
#include "apps/zentro-board/world_report.h"
#include "faults/program_words.h"
#include "recording/player.h"
#include "recording/recording.h"

namespace zentro {

/// What is printed during a run, whether it is the first one or a replay.
struct ShowOptions {
    std::string symbolFile;     ///< empty: none
    std::string debugInfoFile;  ///< empty: none
    std::string pictureFile;    ///< of the way in the world; empty: none
    bool trace = false;
    bool events = false;
    bool realTime = false;  ///< at the pace of the world instead of as fast as it goes
};

/// Where a run ends that does not end by itself.
struct RunLimits {
    std::uint64_t steps = 0;    ///< 0: as many as it takes
    std::uint64_t seconds = 0;  ///< of the board's own time; 0: as many as it takes
    std::optional<std::uint64_t>
        endOfTape;  ///< the tick at which a recording ends, whatever goes on
};

/// A run and what it needs. Made where it stays, since the report looks at the scene.
struct BoardRun {
    ShowOptions show;
    RunLimits limits;
    Scene scene;
    Player player{{}};
    std::vector<Variable> variables;
    ProgramWords words;
    std::optional<WorldReport> report;  ///< in a world, if there is one
    bool keepsOutcome = false;          ///< outputs need not be remembered for nobody
    Outcome outcome;
    std::uint64_t begin = 0;        ///< by the board's clock
    std::uint64_t stepsOfTick = 0;  ///< in the last tick, beside its actions
};

/// Reads what is known of the program, if it is given, and looks whether a picture can be drawn.
bool ReadShowFiles(BoardRun& run);

/// From the start of the program to its end; in a world until its goals are decided.
void RunToEnd(BoardRun& run);

/// Prints what the program left in its variables and what became of the goals; draws the picture.
/// Returns how the run ended.
ExitStatus PrintResults(const BoardRun& run);

}  // namespace zentro
