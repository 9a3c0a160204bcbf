#include <algorithm>
#include <array>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

template <std::size_t count>
bool Holds(const std::array<MessageCode, count>& codes, MessageCode code) {
    return std::ranges::find(codes, code) != codes.end();
}

/// What is said of lines that hold a sign that the language does not know.
constexpr std::array kAboutSigns{
    MessageCode::UnknownStatement,     MessageCode::EqualSignExpected,
    MessageCode::ThenExpected,         MessageCode::ConditionIncomplete,
    MessageCode::UnknownReturnType,    MessageCode::ParameterListNotClosed,
    MessageCode::NotUnderstood,        MessageCode::TypeMismatch,
    MessageCode::UnknownComparison,    MessageCode::UnknownParameterType,
    MessageCode::WrongArgumentCount,   MessageCode::UnknownOperator,
    MessageCode::UnexpectedText,       MessageCode::NotAConstant,
    MessageCode::InvalidName,          MessageCode::CallWithoutName,
    MessageCode::UnknownRoutine,       MessageCode::BlankInCalledName,
    MessageCode::ParenthesisNotClosed, MessageCode::UnknownCall,
    MessageCode::KeywordAsValue,       MessageCode::UnknownName,
    MessageCode::TargetNotAVariable,   MessageCode::CallInsideStatement,
    MessageCode::ValueNotAllowed,      MessageCode::OperatorLine,
    MessageCode::RestIgnored,
};

/// What is said of lines that begin with words that the language does not know.
constexpr std::array kAboutBeginnings{
    MessageCode::UnknownStatement,    MessageCode::EqualSignExpected,
    MessageCode::NotUnderstood,       MessageCode::UnknownCall,
    MessageCode::UnknownName,         MessageCode::BlankInCalledName,
    MessageCode::ConditionIncomplete, MessageCode::UnexpectedText,
    MessageCode::CallInsideStatement, MessageCode::ParenthesisNotClosed,
    MessageCode::WrongArgumentCount,  MessageCode::KeywordAsValue,
};

Hint HintOfRow(const HintQuestion& question, const OtherLanguageRow& row, std::string_view shown) {
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    if (row.replacement.empty())
        return MakeHint(question, MessageCode::OtherLanguage,
                        {shown, ToUtf8(PlainText(commands, row.text))});
    Hint hint = MakeHint(question, MessageCode::WriteInstead,
                         {shown, ToUtf8(PlainText(commands, row.replacement))});
    hint.kind += ' ' + row.word;
    return hint;
}

bool IsVariable(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable;
}

Hint Rewrite(const HintQuestion& question, std::string_view text, std::string_view old,
             const std::string& instead) {
    Hint hint = MakeHint(question, MessageCode::WriteInstead, {ToUtf8(old), ToUtf8(instead)});
    const auto begin = static_cast<std::size_t>(old.data() - text.data());
    hint.fix = FixOf(question.line, begin, old.size(), instead);
    return hint;
}

/// Speed += 5: nothing unless a variable and one value stand around the sign.
std::optional<Hint> FindOperationOnItself(const HintQuestion& question, std::string_view text,
                                          std::size_t at) {
    const bool isOperation =
        text.substr(at + 1, 1) == "=" && std::string_view("+-*/").find(text[at]) != kNone;
    if (!isOperation) return std::nullopt;
    const std::string_view name = TrimBlanks(text.substr(0, at));
    const std::string_view value = TrimBlanks(text.substr(at + 2));
    const bool isOneValue = !value.empty() && value.find_first_of(" \t,()") == kNone;
    if (!isOneValue || !IsVariable(question, name)) return std::nullopt;
    std::string instead(name);
    instead.append(" = ").append(name).append({' ', text[at], ' '}).append(value);
    const auto length = static_cast<std::size_t>(value.data() + value.size() - name.data());
    return Rewrite(question, text, {name.data(), length}, instead);
}

