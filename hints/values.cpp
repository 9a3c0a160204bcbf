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

std::optional<Hint> HintOfStatementValues(const HintQuestion& question) {
    const SourceLine& line = question.line;
    const Statement* expected = FindValueStatement(line.token);
    const Command* entry = question.compilation.configuration.commands.ByToken(line.token);
    if (expected == nullptr || entry == nullptr) return std::nullopt;
    const std::string words = ToUtf8(entry->command);
    const std::string form = ToUtf8(FormText(question, *entry));
    const std::string needed = std::to_string(expected->Values().size());
    const std::string found =
        std::to_string(SplitCommaList(line.parsedLine.substr(entry->command.size())).size());
    if (expected->Values().size() == 1)
        return MakeHint(question, MessageCode::ValuesOfFunction,
                        {words + " " + form, needed, found});
    return MakeHint(question, MessageCode::ValuesOfStatement, {words, form, needed, found});
}

/// The call of a line: what stands before its parenthesis, and how many values stand in it.
struct LineCall {
    std::string_view name;
    std::size_t values = 0;
};

std::optional<LineCall> CallOf(const SourceLine& line) {
    const std::size_t open = FindOutsideQuotes(line.parsedLine, '(');
    const std::size_t close = open == kNone ? kNone : FindClosingParenthesis(line.parsedLine, open);
    if (close == kNone) return std::nullopt;
    const std::string_view before = Trim(line.parsedLine.substr(0, open));
    const std::size_t blank = before.rfind(' ');
    const std::string_view name = blank == kNone ? before : before.substr(blank + 1);
    return LineCall{name,
                    SplitCommaList(line.parsedLine.substr(open + 1, close - open - 1)).size()};
}

std::optional<Hint> HintOfRoutineValues(const HintQuestion& question, const LineCall& call) {
    const Compilation& compilation = question.compilation;
    const Symbol* symbol = compilation.symbols.FindOwn(call.name, ParentId::Program);
    if (symbol == nullptr || symbol->symbolClass != SymbolClass::Routine) return std::nullopt;
    const SourceLine& header = compilation.GetSourceLine(symbol->declareLineNo);
    const std::optional<LineCall> declared = CallOf(header);
    const bool isHere = header.file == question.line.file;
    if (!declared || declared->values == call.values || !isHere) return std::nullopt;
    return MakeHint(question, MessageCode::ValuesOfRoutine,
                    {std::to_string(header.fileLineNo), ToUtf8(ShownStatement(header)),
                     std::to_string(declared->values), std::to_string(call.values)});
}

std::optional<Hint> HintOfFunctionValues(const HintQuestion& question, const LineCall& call) {
    const Command* entry = question.compilation.FindCommand(call.name);
    const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function;
    const Statement* expected = isFunction ? FindFunction(entry->id) : nullptr;
    if (expected == nullptr || expected->Values().size() == call.values) return std::nullopt;
    return MakeHint(question, MessageCode::ValuesOfFunction,
                    {ToUtf8(FormText(question, *entry)), std::to_string(expected->Values().size()),
                     std::to_string(call.values)});
}

std::optional<Hint> FindWrongCount(const HintQuestion& question) {
    if (question.code != MessageCode::WrongArgumentCount) return std::nullopt;
    if (const auto statement = HintOfStatementValues(question)) return statement;
    const std::optional<LineCall> call = CallOf(question.line);
    if (!call) return std::nullopt;
    if (const auto routine = HintOfRoutineValues(question, *call)) return routine;
    return HintOfFunctionValues(question, *call);
}

bool IsVariable(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable;
}

bool IsSign(std::string_view text) {
    return text.size() == 1 && std::string_view("+-*/").find(text) != kNone;
}

bool HoldsSum(std::string_view text) {
    return text.find_first_of("+-*/") != kNone;
}

bool IsByte(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable &&
           symbol->type == DataType::Byte;
}

/// Mean = (Left + Right) / 2, where all of them are bytes: the sum may not fit into one.
std::optional<Hint> HalvesAdded(const HintQuestion& question, const std::string& target,
                                std::string_view inside, std::string_view behind) {
    constexpr std::string_view kOther = "Part";
    const std::size_t plus = inside.find('+');
    const bool isDivided = behind.starts_with('/') && ParseNumber(TrimBlanks(behind.substr(1)));
    if (plus == kNone || !isDivided || !IsByte(question, target)) return std::nullopt;
    const std::string_view first = TrimBlanks(inside.substr(0, plus));
    const std::string_view second = TrimBlanks(inside.substr(plus + 1));
    const Compilation& compilation = question.compilation;
    const bool areBytes = IsByte(question, first) && IsByte(question, second) &&
                          compilation.symbols.FindSymbol(kOther, question.line.parent) == nullptr;
    if (!areBytes) return std::nullopt;
    const auto line = [&](std::string_view name, std::string_view value, std::string_view rest) {
        std::string text(name);
        text.append(" ").append(compilation.GetCommandText(Token::Equal)).append(" ");
        return ToUtf8(text.append(value).append(" ").append(rest));
    };
    const std::string added =
        std::string(compilation.GetCommandText(Token::Plus)) + " " + std::string(kOther);
    std::string definition(compilation.GetCommandText(Token::DefineByte));
    definition.append(" ").append(kOther).append(" = 0");
    return MakeHint(question, MessageCode::HalvesAdded,
                    {line(target, first, behind), line(kOther, second, behind),
                     line(target, target, added), ToUtf8(definition)});
}

