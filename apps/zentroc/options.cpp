#include "apps/zentroc/options.h"

#include <iostream>

#include "apps/command_line/command_line.h"
#include "apps/zentroc/console.h"

namespace zentro {

namespace {

CommandLine Understood(Options& options, std::string& format) {
    CommandLine line{.program = "zentroc",
                     .help = "Compiles a program for the Kinetron board into an object file.",
                     .version = ZENTRO_VERSION};
    line.arguments = {
        {"FILE", &options.sourceFile, "The program's main file", "", true},
        {"-o,--output", &options.outputDirectory,
         "Folder of the object file (otherwise the folder of FILE)", "DIR"},
        {"-I,--include", &options.includeDirectory,
         "Folder of included files (otherwise the folder of FILE)", "DIR"},
        {"--config", &options.configurationFile,
         "Instruction configuration file (otherwise the shipped one)", "FILE"},
        {"--check", &options.checkOnly, "Check the program, write nothing"},
        {"--listing", &options.listingFile,
         "Write the listing of the object code, \"-\" for standard output", "FILE"},
        {"--symbols", &options.symbolsFile, "Write the program's variables", "FILE"},
        {"--debug-info", &options.debugInfoFile,
         "Write what zentro-board needs to explain a fault in the program's own words", "FILE"},
        {"--format",
         &format,
         "How messages are written: text or json",
         "FORMAT",
         false,
         {"text", "json"}},
        {"--no-advice", &options.noAdvice,
         "Say nothing about lines that are legal, but hardly meant"},
        {"-q,--quiet", &options.quiet, "Write errors and warnings only"},
    };
    line.footer =
        "Exit status: 0 no errors, 1 errors in the program, 2 wrong usage or a file that cannot "
        "be\n"
        "read or written.";
    return line;
}

}  // namespace

std::optional<Options> ParseOptions(int argc, char** argv, ExitStatus& status) {
    using Outcome = CommandLineReading::Outcome;
    Options options;
    std::string format = "text";
    const Outcome outcome = ReadCommandLine(Understood(options, format), argc, argv).outcome;
    options.format = format == "json" ? LogFormat::Json : LogFormat::Text;
    if (outcome == Outcome::Understood) return options;
    const bool isWritten = static_cast<bool>(std::cout.flush());
    if (!isWritten) TellFailure("cannot write to standard output");
    const bool isWell = outcome == Outcome::Answered && isWritten;
    status = isWell ? ExitStatus::Success : ExitStatus::Failure;
    return std::nullopt;
}

}  // namespace zentro