/// Speed++: nothing unless the sign stands behind or before a variable alone.
std::optional<Hint> FindStep(const HintQuestion& question, std::string_view text,
                             std::string_view sign, std::size_t at) {
    const std::string_view before = TrimBlanks(text.substr(0, at));
    const std::string_view behind = TrimBlanks(text.substr(at + sign.size()));
    if (before.empty() == behind.empty()) return std::nullopt;
    const std::string_view name = before.empty() ? behind : before;
    if (!IsVariable(question, name)) return std::nullopt;
    const Token token = sign == "++" ? Token::Increment : Token::Decrement;
    std::string instead(question.compilation.GetCommandText(token));
    instead.append(" ").append(name);
    return Rewrite(question, text, TrimBlanks(text), instead);
}

/// 'F': what stands between two of them is a text.
std::optional<Hint> FindSingleQuotes(const HintQuestion& question, std::string_view text,
                                     std::size_t at) {
    const std::size_t end = text.find('\'', at + 1);
    if (end == kNone) return std::nullopt;
    const std::string_view quoted = text.substr(at, end - at + 1);
    return Rewrite(question, text, quoted,
                   '"' + std::string(text.substr(at + 1, end - at - 1)) + '"');
}

/// ANALOG[1], Speed = Tune[3], Speed = Tune(3)
std::optional<Hint> FindBrackets(const HintQuestion& question, std::string_view text,
                                 std::size_t at) {
    const std::size_t close = text.find_first_of("])", at);
    if (close == kNone) return std::nullopt;
    const std::string_view before = TrimBlanks(text.substr(0, at));
    const std::string_view name = before.substr(before.find_last_of(" ,=(<>") + 1);
    const auto begin = static_cast<std::size_t>(name.data() - text.data());
    const std::string index(TrimBlanks(text.substr(at + 1, close - at - 1)));
    const Compilation& compilation = question.compilation;
    const Command* entry = compilation.FindCommand(name);
    const Symbol* called = compilation.symbols.FindSymbol(name, question.line.parent);
    const bool isRoutine = called != nullptr && called->symbolClass == SymbolClass::Routine;
    if (isRoutine || (entry != nullptr && entry->family == TokenFamily::Function))
        return Rewrite(question, text, text.substr(begin, close + 1 - begin),
                       std::string(name) + "(" + index + ")");
    const std::string_view equal = TrimBlanks(text.substr(0, begin));
    const std::string_view target = TrimBlanks(equal.substr(0, equal.find('=')));
    const Symbol* table = compilation.symbols.FindSymbol(name, question.line.parent);
    const bool isRead = table != nullptr && table->type == DataType::Table &&
                        equal.ends_with('=') && IsVariable(question, target) &&
                        TrimBlanks(text.substr(close + 1)).empty();
    if (!isRead) return std::nullopt;
    const auto call = [&](Token function, std::string_view of) {
        return std::string(compilation.GetCommandText(function)) + "(" + std::string(of) + ")";
    };
    return MakeHint(question, MessageCode::TableReadAt,
                    {ToUtf8(name), ToUtf8(call(Token::AddressOf, name)), ToUtf8(index),
                     ToUtf8(std::string(target) + " = " + call(Token::Read, "Place"))});
}

std::optional<Hint> HintOfSign(const HintQuestion& question, const OtherLanguageRow& row,
                               std::string_view text, std::size_t at) {
    if (row.word == "[") {
        if (auto brackets = FindBrackets(question, text, at)) return brackets;
    }
    const std::string_view behind = TrimBlanks(text.substr(at + row.word.size()));
    const bool isPercent = row.word == "%" && (behind.empty() || behind.starts_with(','));
    if (isPercent) {
        const std::string_view before = TrimBlanks(text.substr(0, at));
        const std::size_t begin = before.find_last_of(" ,=") + 1;
        Hint hint =
            MakeHint(question, MessageCode::TakeOut, {ToUtf8(before.substr(begin)), row.word});
        hint.fix = FixOf(question.line, at, row.word.size(), "");
        return hint;
    }
    // At the head of a line, before a word, it begins a comment elsewhere.
    const bool isFirst = TrimBlanks(text.substr(0, at)).empty();
    if (row.word == "'") {
        auto quotes = FindSingleQuotes(question, text, at);
        if (quotes || !isFirst) return quotes;
        return Rewrite(question, text, text.substr(at, 1), ";");
    }
    if (row.word == "++" || row.word == "--") {
        auto step = FindStep(question, text, row.word, at);
        if (step || !isFirst || row.word == "++") return step;
        return Rewrite(question, text, text.substr(at, row.word.size()), ";");
    }
    if (auto operation = FindOperationOnItself(question, text, at)) return operation;
    Hint hint = HintOfRow(question, row, row.word);
    if (row.replacement.empty()) return hint;
    std::string instead = PlainText(question.compilation.configuration.commands, row.replacement);
    if (instead.empty()) return hint;  // the configuration has no text for its words
    const std::size_t end = at + row.word.size();
    if (at > 0 && !IsBlank(text[at - 1]) && IsLetter(instead.front())) instead.insert(0, " ");
    if (end < text.size() && !IsBlank(text[end]) && IsLetter(instead.back())) instead += ' ';
    hint.fix = FixOf(question.line, at, row.word.size(), instead);
    return hint;
}

