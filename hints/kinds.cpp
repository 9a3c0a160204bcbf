#include <algorithm>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

const Symbol* VariableOf(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable ? symbol : nullptr;
}

/// A line that gives a variable one value, which is a name alone: Speed = Distance
struct PlainAssignment {
    const Symbol* target = nullptr;
    const Symbol* source = nullptr;
    std::string_view name;  ///< of the source, in the line
};

std::optional<PlainAssignment> PlainAssignmentOf(const HintQuestion& question) {
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    const std::vector<PlacedWord> words = WordsInLine(commands, question.line.text);
    if (words.size() != 2) return std::nullopt;
    const std::string_view line = question.line.text;
    std::string plain(words[0].In(line));
    plain.append(" ").append(commands.GetCommandText(Token::Equal));
    plain.append(" ").append(words[1].In(line));
    if (question.line.parsedLine != plain) return std::nullopt;
    const PlainAssignment found{VariableOf(question, words[0].In(line)),
                                VariableOf(question, words[1].In(line)), words[1].In(line)};
    if (found.target == nullptr || found.source == nullptr) return std::nullopt;
    return found;
}

std::string CallOf(const HintQuestion& question, Token function, std::string_view name) {
    return std::string(question.compilation.GetCommandText(function)) + "(" + std::string(name) +
           ")";
}

/// Speed = Distance, where one is a BYTE and the other a WORD; Place = Reader
std::optional<Hint> FindOtherSize(const HintQuestion& question) {
    const bool isAsked =
        question.code == MessageCode::TypeMismatch || question.code == MessageCode::PointerAssigned;
    const std::optional<PlainAssignment> line =
        isAsked ? PlainAssignmentOf(question) : std::nullopt;
    if (!line) return std::nullopt;
    const DataType to = line->target->type;
    const DataType from = line->source->type;
    if (to == DataType::Word && from == DataType::Byte)
        return RewritePiece(question, line->name, CallOf(question, Token::ToWord, line->name));
    if (to == DataType::Byte && from == DataType::Word)
        return MakeHint(question, MessageCode::ByteOfWord,
                        {ToUtf8(line->name), ToUtf8(CallOf(question, Token::ToByte, line->name))});
    if (to == DataType::Pointer && from == DataType::Pointer)
        return RewritePiece(question, line->name, std::string(line->name) + " + 0");
    return std::nullopt;
}

/// Where a piece that the message shows stands in the line as a word; empty: nowhere, or twice.
std::string_view ShownWord(const HintQuestion& question) {
    std::string_view found;
    for (const PlacedWord& word :
         WordsInLine(question.compilation.configuration.commands, question.line.text)) {
        const std::string_view typed = word.In(question.line.text);
        if (!EqualsIgnoreCase(typed, question.extra)) continue;
        if (!found.empty()) return {};
        found = typed;
    }
    return found;
}

/// DEFINE FLAG Lost = 1, Lost = ON
std::optional<Hint> FindTruth(const HintQuestion& question) {
    if (question.code != MessageCode::TypeMismatch) return std::nullopt;
    const std::vector<PlacedWord> words =
        WordsInLine(question.compilation.configuration.commands, question.line.text);
    const Token token = question.line.token;
    const bool isCondition = token == Token::If || token == Token::While || token == Token::Until;
    const std::size_t first = isCondition ? 1 : 0;
    const Symbol* target =
        words.size() <= first ? nullptr : VariableOf(question, words[first].In(question.line.text));
    const bool isFlag = question.line.token == Token::DefineFlag ||
                        (target != nullptr && target->type == DataType::Flag);
    const std::string_view typed = ShownWord(question);
    if (!isFlag || typed.empty()) return std::nullopt;
    const Symbol* given = VariableOf(question, typed);
    if (given != nullptr && given->type != DataType::Flag && target != nullptr)
        return MakeHint(question, MessageCode::FlagHoldsTruth, {ToUtf8(target->name)});
    const Command* entry = question.compilation.FindCommand(typed);
    const std::string_view value = entry != nullptr && entry->family == TokenFamily::Constant
                                       ? std::string_view(entry->description)
                                       : typed;
    if (value != "1") return std::nullopt;
    return RewritePiece(question, typed,
                        std::string(question.compilation.GetCommandText(Token::True)));
}

/// DISPLAY "Hello"
std::optional<Hint> FindLongText(const HintQuestion& question) {
    constexpr std::size_t kTwoQuotedCharacters = 4;
    const Token token = question.line.token;
    const bool declares = token == Token::DefineByte || token == Token::DefineWord;
    const bool isAsked = question.code == MessageCode::ValueOutOfRange ||
                         (question.code == MessageCode::TypeMismatch && declares);
    if (!isAsked || !IsQuoted(question.extra) || question.extra.size() < kTwoQuotedCharacters)
        return std::nullopt;
    const std::string_view words = question.compilation.GetCommandText(token);
    return FindValueStatement(token) != nullptr
               ? MakeHint(question, MessageCode::TextInStatement, {ToUtf8(words), question.extra})
               : MakeHint(question, MessageCode::TextTooLong, {question.extra});
}

