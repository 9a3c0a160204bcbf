#include "apps/zentro-link/options.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "apps/zentro-link/console.h"

namespace zentro {

namespace {

constexpr const char* kFooter =
    "Examples:\n"
    "  zentro-link --list\n"
    "  zentro-link /dev/ttyUSB0 download blink.obj\n"
    "  zentro-link /dev/ttyUSB0 run\n"
    "\n"
    "Exit status: 0 done, 1 the board refused or did not answer, 2 wrong usage or a file that\n"
    "cannot be read, 3 the port cannot be opened or the connection was lost.";

/// The port stands before the command, which the usual line does not show.
class UsageWithPort : public CLI::Formatter {
  public:
    std::string make_usage(const CLI::App* app, std::string /*name*/) const override {
        if (app->get_parent() == nullptr) {
            return "\nUsage: zentro-link PORT COMMAND [OPTIONS]\n       zentro-link --list\n";
        }
        return CLI::Formatter::make_usage(app, "zentro-link PORT " + app->get_name());
    }
};

void AddCommands(CLI::App& app, Options& options) {
    const auto add = [&](const char* name, LinkCommand command, const char* help) {
        CLI::App* const added = app.add_subcommand(name, help);
        added->callback([&options, command] { options.command = command; });
        added->set_help_flag("-h,--help", "Show this help");
        added->fallthrough();
        added->footer("");
        added->group("Commands");
        return added;
    };
    add("download", LinkCommand::Download, "Send a program to the board")
        ->add_option("FILE", options.objectFile, "Object file that the compiler wrote")
        ->type_name("")
        ->required();
    add("run", LinkCommand::Run, "Start the program");
    add("debug", LinkCommand::Debug, "Start the program in debug mode, before its first step");
    add("stop", LinkCommand::Stop, "Stop the program and put all outputs to rest");
    add("variables", LinkCommand::Variables,
        "Print the program's variables with their values, in debug mode")
        ->add_option("--symbols", options.symbolFile,
                     "The variables as \"zentroc --symbols\" wrote them")
        ->type_name("FILE")
        ->required();
    add("terminal", LinkCommand::Terminal, "Talk to the board; Ctrl+] ends it");
}

/// What is wrong with words that each are right.
std::string Contradiction(const CLI::App& app, const Options& options, bool list) {
    const bool hasCommand = !app.get_subcommands().empty();
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
    Options options;
    bool list = false;
    CLI::App app{"Works with a Kinetron board on a serial port.", "zentro-link"};
    app.formatter(std::make_shared<UsageWithPort>());
    app.set_version_flag("--version", "zentro-link " ZENTRO_VERSION, "Show the version");
    app.set_help_flag("-h,--help", "Show this help");
    app.add_option("PORT", options.port, "The board's serial port, /dev/ttyUSB0 or COM3")
        ->type_name("");
    app.add_flag("--list", list, "Show the serial ports that are there, with their USB identity");
    app.add_flag("-q,--quiet", options.quiet, "Write failures and results only");
    app.footer(kFooter);
    app.require_subcommand(0, 1);
    AddCommands(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return End(app.exit(error) == 0 ? ExitStatus::Done : ExitStatus::BadUsage, status);
    }
    const std::string wrong = Contradiction(app, options, list);
    if (wrong.empty()) return options;
    TellFailure(wrong + "\nRun with --help for more information.");
    return End(ExitStatus::BadUsage, status);
}

}  // namespace zentro
