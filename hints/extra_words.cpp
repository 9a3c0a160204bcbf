#include <algorithm>

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

bool BeginsStatements(TokenFamily family) {
    return family == TokenFamily::Statement || family == TokenFamily::Declaration;
}

/// True for a name and a = behind it: Level = 6
bool IsAssignment(const HintQuestion& question, std::string_view text) {
    const SplitText split = SplitFirstWord(text);
    const auto& symbols = question.compilation.symbols;
    const std::string_view equal = question.compilation.GetCommandText(Token::Equal);
    return symbols.FindSymbol(split.first, question.line.parent) != nullptr &&
           SplitFirstWord(split.rest).first == equal;
}

/// Where a second statement begins in the line, after its `first` words; npos: nowhere.
std::size_t SecondStatement(const HintQuestion& question, std::size_t first) {
    const CommandCatalogue& commands = question.compilation.configuration.commands;
    const std::string_view line = question.line.text;
    const std::string_view statement = StatementOf(question.line);
    const std::vector<PlacedWord> words = WordsInLine(commands, line);
    for (std::size_t i = first; i < words.size(); ++i) {
        const std::size_t end = PlaceInLine(question.line, statement) + statement.size();
        const std::string_view rest = line.substr(words[i].begin, end - words[i].begin);
        const Command* entry = question.compilation.FindCommand(rest);
        const bool isStatement = entry != nullptr && BeginsStatements(entry->family);
        const std::string_view before = TrimBlanks(line.substr(0, words[i].begin));
        const bool isValue = before.ends_with('=') || before.ends_with(',') ||
                             before.ends_with('(') || before.ends_with('<') ||
                             before.ends_with('>');
        if (!isValue && (isStatement || IsAssignment(question, rest))) return words[i].begin;
    }
    return kNone;
}

/// STOP MOTORS WAIT 100, Speed = 5 Level = 6
std::optional<Hint> FindTwoStatements(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::RestIgnored ||
                         question.code == MessageCode::UnknownName ||
                         question.code == MessageCode::WrongArgumentCount ||
                         question.code == MessageCode::UnknownOperator ||
                         question.code == MessageCode::UnexpectedText;
    const bool isIf = question.line.token == Token::If || question.line.token == Token::Else;
    if (!isAsked || isIf || question.line.token == Token::Case) return std::nullopt;
    const Command* entry = question.compilation.configuration.commands.ByToken(question.line.token);
    const std::string_view first = SplitFirstWord(StatementOf(question.line)).first;
    const bool isKnown =
        question.line.token != Token::None ||
        question.compilation.symbols.FindSymbol(first, question.line.parent) != nullptr;
    if (!isKnown) return std::nullopt;
    std::size_t own = 1;
    if (entry != nullptr) own += static_cast<std::size_t>(std::ranges::count(entry->command, ' '));
    const std::size_t second = SecondStatement(question, own);
    if (second == kNone) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    const std::string_view rest = statement.substr(second - PlaceInLine(question.line, statement));
    const bool isCondition =
        question.line.token == Token::While || question.line.token == Token::Until;
    if (isCondition && rest.find(' ') == kNone)
        return MakeHint(question, MessageCode::NothingBehind, {ToUtf8(rest)});
    return MakeHint(question, MessageCode::TwoStatements, {ToUtf8(rest)});
}

bool IsSum(const HintQuestion& question, std::string_view value) {
    const SplitText split = SplitFirstWord(value);
    const Command* sign = question.compilation.FindCommand(SplitFirstWord(split.rest).first);
    const bool isSign = sign != nullptr && sign->family == TokenFamily::Operator &&
                        sign->command.find_first_of("=<>") == kNone;
    return isSign && IsKnownValue(question, split.first);
}

/// The words of a value that stand in the line as they were typed; empty: they do not.
std::string_view TypedValue(const HintQuestion& question) {
    const std::string_view line = question.line.text;
    const std::string wanted(question.extra);
    for (std::size_t at = 0; at + wanted.size() <= line.size(); ++at) {
        if (EqualsIgnoreCase(line.substr(at, wanted.size()), wanted))
            return line.substr(at, wanted.size());
    }
    return {};
}

/// SET MOTOR 1, FORWARD, SPEED = 60; WAIT Light > 5
std::optional<Hint> FindNamedValue(const HintQuestion& question, std::string_view value) {
    const std::size_t sign = value.find_first_of("=<>");
    if (question.code != MessageCode::UnknownName || sign == kNone || sign == 0)
        return std::nullopt;
    const std::string_view behind = TrimBlanks(value.substr(sign + 1));
    const bool isNamed = TrimBlanks(value.substr(0, sign)).find_first_of(" ,") == kNone;
    const bool isEqual = isNamed && value[sign] == '=' && IsKnownValue(question, behind);
    if (question.line.token == Token::Wait) {
        const Compilation& compilation = question.compilation;
        std::string lines(compilation.GetCommandText(Token::Repeat));
        lines.append(", a line that reads the value again, and ");
        lines.append(compilation.GetCommandText(Token::Until)).append(" ").append(value);
        return MakeHint(question, MessageCode::WriteInstead,
                        {ToUtf8(StatementOf(question.line)), ToUtf8(lines)});
    }
    if (!isEqual) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::OnlyThis,
                         {ToUtf8(value.substr(0, sign + 1)), ToUtf8(behind)});
    hint.fix = FixOf(question.line, PlaceInLine(question.line, value), value.size(), behind);
    return hint;
}

