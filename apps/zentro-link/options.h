#pragma once

#include <optional>
#include <string>

#include "apps/zentro-link/exit_status.h"

namespace zentro {

enum class LinkCommand { List, Download, Run, Debug, Stop, Variables, Terminal };

/// What the command line asks for.
struct Options {
    LinkCommand command = LinkCommand::List;
    std::string port;
    std::string objectFile;  ///< of Download
    std::string symbolFile;  ///< of Variables
    bool quiet = false;
};

/// Reads the command line. Prints help, the version or what is wrong with it, and then returns the
/// status with which to end in `status`, and nothing.
std::optional<Options> ParseOptions(int argc, char** argv, ExitStatus& status);

}  // namespace zentro
