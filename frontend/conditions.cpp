#include <algorithm>
#include <optional>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

using Kind = OperandSketch::Kind;

bool IsComparison(Token token) {
    switch (token) {
        case Token::Equal:
        case Token::LessOrEqual:
        case Token::GreaterOrEqual:
        case Token::Less:
        case Token::Greater:
        case Token::NotEqual:
        case Token::EqualOrGreater:
        case Token::EqualOrLess:
        case Token::GreaterOrLess: return true;
        default: return false;
    }
}

/// A comparison cut into its words.
struct ComparisonText {
    std::string_view first;
    std::string_view word;
    std::string_view second;
    std::string_view rest;
};

ComparisonText SplitComparison(std::string_view text) {
    const SplitText first = SplitFirstWord(text);
    const SplitText word = SplitFirstWord(first.rest);
    const SplitText second = SplitFirstWord(word.rest, true);
    return {first.first, word.first, second.first, second.rest};
}

bool IsComplete(const Compilation& compilation, const ComparisonText& text) {
    return !text.first.empty() && !text.word.empty() && !text.second.empty() &&
           !EqualsIgnoreCase(text.second, compilation.GetCommandText(Token::Then));
}

void ParseComparison(Compilation& compilation, SourceLine& line, std::string_view word) {
    const Token token = compilation.configuration.commands.FindCommandToken(word);
    if (!IsComparison(token)) {
        compilation.diagnostics.PostError(MessageCode::UnknownComparison, &line, Shorten(word));
        return;
    }
    LineElement element;
    element.elementClass = ElementClass::Comparison;
    element.comparison = token;
    compilation.AddElement(line, element);
}

/// The type as which a constant is compared with an operand of the type.
DataType ComparedAs(DataType type) {
    switch (type) {
        case DataType::Pointer: return DataType::Word;
        case DataType::Table: return DataType::Any;
        case DataType::Any:
        case DataType::Byte:
        case DataType::Word:
        case DataType::Flag: return type;
    }
    return type;
}

/// What a comparison expects of its first operand. If that is a constant, the second one decides
/// what it is read as; of two constants the larger one does.
Expectation ExpectedFirst(const Compilation& compilation, const SourceLine& line,
                          const ComparisonText& text) {
    if (compilation.symbols.FindSymbol(text.first, line.parent) != nullptr) return {};
    const OperandSketch second = SketchOperand(compilation, text.second, line);
    if (second.kind == Kind::Unknown) return {};
    Expectation expected;
    expected.constantType = ComparedAs(second.type);
    if (second.kind == Kind::Constant) {
        const OperandSketch first = SketchOperand(compilation, text.first, line);
        const bool bothFit = first.type == DataType::Byte && second.type == DataType::Byte;
        expected.constantType = bothFit ? DataType::Byte : DataType::Word;
    }
    return expected;
}

/// What it then expects of the second: a constant is read as the first operand's type.
Expectation ExpectedSecond(const std::optional<LineElement>& first) {
    Expectation expected;
    if (first) expected.constantType = ComparedAs(first->type);
    return expected;
}

/// Two variables of different sizes can be compared, but only the first one's size counts. A flag
/// cannot be compared with a word.
void CheckVariables(Compilation& compilation, SourceLine& line, const LineElement& first,
                    const LineElement& second) {
    if (first.IsConstant() || second.IsConstant()) return;
    if (IsByteSized(first.type) == IsByteSized(second.type)) return;
    if (first.type == DataType::Flag || second.type == DataType::Flag) {
        compilation.diagnostics.PostRangeError(line, {SymbolClass::Variable, first.type},
                                               second.Name(), {SymbolClass::Variable, second.type});
        return;
    }
    compilation.diagnostics.PostError(MessageCode::ByteComparedWithWord, &line);
}

