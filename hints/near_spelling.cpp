#include <algorithm>
#include <array>
#include <vector>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/near_words.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

/// What can begin a line: the words of one entry, and those of the line that are nearly they.
struct NearStatement {
    const Command* entry = nullptr;
    std::size_t distance = 0;  ///< 0: only the blanks between the words differ
    std::size_t typedWords = 0;
    bool isOnly = true;
};

std::vector<std::string_view> WordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (text = Trim(text); !text.empty(); text = Trim(text)) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

/// PROG for PROGRAM
bool IsAbbreviation(std::string_view typed, std::string_view meant) {
    constexpr std::size_t kFewest = 3;
    return typed.size() >= kFewest && StartsWithIgnoreCase(meant, typed);
}

/// How many letters of the line's first words have to change; nothing when they are not near.
std::optional<std::size_t> DistanceToWords(std::span<const std::string_view> typed,
                                           std::span<const std::string_view> meant,
                                           bool mayBeShort) {
    if (typed.size() < meant.size()) return std::nullopt;
    std::size_t distance = 0;
    for (std::size_t i = 0; i < meant.size(); ++i) {
        if (EqualsIgnoreCase(typed[i], meant[i])) continue;
        const std::optional<std::size_t> one = SpellingDistance(typed[i], meant[i]);
        if (!one && !(mayBeShort && IsAbbreviation(typed[i], meant[i]))) return std::nullopt;
        distance += one.value_or(1);
    }
    return distance;
}

/// ENDIF for END IF, or WHI LE for WHILE: how many of the line's words are the entry's.
std::size_t WordsThatDifferInBlanks(std::span<const std::string_view> typed,
                                    std::string_view meant) {
    std::string letters(meant);
    std::erase(letters, ' ');
    std::string together;
    for (std::size_t i = 0; i < typed.size() && together.size() < letters.size(); ++i) {
        together += typed[i];
        const std::size_t words = 1 + static_cast<std::size_t>(std::ranges::count(meant, ' '));
        if (EqualsIgnoreCase(together, letters)) return i + 1 == words ? 0 : i + 1;
    }
    return 0;
}

bool BeginsLines(const Command& entry) {
    return entry.family == TokenFamily::Statement || entry.family == TokenFamily::Declaration ||
           entry.family == TokenFamily::Directive;
}

std::optional<NearStatement> FindNearStatement(const HintQuestion& question,
                                               std::span<const std::string_view> typed) {
    NearStatement nearest;
    const auto offer = [&](const Command& entry, std::size_t distance, std::size_t words) {
        const bool isNearer = nearest.entry == nullptr || distance < nearest.distance;
        if (isNearer)
            nearest = {&entry, distance, words, true};
        else if (distance == nearest.distance && words >= nearest.typedWords)
            nearest.isOnly = false;
    };
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        if (!BeginsLines(entry)) continue;
        const std::vector<std::string_view> meant = WordsOf(entry.command);
        if (const auto distance =
                DistanceToWords(typed, meant, entry.family != TokenFamily::Directive);
            distance && *distance > 0)
            offer(entry, *distance, meant.size());
        if (const std::size_t words = WordsThatDifferInBlanks(typed, entry.command))
            offer(entry, 0, words);
    }
    if (nearest.entry == nullptr || !nearest.isOnly) return std::nullopt;
    return nearest;
}

bool IsWordOfLanguage(const HintQuestion& question, std::string_view word) {
    const auto& entries = question.compilation.configuration.commands.Entries();
    return std::ranges::any_of(entries, [&](const Command& entry) {
        return std::ranges::any_of(WordsOf(entry.command), [&](std::string_view one) {
            return EqualsIgnoreCase(one, word);
        });
    });
}

