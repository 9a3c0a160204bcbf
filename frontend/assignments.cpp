#include <optional>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

bool IsArithmetic(Token token) {
    switch (token) {
        case Token::Plus:
        case Token::Divide:
        case Token::Minus:
        case Token::Multiply:
        case Token::Mod:
        case Token::And:
        case Token::Or: return true;
        default: return false;
    }
}

bool IsLogic(Token token) {
    return token == Token::And || token == Token::Or;
}

void PostResultMismatch(Compilation& compilation, SourceLine& line, DataType target,
                        DataType result) {
    compilation.diagnostics.PostRangeError(line, {SymbolClass::Variable, target}, "Sum Variable",
                                           {SymbolClass::Variable, result});
}

/// Posts when the operation cannot give what the target holds.
bool ResultSuits(Compilation& compilation, SourceLine& line, DataType target) {
    if (target == DataType::Any) return true;
    if (line.token == Token::Multiply && !IsWordSized(target)) {
        PostResultMismatch(compilation, line, target, DataType::Word);
        return false;
    }
    if (target == DataType::Flag && !IsLogic(line.token)) {
        PostResultMismatch(compilation, line, target, DataType::Byte);
        return false;
    }
    if (IsLogic(line.token) && IsWordSized(target)) {
        compilation.diagnostics.PostError(MessageCode::LogicOnOneByte, &line);
    }
    return true;
}

bool IsZero(const LineElement& element) {
    return element.IsConstant() && NumberOf(element.constant->value) == 0;
}

/// first operator second
void ParseOperation(Compilation& compilation, SourceLine& line, std::string_view first,
                    std::string_view second, DataType target) {
    if (!ResultSuits(compilation, line, target)) return;
    Expectation expected{target, DataType::Any, true, false, {}};
    if (line.token == Token::Multiply) expected.type = DataType::Byte;
    AddOperand(compilation, first, line, expected);
    const LineElement* divisor = AddOperand(compilation, second, line, expected);
    const bool divides = line.token == Token::Divide || line.token == Token::Mod;
    if (divides && divisor != nullptr && IsZero(*divisor)) {
        compilation.diagnostics.PostError(MessageCode::DivisionByZero, &line);
    }
}

void ParseSingleOperand(Compilation& compilation, SourceLine& line, std::string_view text,
                        DataType target) {
    if (target == DataType::Pointer) {
        compilation.diagnostics.PostError(MessageCode::PointerAssigned, &line);
        return;
    }
    line.token = Token::Equal;
    AddOperand(compilation, text, line, {target});
}

/// The value side of an assignment: one operand, or two with an operator between them.
void ParseExpression(Compilation& compilation, SourceLine& line, std::string_view text,
                     DataType target) {
    if (RefuseCall(compilation, text, line)) return;
    const SplitText first = SplitFirstWord(text, true);
    if (first.rest.empty()) return ParseSingleOperand(compilation, line, first.first, target);
    const SplitText operatorWord = SplitFirstWord(first.rest);
    const SplitText second = SplitFirstWord(operatorWord.rest, true);
    if (operatorWord.first.empty() || !second.rest.empty()) {
        compilation.diagnostics.PostError(MessageCode::WrongArgumentCount, &line);
        return;
    }
    const Token token = compilation.configuration.commands.FindCommandToken(operatorWord.first);
    if (!IsArithmetic(token)) {
        compilation.diagnostics.PostError(MessageCode::UnknownOperator, &line,
                                          Shorten(operatorWord.first));
        return;
    }
    line.token = token;
    ParseOperation(compilation, line, first.first, second.first, target);
}

}  // namespace

void ParseAssignment(Compilation& compilation, SourceLine& line) {
    const SplitText target = SplitFirstWord(line.parsedLine);
    const LineElement* element = AddTarget(compilation, target.first, line);
    const DataType type = element == nullptr ? DataType::Any : element->type;
    const SplitText value = SplitFirstWord(target.rest);
    if (!EqualsIgnoreCase(value.first, compilation.GetCommandText(Token::Equal))) {
        compilation.diagnostics.PostError(MessageCode::EqualSignExpected, &line);
        return;
    }
    if (!HasCallParenthesis(value.rest)) {
        line.purpose = Purpose::Assignment;
        return ParseExpression(compilation, line, value.rest, type);
    }
    line.purpose = Purpose::FunctionAssignment;
    const auto rest = ParseCall(compilation, line, value.rest, CallRole::Assignment);
    if (rest && !rest->empty()) {
        compilation.diagnostics.PostError(MessageCode::UnexpectedText, &line);
    }
}

}  // namespace zentro
