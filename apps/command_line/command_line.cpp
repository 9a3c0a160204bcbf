#include "apps/command_line/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>

namespace zentro {

namespace {

/// Shows the usage of the whole program as it is written down, and that of a command with what
/// stands before it.
class UsageAsWritten : public CLI::Formatter {
  public:
    explicit UsageAsWritten(const CommandLine& line)
        : usage_(line.usage), programAndBefore_(line.program) {
        if (!line.beforeCommand.empty()) programAndBefore_ += " " + line.beforeCommand;
    }

    std::string make_usage(const CLI::App* app, std::string name) const override {
        if (app->get_parent() != nullptr) {
            return CLI::Formatter::make_usage(app, programAndBefore_ + " " + app->get_name());
        }
        return usage_.empty() ? CLI::Formatter::make_usage(app, std::move(name)) : usage_;
    }

  private:
    std::string usage_;
    std::string programAndBefore_;
};

std::optional<std::uint64_t> ReadNumber(const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

// How a text of the command line becomes a value; it has been checked.

void Take(std::string& value, const std::string& text) {
    value = text;
}
void Take(std::optional<std::string>& value, const std::string& text) {
    value = text;
}
void Take(std::uint32_t& value, const std::string& text) {
    value = static_cast<std::uint32_t>(ReadNumber(text).value_or(0));
}
void Take(std::uint64_t& value, const std::string& text) {
    value = ReadNumber(text).value_or(0);
}
void Take(bool& value, const std::string&) {
    value = true;
}

/// What is wrong with a number; empty when it is right.
std::string WrongWithNumber(const std::string& text, std::uint64_t least, std::uint64_t most) {
    const std::optional<std::uint64_t> number = ReadNumber(text);
    if (number && *number >= least && *number <= most) return {};
    const std::string wrong = "'" + text + "' is not a whole number ";
    if (most == std::numeric_limits<std::uint64_t>::max()) {
        return wrong + "of at least " + std::to_string(least);
    }
    return wrong + "from " + std::to_string(least) + " to " + std::to_string(most);
}

std::string WrongWithChoice(const std::string& text, const std::vector<std::string>& choices) {
    if (std::ranges::find(choices, text) != choices.end()) return {};
    return "'" + text + "' is not one of " + CLI::detail::join(choices, ", ");
}

void AddCheck(CLI::Option& option, const CommandLineArgument& argument) {
    if (!argument.choices.empty()) {
        option.check([choices = argument.choices](const std::string& text) {
            return WrongWithChoice(text, choices);
        });
    }
    const bool isShort = std::holds_alternative<std::uint32_t*>(argument.value);
    if (!isShort && !std::holds_alternative<std::uint64_t*>(argument.value)) return;
    constexpr std::uint64_t kMostOfShort = std::numeric_limits<std::uint32_t>::max();
    const std::uint64_t most = isShort ? std::min(argument.most, kMostOfShort) : argument.most;
    option.check([least = argument.least, most](const std::string& text) {
        return WrongWithNumber(text, least, most);
    });
}

void AddArgument(CLI::App& app, const CommandLineArgument& argument) {
    if (bool* const* flag = std::get_if<bool*>(&argument.value)) {
        app.add_flag_callback(
            argument.names, [flag = *flag] { *flag = true; }, argument.help);
        return;
    }
    const auto take = [value = argument.value](const CLI::results_t& texts) {
        std::visit([&](auto* place) { Take(*place, texts.at(0)); }, value);
        return true;
    };
    CLI::Option* const option = app.add_option(argument.names, take, argument.help);
    option->type_name(argument.valueName)->required(argument.isRequired);
    AddCheck(*option, argument);
}

void AddCommand(CLI::App& app, const Subcommand& command) {
    CLI::App* const added = app.add_subcommand(command.name, command.help);
    added->set_help_flag("-h,--help", "Show this help");
    added->fallthrough();
    added->footer("");
    added->group("Commands");
    for (const CommandLineArgument& argument : command.arguments) {
        AddArgument(*added, argument);
    }
}

}  // namespace

CommandLineReading ReadCommandLine(const CommandLine& line, int argc, const char* const* argv) {
    using Outcome = CommandLineReading::Outcome;
    CLI::App app{line.help, line.program};
    app.formatter(std::make_shared<UsageAsWritten>(line));
    if (!line.version.empty()) {
        app.set_version_flag("--version", line.program + " " + line.version, "Show the version");
    }
    app.set_help_flag("-h,--help", "Show this help");
    app.footer(line.footer);
    for (const CommandLineArgument& argument : line.arguments) {
        AddArgument(app, argument);
    }
    for (const Subcommand& command : line.commands) {
        AddCommand(app, command);
    }
    if (!line.commands.empty()) app.require_subcommand(line.needsCommand ? 1 : 0, 1);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return {app.exit(error) == 0 ? Outcome::Answered : Outcome::NotUnderstood};
    }
    const std::vector<CLI::App*> given = app.get_subcommands();
    return {Outcome::Understood, given.empty() ? std::string() : given.front()->get_name()};
}

}  // namespace zentro
