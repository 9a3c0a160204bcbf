// What is asked in everyday words: a button that is pressed, and comparisons without their sign.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "config/encoding.h"
#include "config/text.h"
#include "hints/called_names.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::string_view kReading = "Reading";  // the variable that the hints propose

template <std::size_t Count>
bool IsOneOf(std::string_view word, const std::array<std::string_view, Count>& meant) {
    return std::ranges::any_of(meant,
                               [&](std::string_view one) { return EqualsIgnoreCase(one, word); });
}

/// What stands between the statement's words and THEN.
std::string_view ConditionOf(const HintQuestion& question) {
    std::string_view condition = TrimBlanks(TypedPart(question));
    const std::string_view then = question.compilation.GetCommandText(Token::Then);
    const std::size_t behind = condition.size() - std::min(condition.size(), then.size());
    if (EqualsIgnoreCase(condition.substr(behind), then)) condition = condition.substr(0, behind);
    return TrimBlanks(condition);
}

bool IsCondition(Token token) {
    return token == Token::If || token == Token::While || token == Token::Until;
}

struct AskedButton {
    std::string number;
    bool isDown = true;  ///< whether it is asked for its being pressed
};

/// BUTTON 1, BUTTON(1) IS PRESSED, BUTTON 2 NOT DOWN
std::optional<AskedButton> ButtonIn(const HintQuestion& question, std::string_view condition) {
    constexpr std::array<std::string_view, 5> kJoints{"IS", "=", "TO", "BE", "GETS"};
    constexpr std::array<std::string_view, 8> kDown{"PRESSED", "PUSHED", "DOWN", "ON",
                                                    "TRUE",    "HELD",   "1",    "255"};
    constexpr std::array<std::string_view, 6> kUp{"RELEASED", "UP", "OFF", "FALSE", "0", "NOT"};
    std::string plain(condition);
    std::ranges::replace_if(
        plain, [](char c) { return c == '(' || c == ')'; }, ' ');
    std::vector<std::string_view> words = PiecesOf(plain);
    if (!words.empty() && EqualsIgnoreCase(words[0], "THE")) words.erase(words.begin());
    if (words.size() < 2 || !ParseNumber(words[1]) ||
        !EqualsIgnoreCase(words[0], question.compilation.GetCommandText(Token::Button)))
        return std::nullopt;
    AskedButton asked{std::string(words[1])};
    for (std::size_t i = 2; i < words.size(); ++i) {
        if (IsOneOf(words[i], kUp)) {
            asked.isDown = false;
        } else if (!IsOneOf(words[i], kJoints) && !IsOneOf(words[i], kDown)) {
            return std::nullopt;
        }
    }
    return asked;
}

std::string ButtonLine(const HintQuestion& question, const AskedButton& asked) {
    const Compilation& compilation = question.compilation;
    return std::string(kReading) + " " + std::string(compilation.GetCommandText(Token::Equal)) +
           " " + std::string(compilation.GetCommandText(Token::Button)) + "(" + asked.number + ")";
}

/// "UNTIL Reading <> 0"; a button is not 0 while it is pressed.
std::string Comparison(const HintQuestion& question, Token statement, const AskedButton& asked) {
    const Compilation& compilation = question.compilation;
    const Token sign = asked.isDown ? Token::NotEqual : Token::Equal;
    std::string line(compilation.GetCommandText(statement));
    line.append(" ").append(kReading).append(" ").append(compilation.GetCommandText(sign));
    line += " 0";
    if (statement == Token::If) line.append(" ").append(compilation.GetCommandText(Token::Then));
    return line;
}

std::string Definition(const HintQuestion& question) {
    return std::string(question.compilation.GetCommandText(Token::DefineByte)) + " " +
           std::string(kReading) + " = 0";
}

/// IF BUTTON 1 IS PRESSED THEN. With parentheses and a sign it is another finder's.
std::optional<Hint> FindAskedButton(const HintQuestion& question) {
    const std::string_view condition = ConditionOf(question);
    const bool isCall = condition.find('(') != kNone;
    const bool hasWords = condition.find_first_of("=<>") == kNone;
    if (isCall && (!hasWords || condition.ends_with(')'))) return std::nullopt;
    const auto asked = ButtonIn(question, condition);
    if (!asked) return std::nullopt;
    const Token token = question.line.token;
    return MakeHint(
        question,
        token == Token::While ? MessageCode::ValueInVariableOfLoop : MessageCode::ValueInVariable,
        {Definition(question), ToUtf8(ButtonLine(question, *asked)),
         ToUtf8(Comparison(question, token, *asked))});
}

