#pragma once

#include <optional>
#include <string>

namespace zentro {

enum class LogFormat { Text, Json };

/// What the command line asks for.
struct Options {
    std::string sourceFile;
    std::optional<std::string> outputDirectory;
    std::optional<std::string> includeDirectory;
    std::optional<std::string> configurationFile;
    std::string listingFile;    ///< empty: no listing; "-": standard output
    std::string symbolsFile;    ///< empty: none
    std::string debugInfoFile;  ///< empty: none
    bool checkOnly = false;
    bool quiet = false;
    bool noAdvice = false;
    LogFormat format = LogFormat::Text;
};

/// The exit statuses of the program.
enum class ExitStatus : int {
    Success = 0,
    ProgramHasErrors = 1,
    Failure = 2,  ///< wrong usage, or something outside the program's text failed
};

/// Reads the command line. Prints help, the version or what is wrong with it, and then returns the
/// status with which to end in `status`, and nothing.
std::optional<Options> ParseOptions(int argc, char** argv, ExitStatus& status);

}  // namespace zentro
