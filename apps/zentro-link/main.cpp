// zentro-link: works with a board on a serial port, from a command line or a script.
#include <QCoreApplication>
#include <csignal>
#include <exception>
#include <iostream>

#include "apps/zentro-link/commands.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/options.h"
#include "apps/zentro-link/raw_terminal.h"

namespace {

using namespace zentro;

ExitStatus Main(int argc, char** argv, int& signal) {
    // A reader that goes away is told by what cannot be written.
    std::signal(SIGPIPE, SIG_IGN);
    ExitStatus status = ExitStatus::Done;
    const std::optional<Options> options = ParseOptions(argc, argv, status);
    if (!options) return status;
    const QCoreApplication application(argc, argv);
    if (options->command == LinkCommand::Terminal) return TalkToBoard(*options, signal);
    status = CarryOut(*options, signal);
    if (std::cout.flush()) return status;
    TellFailure("cannot write to standard output");
    return ExitStatus::BadUsage;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        int signal = 0;
        const ExitStatus status = Main(argc, argv, signal);
        // Whoever started the program sees that a signal ended it.
        if (signal != 0) std::raise(signal);
        return static_cast<int>(status);
    } catch (const std::exception& error) {
        TellFailure(error.what());
        return static_cast<int>(ExitStatus::BadUsage);
    }
}
