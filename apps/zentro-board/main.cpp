// zentro-board: the virtual board, as a program that runs an object file and as a serial device.
#include <cstdio>
#include <exception>
#include <iostream>
#include <utility>
#include <vector>

#include "apps/command_line/command_line.h"
#include "apps/zentro-board/run.h"
#include "apps/zentro-board/serve.h"

namespace {

using namespace zentro;

using Arguments = std::vector<CommandLineArgument>;

/// What every run understands that is shown.
Arguments ShowArguments(ShowOptions& show) {
    return {
        {"--symbols", &show.symbolFile,
         "The compiler's list of variables: print their values at the end", "FILE"},
        {"--debug-info", &show.debugInfoFile,
         "What \"zentroc --debug-info\" wrote: explain a fault by lines, values and calls", "FILE"},
        {"--picture", &show.pictureFile, "Draw the world and the robot's way, as SVG or PNG",
         "FILE"},
        {"--trace", &show.trace, "Print each instruction and its effect"},
        {"--events", &show.events, "Print the outputs as they change, with their tick"},
        {"--real-time", &show.realTime,
         "Keep the pace of a real board instead of going as fast as it goes"}};
}

Subcommand RunCommand(RunOptions& run) {
    Arguments arguments{
        {"FILE", &run.objectFile, "Object file", "", true},
        {"--max-steps", &run.limits.steps, "End after so many instructions", "N", false, {}, 1},
        {"--seconds",
         &run.limits.seconds,
         "End after so many seconds of the board's time",
         "N",
         false,
         {},
         1},
        {"--seed", &run.seed, "Start of the random numbers (1 otherwise)", "N"},
        {"--inputs", &run.inputFile, "Input script: on each line a tick, an input and its value",
         "FILE"},
        {"--world", &run.worldFile,
         "Let the board's robot drive in this world, until its goals are decided; \"none\": in "
         "none. "
         "Otherwise the world is the one that the program's source names beside the object file",
         "FILE"},
        {"--noise",
         &run.noise,
         "Let the world's sensors be inexact, by chance from this seed",
         "N",
         false,
         {},
         1},
        {"--record", &run.recordFile, "Keep the run in a file that replay runs again", "FILE"}};
    const Arguments shown = ShowArguments(run.show);
    arguments.insert(arguments.end(), shown.begin(), shown.end());
    return {"run", "Run a program to its end", std::move(arguments)};
}

Subcommand ReplayCommand(ReplayOptions& replay) {
    Arguments arguments{{"FILE", &replay.recordingFile, "Recording", "", true}};
    const Arguments shown = ShowArguments(replay.show);
    arguments.insert(arguments.end(), shown.begin(), shown.end());
    return {"replay", "Run a recording again and compare the outputs", std::move(arguments)};
}

CommandLine Understood(RunOptions& run, ReplayOptions& replay, ServeOptions& serve) {
    const Subcommand serveCommand{
        "serve",
        "Be a board on a pseudo-terminal",
        {{"--baud",
          &serve.baud,
          "Keep to this speed (a real board has 9600)",
          "N",
          false,
          {},
          50,
          4'000'000},
         {"--link", &serve.link, "Make a link with this name to the pseudo-terminal", "PATH"}}};
    return {.program = "zentro-board",
            .help = "The virtual Kinetron board",
            .commands = {RunCommand(run), ReplayCommand(replay), serveCommand},
            .needsCommand = true};
}

ExitStatus Main(int argc, char** argv) {
    using Outcome = CommandLineReading::Outcome;
    RunOptions run;
    ReplayOptions replay;
    ServeOptions serve;
    const CommandLineReading reading = ReadCommandLine(Understood(run, replay, serve), argc, argv);
    if (reading.outcome == Outcome::Answered) return ExitStatus::Ended;
    if (reading.outcome == Outcome::NotUnderstood) return ExitStatus::BadUsage;
    if (reading.command == "replay") return ReplayRecording(replay);
    return reading.command == "run" ? RunProgram(run) : ServeBoard(serve);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const ExitStatus status = Main(argc, argv);
        if (std::cout.flush()) return static_cast<int>(status);
        std::fprintf(stderr, "zentro-board: cannot write to standard output\n");
        return static_cast<int>(ExitStatus::BadUsage);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zentro-board: %s\n", error.what());
        return static_cast<int>(ExitStatus::BadUsage);
    }
}
