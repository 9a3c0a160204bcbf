#include <algorithm>
#include <array>
#include <numeric>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/near_words.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

/// The value that the message is about, and where it stands in the list.
struct AskedValue {
    std::string_view typed;
    const StatementValue* slot = nullptr;
};

std::optional<AskedValue> ValueInQuestion(const HintQuestion& question) {
    const Statement* statement = StatementOfValues(question);
    if (statement == nullptr) return std::nullopt;
    const std::vector<std::string_view> values = TypedValues(question);
    const std::size_t count = std::min(values.size(), statement->Values().size());
    for (std::size_t i = 0; i < count; ++i) {
        const bool isAsked = question.code == MessageCode::ValueNotAllowed
                                 ? question.extra.starts_with(ToUtf8(values[i]) + " ")
                                 : EqualsIgnoreCase(values[i], question.extra);
        if (isAsked) return AskedValue{values[i], &statement->Values()[i]};
    }
    return std::nullopt;
}

bool IsListed(const StatementValue& slot, std::string_view value) {
    return std::ranges::find(slot.allowed, value) != slot.allowed.end();
}

/// JOYSTICK(1, X): a letter of the list without its quotes
std::optional<Hint> FindLetterOfList(const HintQuestion& question, const AskedValue& value) {
    constexpr std::size_t kLetter = 1;
    if (question.code != MessageCode::UnknownName || value.typed.size() != kLetter)
        return std::nullopt;
    const std::string letter(1, FoldCase(value.typed.front()));
    if (!IsListed(*value.slot, letter) || IsNumeric(letter)) return std::nullopt;
    return RewritePiece(question, value.typed, NameOfValue(question, letter));
}

/// FOWARDS and "forward" where FORWARD may stand: of few words a distant one is near.
std::optional<Hint> FindWordOfList(const HintQuestion& question, const AskedValue& value) {
    constexpr std::size_t kShortest = 3;
    constexpr std::size_t kForgiven = 3;
    const std::string_view typed = StripQuotes(value.typed);
    if (typed.size() < kShortest || value.slot->allowed.empty()) return std::nullopt;
    const Command* nearest = nullptr;
    std::size_t least = kForgiven + 1;
    bool isOnly = true;
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        const bool isMeant =
            entry.family == TokenFamily::Constant && IsListed(*value.slot, entry.description);
        if (!isMeant) continue;
        const bool begins = StartsWithIgnoreCase(entry.command, typed);
        const std::size_t most = std::min(kForgiven, typed.size() / 2);
        const auto distance =
            begins ? std::optional<std::size_t>(0) : SpellingDistance(typed, entry.command, most);
        if (!distance || *distance > least) continue;
        isOnly = *distance < least;
        least = *distance;
        nearest = &entry;
    }
    if (nearest == nullptr || !isOnly) return std::nullopt;
    return RewritePiece(question, value.typed, nearest->command);
}

/// ON is no number of a port, although it stands for 1.
bool FitsMoved(const HintQuestion& question, const StatementValue& slot, std::string_view typed) {
    const Command* entry = question.compilation.FindCommand(typed);
    const bool isWord = entry != nullptr && entry->family == TokenFamily::Constant;
    const bool isNumbered = !slot.allowed.empty() && IsNumeric(slot.allowed.front());
    return !(isWord && isNumbered) && Fits(question, slot, typed);
}