/// Mean = (Left + Right) / 2, Mean = 100 - (Left + Right)
std::optional<Hint> SumInTwo(const HintQuestion& question, std::string_view statement,
                             std::size_t open, std::size_t close) {
    const std::size_t equal = statement.find('=');
    if (equal == kNone || equal > open) return std::nullopt;
    const std::string target(TrimBlanks(statement.substr(0, equal)));
    const std::string_view inside = TrimBlanks(statement.substr(open + 1, close - open - 1));
    const std::string_view before = TrimBlanks(statement.substr(equal + 1, open - equal - 1));
    const std::string_view behind = TrimBlanks(statement.substr(close + 1));
    const bool isSecond =
        behind.empty() && before.size() > 1 && IsSign(before.substr(before.size() - 1));
    const bool isFirst = before.empty() && behind.size() > 1 && IsSign(behind.substr(0, 1));
    const bool isMeant = IsVariable(question, target) && HoldsSum(inside) &&
                         (isFirst || isSecond) && inside.find(target) == kNone &&
                         before.find(target) == kNone && behind.find(target) == kNone;
    if (!isMeant) return std::nullopt;
    if (auto halves = HalvesAdded(question, target, inside, behind)) return halves;
    // A product of bytes is a WORD, and two lines do not make it fit.
    const bool isProduct = inside.find('*') != kNone && IsByte(question, target);
    if (isProduct) return MakeHint(question, MessageCode::OneSumALine, {});
    const std::string begin =
        target + " " + std::string(question.compilation.GetCommandText(Token::Equal)) + " ";
    const std::string rest =
        isFirst ? target + " " + std::string(behind) : std::string(before) + " " + target;
    return MakeHint(question, MessageCode::SumInTwo,
                    {ToUtf8(begin + std::string(inside)), ToUtf8(begin + rest)});
}

/// WAIT(100)
std::optional<Hint> FindParentheses(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::ArgumentsInParentheses ||
                         question.code == MessageCode::CallWithoutName;
    if (!isAsked) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    const std::size_t open = FindOutsideQuotes(statement, '(');
    const std::size_t close = open == kNone ? kNone : FindOutsideQuotes(statement, ')', open + 1);
    const bool isOnlyPair = close != kNone &&
                            FindOutsideQuotes(statement, '(', open + 1) == kNone &&
                            FindOutsideQuotes(statement, ')', close + 1) == kNone;
    if (!isOnlyPair) return std::nullopt;
    std::string instead(TrimBlanks(statement.substr(0, open)));
    instead.append(" ").append(TrimBlanks(statement.substr(open + 1, close - open - 1)));
    const std::string_view behind = TrimBlanks(statement.substr(close + 1));
    if (const auto lines = SumInTwo(question, statement, open, close)) return lines;
    if (!behind.empty()) instead.append(" ").append(behind);
    return RewriteStatement(question, instead);
}

/// A routine of the program that gives no result; nothing when the name is not that of one.
const Symbol* PlainRoutine(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindOwn(name, ParentId::Program);
    if (symbol == nullptr || symbol->symbolClass != SymbolClass::Routine) return nullptr;
    const SourceLine& header = question.compilation.GetSourceLine(symbol->declareLineNo);
    const bool hasResult = !header.parsedLine.ends_with(')');
    return hasResult ? nullptr : symbol;
}