/// The hint names the one word that differs, or else the words together.
Hint HintOfStatement(const HintQuestion& question, const NearStatement& near,
                     std::span<const PlacedWord> words) {
    const std::string_view line = question.line.text;
    const std::vector<std::string_view> meant = WordsOf(near.entry->command);
    std::vector<std::size_t> wrong;
    for (std::size_t i = 0; near.distance > 0 && i < meant.size(); ++i) {
        if (!EqualsIgnoreCase(words[i].In(line), meant[i])) wrong.push_back(i);
    }
    const std::size_t first = wrong.size() == 1 ? wrong.front() : 0;
    const std::size_t last = wrong.size() == 1 ? wrong.front() : near.typedWords - 1;
    const std::size_t begin = words[first].begin;
    const std::size_t length = words[last].End() - begin;
    const std::string_view word =
        wrong.size() == 1 ? meant[first] : std::string_view(near.entry->command);
    const std::string_view whole =
        line.substr(words.front().begin, words[near.typedWords - 1].End() - words.front().begin);
    Hint hint;
    if (near.distance == 0) {
        hint = MakeHint(question, MessageCode::SeparateWords, {ToUtf8(whole), ToUtf8(word)});
    } else if (wrong.size() == 1 && !IsWordOfLanguage(question, words[first].In(line))) {
        hint = MakeHint(question, MessageCode::NearWord,
                        {ToUtf8(words[first].In(line)), ToUtf8(word)});
    } else {
        hint = MakeHint(question, MessageCode::NearStatement,
                        {ToUtf8(whole), ToUtf8(near.entry->command)});
    }
    hint.fix = FixOf(question.line, begin, length, word);
    return hint;
}

/// The message is about the words with which the line begins.
bool IsAboutBeginning(const HintQuestion& question, std::string_view firstWord) {
    switch (question.code) {
        case MessageCode::UnknownStatement:
        case MessageCode::UnknownCall:
        case MessageCode::NotUnderstood:
        case MessageCode::EqualSignExpected:
        case MessageCode::TableNotEnded:
            return question.line.token == Token::None || question.line.token == Token::EndPrefix ||
                   question.line.token == Token::DefinePrefix;
        case MessageCode::UnknownName: return EqualsIgnoreCase(question.extra, firstWord);
        default: return false;
    }
}

/// STOP THE MOTORS, PLAY A SOUND, SET DISPLAY 5: the statement with a word too many. END-IF too.
std::optional<Hint> FindFillerWord(const HintQuestion& question,
                                   std::span<const PlacedWord> words) {
    constexpr std::array<std::string_view, 8> kFillers{"THE",  "A",  "AN",  "ALL",
                                                       "BOTH", "MY", "SET", "OF"};
    const bool isAsked = question.code == MessageCode::UnknownStatement ||
                         question.code == MessageCode::NotUnderstood;
    const std::string_view line = question.line.text;
    std::string joined(StatementOf(question.line));
    std::ranges::replace(joined, '-', ' ');
    const Command* whole = question.compilation.FindCommand(joined);
    if (isAsked && whole != nullptr && joined == whole->command &&
        StatementOf(question.line).find('-') != std::string_view::npos)
        return RewriteStatement(question, joined);
    for (std::size_t i = 0; isAsked && i + 1 < std::min<std::size_t>(words.size(), 4); ++i) {
        const bool isFiller = std::ranges::any_of(kFillers, [&](std::string_view filler) {
            return EqualsIgnoreCase(words[i].In(line), filler);
        });
        if (!isFiller) continue;
        std::string rest(line.substr(words[0].begin, words[i].begin - words[0].begin));
        rest += line.substr(words[i + 1].begin);
        const Command* entry = question.compilation.FindCommand(rest);
        if (entry == nullptr || !BeginsLines(*entry) || entry->command.size() < rest.find(' '))
            continue;
        const auto count = static_cast<std::size_t>(std::ranges::count(entry->command, ' ')) + 1;
        if (count < i + 1 && i > 0) continue;
        const std::size_t end = words[std::min(count, words.size() - 1)].End();
        return RewritePiece(question, line.substr(words[0].begin, end - words[0].begin),
                            entry->command);
    }
    return std::nullopt;
}

/// IFLight > 100 THEN
std::optional<Hint> FindStuckName(const HintQuestion& question, const PlacedWord& first) {
    const std::string_view typed = first.In(question.line.text);
    for (const Token token : {Token::If, Token::While, Token::Until, Token::Display, Token::Wait,
                              Token::Increment, Token::Decrement}) {
        const std::string_view word = question.compilation.GetCommandText(token);
        if (!StartsWithIgnoreCase(typed, word) || typed.size() == word.size()) continue;
        const std::string_view name = typed.substr(word.size());
        if (question.compilation.symbols.FindSymbol(name, question.line.parent) == nullptr)
            continue;
        const std::string meant = std::string(word) + " " + std::string(name);
        Hint hint = MakeHint(question, MessageCode::SeparateWords, {ToUtf8(typed), ToUtf8(meant)});
        hint.fix = FixOf(question.line, first.begin, first.length, meant);
        return hint;
    }
    return std::nullopt;
}