/// SET MOTOR 1, 60, FORWARD: the values stand in another order, in which all of them fit.
std::optional<Hint> FindOrder(const HintQuestion& question) {
    const Statement* statement = FindValueStatement(question.line.token);
    const std::vector<std::string_view> values = TypedValues(question);
    const Command* entry = question.compilation.configuration.commands.ByToken(question.line.token);
    const bool isAsked = question.code == MessageCode::ValueNotAllowed ||
                         question.code == MessageCode::TypeMismatch ||
                         question.code == MessageCode::ValueOutOfRange ||
                         question.code == MessageCode::ConstantNeeded;
    if (!isAsked || statement == nullptr || entry == nullptr ||
        statement->Values().size() != values.size())
        return std::nullopt;
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    const std::vector<std::size_t> typedOrder = order;
    std::string instead;
    bool isOnly = true;
    do {
        std::string list;
        bool doFit = true;
        for (std::size_t i = 0; i < order.size(); ++i) {
            doFit = doFit && FitsMoved(question, statement->Values()[i], values[order[i]]);
            list.append(list.empty() ? "" : ", ").append(values[order[i]]);
        }
        if (!doFit) continue;
        if (order == typedOrder) return std::nullopt;  // something else is wrong with them
        isOnly = instead.empty();
        instead = entry->command + " " + list;
    } while (isOnly && std::ranges::next_permutation(order).found);
    if (instead.empty() || !isOnly) return std::nullopt;
    Hint hint = RewriteStatement(question, instead);
    hint.text = MakeHint(question, MessageCode::OrderShown,
                         {ToUtf8(FormText(question, *entry)), ToUtf8(instead)})
                    .text;
    return hint;
}

/// SET MOTOR FORWARD, 60: the others fit only if it is this one that is missing.
std::optional<Hint> FindMissingValue(const HintQuestion& question) {
    const Statement* statement = FindValueStatement(question.line.token);
    const Command* entry = question.compilation.configuration.commands.ByToken(question.line.token);
    const std::vector<std::string_view> values = TypedValues(question);
    const bool isAsked = question.code == MessageCode::WrongArgumentCount && statement != nullptr &&
                         entry != nullptr && values.size() > 1 &&
                         statement->Values().size() == values.size() + 1;
    if (!isAsked) return std::nullopt;
    const auto slots = statement->Values();
    std::optional<std::size_t> missing;
    for (std::size_t left = 0; left < slots.size(); ++left) {
        bool doFit = true;
        for (std::size_t i = 0; i < values.size(); ++i)
            doFit = doFit && Fits(question, slots[i < left ? i : i + 1], values[i]);
        if (doFit && missing) return std::nullopt;
        if (doFit) missing = left;
    }
    if (!missing) return std::nullopt;
    return MakeHint(question, MessageCode::ValueMissing,
                    {ToUtf8(entry->command), ToUtf8(FormText(question, *entry)),
                     std::string(slots[*missing].name)});
}

/// DISPLAY Points, Lives: a statement of one value with two.
std::optional<Hint> FindValueForEach(const HintQuestion& question) {
    const Statement* statement = FindValueStatement(question.line.token);
    const std::vector<std::string_view> values = TypedValues(question);
    constexpr std::size_t kTwo = 2;
    const bool isAsked = question.code == MessageCode::WrongArgumentCount && statement != nullptr &&
                         statement->Values().size() == 1 && values.size() == kTwo;
    if (!isAsked || !std::ranges::all_of(values, [&](std::string_view value) {
            return Fits(question, statement->Values().front(), value);
        }))
        return std::nullopt;
    if (statement->Values().front().type == DataType::Table)
        return MakeHint(question, MessageCode::TakeOut, {ToUtf8(values[0]), ToUtf8(values[1])});
    const std::string words = ToUtf8(question.compilation.GetCommandText(question.line.token));
    const std::string first = words + " " + ToUtf8(values[0]);
    const std::string second = words + " " + ToUtf8(values[1]);
    // Without a pause nobody would see the first of them.
    if (question.line.token == Token::Display)
        return MakeHint(question, MessageCode::ShownOneByOne, {first, second});
    return MakeHint(question, MessageCode::ValueForEach, {words, first, second});
}

