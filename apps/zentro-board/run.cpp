#include "apps/zentro-board/run.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <thread>

#include "apps/zentro-board/input_script.h"
#include "apps/zentro-board/symbol_file.h"
#include "apps/zentro-board/world_drive.h"
#include "board/board.h"
#include "board/loader.h"
#include "board/text.h"
#include "board/trace.h"
#include "config/file.h"

namespace zentro {

namespace {

/// A run and what it needs, read from its files.
struct Run {
    RunOptions options;
    Board board;
    std::vector<Variable> variables;
    std::vector<InputChange> script;
    std::size_t scriptDone = 0;
    std::optional<WorldDrive> drive;  ///< in a world, if there is one
};

bool Complain(const std::string& path, const std::string& wrong) {
    std::cerr << "zentro-board: " << path << ": " << wrong << '\n';
    return false;
}

/// Reads a file and hands its text on; `use` returns what is wrong with it.
template <typename Use>
bool UseFile(const std::string& path, Use use) {
    if (path.empty()) return true;
    const FileContent file = ReadWholeFile(path);
    if (file.status != FileContent::Status::Read) {
        return Complain(path, "cannot be read: " + file.problem);
    }
    const std::string wrong = use(file.bytes);
    return wrong.empty() || Complain(path, wrong);
}

bool ReadFiles(Run& run) {
    const auto load = [&run](const std::string& text) {
        std::string wrong = LoadObjectText(run.board, text);
        if (wrong.empty() && run.board.processor.programSize == 0) wrong = "there is no program";
        return wrong;
    };
    const auto readSymbols = [&run](const std::string& text) {
        SymbolFile file = ParseSymbolFile(text);
        run.variables = std::move(file.variables);
        return file.error;
    };
    const auto readScript = [&run](const std::string& text) {
        InputScript script = ParseInputScript(text);
        run.script = std::move(script.changes);
        return script.error;
    };
    const auto readWorld = [&run](const std::string& text) {
        std::string error;
        run.drive = WorldDrive::Load(text, run.options.noise, run.options.events, error);
        return error;
    };
    return UseFile(run.options.objectFile, load) && UseFile(run.options.worldFile, readWorld) &&
           UseFile(run.options.symbolFile, readSymbols) &&
           UseFile(run.options.inputFile, readScript);
}

void ApplyScript(Run& run) {
    while (run.scriptDone < run.script.size() &&
           run.script[run.scriptDone].tick <= run.board.clock) {
        const InputChange& change = run.script[run.scriptDone++];
        if (run.drive) run.drive->Hold(change);
        if (change.letsGo) continue;
        Inputs inputs = run.board.inputs;
        change.set(inputs, change.index, change.value);
        SetInputs(run.board, inputs);
    }
}

/// Prints the output changes, if they are asked for, and forgets what was sent.
void ShowChanges(Run& run) {
    for (const OutputChange& change : TakeChanges(run.board)) {
        if (run.options.events) std::cout << FormatChange(change) << '\n';
    }
    TakeOutput(run.board);
}

std::uint64_t StepsLeft(const Run& run) {
    if (run.options.maxSteps == 0) return std::numeric_limits<std::uint64_t>::max();
    return run.options.maxSteps - run.board.processor.steps;
}

/// The program's part of one tick.
void RunTick(Run& run) {
    const std::uint64_t budget = std::min(kStepsPerTick, StepsLeft(run));
    if (!run.options.trace) {
        RunInstructions(run.board, budget);
        ShowChanges(run);
        return;
    }
    for (std::uint64_t step = 0; step < budget; ++step) {
        const std::optional<std::string> line = StepWithTrace(run.board);
        if (!line) break;
        std::cout << *line << '\n';
        ShowChanges(run);
    }
}

/// Whether the program sleeps and nothing can come any more that would wake it.
bool SleepsForEver(const Run& run) {
    if (run.drive && run.drive->GoesOn(run.board)) return false;
    const auto watched = [&run](EventNumber number) {
        return run.board.events.handlers[static_cast<std::size_t>(number)] != kNoHandler;
    };
    return run.board.processor.wait.kind == Wait::Kind::Event &&
           run.scriptDone == run.script.size() && !watched(EventNumber::OneSecond) &&
           !watched(EventNumber::TenSeconds) && !watched(EventNumber::OneMinute);
}

bool TimeIsOver(const Run& run) {
    return run.options.seconds != 0 && run.board.clock >= run.options.seconds * kTicksPerSecond;
}

/// Waits until the world's time has come as far as the board's.
void KeepPace(const Run& run, std::chrono::steady_clock::time_point start) {
    if (!run.options.realTime) return;
    std::cout.flush();
    std::this_thread::sleep_until(start +
                                  std::chrono::seconds(1) * run.board.clock / kTicksPerSecond);
}

/// In a world the run goes on after the program, until the robot stands or its goals are decided.
bool IsOver(const Run& run) {
    if (run.drive) return run.drive->IsOver(run.board);
    return !run.board.processor.running;
}

void RunToEnd(Run& run) {
    const auto start = std::chrono::steady_clock::now();
    ApplyScript(run);
    if (run.drive) run.drive->Feed(run.board);
    StartProgram(run.board);
    while (true) {
        RunTick(run);
        if (StepsLeft(run) == 0 || IsOver(run)) return;
        if (SleepsForEver(run)) {
            std::cerr << "zentro-board: the program sleeps, and no event can wake it any more\n";
            return;
        }
        AdvanceTick(run.board);
        ShowChanges(run);
        if (run.drive) run.drive->PassTick(run.board);
        if (TimeIsOver(run)) return;
        KeepPace(run, start);
        ApplyScript(run);
        if (run.drive) run.drive->Feed(run.board);
    }
}

/// Writes the picture, if one is asked for.
bool DrawPicture(const Run& run) {
    const std::string& path = run.options.pictureFile;
    if (path.empty()) return true;
    const std::string problem = WriteWholeFile(path, run.drive->Picture());
    return problem.empty() || Complain(path, "cannot be written: " + problem);
}

bool OptionsFit(const RunOptions& options) {
    if (options.worldFile.empty()) {
        if (!options.pictureFile.empty()) return Complain("--picture", "needs --world");
        return options.noise == 0 || Complain("--noise", "needs --world");
    }
    if (options.pictureFile.empty() || options.pictureFile.ends_with(".svg")) return true;
    return Complain(options.pictureFile, "pictures are SVG files: give it a name with .svg");
}

void PrintResults(const Run& run) {
    for (const Variable& variable : run.variables) {
        std::cout << FormatVariable(run.board.memory, variable) << '\n';
    }
    std::cout << "steps\t" << run.board.processor.steps << '\n';
    if (run.board.droppedEvents > 0) std::cout << "dropped\t" << run.board.droppedEvents << '\n';
    if (run.drive) run.drive->PrintVerdict();
}

ExitStatus StatusOf(const Run& run) {
    const Processor& processor = run.board.processor;
    if (processor.end == EndReason::Fault) {
        std::cerr << FaultLine(processor.fault, processor.instruction) << '\n';
        return ExitStatus::Fault;
    }
    if (processor.running && StepsLeft(run) == 0) return ExitStatus::StepsRanOut;
    return run.drive && !run.drive->HasMetItsGoals() ? ExitStatus::GoalsMissed : ExitStatus::Ended;
}

}  // namespace

ExitStatus RunProgram(const RunOptions& options) {
    std::ios::sync_with_stdio(false);
    const auto run = std::make_unique<Run>();
    run->options = options;
    if (!OptionsFit(options) || !ReadFiles(*run)) return ExitStatus::BadUsage;
    run->board.random = options.seed;
    RunToEnd(*run);
    if (run->drive) run->drive->End();
    PrintResults(*run);
    std::cout.flush();
    if (run->drive && !DrawPicture(*run)) return ExitStatus::BadUsage;
    return StatusOf(*run);
}

}  // namespace zentro