/// first comparison second
void AddComparison(Compilation& compilation, SourceLine& line, const ComparisonText& text) {
    if (RefuseCall(compilation, text.second, line)) return;
    const auto first =
        ParseOperand(compilation, text.first, line, ExpectedFirst(compilation, line, text));
    if (first) compilation.AddElement(line, *first);
    ParseComparison(compilation, line, text.word);
    const auto second = ParseOperand(compilation, text.second, line, ExpectedSecond(first));
    if (second) compilation.AddElement(line, *second);
    if (first && second) CheckVariables(compilation, line, *first, *second);
}

/// The call of a condition, whose result goes to a scratch variable. Returns what follows it.
std::optional<std::string_view> ParseConditionCall(Compilation& compilation, SourceLine& line,
                                                   std::string_view text) {
    LineElement target;
    target.type = DataType::Flag;
    target.use = ElementUse::Written;
    target.location = &compilation.symbols.ScratchOne();
    compilation.AddElement(line, target);
    return ParseCall(compilation, line, text, CallRole::Condition);
}

bool IsCall(std::string_view text) {
    return FindOutsideQuotes(text, ')') != std::string_view::npos;
}

/// What may follow the call of a loop's condition: "= TRUE" or "= FALSE". Nothing when neither
/// does; else whether FALSE is wanted.
std::optional<bool> ParseExpectedFlag(const Compilation& compilation, std::string_view rest) {
    const SplitText split = SplitFirstWord(rest);
    if (!EqualsIgnoreCase(split.first, compilation.GetCommandText(Token::Equal)))
        return std::nullopt;
    if (EqualsIgnoreCase(split.rest, compilation.GetCommandText(Token::True))) return false;
    if (EqualsIgnoreCase(split.rest, compilation.GetCommandText(Token::False))) return true;
    return std::nullopt;
}

void ParseLoopCall(Compilation& compilation, SourceLine& line, std::string_view text) {
    const auto rest = ParseConditionCall(compilation, line, text);
    if (!rest || rest->empty()) return;
    const std::optional<bool> expectsFalse = ParseExpectedFlag(compilation, *rest);
    if (!expectsFalse) {
        compilation.diagnostics.PostError(MessageCode::UnknownOperator, &line);
        return;
    }
    for (LineElement& element : compilation.ElementsOf(line)) {
        if (element.elementClass == ElementClass::Comparison) element.expectsFalse = *expectsFalse;
    }
}

}  // namespace

void ParseIfCondition(Compilation& compilation, SourceLine& line, std::string_view text) {
    Diagnostics& diagnostics = compilation.diagnostics;
    const std::string_view then = compilation.GetCommandText(Token::Then);
    if (IsCall(text)) {
        const auto rest = ParseConditionCall(compilation, line, text);
        if (rest && !EqualsIgnoreCase(*rest, then)) {
            diagnostics.PostError(MessageCode::ThenExpected, &line);
        }
        return;
    }
    const ComparisonText comparison = SplitComparison(text);
    if (!IsComplete(compilation, comparison)) {
        diagnostics.PostError(MessageCode::ConditionIncomplete, &line);
    } else if (!EqualsIgnoreCase(comparison.rest, then)) {
        diagnostics.PostError(MessageCode::ThenExpected, &line);
    } else {
        AddComparison(compilation, line, comparison);
    }
}

void ParseLoopCondition(Compilation& compilation, SourceLine& line, std::string_view text) {
    constexpr std::size_t kShortestCondition = 4;
    Diagnostics& diagnostics = compilation.diagnostics;
    if (text.size() < kShortestCondition) {
        diagnostics.PostError(MessageCode::UnexpectedText, &line);
        return;
    }
    if (IsCall(text)) return ParseLoopCall(compilation, line, text);
    const ComparisonText comparison = SplitComparison(text);
    if (!IsComplete(compilation, comparison)) {
        diagnostics.PostError(MessageCode::ConditionIncomplete, &line);
    } else if (!comparison.rest.empty()) {
        diagnostics.PostError(MessageCode::UnexpectedText, &line);
    } else {
        AddComparison(compilation, line, comparison);
    }
}

}  // namespace zentro