bool IsRoutine(const HintQuestion& question, std::string_view word) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(word, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Routine;
}

bool IsKnownWord(const HintQuestion& question, std::string_view word) {
    return question.compilation.FindCommand(word) != nullptr ||
           question.compilation.symbols.FindSymbol(word, question.line.parent) != nullptr;
}

Hint HintOfWords(const HintQuestion& question, const OtherLanguageRow& row, std::size_t begin,
                 std::size_t length) {
    const std::string_view typed = question.line.text.substr(begin, length);
    Hint hint = HintOfRow(question, row, ToUtf8(typed));
    if (!row.replacement.empty())
        hint.fix = FixOf(question.line, begin, length,
                         PlainText(question.compilation.configuration.commands, row.replacement));
    return hint;
}

/// The words that begin the line, as many as possible together.
std::optional<Hint> FindForeignBeginning(const HintQuestion& question,
                                         std::span<const PlacedWord> words) {
    constexpr std::size_t kMostWords = 3;
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    for (std::size_t count = std::min(kMostWords, words.size()); count > 0; --count) {
        std::string together;
        for (const PlacedWord& word : words.first(count))
            together.append(together.empty() ? "" : " ").append(word.In(question.line.text));
        const OtherLanguageRow* row = RowOfWord(question.otherLanguages, together);
        if (row == nullptr || (count == 1 && IsKnownWord(question, together))) continue;
        // What is called so is a routine of the program, whatever the verb.
        const bool callsRoutine =
            words.size() > count && IsRoutine(question, words[count].In(question.line.text));
        if (callsRoutine) continue;
        const std::size_t begin = words.front().begin;
        // BEGIN of BEGIN PROGRAM is right; SELECT CASE is more than SELECT.
        const std::string meant = PlainText(commands, row->replacement);
        const bool isRight = together.size() <= meant.size() && !meant.empty() &&
                             StartsWithIgnoreCase(question.line.text.substr(begin), meant);
        if (isRight) continue;
        return HintOfWords(question, *row, begin, words[count - 1].End() - begin);
    }
    return std::nullopt;
}

/// IF Light is bigger than 100 THEN
std::optional<Hint> FindForeignComparison(const HintQuestion& question,
                                          std::span<const PlacedWord> words) {
    const Token token = question.line.token;
    const bool isCondition = token == Token::If || token == Token::While || token == Token::Until;
    if (!isCondition) return std::nullopt;
    constexpr std::size_t kMostWords = 3;
    for (std::size_t i = 1; i < words.size(); ++i) {
        for (std::size_t count = std::min(kMostWords, words.size() - i); count > 0; --count) {
            std::string together;
            for (const PlacedWord& word : words.subspan(i, count))
                together.append(together.empty() ? "" : " ").append(word.In(question.line.text));
            const OtherLanguageRow* row = RowOfWord(question.otherLanguages, together);
            const bool isSign =
                row != nullptr && !row->replacement.empty() && !IsKnownWord(question, together) &&
                std::string_view("=<>").find(
                    PlainText(question.compilation.configuration.commands, row->replacement)
                        .front()) != kNone;
            if (isSign)
                return HintOfWords(question, *row, words[i].begin,
                                   words[i + count - 1].End() - words[i].begin);
        }
    }
    return std::nullopt;
}

