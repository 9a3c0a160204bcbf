#include <algorithm>
#include <array>
#include <cctype>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr std::int32_t kLargestByte = 255;
constexpr std::int32_t kLargestWritten = 32767;

bool IsWordCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_';
}

/// A piece of the line by its place; empty: there is none.
using Place = PlacedWord;

/// Digits with the sign between them: 0.5, and .5 too.
Place FindFraction(std::string_view text, char point) {
    for (std::size_t at = text.find(point); at != std::string_view::npos;
         at = text.find(point, at + 1)) {
        std::size_t begin = at;
        std::size_t end = at + 1;
        while (begin > 0 && IsDigit(text[begin - 1]))
            --begin;
        while (end < text.size() && IsDigit(text[end]))
            ++end;
        const bool isPartOfWord = (begin > 0 && IsWordCharacter(text[begin - 1])) ||
                                  (end < text.size() && IsWordCharacter(text[end]));
        const bool hasDigits = end > at + 1 && (begin < at || point == '.');
        if (hasDigits && !isPartOfWord) return {begin, end - begin};
    }
    return {};
}

/// 1,5 where a statement takes one value, so that there is one too many.
Place FindCommaFraction(const HintQuestion& question, std::string_view text) {
    const Statement* expected = FindValueStatement(question.line.token);
    if (question.code != MessageCode::WrongArgumentCount || expected == nullptr) return {};
    const std::size_t values = SplitCommaList(text).size();
    if (values != expected->Values().size() + 1) return {};
    const Place first = FindFraction(text, ',');
    const bool isOnly = first.length > 0 && FindFraction(text.substr(first.End()), ',').length == 0;
    return isOnly ? first : Place{};
}

std::optional<Hint> FindFractionHint(const HintQuestion& question, std::string_view text) {
    Place place = FindFraction(text, '.');
    if (place.length == 0) place = FindCommaFraction(question, text);
    const bool isShown = question.code == MessageCode::UnknownName &&
                         question.extra.find(',') != std::string_view::npos;
    if (place.length == 0 && isShown &&
        FindFraction(question.extra, ',').length == question.extra.size())
        return MakeHint(question, MessageCode::FractionWritten, {question.extra});
    if (place.length == 0) return std::nullopt;
    return MakeHint(question, MessageCode::FractionWritten, {place.In(text)});
}

/// A minus sign that stands before a number, not between two values.
bool HasNegativeNumber(std::string_view text) {
    for (std::size_t at = text.find('-'); at != std::string_view::npos;
         at = text.find('-', at + 1)) {
        const std::string_view before = TrimBlanks(text.substr(0, at));
        const std::string_view behind = TrimBlanks(text.substr(at + 1));
        constexpr std::string_view kBeginsValue = "=<>,(+-*/";
        const bool beginsValue =
            !before.empty() && kBeginsValue.find(before.back()) != std::string_view::npos;
        const bool isValue =
            !behind.empty() && (IsDigit(behind.front()) || IsLetter(behind.front()));
        if (beginsValue && isValue) return true;
    }
    return false;
}

bool IsAboutSigns(MessageCode code) {
    switch (code) {
        case MessageCode::EqualSignExpected:
        case MessageCode::ThenExpected:
        case MessageCode::ConditionIncomplete:
        case MessageCode::TypeMismatch:
        case MessageCode::WrongArgumentCount:
        case MessageCode::UnknownOperator:
        case MessageCode::UnexpectedText:
        case MessageCode::ValueOutOfRange:
        case MessageCode::KeywordAsValue:
        case MessageCode::UnknownName:
        case MessageCode::ValueNotAllowed: return true;
        default: return false;
    }
}

/// What is meant by a number with the letter O for 0, or l or I for 1.
std::string WithDigits(std::string_view typed) {
    std::string number(typed);
    for (char& c : number) {
        if (FoldCase(c) == 'O') c = '0';
        if (c == 'l' || c == 'I') c = '1';
    }
    const bool isNumber = std::ranges::all_of(number, IsDigit);
    return isNumber && IsDigit(typed.front()) ? number : std::string();
}

std::optional<Hint> FindLetterForDigit(const HintQuestion& question) {
    if (question.code != MessageCode::UnknownName || question.extra.empty()) return std::nullopt;
    const std::string meant = WithDigits(question.extra);
    if (meant.empty()) return std::nullopt;
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    for (const PlacedWord& word : WordsInLine(commands, question.line.text)) {
        if (word.In(question.line.text) != question.extra) continue;
        Hint hint = MakeHint(question, MessageCode::LetterForDigit, {question.extra, meant});
        hint.fix = FixOf(question.line, word.begin, word.length, meant);
        return hint;
    }
    return std::nullopt;
}

