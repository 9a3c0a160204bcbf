#include "apps/zentro-board/board_run.h"

#include <algorithm>
#include <iostream>
#include <limits>
#include <thread>

#include "apps/zentro-board/files.h"
#include "apps/zentro-board/png_file.h"
#include "board/text.h"
#include "board/trace.h"
#include "faults/fault_report.h"
#include "faults/program_words_file.h"

namespace zentro {

namespace {

using Clock = std::chrono::steady_clock;

/// Prints the output changes, if they are asked for, and forgets what was sent.
void ShowChanges(BoardRun& run) {
    for (const OutputChange& change : TakeChanges(run.scene.board)) {
        if (run.show.events) std::cout << FormatChange(change) << '\n';
        if (run.keepsOutcome) run.outcome.outputs.Add(change);
    }
    TakeOutput(run.scene.board);
}

std::uint64_t StepsLeft(const BoardRun& run) {
    if (run.limits.steps == 0) return std::numeric_limits<std::uint64_t>::max();
    return run.limits.steps - run.scene.board.processor.steps;
}

void RunInstructions(BoardRun& run, std::uint64_t wanted) {
    const std::uint64_t budget = std::min(wanted, StepsLeft(run));
    if (!run.show.trace) {
        RunInstructions(run.scene.board, budget);
        ShowChanges(run);
        return;
    }
    for (std::uint64_t step = 0; step < budget; ++step) {
        const std::optional<std::string> line = StepWithTrace(run.scene.board);
        if (!line) break;
        std::cout << *line << '\n';
        ShowChanges(run);
    }
}

/// Whether the program sleeps and nothing can come any more that would wake it.
bool SleepsForEver(const BoardRun& run) {
    if (run.report && run.report->GoesOn()) return false;
    const Board& board = run.scene.board;
    const auto watched = [&board](EventNumber number) {
        return board.events.handlers[static_cast<std::size_t>(number)] != kNoHandler;
    };
    return board.processor.wait.kind == Wait::Kind::Event && run.player.IsDone() &&
           !watched(EventNumber::OneSecond) && !watched(EventNumber::TenSeconds) &&
           !watched(EventNumber::OneMinute);
}

bool TimeIsOver(const BoardRun& run) {
    return run.limits.seconds != 0 && run.scene.board.clock >= run.limits.seconds * kTicksPerSecond;
}

/// Waits until the world's time has come as far as the board's.
void KeepPace(const BoardRun& run, Clock::time_point start) {
    if (!run.show.realTime) return;
    std::cout.flush();
    std::this_thread::sleep_until(
        start + std::chrono::seconds(1) * (run.scene.board.clock - run.begin) / kTicksPerSecond);
}

/// Whether the run ends in this tick. In a world it goes on after the program, until the robot
/// stands or its goals are decided.
bool EndsInTick(const BoardRun& run) {
    if (run.limits.endOfTape) return false;
    if (StepsLeft(run) == 0) return true;
    if (run.report ? run.report->IsOver() : !run.scene.board.processor.running) return true;
    if (!SleepsForEver(run)) return false;
    std::cerr << "zentro-board: the program sleeps, and no event can wake it any more\n";
    return true;
}

/// What is drawn, as its file's name says.
std::string PictureFile(const BoardRun& run) {
    const world::WorldMap& map = *run.scene.map;
    return run.show.pictureFile.ends_with(".png") ? PngOf(PixelsOf(map, run.report->Way()))
                                                  : PictureOf(map, run.report->Way());
}

/// What the board itself says, then what is known of it.
void TellFault(const BoardRun& run) {
    const Board& board = run.scene.board;
    std::cerr << FaultLine(board.processor.fault, board.processor.instruction) << '\n';
    if (run.show.debugInfoFile.empty()) return;
    const FaultReport report = DescribeFault(board, run.words);
    for (const std::string& part : {report.text, report.values, report.calls})
        if (!part.empty()) std::cerr << part << '\n';
}

ExitStatus StatusOf(const BoardRun& run) {
    const Processor& processor = run.scene.board.processor;
    if (processor.end == EndReason::Fault) {
        TellFault(run);
        return ExitStatus::Fault;
    }
    if (processor.running && StepsLeft(run) == 0) return ExitStatus::StepsRanOut;
    return run.report && !run.report->HasMetItsGoals() ? ExitStatus::GoalsMissed
                                                       : ExitStatus::Ended;
}

}  // namespace

bool ReadShowFiles(BoardRun& run) {
    const std::string& picture = run.show.pictureFile;
    if (!picture.empty() && !picture.ends_with(".svg") && !picture.ends_with(".png"))
        return Complain(picture, "pictures are SVG or PNG files: give it a name with .svg or .png");
    const auto readSymbols = [&run](const std::string& text) {
        SymbolFile file = ParseSymbolFile(text);
        run.variables = std::move(file.variables);
        return file.error;
    };
    const auto readDebugInfo = [&run](const std::string& text) {
        LoadedProgramWords loaded = ParseProgramWords(text);
        run.words = std::move(loaded.words);
        return loaded.error;
    };
    return UseFile(run.show.symbolFile, readSymbols) &&
           UseFile(run.show.debugInfoFile, readDebugInfo);
}

void RunToEnd(BoardRun& run) {
    const auto start = Clock::now();
    run.begin = run.scene.board.clock;
    const Processor& processor = run.scene.board.processor;
    if (run.scene.map) run.report.emplace(run.scene, run.show.events);
    while (true) {
        run.player.BeginTick(run.scene,
                             [&run](std::uint64_t budget) { RunInstructions(run, budget); });
        ShowChanges(run);  // of what was done to it
        if (run.limits.endOfTape && run.scene.board.clock >= *run.limits.endOfTape) break;
        const std::uint64_t before = processor.steps;
        RunInstructions(run, run.player.Pace());
        run.stepsOfTick = processor.steps - before;
        if (EndsInTick(run)) break;
        PassTick(run.scene);
        run.stepsOfTick = 0;
        ShowChanges(run);
        if (run.report) run.report->Look();
        if (TimeIsOver(run)) break;
        KeepPace(run, start);
    }
    run.outcome.steps = processor.steps;
    if (run.report) run.report->End();
}

ExitStatus PrintResults(const BoardRun& run) {
    const Board& board = run.scene.board;
    for (const Variable& variable : run.variables) {
        std::cout << FormatVariable(board.memory, variable) << '\n';
    }
    std::cout << "steps\t" << board.processor.steps << '\n';
    if (board.droppedEvents > 0) std::cout << "dropped\t" << board.droppedEvents << '\n';
    if (run.report) run.report->PrintVerdict();
    std::cout.flush();
    if (run.report && !run.show.pictureFile.empty() &&
        !MakeFile(run.show.pictureFile, PictureFile(run)))
        return ExitStatus::BadUsage;
    return StatusOf(run);
}

}  // namespace zentro
