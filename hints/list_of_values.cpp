#include <algorithm>
#include <array>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

bool IsSeparator(std::string_view word) {
    constexpr std::array<std::string_view, 7> kSeparators{"AND",  "TO", "FOR", "AT",
                                                          "WITH", "=",  ":"};
    return std::ranges::any_of(kSeparators,
                               [&](std::string_view one) { return EqualsIgnoreCase(one, word); });
}

/// The words and texts between commas, blanks and the signs that separate values elsewhere.
std::vector<std::string_view> ValuesOf(std::string_view text) {
    std::vector<std::string_view> values;
    for (const std::string_view piece : PiecesOf(text)) {
        if (!IsSeparator(piece)) values.push_back(piece);
    }
    return values;
}

/// PLAY SOUND 60; 50: what stands behind the ; is a comment, but looks like a value.
std::optional<Hint> FindCommentAsValue(const HintQuestion& question) {
    const std::string_view line = question.line.text;
    const std::size_t at = FindComment(line);
    const bool isAsked = question.code == MessageCode::WrongArgumentCount ||
                         question.code == MessageCode::ParenthesisNotClosed;
    if (!isAsked || at >= line.size() || TrimBlanks(line.substr(0, at)).empty())
        return std::nullopt;
    std::string_view value = TrimBlanks(line.substr(at + 1));
    value = TrimBlanks(value.substr(0, value.find_first_of(");,")));
    if (value.empty() || !IsKnownValue(question, value)) return std::nullopt;
    return RewritePiece(question, line.substr(at, 1), ",");
}

/// SET LEDS ON AND OFF, SET PORT 1 = ON, PLAY SOUND 60 FOR 50, DISPLAY "Speed", Speed
std::optional<Hint> FindSeparators(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::WrongArgumentCount ||
                         question.code == MessageCode::UnknownName ||
                         question.code == MessageCode::ValueOutOfRange;
    const Statement* expected = FindValueStatement(question.line.token);
    const std::string_view typed = TypedPart(question);
    if (!isAsked || expected == nullptr || typed.empty() || typed.find('(') != kNone)
        return std::nullopt;
    std::vector<std::string_view> values = ValuesOf(typed);
    // There is no place for a text beside the numbers that are shown.
    if (values.size() == expected->Values().size() + 1)
        std::erase_if(values,
                      [](std::string_view value) { return IsQuoted(value) && value.size() > 4; });
    const bool areAll =
        values.size() == expected->Values().size() &&
        std::ranges::equal(
            values, expected->Values(), [&](std::string_view value, const auto& slot) {
                return IsKnownValue(question, value) &&
                       (slot.kind != StatementValue::Kind::Constant || Fits(question, slot, value));
            });
    if (!areAll) return std::nullopt;
    std::string list;
    for (const std::string_view value : values)
        list.append(list.empty() ? "" : ", ").append(value);
    if (EqualsIgnoreCase(list, typed)) return std::nullopt;
    return RewritePiece(question, typed, list);
}

/// SET MOTOR 1 AND 2, FORWARD, 60
std::optional<Hint> FindTwoOutputs(const HintQuestion& question) {
    const Statement* expected = FindValueStatement(question.line.token);
    const std::vector<std::string_view> values = TypedValues(question);
    if (expected == nullptr || expected->Values().size() != values.size() || values.size() < 2)
        return std::nullopt;
    const StatementValue& slot = expected->Values().front();
    const std::vector<std::string_view> pieces = PiecesOf(values.front());
    constexpr std::array<std::string_view, 3> kJoints{"AND", "&", "+"};
    const bool areTwo = pieces.size() == 3 && slot.kind == StatementValue::Kind::Constant &&
                        Fits(question, slot, pieces[0]) && Fits(question, slot, pieces[2]) &&
                        std::ranges::any_of(kJoints, [&](std::string_view joint) {
                            return EqualsIgnoreCase(joint, pieces[1]);
                        });
    if (!areTwo) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    const std::size_t begin =
        PlaceInLine(question.line, values.front()) - PlaceInLine(question.line, statement);
    const auto line = [&](std::string_view number) {
        std::string text(statement);
        return ToUtf8(text.replace(begin, values.front().size(), number));
    };
    return MakeHint(question, MessageCode::OneOutputALine,
                    {std::string(slot.name), line(pieces[0]), line(pieces[2])});
}

/// DISPLAY = Light
std::optional<Hint> FindSignBeforeValue(const HintQuestion& question) {
    const std::string_view typed = TypedPart(question);
    const bool isSign = typed.starts_with('=') || typed.starts_with(':');
    if (FindValueStatement(question.line.token) == nullptr || !isSign) return std::nullopt;
    return RewritePiece(question, typed, std::string(TrimBlanks(typed.substr(1))));
}

/// SELECT Light = 1
std::optional<Hint> FindComparedChoice(const HintQuestion& question) {
    const std::string_view typed = TypedPart(question);
    const std::size_t sign = typed.find_first_of("=<>");
    if (question.line.token != Token::Select || sign == kNone || sign == 0) return std::nullopt;
    return MakeHint(question, MessageCode::TakeOut,
                    {ToUtf8(TrimBlanks(typed.substr(0, sign))), ToUtf8(typed.substr(sign))});
}

std::string ListFrom(std::int32_t first, std::int32_t last) {
    std::string list = std::to_string(first);
    for (std::int32_t value = first + 1; value <= last; ++value)
        list += ", " + std::to_string(value);
    return list;
}

/// CASE 1:, CASE 2 TO 4, CASE > 5, CASE IS 5
std::optional<Hint> FindCaseValues(const HintQuestion& question) {
    constexpr std::int32_t kMostListed = 8;
    if (question.line.token != Token::Case) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    if (statement.ends_with(':'))
        return RewriteStatement(question,
                                std::string(TrimBlanks(statement.substr(0, statement.size() - 1))));
    const std::string_view typed = TypedPart(question);
    const std::vector<std::string_view> pieces = PiecesOf(typed);
    constexpr std::array<std::string_view, 5> kRanges{"TO", "-", "..", "...", "UNTIL"};
    const bool isRange = pieces.size() == 3 && std::ranges::any_of(kRanges, [&](auto word) {
                             return EqualsIgnoreCase(word, pieces[1]);
                         });
    const auto first = isRange ? ParseNumber(pieces[0]) : std::nullopt;
    const auto last = isRange ? ParseNumber(pieces[2]) : std::nullopt;
    if (first && last && *first < *last && *last - *first < kMostListed)
        return RewritePiece(question, typed, ListFrom(*first, *last));
    if (isRange || typed.find_first_of("<>") != kNone)
        return MakeHint(question, MessageCode::CaseListsValues, {});
    return std::nullopt;
}

}  // namespace

std::optional<Hint> FindListOfValues(const HintQuestion& question) {
    if (std::optional<Hint> values = FindCaseValues(question)) return values;
    for (const auto find :
         {FindCommentAsValue, FindSignBeforeValue, FindComparedChoice, FindTwoOutputs}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return FindSeparators(question);
}

}  // namespace zentro
