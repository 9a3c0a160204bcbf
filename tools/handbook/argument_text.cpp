#include "tools/handbook/argument_text.h"

#include <string_view>

#include "config/text.h"
#include "model/statement_text.h"
#include "model/value_bounds.h"
#include "tools/handbook/html.h"

namespace zentro {

namespace {

using Kind = StatementValue::Kind;

/// The constant of the language with the value, or the value in quotes.
std::string LetterHtml(const CommandCatalogue& commands, std::string_view value) {
    const std::string quoted = CodeHtml("\"" + std::string(value) + "\"");
    for (const Command& entry : commands.Entries()) {
        if (entry.family == TokenFamily::Constant && entry.description == value)
            return CodeHtml(entry.command) + " (or " + quoted + ")";
    }
    return quoted;
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
        const auto letterHtml = [&](std::string_view letter) {
            return LetterHtml(commands, letter);
        };
        return AllowedText(argument.allowed, letterHtml) +
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
