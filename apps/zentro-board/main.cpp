// zentro-board: the virtual board, as a program that runs an object file and as a serial device.
#include <cstdio>
#include <exception>
#include <iostream>

#include "apps/command_line/command_line.h"
#include "apps/zentro-board/run.h"
#include "apps/zentro-board/serve.h"

namespace {

using namespace zentro;

CommandLine Understood(RunOptions& run, ServeOptions& serve) {
    const Subcommand runCommand{
        "run",
        "Run a program to its end",
        {{"FILE", &run.objectFile, "Object file", "", true},
         {"--symbols", &run.symbolFile,
          "The compiler's list of variables: print their values at the end", "FILE"},
         {"--max-steps", &run.maxSteps, "End after so many instructions", "N", false, {}, 1},
         {"--seconds",
          &run.seconds,
          "End after so many seconds of the board's time",
          "N",
          false,
          {},
          1},
         {"--seed", &run.seed, "Start of the random numbers (1 otherwise)", "N"},
         {"--inputs", &run.inputFile, "Input script: on each line a tick, an input and its value",
          "FILE"},
         {"--world", &run.worldFile,
          "Let the board's robot drive in this world, until its goals are decided", "FILE"},
         {"--picture", &run.pictureFile, "Draw the world and the robot's way", "FILE.svg"},
         {"--noise",
          &run.noise,
          "Let the world's sensors be inexact, by chance from this seed",
          "N",
          false,
          {},
          1},
         {"--trace", &run.trace, "Print each instruction and its effect"},
         {"--events", &run.events, "Print the outputs as they change, with their tick"},
         {"--real-time", &run.realTime,
          "Keep the pace of a real board instead of going as fast as it goes"}}};
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
            .commands = {runCommand, serveCommand},
            .needsCommand = true};
}

ExitStatus Main(int argc, char** argv) {
    using Outcome = CommandLineReading::Outcome;
    RunOptions run;
    ServeOptions serve;
    const CommandLineReading reading = ReadCommandLine(Understood(run, serve), argc, argv);
    if (reading.outcome == Outcome::Answered) return ExitStatus::Ended;
    if (reading.outcome == Outcome::NotUnderstood) return ExitStatus::BadUsage;
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
