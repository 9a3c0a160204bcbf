#include "apps/zentro-link/options.h"

#include <iostream>
#include <string>
#include <vector>

#include "apps/command_line/command_line.h"
#include "apps/zentro-link/console.h"

namespace zentro {

namespace {

constexpr const char* kUsage =
    "\nUsage: zentro-link PORT COMMAND [OPTIONS]\n       zentro-link --list\n";

constexpr const char* kFooter =
    "Examples:\n"
    "  zentro-link --list\n"
    "  zentro-link /dev/ttyUSB0 download blink.obj\n"
    "  zentro-link /dev/ttyUSB0 run\n"
    "\n"
    "Exit status: 0 done, 1 the board refused or did not answer, 2 wrong usage or a file that\n"
    "cannot be read, 3 the port cannot be opened or the connection was lost.";

struct CommandRow {
    LinkCommand command;
    const char* name;
    const char* help;
};

constexpr CommandRow kCommands[] = {
    {LinkCommand::Download, "download", "Send a program to the board"},
    {LinkCommand::Run, "run", "Start the program"},
    {LinkCommand::Debug, "debug", "Start the program in debug mode, before its first step"},
    {LinkCommand::Stop, "stop", "Stop the program and put all outputs to rest"},
    {LinkCommand::Variables, "variables",
     "Print the program's variables with their values, in debug mode"},
    {LinkCommand::Terminal, "terminal", "Talk to the board; Ctrl+] ends it"},
};

std::vector<CommandLineArgument> ArgumentsOf(LinkCommand command, Options& options) {
    switch (command) {
        case LinkCommand::Download:
            return {{"FILE", &options.objectFile, "Object file that the compiler wrote", "", true}};
        case LinkCommand::Variables:
            return {{"--symbols", &options.symbolFile,
                     "The variables as \"zentroc --symbols\" wrote them", "FILE", true}};
        default: return {};
    }
}

CommandLine Understood(Options& options, bool& list) {
    CommandLine line{.program = "zentro-link",
                     .help = "Works with a Kinetron board on a serial port.",
                     .version = ZENTRO_VERSION,
                     .usage = kUsage,
                     .beforeCommand = "PORT",
                     .footer = kFooter};
    line.arguments = {
        {"PORT", &options.port, "The board's serial port, /dev/ttyUSB0 or COM3"},
        {"--list", &list, "Show the serial ports that are there, with their USB identity"},
        {"-q,--quiet", &options.quiet, "Write failures and results only"},
    };
    for (const CommandRow& row : kCommands) {
        line.commands.push_back({row.name, row.help, ArgumentsOf(row.command, options)});
    }
    return line;
}

/// What is wrong with words that each are right.
std::string Contradiction(const Options& options, bool hasCommand, bool list) {
    if (list && (hasCommand || !options.port.empty())) return "--list stands alone";
    if (list) return {};
    if (options.port.empty()) return "name the board's serial port; --list shows what is there";
    if (!hasCommand) return "say what to do with the board on " + options.port;
    return {};
}

std::optional<Options> End(ExitStatus wanted, ExitStatus& status) {
    const bool isWritten = static_cast<bool>(std::cout.flush());
    if (!isWritten) TellFailure("cannot write to standard output");
    status = isWritten ? wanted : ExitStatus::BadUsage;
    return std::nullopt;
}

}  // namespace

std::optional<Options> ParseOptions(int argc, char** argv, ExitStatus& status) {
    using Outcome = CommandLineReading::Outcome;
    Options options;
    bool list = false;
    const CommandLineReading reading = ReadCommandLine(Understood(options, list), argc, argv);
    if (reading.outcome == Outcome::Answered) return End(ExitStatus::Done, status);
    if (reading.outcome == Outcome::NotUnderstood) return End(ExitStatus::BadUsage, status);
    for (const CommandRow& row : kCommands) {
        if (row.name == reading.command) options.command = row.command;
    }
    const std::string wrong = Contradiction(options, !reading.command.empty(), list);
    if (wrong.empty()) return options;
    TellFailure(wrong + "\nRun with --help for more information.");
    return End(ExitStatus::BadUsage, status);
}

}  // namespace zentro
