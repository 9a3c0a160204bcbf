#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace zentro {

/// Where what the command line says goes. It stays as it is when the command line says nothing. A
/// bool belongs to a flag, which has no value.
using ArgumentValue =
    std::variant<bool*, std::string*, std::optional<std::string>*, std::uint32_t*, std::uint64_t*>;

struct CommandLineArgument {
    std::string names;  ///< "-o,--output", or "FILE" of one that is told by its place
    ArgumentValue value;
    std::string help = {};
    std::string valueName = {};  ///< what the help calls an option's value
    bool isRequired = false;
    std::vector<std::string> choices = {};  ///< what a text may be; empty: anything
    std::uint64_t least = 0;                ///< of a number
    std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
};

struct Subcommand {
    std::string name;
    std::string help;
    std::vector<CommandLineArgument> arguments = {};
};

/// All that a program understands. Options that stand in `arguments` may follow a command too.
struct CommandLine {
    std::string program;
    std::string help;
    std::string version = {};  ///< empty: the program has no --version
    std::vector<CommandLineArgument> arguments = {};
    std::vector<Subcommand> commands = {};
    bool needsCommand = false;
    std::string usage = {};          ///< the help's first lines; empty: made of the rest
    std::string beforeCommand = {};  ///< what the usage of a command shows before its name
    std::string footer = {};
};

struct CommandLineReading {
    enum class Outcome {
        Understood,
        Answered,      ///< help or version were asked for, and stand on standard output
        NotUnderstood  ///< standard error tells why
    };
    Outcome outcome = Outcome::Understood;
    std::string command = {};  ///< empty: none was given
};

/// Reads the command line into the values of the arguments. The caller sees to it that what was
/// printed gets to where standard output goes.
CommandLineReading ReadCommandLine(const CommandLine& line, int argc, const char* const* argv);

}  // namespace zentro
