#include <algorithm>
#include <array>
#include <utility>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/called_names.h"
#include "hints/hint_text.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

/// The kind of variable that takes the result of what is called; none: of any kind or unknown.
Token DefinitionFor(const HintQuestion& question, std::string_view name) {
    const Command* entry = question.compilation.FindCommand(name);
    const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function;
    const Statement* function = isFunction ? FindFunction(entry->id) : nullptr;
    const Symbol* symbol = SymbolOf(question, name);
    DataType type = function != nullptr ? function->result : DataType::Any;
    if (symbol != nullptr && symbol->symbolClass == SymbolClass::Routine) {
        const std::string_view header = HeaderOf(question, *symbol).parsedLine;
        for (const auto& [kind, result] : {std::pair{Token::ParameterByte, DataType::Byte},
                                           std::pair{Token::ParameterWord, DataType::Word}}) {
            if (header.ends_with(question.compilation.GetCommandText(kind))) type = result;
        }
    }
    switch (type) {
        case DataType::Byte: return Token::DefineByte;
        case DataType::Word: return Token::DefineWord;
        default: return Token::None;
    }
}

/// The innermost call of the line, as in IF ANALOG(1) > 50 THEN.
std::string_view InnermostCall(const HintQuestion& question, std::string_view statement) {
    const std::size_t open = statement.rfind('(');
    const std::size_t close = open == kNone ? kNone : FindClosingParenthesis(statement, open);
    if (close == kNone || statement.find('"') != kNone) return {};
    const std::string_view before = TrimBlanks(statement.substr(0, open));
    const std::size_t begin = before.find_last_of(" ,(=<>+-*/") + 1;
    if (DefinitionFor(question, before.substr(begin)) == Token::None) return {};
    return statement.substr(begin, close + 1 - begin);
}

/// A comparison with another language's sign, as it is written here.
std::string WithOwnSign(const HintQuestion& question, std::string_view comparison) {
    const std::string_view text = TrimBlanks(comparison);
    const OtherLanguageRow* row = RowOfSign(question.otherLanguages, text);
    if (row == nullptr || row->replacement.empty()) return std::string(comparison);
    std::string own = PlainText(question.compilation.configuration.commands, row->replacement);
    return ' ' + own.append(text.substr(row->word.size()));
}

/// A button is not 0 while it is pressed, so what is asked is whether it differs from 0.
std::string ComparedButton(const HintQuestion& question, std::string comparison) {
    const auto isPressed = [](std::string_view value) {
        constexpr std::array<std::string_view, 7> kPressed{"1",       "255",  "ON",  "TRUE",
                                                           "PRESSED", "DOWN", "HIGH"};
        return std::ranges::any_of(
            kPressed, [&](std::string_view word) { return EqualsIgnoreCase(word, value); });
    };
    const Compilation& compilation = question.compilation;
    const std::string_view alone = SplitFirstWord(TrimBlanks(comparison)).first;
    if (isPressed(alone))
        return " " + std::string(compilation.GetCommandText(Token::NotEqual)) + " 0" +
               comparison.substr(comparison.find(alone) + alone.size());
    const std::size_t sign = comparison.find_first_not_of(' ');
    const std::size_t value = comparison.find_first_not_of("=<> ", sign);
    if (sign == kNone || value == kNone) return comparison;
    const std::string_view text = comparison;
    const std::string_view typed = TrimBlanks(text.substr(sign, value - sign));
    const std::size_t end = std::min(text.find(' ', value), text.size());
    const bool isEqual = typed == compilation.GetCommandText(Token::Equal) ||
                         typed == compilation.GetCommandText(Token::GreaterOrEqual);
    if (!isEqual || !isPressed(text.substr(value, end - value))) return comparison;
    return comparison.replace(sign, end - sign,
                              std::string(compilation.GetCommandText(Token::NotEqual)) + " 0");
}

}  // namespace

/// IF ANALOG(1) > 50 THEN, DISPLAY ANALOG(1)
std::optional<Hint> FindCallInside(const HintQuestion& question) {
    constexpr std::string_view kName = "Reading";
    const bool isAsked = question.code == MessageCode::CallInsideStatement ||
                         question.code == MessageCode::NotACondition;
    const Token token = question.line.token;
    const bool isCondition = token == Token::If || token == Token::While || token == Token::Until;
    const bool isCompared = question.code == MessageCode::TypeMismatch && isCondition;
    if ((!isAsked && !isCompared) || SymbolOf(question, kName) != nullptr) return std::nullopt;
    const Compilation& compilation = question.compilation;
    const std::string_view statement = StatementOf(question.line);
    const std::string_view call = InnermostCall(question, statement);
    if (call.empty()) return std::nullopt;
    const auto begin = static_cast<std::size_t>(call.data() - statement.data());
    const std::string_view behind = TrimBlanks(statement.substr(begin + call.size()));
    std::string here = std::string(statement.substr(0, begin)) + std::string(kName);
    const bool isAlone =
        behind.empty() || EqualsIgnoreCase(behind, compilation.GetCommandText(Token::Then));
    const bool isSecondSide = statement.substr(0, begin).find_first_of("=<>") != kNone;
    if (isCondition && isAlone && !isSecondSide)
        here.append(" ").append(compilation.GetCommandText(Token::NotEqual)).append(" 0");
    const std::string_view name = TrimBlanks(call.substr(0, call.find('(')));
    const Command* entry = compilation.FindCommand(name);
    const bool isButton = isCondition && entry != nullptr && entry->id == Token::Button;
    std::string rest(statement.substr(begin + call.size()));
    if (isCondition) rest = WithOwnSign(question, rest);
    here += isButton ? ComparedButton(question, std::move(rest)) : rest;
    std::string definition(compilation.GetCommandText(DefinitionFor(question, name)));
    definition.append(" ").append(kName).append(" = 0");
    const std::string above = std::string(kName) + " = " + std::string(call);
    return MakeHint(
        question,
        token == Token::While ? MessageCode::ValueInVariableOfLoop : MessageCode::ValueInVariable,
        {ToUtf8(definition), ToUtf8(above), ToUtf8(here)});
}

}  // namespace zentro