/// SET MOTOR1, FORWARD, 60
std::optional<Hint> FindStuckNumber(const HintQuestion& question,
                                    std::span<const PlacedWord> words) {
    const std::string_view line = question.line.text;
    if (question.code != MessageCode::UnknownStatement) return std::nullopt;
    std::string together;
    for (const PlacedWord& word : words) {
        const std::string_view typed = word.In(line);
        const std::size_t digit = std::min(typed.find_first_of("0123456789"), typed.size());
        together.append(together.empty() ? "" : " ").append(typed.substr(0, digit));
        if (digit == typed.size()) continue;
        const Command* entry = question.compilation.FindCommand(together);
        const bool isMeant = digit > 0 && entry != nullptr && BeginsLines(*entry) &&
                             EqualsIgnoreCase(entry->command, together);
        if (!isMeant) return std::nullopt;
        const std::size_t begin = words.front().begin;
        const std::string meant = entry->command + " " + std::string(typed.substr(digit));
        Hint hint = MakeHint(question, MessageCode::SeparateWords,
                             {ToUtf8(line.substr(begin, word.End() - begin)), ToUtf8(meant)});
        hint.fix = FixOf(question.line, begin, word.End() - begin, meant);
        return hint;
    }
    return std::nullopt;
}

std::optional<Hint> FindStatement(const HintQuestion& question, std::span<const PlacedWord> words) {
    std::vector<std::string_view> typed;
    for (const PlacedWord& word : words)
        typed.push_back(word.In(question.line.text));
    if (!IsAboutBeginning(question, typed.front())) return std::nullopt;
    const auto& symbols = question.compilation.symbols;
    if (symbols.FindSymbol(typed.front(), question.line.parent) != nullptr) return std::nullopt;
    const std::optional<NearStatement> near = FindNearStatement(question, typed);
    if (!near) return std::nullopt;
    return HintOfStatement(question, *near, words);
}

void OfferSymbols(const HintQuestion& question, NearestWord& nearest) {
    for (const Symbol& symbol : question.compilation.symbols.Symbols()) {
        const bool isSeen =
            symbol.parent == ParentId::Program || symbol.parent == question.line.parent;
        if (isSeen && symbol.declareLineNo != 0) nearest.Offer(symbol.name);
    }
}

void OfferConstants(const HintQuestion& question, NearestWord& nearest) {
    const SymbolTable& symbols = question.compilation.symbols;
    for (const Constant& constant : symbols.Constants()) {
        const bool isNamed = !constant.name.empty() && IsLetter(constant.name.front()) &&
                             symbols.FindConstant(constant.name) == &constant;
        if (isNamed) nearest.Offer(constant.name);
    }
}

void OfferEntries(const HintQuestion& question, TokenFamily family, NearestWord& nearest) {
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        const bool isWord = !entry.command.empty() && IsLetter(entry.command.front());
        if (entry.family == family && isWord) nearest.Offer(entry.command);
    }
}

void OfferTypes(const HintQuestion& question, NearestWord& nearest) {
    for (const Token token : {Token::ParameterByte, Token::ParameterWord, Token::ParameterFlag,
                              Token::ParameterPointer})
        nearest.Offer(question.compilation.GetCommandText(token));
}

/// The name that a message is about, if nothing is called so but something nearly.
std::optional<Hint> FindName(const HintQuestion& question, std::span<const PlacedWord> words) {
    const bool isName = question.code == MessageCode::UnknownName;
    const bool isCall = question.code == MessageCode::UnknownRoutine;
    if (!isName && !isCall) return std::nullopt;
    const auto place = std::ranges::find_if(words, [&](const PlacedWord& word) {
        return EqualsIgnoreCase(word.In(question.line.text), question.extra);
    });
    if (place == words.end()) return std::nullopt;
    NearestWord nearest(place->In(question.line.text));
    const Statement* statement = StatementOfValues(question);
    const std::vector<std::string_view> values = TypedValues(question);
    const std::size_t count =
        statement == nullptr ? 0 : std::min(values.size(), statement->Values().size());
    bool isChosen = false;
    for (std::size_t i = 0; i < count; ++i)
        isChosen = isChosen || (EqualsIgnoreCase(values[i], question.extra) &&
                                !statement->Values()[i].allowed.empty());
    if (!isChosen) OfferSymbols(question, nearest);
    if (isName) OfferConstants(question, nearest);
    OfferEntries(question, isName ? TokenFamily::Constant : TokenFamily::Function, nearest);
    const std::optional<std::string_view> meant = nearest.Found();
    if (!meant) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::NearName, {question.extra, ToUtf8(*meant)});
    hint.fix = FixOf(question.line, place->begin, place->length, *meant);
    return hint;
}

