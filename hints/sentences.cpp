#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

/// ADD 5 TO Speed: what other languages say with a verb and a joint is a line with a sign here.
struct Sentence {
    std::string_view verb;
    std::string_view joint;
    Token sign;  ///< Equal: the variable gets the value itself
    bool variableIsFirst;
};

constexpr std::array kSentences{
    Sentence{"ADD", "TO", Token::Plus, false},
    Sentence{"SUBTRACT", "FROM", Token::Minus, false},
    Sentence{"TAKE", "FROM", Token::Minus, false},
    Sentence{"CHANGE", "BY", Token::Plus, true},
    Sentence{"INCREASE", "BY", Token::Plus, true},
    Sentence{"DECREASE", "BY", Token::Minus, true},
    Sentence{"INCREMENT", "BY", Token::Plus, true},
    Sentence{"DECREMENT", "BY", Token::Minus, true},
    Sentence{"INCREMENT", ",", Token::Plus, true},
    Sentence{"DECREMENT", ",", Token::Minus, true},
    Sentence{"DIVIDE", "BY", Token::Divide, true},
    Sentence{"SET", "TO", Token::Equal, true},
    Sentence{"SET", "=", Token::Equal, true},
    Sentence{"LET", "BE", Token::Equal, true},
    Sentence{"LET", "=", Token::Equal, true},
    Sentence{"MAKE", "=", Token::Equal, true},
    Sentence{"PUT", "IN", Token::Equal, false},
    Sentence{"PUT", "INTO", Token::Equal, false},
    Sentence{"STORE", "IN", Token::Equal, false},
};

bool MayBeSentence(MessageCode code) {
    switch (code) {
        case MessageCode::UnknownStatement:
        case MessageCode::EqualSignExpected:
        case MessageCode::NotUnderstood:
        case MessageCode::UnknownName:
        case MessageCode::UnknownOperator:
        case MessageCode::UnexpectedText:
        case MessageCode::WrongArgumentCount: return true;
        default: return false;
    }
}

bool IsVariable(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable;
}

bool IsSign(char c) {
    return c == '=' || c == ',';
}

/// The four words of the line, of which a = or a comma is one; nothing when there are more or
/// fewer.
std::optional<std::array<std::string_view, 4>> FourWords(std::string_view text) {
    std::array<std::string_view, 4> words;
    std::size_t count = 0;
    while (!(text = TrimBlanks(text)).empty()) {
        if (count == words.size()) return std::nullopt;
        const std::size_t end =
            IsSign(text.front()) ? 1 : std::min(text.find_first_of(" \t=,"), text.size());
        words.at(count++) = text.substr(0, end);
        text.remove_prefix(end);
    }
    return count == words.size() ? std::optional(words) : std::nullopt;
}

/// TURN ON LEDS, SWITCH PORT 1 OFF
std::optional<Hint> FindSwitch(const HintQuestion& question) {
    std::vector<std::string_view> words = PiecesOf(StatementOf(question.line));
    const auto is = [](std::string_view word, std::initializer_list<std::string_view> meant) {
        return std::ranges::any_of(
            meant, [&](std::string_view one) { return EqualsIgnoreCase(one, word); });
    };
    if (words.size() < 3 || !is(words.front(), {"TURN", "SWITCH"})) return std::nullopt;
    const std::size_t state = is(words[1], {"ON", "OFF"}) ? 1 : words.size() - 1;
    if (!is(words[state], {"ON", "OFF"})) return std::nullopt;
    const Token token = is(words[state], {"ON"}) ? Token::On : Token::Off;
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(state));
    if (words.size() > 2 && is(words[1], {"THE", "BOTH", "ALL"})) words.erase(words.begin() + 1);
    const std::string on(question.compilation.GetCommandText(token));
    const auto statement = [&](Token set, const std::string& values) {
        return RewriteStatement(question,
                                std::string(question.compilation.GetCommandText(set)) + values);
    };
    if (words.size() == 2 && is(words[1], {"LEDS", "LIGHTS", "LAMPS"}))
        return statement(Token::SetLeds, " " + on + ", " + on);
    if (words.size() == 2 && is(words[1], {"MOTORS"}) && token == Token::Off)
        return statement(Token::StopMotors, "");
    if (words.size() == 3 && is(words[1], {"PORT"}) && ParseNumber(words[2]))
        return statement(Token::SetPort, " " + std::string(words[2]) + ", " + on);
    return std::nullopt;
}

}  // namespace

std::optional<Hint> FindSentence(const HintQuestion& question) {
    if (!MayBeSentence(question.code)) return std::nullopt;
    if (std::optional<Hint> hint = FindSwitch(question)) return hint;
    const auto words = FourWords(StatementOf(question.line));
    if (!words) return std::nullopt;
    for (const Sentence& sentence : kSentences) {
        const std::string_view variable = words->at(sentence.variableIsFirst ? 1 : 3);
        const std::string_view value = words->at(sentence.variableIsFirst ? 3 : 1);
        const bool isMeant = EqualsIgnoreCase(words->at(0), sentence.verb) &&
                             EqualsIgnoreCase(words->at(2), sentence.joint) &&
                             IsVariable(question, variable) && IsKnownValue(question, value);
        if (!isMeant) continue;
        const auto text = [&](Token token) {
            return " " + std::string(question.compilation.GetCommandText(token)) + " ";
        };
        std::string instead = std::string(variable) + text(Token::Equal);
        if (sentence.sign != Token::Equal) instead.append(variable).append(text(sentence.sign));
        return RewriteStatement(question, instead.append(value));
    }
    return std::nullopt;
}

}  // namespace zentro