/// WAIT FOR BUTTON 1, WAIT UNTIL BUTTON(2) IS PRESSED
std::optional<Hint> FindWaitForButton(const HintQuestion& question) {
    constexpr std::array<std::string_view, 4> kUntil{"FOR", "UNTIL", "TILL", "ON"};
    std::string_view typed = TrimBlanks(TypedPart(question));
    const std::string_view first = typed.substr(0, typed.find(' '));
    const bool saysUntil = IsOneOf(first, kUntil);
    if (saysUntil) typed = TrimBlanks(typed.substr(first.size()));
    const auto asked = ButtonIn(question, typed);
    if (!asked) return std::nullopt;
    return MakeHint(question, MessageCode::WaitForButton,
                    {ToUtf8(ButtonLine(question, *asked)),
                     ToUtf8(Comparison(question, Token::Until, *asked)), Definition(question)});
}

bool IsVariableOf(const HintQuestion& question, std::string_view name, DataType type) {
    const Symbol* symbol = SymbolOf(question, name);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable &&
           symbol->type == type;
}

/// IF NOT Count THEN: zero is what a number is when it is not.
std::optional<Hint> FindNotNumber(const HintQuestion& question) {
    const std::vector<std::string_view> words = PiecesOf(ConditionOf(question));
    if (words.size() != 2 || !EqualsIgnoreCase(words[0], "NOT")) return std::nullopt;
    if (!IsVariableOf(question, words[1], DataType::Byte) &&
        !IsVariableOf(question, words[1], DataType::Word))
        return std::nullopt;
    return RewritePiece(question, ConditionOf(question),
                        std::string(words[1]) + " " +
                            std::string(question.compilation.GetCommandText(Token::Equal)) + " 0");
}

/// IF Count, 5 THEN
std::optional<Hint> FindCommaInComparison(const HintQuestion& question) {
    const std::string_view condition = ConditionOf(question);
    const std::size_t comma = condition.find(',');
    if (comma == kNone || condition.find_first_of("=<>\"(") != kNone) return std::nullopt;
    const std::string_view left = TrimBlanks(condition.substr(0, comma));
    const std::string_view right = TrimBlanks(condition.substr(comma + 1));
    if (SymbolOf(question, left) == nullptr || !IsKnownValue(question, right)) return std::nullopt;
    return RewritePiece(question, condition,
                        std::string(left) + " " +
                            std::string(question.compilation.GetCommandText(Token::Equal)) + " " +
                            std::string(right));
}

/// IF Light IS HIGH THEN: how high has to be said.
std::optional<Hint> FindHighOrLow(const HintQuestion& question) {
    constexpr std::array<std::string_view, 8> kHigh{"HIGH",   "BIG",   "LARGE", "BRIGHT",
                                                    "BIGGER", "LIGHT", "NEAR",  "MORE"};
    constexpr std::array<std::string_view, 7> kLow{"LOW",  "SMALL", "LITTLE", "DARK",
                                                   "LESS", "FAR",   "SMALLER"};
    const std::vector<std::string_view> words = PiecesOf(ConditionOf(question));
    if (words.size() < 2 || words.size() > 3) return std::nullopt;
    const bool isHigh = IsOneOf(words.back(), kHigh);
    const bool isNumber = IsVariableOf(question, words[0], DataType::Byte) ||
                          IsVariableOf(question, words[0], DataType::Word);
    const bool isLink = words.size() == 2 || EqualsIgnoreCase(words[1], "IS") ||
                        words[1] == question.compilation.GetCommandText(Token::Equal);
    if (!isNumber || !isLink || (!isHigh && !IsOneOf(words.back(), kLow))) return std::nullopt;
    if (SymbolOf(question, words.back()) != nullptr) return std::nullopt;
    const Token sign = isHigh ? Token::Greater : Token::Less;
    return MakeHint(question, MessageCode::HowMuch,
                    {ToUtf8(words.back()),
                     ToUtf8(std::string(words[0]) + " " +
                            std::string(question.compilation.GetCommandText(sign)) + " 100")});
}

}  // namespace

std::optional<Hint> FindConditionInWords(const HintQuestion& question) {
    if (SymbolOf(question, kReading) != nullptr) return std::nullopt;
    if (question.line.token == Token::Wait) return FindWaitForButton(question);
    if (!IsCondition(question.line.token)) return std::nullopt;
    for (const auto find : {FindAskedButton, FindNotNumber, FindCommaInComparison, FindHighOrLow}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
