// zentro-board: the virtual board, as a program that runs an object file and as a serial device.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>

#include "apps/zentro-board/run.h"
#include "apps/zentro-board/serve.h"

namespace {

using zentro::ExitStatus;

CLI::App* AddRun(CLI::App& app, zentro::RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Run a program to its end");
    run->add_option("FILE", options.objectFile, "object file")->required();
    run->add_option("--symbols", options.symbolFile,
                    "the compiler's list of variables: print their values at the end");
    run->add_option("--max-steps", options.maxSteps, "end after so many instructions")
        ->check(CLI::PositiveNumber);
    run->add_option("--seconds", options.seconds, "end after so many seconds of the board's time")
        ->check(CLI::PositiveNumber);
    run->add_option("--seed", options.seed, "start of the random numbers (1 otherwise)");
    run->add_option("--inputs", options.inputFile,
                    "input script: on each line a tick, an input and its value");
    run->add_flag("--trace", options.trace, "print each instruction and its effect");
    run->add_flag("--events", options.events, "print the outputs as they change, with their tick");
    run->add_flag("--real-time", options.realTime,
                  "keep the pace of a real board instead of going as fast as it goes");
    return run;
}

CLI::App* AddServe(CLI::App& app, zentro::ServeOptions& options) {
    CLI::App* serve = app.add_subcommand("serve", "Be a board on a pseudo-terminal");
    serve->add_option("--baud", options.baud, "keep to this speed (a real board has 9600)")
        ->check(CLI::Range(50, 4'000'000));
    serve->add_option("--link", options.link, "make a link with this name to the pseudo-terminal");
    return serve;
}

int Main(int argc, char** argv) {
    CLI::App app{"The virtual Kinetron board"};
    app.require_subcommand(1);
    zentro::RunOptions runOptions;
    zentro::ServeOptions serveOptions;
    const CLI::App* run = AddRun(app, runOptions);
    AddServe(app, serveOptions);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : static_cast<int>(ExitStatus::BadUsage);
    }
    const ExitStatus status =
        run->parsed() ? zentro::RunProgram(runOptions) : zentro::ServeBoard(serveOptions);
    return static_cast<int>(status);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const int status = Main(argc, argv);
        if (std::cout.flush()) return status;
        std::fprintf(stderr, "zentro-board: cannot write to standard output\n");
        return static_cast<int>(ExitStatus::BadUsage);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zentro-board: %s\n", error.what());
        return static_cast<int>(ExitStatus::BadUsage);
    }
}
