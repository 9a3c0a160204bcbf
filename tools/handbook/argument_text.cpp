#include "tools/handbook/argument_text.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "config/text.h"
#include "model/value_bounds.h"
#include "tools/handbook/html.h"

namespace zentro {

namespace {

using Kind = StatementValue::Kind;

/// "1, 2 or 3".
std::string JoinWithOr(const std::vector<std::string>& pieces) {
    std::string text;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) text += i + 1 == pieces.size() ? " or " : ", ";
        text += pieces[i];
    }
    return text;
}

/// The constant of the language with the value, or the value in quotes.
std::string LetterHtml(const CommandCatalogue& commands, std::string_view value) {
    const std::string quoted = CodeHtml("\"" + std::string(value) + "\"");
    for (const Command& entry : commands.Entries()) {
        if (entry.family == TokenFamily::Constant && entry.description == value)
            return CodeHtml(entry.command) + " (or " + quoted + ")";
    }
    return quoted;
}

/// Numbers that follow each other are written as "3 to 6".
std::string AllowedHtml(const CommandCatalogue& commands,
                        std::span<const std::string_view> allowed) {
    std::vector<std::string> pieces;
    for (std::size_t first = 0; first < allowed.size();) {
        std::size_t last = first;
        if (!IsNumeric(allowed[first])) {
            pieces.push_back(LetterHtml(commands, allowed[first]));
        } else {
            while (last + 1 < allowed.size() &&
                   *ParseNumber(allowed[last + 1]) == *ParseNumber(allowed[last]) + 1)
                ++last;
            pieces.emplace_back(allowed[first]);
            if (last > first)
                pieces.back().append(last > first + 1 ? " to " : " or ").append(allowed[last]);
        }
        first = last + 1;
    }
    return JoinWithOr(pieces);
}

std::string OperandText(DataType type) {
    switch (type) {
        case DataType::Any: return "a variable, a constant, a number or one character in quotes";
        case DataType::Byte:
            return "a byte: a variable, a constant, a number from 0 to 255 or one character";
        case DataType::Word:
            return "a word: a variable, a constant or a number from 0 to " +
                   std::to_string(kLargestWrittenNumber);
        case DataType::Flag: return "a flag";
        case DataType::Pointer: return "a pointer variable";
        case DataType::Table: return "the name of a table";
    }
    return {};
}

}  // namespace

std::string ArgumentHtml(const CommandCatalogue& commands, const StatementValue& argument) {
    if (!argument.allowed.empty()) {
        return AllowedHtml(commands, argument.allowed) +
               "; as it stands or as a constant, no variable";
    }
    switch (argument.kind) {
        case Kind::Operand: return OperandText(argument.type);
        case Kind::Constant: return "a number from 0 to 255 or a constant, no variable";
        case Kind::Variable: return "a variable that is no table";
        case Kind::EventHandler: return "the name of an event of your program";
    }
    return {};
}

std::string ResultText(DataType type) {
    switch (type) {
        case DataType::Any:
            return "a byte or a word, whichever the variable on the left of the = is";
        case DataType::Byte: return "a byte";
        case DataType::Word: return "a word";
        case DataType::Flag: return "a flag";
        case DataType::Pointer: return "a pointer";
        case DataType::Table: return "a table";
    }
    return {};
}

std::span<const StatementValue> ArgumentsOf(Token token) {
    const Statement* statement = FindStatement(token);
    return statement == nullptr ? std::span<const StatementValue>() : statement->Values();
}

}  // namespace zentro