/// REPEAT 10
std::optional<Hint> FindCountedRepeat(const HintQuestion& question,
                                      std::span<const PlacedWord> words) {
    const bool isBlock = question.line.token == Token::Repeat || question.line.token == Token::Loop;
    const std::string_view second =
        words.size() > 1 ? words[1].In(question.line.text) : std::string_view();
    const bool isNumber = ParseNumber(second) || IsVariable(question, second);
    const bool isCounted = isBlock && isNumber && question.code == MessageCode::UnexpectedText;
    const OtherLanguageRow* row =
        isCounted ? RowOfWord(question.otherLanguages, "repeat n times") : nullptr;
    if (row == nullptr) return std::nullopt;
    return HintOfWords(question, *row, words.front().begin,
                       words.back().End() - words.front().begin);
}

/// A name that nothing has, and that another language has for something of this one.
std::optional<Hint> FindForeignName(const HintQuestion& question,
                                    std::span<const PlacedWord> words) {
    const bool isAboutName = question.code == MessageCode::UnknownName ||
                             question.code == MessageCode::UnknownRoutine ||
                             question.code == MessageCode::UnknownComparison ||
                             question.code == MessageCode::UnknownOperator;
    const OtherLanguageRow* row =
        isAboutName ? RowOfWord(question.otherLanguages, question.extra) : nullptr;
    // CALL stands before what was meant to be a routine of the program.
    const bool isCall =
        question.code == MessageCode::UnknownRoutine && question.line.token != Token::Call;
    if (row == nullptr || (row->replacement.empty() && !isCall)) return std::nullopt;
    const auto place = std::ranges::find_if(words, [&](const PlacedWord& word) {
        return EqualsIgnoreCase(word.In(question.line.text), question.extra);
    });
    if (place == words.end()) return std::nullopt;
    return HintOfWords(question, *row, place->begin, place->length);
}

}  // namespace

std::optional<Hint> FindForeignSign(const HintQuestion& question) {
    if (!Holds(kAboutSigns, question.code)) return std::nullopt;
    const std::string text = WithoutQuotes(question.line);
    if (question.code == MessageCode::UnknownRoutine && text.find('(') != kNone) {
        if (auto brackets = FindBrackets(question, text, text.find('('))) return brackets;
    }
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (IsBlank(text[at]) || IsLetter(text[at]) || IsDigit(text[at])) continue;
        const OtherLanguageRow* row =
            RowOfSign(question.otherLanguages, std::string_view(text).substr(at));
        if (row == nullptr) continue;
        std::optional<Hint> hint = HintOfSign(question, *row, text, at);
        if (hint) hint->kind = MessageCodeText(MessageCode::WriteInstead) + ' ' + row->word;
        return hint;
    }
    return std::nullopt;
}

std::optional<Hint> FindForeignWord(const HintQuestion& question) {
    const std::vector<PlacedWord> words =
        WordsInLine(question.compilation.configuration.commands, question.line.text);
    if (words.empty()) return std::nullopt;
    if (auto name = FindForeignName(question, words)) return name;
    const bool isComparison = question.code == MessageCode::ThenExpected ||
                              question.code == MessageCode::UnknownComparison ||
                              question.code == MessageCode::UnknownOperator ||
                              question.code == MessageCode::UnexpectedText ||
                              question.code == MessageCode::ConditionIncomplete;
    if (isComparison) {
        if (auto comparison = FindForeignComparison(question, words)) return comparison;
    }
    if (auto repeat = FindCountedRepeat(question, words)) return repeat;
    const std::string_view first = words.front().In(question.line.text);
    const bool isAboutOther =
        question.code == MessageCode::UnknownName && !EqualsIgnoreCase(question.extra, first);
    if (isAboutOther || !Holds(kAboutBeginnings, question.code)) return std::nullopt;
    return FindForeignBeginning(question, words);
}

}  // namespace zentro