/// "BUTTON(1)": the function with the first value of each of its lists; empty when it has other
/// values, or none.
std::string ExampleOf(const HintQuestion& question, const Command& entry) {
    const Statement* function = FindFunction(entry.id);
    if (function == nullptr || function->Values().empty()) return {};
    std::string example = entry.command + "(";
    for (const StatementValue& value : function->Values()) {
        if (value.allowed.empty()) return {};
        if (&value != &function->Values().front()) example += ", ";
        example += WrittenValue(question, value.allowed.front());
    }
    return example + ")";
}

/// IF Light NOT = 100 THEN, IF NOT Light = 100 THEN; nothing for other comparisons.
std::optional<Hint> FindNegatedComparison(const HintQuestion& question,
                                          std::span<const PlacedWord> words, std::size_t at) {
    const Compilation& compilation = question.compilation;
    const std::string_view line = question.line.text.substr(0, FindComment(question.line.text));
    if (words[at].End() > line.size()) return std::nullopt;
    const std::string equal(compilation.GetCommandText(Token::Equal));
    const std::string differs(compilation.GetCommandText(Token::NotEqual));
    const std::string_view behind = line.substr(words[at].End());
    const std::size_t sign = behind.find_first_of("=<>");
    const bool isEqual = sign != kNone && behind.substr(sign, 1) == equal &&
                         behind.find_first_of("=<>", sign + 1) == kNone;
    if (!isEqual) return std::nullopt;
    if (TrimBlanks(behind.substr(0, sign)).empty())
        return RewritePiece(question,
                            line.substr(words[at].begin, words[at].length + sign + equal.size()),
                            differs);
    const std::string_view typed = TrimBlanks(line.substr(words[at].begin));
    std::string instead(TrimBlanks(typed.substr(words[at].length)));
    instead.replace(instead.find(equal), equal.size(), differs);
    return RewritePiece(question, typed, instead);
}

/// Light = ANALOG1
std::optional<Hint> FindStuckInput(const HintQuestion& question) {
    const std::string_view typed = ShownWord(question);
    const std::size_t digit = typed.find_first_of("0123456789");
    if (question.code != MessageCode::UnknownName || digit == kNone || digit == 0)
        return std::nullopt;
    const Command* entry = question.compilation.FindCommand(typed.substr(0, digit));
    const Statement* function = entry != nullptr && entry->family == TokenFamily::Function
                                    ? FindFunction(entry->id)
                                    : nullptr;
    if (function == nullptr || function->Values().size() != 1) return std::nullopt;
    return RewritePiece(question, typed,
                        entry->command + "(" + std::string(typed.substr(digit)) + ")");
}

/// Charge = BATTERY, Light = ANALOG 1, IF BUTTON 1 = ON THEN
std::optional<Hint> FindFunctionWithoutList(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::KeywordAsValue ||
                         question.code == MessageCode::UnknownOperator ||
                         question.code == MessageCode::ThenExpected ||
                         question.code == MessageCode::ConditionIncomplete ||
                         question.code == MessageCode::UnknownComparison ||
                         question.code == MessageCode::UnknownName;
    if (!isAsked) return std::nullopt;
    const Compilation& compilation = question.compilation;
    const std::string_view line = question.line.text;
    const std::vector<PlacedWord> words = WordsInLine(compilation.configuration.commands, line);
    const std::string_view own = compilation.GetCommandText(question.line.token);
    const bool hasOwn = question.line.token != Token::None && !question.line.IsSystemFunctionCall();
    const auto first = hasOwn ? 1 + std::ranges::count(own, ' ') : 0;
    for (auto i = static_cast<std::size_t>(first); i < words.size(); ++i) {
        const std::string_view name = words[i].In(line);
        const Command* entry = compilation.FindCommand(name);
        const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function &&
                                EqualsIgnoreCase(entry->command, name);
        const bool isCalled = TrimBlanks(line.substr(words[i].End())).starts_with('(');
        if (!isFunction || isCalled || FormText(question, *entry).empty()) continue;
        if (entry->id == Token::Not && i + 1 < words.size() && hasOwn)
            return FindNegatedComparison(question, words, i);
        const bool hasNumber =
            i + 1 < words.size() && (ParseNumber(words[i + 1].In(line)) ||
                                     VariableOf(question, words[i + 1].In(line)) != nullptr);
        if (hasNumber)
            return RewritePiece(question,
                                line.substr(words[i].begin, words[i + 1].End() - words[i].begin),
                                std::string(name) + "(" + std::string(words[i + 1].In(line)) + ")");
        const std::string form = FormText(question, *entry);
        const std::string example = ExampleOf(question, *entry);
        const std::size_t open = form.find('(');
        if (!example.empty() && open != kNone && form.ends_with(')'))
            return MakeHint(
                question, MessageCode::FunctionShown,
                {ToUtf8(entry->command), ToUtf8(form.substr(open + 1, form.size() - open - 2)),
                 ToUtf8(example)});
        return MakeHint(question, MessageCode::FunctionWithoutList,
                        {ToUtf8(entry->command), ToUtf8(form)});
    }
    return std::nullopt;
}

