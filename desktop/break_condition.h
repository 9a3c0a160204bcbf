#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "board/board.h"
#include "config/command_catalogue.h"
#include "model/compilation.h"

namespace zentro {

/// "Count > 10", the comparison that a breakpoint waits for, in the language's own words. An
/// operand is a variable, a constant or a value. Texts are UTF-8.
struct BreakCondition {
    std::string first;
    Token comparison = Token::None;
    std::string second;
};

/// A condition, or a sentence for the user that tells what is wrong with it.
struct ReadCondition {
    std::optional<BreakCondition> condition;
    QString problem;
};

ReadCondition ReadBreakCondition(const QString& text, const CommandCatalogue& commands);

/// The names in the condition, which a program has to declare.
std::vector<std::string> NamesIn(const BreakCondition& condition, const CommandCatalogue& commands);

/// A condition that can be asked of a board with the program, or what is wrong with it there.
struct BoundCondition {
    std::function<bool(const Board&)> holds;
    QString problem;
};

/// `scope` is the routine of the line that the condition belongs to. What is returned does not need
/// the compilation.
BoundCondition BindCondition(const BreakCondition& condition, const Compilation& compilation,
                             ParentId scope);

}  // namespace zentro