/// 0x64, $64, &H64, #64 and FFH; 0b101 is a number as well.
std::string WithoutPrefix(std::string_view typed) {
    constexpr std::size_t kMostDigits = 4;
    const auto isHexadecimal = [](char c) {
        return std::isxdigit(static_cast<unsigned char>(c)) != 0;
    };
    for (const std::string_view prefix : {"0X", "$", "&H", "#"}) {
        if (StartsWithIgnoreCase(typed, prefix)) typed.remove_prefix(prefix.size());
    }
    if (!typed.empty() && FoldCase(typed.back()) == 'H') typed.remove_suffix(1);
    const bool isNumber =
        !typed.empty() && typed.size() <= kMostDigits && std::ranges::all_of(typed, isHexadecimal);
    return isNumber ? "0" + std::string(typed) + "H" : std::string();
}

std::optional<Hint> FindHexadecimal(const HintQuestion& question) {
    constexpr std::size_t kFewest = 3;
    const std::string_view typed = question.extra;
    const bool isAsked = question.code == MessageCode::UnknownName && typed.size() >= kFewest;
    const bool isMarked = isAsked && (IsDigit(typed.front()) || !IsLetter(typed.front()) ||
                                      FoldCase(typed.back()) == 'H');
    const std::string meant = isMarked ? WithoutPrefix(typed) : std::string();
    const std::size_t at = question.line.text.find(typed);
    if (meant.empty() || at == std::string_view::npos) return std::nullopt;
    return RewritePiece(question, question.line.text.substr(at, typed.size()), meant);
}

/// SET MOTOR ONE, FORWARD, 60
std::optional<Hint> FindNumberWord(const HintQuestion& question) {
    constexpr std::array<std::string_view, 11> kWords{
        "ZERO", "ONE", "TWO", "THREE", "FOUR", "FIVE", "SIX", "SEVEN", "EIGHT", "NINE", "TEN"};
    const auto* word = std::ranges::find_if(
        kWords, [&](std::string_view one) { return EqualsIgnoreCase(one, question.extra); });
    if (question.code != MessageCode::UnknownName || word == kWords.end()) return std::nullopt;
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    for (const PlacedWord& typed : WordsInLine(commands, question.line.text)) {
        if (EqualsIgnoreCase(typed.In(question.line.text), question.extra))
            return RewritePiece(question, question.line.text.substr(typed.begin, typed.length),
                                std::to_string(word - kWords.begin()));
    }
    return std::nullopt;
}

/// DEFINE BYTE Steps = 1000
Hint HintOfWord(const HintQuestion& question) {
    const std::string_view word = question.compilation.GetCommandText(Token::DefineWord);
    Hint hint = MakeHint(question, MessageCode::WordNeeded, {question.extra, ToUtf8(word)});
    const std::string_view byte = question.compilation.GetCommandText(Token::DefineByte);
    const std::string_view line = question.line.text;
    const std::size_t begin = std::min(line.find_first_not_of(" \t"), line.size());
    if (StartsWithIgnoreCase(line.substr(begin), byte))
        hint.fix = FixOf(question.line, begin, byte.size(), word);
    return hint;
}

std::optional<Hint> FindLargeNumber(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isDeclaration = token == Token::DefineByte || token == Token::DefineWord;
    const bool isAboutSize = question.code == MessageCode::ValueOutOfRange ||
                             (question.code == MessageCode::TypeMismatch && isDeclaration);
    const bool isNumber = std::ranges::all_of(question.extra, IsDigit) && !question.extra.empty();
    if (!isAboutSize || !isNumber || token == Token::Reserve) return std::nullopt;
    const std::int32_t number = ParseNumber(question.extra).value_or(kLargestWritten + 1);
    if (number > kLargestWritten)
        return MakeHint(question, MessageCode::TooLargeToWrite, {question.extra});
    if (number <= kLargestByte) return std::nullopt;
    if (token == Token::DefineByte) return HintOfWord(question);
    return MakeHint(question, MessageCode::TooLargeForByte, {question.extra});
}

}  // namespace

std::optional<Hint> FindNumberHint(const HintQuestion& question) {
    if (const auto letter = FindLetterForDigit(question)) return letter;
    if (const auto word = FindNumberWord(question)) return word;
    if (const auto hexadecimal = FindHexadecimal(question)) return hexadecimal;
    if (!IsAboutSigns(question.code) || question.line.token == Token::Include) return std::nullopt;
    const std::string text = WithoutQuotes(question.line);
    if (const auto fraction = FindFractionHint(question, text)) return fraction;
    if (HasNegativeNumber(text) || TypedPart(question).starts_with('-'))
        return MakeHint(question, MessageCode::NegativeWritten, {});
    return FindLargeNumber(question);
}

}  // namespace zentro