/// A value that may stand where the variable does: the first of a list, or the one that it begins
/// with.
std::string FirstValueFor(const HintQuestion& question, const StatementValue& slot,
                          const Symbol& variable) {
    if (!slot.allowed.empty()) return WrittenValue(question, slot.allowed.front());
    if (variable.declareLineNo == 0) return {};
    const std::string_view definition =
        StatementOf(question.compilation.GetSourceLine(variable.declareLineNo));
    const std::size_t equal = definition.find('=');
    const std::string_view value = equal == std::string_view::npos
                                       ? std::string_view()
                                       : TrimBlanks(definition.substr(equal + 1));
    return ParseNumber(value) ? std::string(value) : std::string();
}

/// SET MOTOR Number, FORWARD, 50
std::optional<Hint> FindFixedValue(const HintQuestion& question) {
    const auto value =
        question.code == MessageCode::ConstantNeeded ? ValueInQuestion(question) : std::nullopt;
    if (!value || value->slot->kind != StatementValue::Kind::Constant) return std::nullopt;
    const Symbol* symbol =
        question.compilation.symbols.FindSymbol(question.extra, question.line.parent);
    const bool isByte = symbol != nullptr && symbol->symbolClass == SymbolClass::Variable &&
                        symbol->type == DataType::Byte;
    const std::string first = isByte ? FirstValueFor(question, *value->slot, *symbol) : "";
    if (first.empty()) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    std::string line(statement);
    line.replace(static_cast<std::size_t>(value->typed.data() - statement.data()),
                 value->typed.size(), first);
    return MakeHint(question, MessageCode::LineForEachValue,
                    {std::string(value->slot->name), question.extra, ToUtf8(first), ToUtf8(line)});
}

}  // namespace

std::optional<Hint> FindOneLight(const HintQuestion& question) {
    const SplitText words =
        SplitFirstWord(question.compilation.GetCommandText(Token::SetLeds));  // SET LEDS
    std::vector<std::string_view> pieces = PiecesOf(StatementOf(question.line));
    if (!pieces.empty() && EqualsIgnoreCase(pieces.front(), words.first))
        pieces.erase(pieces.begin());
    constexpr std::size_t kPieces = 3;
    if (pieces.size() != kPieces || words.rest.empty()) return std::nullopt;
    const std::string_view one = words.rest.substr(0, words.rest.size() - 1);
    if (EqualsIgnoreCase(pieces[1], one)) std::swap(pieces[0], pieces[1]);  // LEFT LED ON
    const bool isLights =
        EqualsIgnoreCase(pieces[0], one) || EqualsIgnoreCase(pieces[0], words.rest);
    const std::string on(question.compilation.GetCommandText(Token::On));
    const std::string off(question.compilation.GetCommandText(Token::Off));
    if (!isLights || !EqualsIgnoreCase(pieces[2], on)) return std::nullopt;
    const bool isLeft = pieces[1] == "1" || EqualsIgnoreCase(pieces[1], "LEFT");
    const bool isRight = pieces[1] == "2" || EqualsIgnoreCase(pieces[1], "RIGHT");
    if (isLeft == isRight) return std::nullopt;
    std::string instead(question.compilation.GetCommandText(Token::SetLeds));
    instead.append(" ").append(isLeft ? on : off).append(", ").append(isLeft ? off : on);
    Hint hint = RewriteStatement(question, instead);
    hint.text = MakeHint(question, MessageCode::LightsTogether, {ToUtf8(instead)}).text;
    return hint;
}

std::optional<Hint> FindChoiceHint(const HintQuestion& question) {
    for (const auto find : {FindOrder, FindMissingValue, FindValueForEach, FindFixedValue}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    const bool isAboutValue =
        question.code == MessageCode::UnknownName || question.code == MessageCode::ValueNotAllowed;
    const auto value = isAboutValue ? ValueInQuestion(question) : std::nullopt;
    if (!value) return std::nullopt;
    if (std::optional<Hint> letter = FindLetterOfList(question, *value)) return letter;
    return FindWordOfList(question, *value);
}

}  // namespace zentro