/// WAIT 100 seconds, DISPLAY Speed now, DISPLAY Speed + 1, SET MOTOR 1, FORWARD, speed 60
std::optional<Hint> FindWordsInValue(const HintQuestion& question) {
    const std::string_view value = TypedValue(question);
    const bool isInCall = question.code == MessageCode::UnknownName && value.find(' ') != kNone &&
                          StatementOf(question.line).ends_with(')');
    if (isInCall && IsSum(question, value))
        return MakeHint(question, MessageCode::SumInStatement, {ToUtf8(value)});
    if (std::optional<Hint> named = FindNamedValue(question, value)) return named;
    const bool isAsked = question.code == MessageCode::UnknownName && value.find(' ') != kNone &&
                         FindValueStatement(question.line.token) != nullptr;
    if (!isAsked) return std::nullopt;
    const std::string_view first = value.substr(0, value.find(' '));
    const std::string_view rest = TrimBlanks(value.substr(first.size()));
    const auto slots = FindValueStatement(question.line.token)->Values();
    const std::vector<std::string_view> values = TypedValues(question);
    const auto index = static_cast<std::size_t>(
        std::ranges::find_if(values,
                             [&](std::string_view one) { return EqualsIgnoreCase(one, value); }) -
        values.begin());
    const bool isChosen =
        index >= slots.size() || slots[index].kind == StatementValue::Kind::Constant;
    if (IsSum(question, value) && isChosen) return std::nullopt;
    if (IsSum(question, value))
        return MakeHint(question, MessageCode::SumInStatement, {ToUtf8(value)});
    const bool isTime = StartsWithIgnoreCase(rest, "s") || StartsWithIgnoreCase(rest, "ms");
    if (question.line.token == Token::Wait && isTime && ParseNumber(first))
        return MakeHint(question, MessageCode::HundredthsOfSecond, {});
    const bool isOneMore = rest.find(' ') == kNone && IsKnownValue(question, rest);
    if (IsKnownValue(question, first) && isOneMore)
        return MakeHint(question, MessageCode::TwoValues, {ToUtf8(first), ToUtf8(rest)});
    if (IsKnownValue(question, first))
        return MakeHint(question, MessageCode::TakeOut, {ToUtf8(first), ToUtf8(rest)});
    if (!isOneMore || first.empty() || !IsLetter(first.front())) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::OnlyThis, {ToUtf8(first), ToUtf8(rest)});
    hint.fix = FixOf(question.line, PlaceInLine(question.line, value), value.size(), rest);
    return hint;
}

/// How many values the message's call takes: those in the header of its routine.
std::size_t ValuesOfRoutine(const HintQuestion& question, std::string_view name) {
    const Symbol* routine = question.compilation.symbols.FindOwn(name, ParentId::Program);
    if (routine == nullptr || routine->symbolClass != SymbolClass::Routine) return 0;
    const std::string_view header =
        question.compilation.GetSourceLine(routine->declareLineNo).parsedLine;
    const std::size_t open = FindOutsideQuotes(header, '(');
    const std::size_t close = open == kNone ? kNone : FindClosingParenthesis(header, open);
    return close == kNone ? 0 : SplitCommaList(header.substr(open + 1, close - open - 1)).size();
}

/// PLAY SOUND 60 20 and CALL Drive(1 2), as many values as there should be
std::optional<Hint> FindMissingCommas(const HintQuestion& question) {
    if (question.code != MessageCode::WrongArgumentCount) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    const Statement* expected = FindValueStatement(question.line.token);
    const Command* entry = question.compilation.configuration.commands.ByToken(question.line.token);
    const std::size_t open = FindOutsideQuotes(statement, '(');
    std::string_view values;
    std::size_t count = 0;
    if (expected != nullptr && entry != nullptr && open == kNone &&
        StartsWithIgnoreCase(statement, entry->command)) {
        values = TrimBlanks(statement.substr(entry->command.size()));
        count = expected->Values().size();
    } else if (open != kNone && statement.ends_with(')')) {
        const std::string_view before = TrimBlanks(statement.substr(0, open));
        const std::size_t blank = before.find_last_of(" =");
        values = TrimBlanks(statement.substr(open + 1, statement.size() - open - 2));
        count = ValuesOfRoutine(question, blank == kNone ? before : before.substr(blank + 1));
    }
    const std::vector<std::string_view> pieces = PiecesOf(values);
    const bool areAll =
        count > 1 && pieces.size() == count && SplitCommaList(values).size() < count &&
        std::ranges::all_of(pieces,
                            [&](std::string_view piece) { return IsKnownValue(question, piece); });
    if (!areAll) return std::nullopt;
    std::string instead;
    for (const std::string_view piece : pieces)
        instead.append(instead.empty() ? "" : ", ").append(piece);
    return RewritePiece(question, values, instead);
}

}  // namespace

std::optional<Hint> FindExtraWords(const HintQuestion& question) {
    for (const auto find : {FindTwoStatements, FindWordsInValue, FindMissingCommas}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