/// Left Eye = 5, where the name is LeftEye
std::optional<Hint> FindNameInTwo(const HintQuestion& question, std::span<const PlacedWord> words) {
    const bool isAsked =
        question.code == MessageCode::UnknownName || question.code == MessageCode::UnknownOperator;
    if (!isAsked) return std::nullopt;
    const std::string_view line = question.line.text;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string_view first = words[i].In(line);
        const bool isShown = (StartsWithIgnoreCase(question.extra, first) ||
                              EqualsIgnoreCase(question.extra, words[i + 1].In(line))) &&
                             words[i].End() + 1 == words[i + 1].begin &&
                             IsBlank(line[words[i].End()]);
        const std::string name = std::string(first) + std::string(words[i + 1].In(line));
        const Symbol* symbol = isShown ? question.compilation.symbols.FindSymbol(
                                             std::string_view(name), question.line.parent)
                                       : nullptr;
        if (symbol == nullptr) continue;
        const std::size_t length = words[i + 1].End() - words[i].begin;
        Hint hint = MakeHint(question, MessageCode::SeparateWords,
                             {ToUtf8(line.substr(words[i].begin, length)), ToUtf8(symbol->name)});
        hint.fix = FixOf(question.line, words[i].begin, length, symbol->name);
        return hint;
    }
    return std::nullopt;
}

/// A type or THEN, in messages that do not name what they are about.
std::optional<Hint> FindWordInside(const HintQuestion& question,
                                   std::span<const PlacedWord> words) {
    const bool isType = question.code == MessageCode::UnknownParameterType ||
                        question.code == MessageCode::UnknownReturnType;
    const bool isThen = question.code == MessageCode::ThenExpected;
    if (!isType && !isThen) return std::nullopt;
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    for (const PlacedWord& word :
         isThen ? words.last(1) : words.subspan(std::min<std::size_t>(3, words.size()))) {
        NearestWord nearest(word.In(question.line.text));
        if (isThen)
            nearest.Offer(commands.GetCommandText(Token::Then));
        else
            OfferTypes(question, nearest);
        const std::optional<std::string_view> meant = nearest.Found();
        if (!meant || IsWordOfLanguage(question, word.In(question.line.text))) continue;
        Hint hint = MakeHint(question, MessageCode::NearWord,
                             {ToUtf8(word.In(question.line.text)), ToUtf8(*meant)});
        hint.fix = FixOf(question.line, word.begin, word.length, *meant);
        return hint;
    }
    return std::nullopt;
}

/// "f" where only "F" may stand.
std::optional<Hint> FindSmallLetter(const HintQuestion& question) {
    if (question.code != MessageCode::ValueNotAllowed) return std::nullopt;
    const std::string_view typed = question.extra.substr(0, question.extra.find(' '));
    if (typed.size() != 3 || typed.front() != '"' || typed.back() != '"') return std::nullopt;
    const std::string meant{'"', FoldCase(typed[1]), '"'};
    const std::string value(1, meant[1]);
    const std::size_t list = question.extra.find(' ');
    const bool isListed = list != std::string_view::npos &&
                          question.extra.substr(list).find(" " + value) != std::string_view::npos;
    const std::size_t at = question.line.text.find(typed);
    if (meant == typed || !isListed || at == std::string_view::npos) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::CapitalLetter, {typed, meant});
    hint.fix = FixOf(question.line, at, typed.size(), meant);
    return hint;
}

}  // namespace

std::optional<Hint> FindNearSpelling(const HintQuestion& question) {
    const std::vector<PlacedWord> words =
        WordsInLine(question.compilation.configuration.commands, question.line.text);
    if (words.empty()) return std::nullopt;
    if (const auto filler = FindFillerWord(question, words)) return filler;
    if (const auto stuck = FindStuckNumber(question, words)) return stuck;
    if (question.code == MessageCode::UnknownStatement) {
        if (const auto stuck = FindStuckName(question, words.front())) return stuck;
    }
    if (const auto statement = FindStatement(question, words)) return statement;
    if (const auto together = FindNameInTwo(question, words)) return together;
    if (const auto name = FindName(question, words)) return name;
    if (const auto word = FindWordInside(question, words)) return word;
    return FindSmallLetter(question);
}

}  // namespace zentro