/// Drive(60), Halt and CALL Halt
std::optional<Hint> FindMissingCall(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string call(question.compilation.GetCommandText(Token::Call));
    const std::size_t end = statement.find_first_of(" \t(");
    const std::string_view first = statement.substr(0, end);
    std::string instead = call + " " + std::string(statement);
    const bool isCalled = question.code == MessageCode::UnknownCall && statement.ends_with(')');
    const bool isNamed = question.code == MessageCode::UnknownStatement && end == kNone;
    if ((isCalled || isNamed) && PlainRoutine(question, first) != nullptr) {
        if (isNamed) instead += "()";
        Hint hint = RewriteStatement(question, instead);
        const Hint text =
            MakeHint(question, MessageCode::CallIsMissing, {ToUtf8(first), ToUtf8(instead)});
        hint.text = text.text;
        return hint;
    }
    const bool hasMore = question.code == MessageCode::UnknownStatement && end != kNone &&
                         statement.find_first_of("(=") == kNone;
    const Symbol* routine = hasMore ? PlainRoutine(question, first) : nullptr;
    const bool takesNothing =
        routine != nullptr &&
        question.compilation.GetSourceLine(routine->declareLineNo).parsedLine.ends_with("()");
    if (takesNothing) {
        const std::string plain = call + " " + std::string(first) + "()";
        return MakeHint(question, MessageCode::CallIsMissing, {ToUtf8(first), ToUtf8(plain)});
    }
    const bool isWithoutList = question.code == MessageCode::ParenthesisNotClosed &&
                               EqualsIgnoreCase(first, call) && end != kNone &&
                               statement.find_first_of("()") == kNone;
    if (!isWithoutList) return std::nullopt;
    const std::string_view name = TrimBlanks(statement.substr(end));
    const Symbol* named = PlainRoutine(question, name);
    const bool isComplete =
        named != nullptr &&
        question.compilation.GetSourceLine(named->declareLineNo).parsedLine.ends_with("()");
    if (!isComplete) return std::nullopt;
    return RewriteStatement(question, std::string(statement) + "()");
}

/// IF Speed = 1 without THEN: four words and nothing more.
std::optional<Hint> FindMissingThen(const HintQuestion& question) {
    const bool isThen = question.code == MessageCode::ThenExpected;
    const std::string_view whole = StatementOf(question.line);
    const std::string_view last = whole.substr(whole.find_last_of(" \t") + 1);
    if (isThen && EqualsIgnoreCase(last, "DO"))
        return RewritePiece(question, last,
                            std::string(question.compilation.GetCommandText(Token::Then)));
    const std::string_view parsed = question.line.parsedLine;
    constexpr auto kBlanks = 3;
    if (!isThen || std::ranges::count(parsed, ' ') != kBlanks || parsed.find('(') != kNone)
        return std::nullopt;
    const std::string_view then = question.compilation.GetCommandText(Token::Then);
    const std::string_view statement = StatementOf(question.line);
    const std::size_t end = PlaceInLine(question.line, statement) + statement.size();
    const std::size_t colon = statement.ends_with(':') ? 1 : 0;
    Hint hint =
        MakeHint(question, colon > 0 ? MessageCode::InPlaceOfColon : MessageCode::MissingAtEnd,
                 {ToUtf8(then)});
    hint.fix = FixOf(question.line, end - colon, colon, " " + std::string(then));
    return hint;
}

/// IF Lost THEN, WHILE Lost
std::optional<Hint> FindFlagAlone(const HintQuestion& question) {
    if (question.code != MessageCode::ConditionIncomplete) return std::nullopt;
    const Compilation& compilation = question.compilation;
    for (const PlacedWord& word :
         WordsInLine(compilation.configuration.commands, question.line.text)) {
        const std::string_view name = word.In(question.line.text);
        const Symbol* symbol = compilation.symbols.FindSymbol(name, question.line.parent);
        if (symbol == nullptr) continue;
        const bool isFlag =
            symbol->symbolClass == SymbolClass::Variable && symbol->type == DataType::Flag;
        if (!isFlag) return std::nullopt;
        const std::string_view before = TrimBlanks(question.line.text.substr(0, word.begin));
        const std::string_view negation = compilation.GetCommandText(Token::Not);
        const bool isNegated =
            before.size() > negation.size() &&
            EqualsIgnoreCase(before.substr(before.size() - negation.size()), negation);
        std::string instead(name);
        instead.append(" ").append(compilation.GetCommandText(Token::Equal));
        instead.append(" ").append(
            compilation.GetCommandText(isNegated ? Token::False : Token::True));
        Hint hint =
            MakeHint(question, MessageCode::ComparisonOfFlag, {ToUtf8(name), ToUtf8(instead)});
        if (isNegated) {
            const std::size_t begin = before.size() - negation.size();
            hint.fix = FixOf(question.line, begin, word.End() - begin, instead);
            return hint;
        }
        const bool isAlone = std::ranges::count(question.line.parsedLine, ' ') <= 2;
        if (isAlone) hint.fix = FixOf(question.line, word.begin, word.length, instead);
        return hint;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Hint> FindValuesHint(const HintQuestion& question) {
    for (const auto find :
         {FindWrongCount, FindParentheses, FindMissingCall, FindMissingThen, FindFlagAlone}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