/// Speed = Halt(), where Halt gives nothing, and CALL Mean(1, 2), where Mean gives something.
std::optional<Hint> FindResult(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::size_t open = FindOutsideQuotes(statement, '(');
    if (question.code != MessageCode::WrongArgumentCount || open == kNone ||
        !statement.ends_with(')'))
        return std::nullopt;
    const std::string_view before = TrimBlanks(statement.substr(0, open));
    const std::size_t begin = before.find_last_of(" \t=");
    if (begin == kNone) return std::nullopt;
    const std::string_view name = before.substr(begin + 1);
    const Compilation& compilation = question.compilation;
    const std::string call(compilation.GetCommandText(Token::Call));
    const Symbol* routine = compilation.symbols.FindOwn(name, ParentId::Program);
    const bool isRoutine = routine != nullptr && routine->symbolClass == SymbolClass::Routine;
    const Command* entry = compilation.FindCommand(name);
    const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function;
    if (!isRoutine && !isFunction) return std::nullopt;
    const bool givesResult =
        isFunction || !compilation.GetSourceLine(routine->declareLineNo).parsedLine.ends_with(')');
    const bool isCalled = EqualsIgnoreCase(TrimBlanks(before.substr(0, begin)), call);
    if (isCalled && givesResult)
        return MakeHint(question, MessageCode::RoutineWithResult, {ToUtf8(name), ToUtf8(call)});
    if (isCalled || givesResult) return std::nullopt;
    const std::string instead = call + " " + std::string(statement.substr(begin + 1));
    return MakeHint(question, MessageCode::RoutineWithoutResult, {ToUtf8(name), ToUtf8(instead)});
}

bool IsNameCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0xC0;
}

/// DEFINE BYTE Größe = 1: the letters of West European languages begin at 0xC0.
std::optional<Hint> FindForeignLetters(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::NotUnderstood ||
                         question.code == MessageCode::UnknownStatement ||
                         question.code == MessageCode::EqualSignExpected ||
                         question.code == MessageCode::UnknownName ||
                         question.code == MessageCode::BlankInCalledName ||
                         question.code == MessageCode::NameTooShort;
    if (!isAsked) return std::nullopt;
    const std::string text = WithoutQuotes(question.line);
    const auto isForeign = [](char c) { return static_cast<unsigned char>(c) >= 0xC0; };
    const auto foreign = std::ranges::find_if(text, isForeign);
    if (foreign == text.end()) return std::nullopt;
    auto begin = foreign;
    while (begin != text.begin() && IsNameCharacter(*(begin - 1)))
        --begin;
    const auto end = std::find_if_not(foreign, text.end(), IsNameCharacter);
    return MakeHint(question, MessageCode::LettersOfName, {ToUtf8(std::string(begin, end))});
}

/// DEFINE BYTE Left Light = 0
std::optional<Hint> FindBlankInName(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isAsked = question.code == MessageCode::NotUnderstood &&
                         (token == Token::DefineByte || token == Token::DefineWord ||
                          token == Token::DefineFlag || token == Token::DefineConstant);
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    const std::vector<PlacedWord> words = WordsInLine(commands, question.line.text);
    constexpr std::size_t kFewest = 4;  // DEFINE BYTE Left Light
    if (!isAsked || words.size() < kFewest) return std::nullopt;
    const auto word = [&](std::size_t index) { return words[index].In(question.line.text); };
    const std::string_view equal = commands.GetCommandText(Token::Equal);
    const std::string_view behind = TrimBlanks(question.line.text.substr(words[3].End()));
    const std::string_view between =
        question.line.text.substr(words[2].End(), words[3].begin - words[2].End());
    const bool isTwoNames = IsLetter(word(2).front()) && IsLetter(word(3).front()) &&
                            TrimBlanks(between).empty() &&
                            (behind.starts_with(equal) || words.size() == kFewest);
    if (!isTwoNames) return std::nullopt;
    const std::string_view typed =
        question.line.text.substr(words[2].begin, words[3].End() - words[2].begin);
    const std::string name = std::string(word(2)) + std::string(word(3));
    Hint hint = RewritePiece(question, typed, name);
    hint.text = MakeHint(question, MessageCode::BlankInName, {ToUtf8(typed), ToUtf8(name)}).text;
    return hint;
}

}  // namespace

std::optional<Hint> FindKindHint(const HintQuestion& question) {
    for (const auto find : {FindForeignLetters, FindBlankInName, FindTruth, FindLongText,
                            FindStuckInput, FindFunctionWithoutList, FindResult, FindOtherSize}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
