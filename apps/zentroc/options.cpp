#include "apps/zentroc/options.h"

#include <CLI/CLI.hpp>
#include <iostream>

#include "apps/zentroc/console.h"

namespace zentro {

std::optional<Options> ParseOptions(int argc, char** argv, ExitStatus& status) {
    Options options;
    CLI::App app{"Compiles a program for the Kinetron board into an object file.", "zentroc"};
    app.set_version_flag("--version", "zentroc " ZENTRO_VERSION, "Show the version");
    app.set_help_flag("-h,--help", "Show this help");
    app.add_option("FILE", options.sourceFile, "The program's main file")->required();
    app.add_option("-o,--output", options.outputDirectory,
                   "Folder of the object file (otherwise the folder of FILE)")
        ->type_name("DIR");
    app.add_option("-I,--include", options.includeDirectory,
                   "Folder of included files (otherwise the folder of FILE)")
        ->type_name("DIR");
    app.add_option("--config", options.configurationFile,
                   "Instruction configuration file (otherwise the shipped one)")
        ->type_name("FILE");
    app.add_flag("--check", options.checkOnly, "Check the program, write nothing");
    app.add_option("--listing", options.listingFile,
                   "Write the listing of the object code, \"-\" for standard output")
        ->type_name("FILE");
    app.add_option("--symbols", options.symbolsFile, "Write the program's variables")
        ->type_name("FILE");
    std::string format = "text";
    app.add_option("--format", format, "How messages are written: text or json")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    app.add_flag("-q,--quiet", options.quiet, "Write errors and warnings only");
    app.footer(
        "Exit status: 0 no errors, 1 errors in the program, 2 wrong usage or a file that cannot "
        "be\n"
        "read or written.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const bool isHelp = app.exit(error) == 0;
        const bool isWritten = static_cast<bool>(std::cout.flush());
        if (!isWritten) TellFailure("cannot write to standard output");
        status = isHelp && isWritten ? ExitStatus::Success : ExitStatus::Failure;
        return std::nullopt;
    }
    options.format = format == "json" ? LogFormat::Json : LogFormat::Text;
    return options;
}

}  // namespace zentro
