#include <algorithm>
#include <array>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/called_names.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

bool IsAboutCalls(MessageCode code) {
    switch (code) {
        case MessageCode::UnknownRoutine:
        case MessageCode::UnknownCall:
        case MessageCode::UnknownStatement:
        case MessageCode::ParenthesisNotClosed:
        case MessageCode::BlankInCalledName:
        case MessageCode::UnknownOperator:
        case MessageCode::TypeMismatch: return true;
        default: return false;
    }
}

/// CALL Bumped(), Bumped()
std::optional<Hint> FindCalledEvent(const HintQuestion& question) {
    const auto event = LastNamed(question, SymbolClass::Event);
    if (!event || question.code == MessageCode::TypeMismatch) return std::nullopt;
    return MakeHint(question, MessageCode::EventCalled, {ToUtf8(event->text)});
}

/// CALL Speed, CALL alone and CALL Turn() where there is none
std::optional<Hint> FindCallOfNothing(const HintQuestion& question) {
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    const std::string_view statement = StatementOf(question.line);
    const SplitText split = SplitFirstWord(statement);
    if (!EqualsIgnoreCase(split.first, call)) return std::nullopt;
    if (split.rest.empty()) {
        const Command* entry = question.compilation.configuration.commands.ByToken(Token::Call);
        return MakeHint(question, MessageCode::FormOfStatement,
                        {ToUtf8(call), ToUtf8(FormText(question, *entry))});
    }
    const std::string_view name = SplitFirstWord(split.rest).first;
    const Symbol* symbol = SymbolOf(question, name);
    if (symbol != nullptr && symbol->symbolClass == SymbolClass::Variable)
        return MakeHint(question, MessageCode::VariableCalled, {ToUtf8(name)});
    const bool isName =
        symbol == nullptr && question.compilation.FindCommand(name) == nullptr &&
        std::ranges::all_of(name, [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
    if (!isName || question.code == MessageCode::TypeMismatch) return std::nullopt;
    return MakeHint(question, MessageCode::RoutineMissing, {ToUtf8(name)});
}

/// CALL Drive 1, 2 and Speed = Mean 1, 2
std::optional<Hint> FindCallWithoutParentheses(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::ParenthesisNotClosed ||
                         question.code == MessageCode::UnknownOperator ||
                         question.code == MessageCode::UnknownStatement;
    const std::string_view statement = StatementOf(question.line);
    const auto routine = LastNamed(question, SymbolClass::Routine);
    if (!isAsked || !routine || statement.find_first_of("()") != kNone) return std::nullopt;
    const std::size_t end = PlaceInLine(question.line, routine->text) + routine->text.size();
    const std::size_t from = end - PlaceInLine(question.line, statement);
    const std::string_view values = TrimBlanks(statement.substr(from));
    const std::size_t needed = SplitCommaList(ParametersOf(question, *routine->symbol)).size();
    if (values.empty() || SplitCommaList(values).size() != needed) return std::nullopt;
    const std::string_view before = statement.substr(
        0, PlaceInLine(question.line, routine->text) - PlaceInLine(question.line, statement));
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    const bool gives = GivesResult(question, *routine->symbol);
    const bool isWhole = gives ? TrimBlanks(before).ends_with('=')
                               : EqualsIgnoreCase(TrimBlanks(before), call) || before.empty();
    if (!isWhole) return std::nullopt;
    std::string instead(before.empty() ? std::string(call) + " " : std::string(before));
    instead.append(routine->text).append("(").append(values).append(")");
    return RewriteStatement(question, instead);
}

/// CALL Drive and CALL Drive 60, where Drive takes two values
std::optional<Hint> FindCallWithoutValues(const HintQuestion& question) {
    const SplitText split = SplitFirstWord(StatementOf(question.line));
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    const std::string_view name = SplitFirstWord(split.rest).first;
    const Symbol* routine = SymbolOf(question, name);
    const bool isAsked = question.code == MessageCode::ParenthesisNotClosed &&
                         EqualsIgnoreCase(split.first, call) && routine != nullptr &&
                         routine->symbolClass == SymbolClass::Routine &&
                         !GivesResult(question, *routine);
    if (!isAsked) return std::nullopt;
    std::string shown(call);
    shown.append(" ").append(name);
    shown.append("(").append(ParametersOf(question, *routine)).append(")");
    return MakeHint(question, MessageCode::ValuesInCall, {ToUtf8(name), ToUtf8(shown)});
}

/// CALL Drive(60, 60
std::optional<Hint> FindOpenList(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const bool isOpen =
        question.code == MessageCode::ParenthesisNotClosed &&
        std::ranges::count(statement, '(') == std::ranges::count(statement, ')') + 1 &&
        statement.find('"') == kNone;
    if (!isOpen) return std::nullopt;
    return RewriteStatement(question, std::string(statement) + ")");
}

/// Light = ANALOG(1))
std::optional<Hint> FindSecondEnd(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const bool isDouble = question.code == MessageCode::UnexpectedText &&
                          std::ranges::count(statement, '(') == 1 &&
                          std::ranges::count(statement, ')') == 2 && statement.ends_with("))");
    if (!isDouble) return std::nullopt;
    return RewriteStatement(question, std::string(statement.substr(0, statement.size() - 1)));
}

/// DO Halt(), RUN Halt
std::optional<Hint> FindOtherVerb(const HintQuestion& question) {
    const SplitText split = SplitFirstWord(StatementOf(question.line));
    const std::string_view called = TrimBlanks(split.rest);
    const std::string_view name =
        called.ends_with("()") ? called.substr(0, called.size() - 2) : called;
    const std::string call(question.compilation.GetCommandText(Token::Call));
    const bool isAsked = (question.code == MessageCode::UnknownCall ||
                          question.code == MessageCode::UnknownStatement) &&
                         !EqualsIgnoreCase(split.first, call) && called.find('=') == kNone;
    const Symbol* routine = isAsked ? SymbolOf(question, name) : nullptr;
    if (routine == nullptr || routine->symbolClass != SymbolClass::Routine ||
        GivesResult(question, *routine))
        return std::nullopt;
    const std::string list = "(" + ParametersOf(question, *routine) + ")";
    if (list.size() > 2)
        return MakeHint(question, MessageCode::ValuesInCall,
                        {ToUtf8(name), ToUtf8(call + " " + std::string(name) + list)});
    return RewriteStatement(question, call + " " + std::string(name) + list);
}

/// CALL Drive(Left, Right) with the names of the routine's own values
std::optional<Hint> FindParameterAsValue(const HintQuestion& question) {
    const auto routine = LastNamed(question, SymbolClass::Routine);
    if (question.code != MessageCode::UnknownName || !routine) return std::nullopt;
    const std::string names = ParametersOf(question, *routine->symbol);
    const auto parameters = SplitCommaList(names);
    const bool isParameter = std::ranges::any_of(
        parameters, [&](std::string_view name) { return EqualsIgnoreCase(name, question.extra); });
    if (!isParameter) return std::nullopt;
    return MakeHint(question, MessageCode::KnownInRoutine, {question.extra, ToUtf8(routine->text)});
}

/// RAISE EVENT Bumped, where a line says SET EVENT 3, Bumped
std::optional<Hint> FindNumberOfEvent(const HintQuestion& question) {
    const auto event = LastNamed(question, SymbolClass::Event);
    if (!event) return std::nullopt;
    const std::string_view words = question.compilation.GetCommandText(Token::SetEvent);
    for (const SourceLine& line : question.compilation.sourceLines) {
        if (line.token != Token::SetEvent) continue;
        const std::string_view statement = StatementOf(line);
        if (!StartsWithIgnoreCase(statement, words)) continue;
        const auto pieces = PiecesOf(statement.substr(words.size()));
        if (pieces.size() == 2 && ParseNumber(pieces[0]) &&
            EqualsIgnoreCase(pieces[1], event->text))
            return RewritePiece(question, event->text, std::string(pieces[0]));
    }
    return std::nullopt;
}

/// SET EVENT 3, Bumped() and SET EVENT Bumped, 3
std::optional<Hint> FindEventOfStatement(const HintQuestion& question) {
    const bool isAboutNumber =
        question.line.token == Token::ClearEvent || question.line.token == Token::RaiseEvent;
    if (isAboutNumber) return FindNumberOfEvent(question);
    if (question.line.token != Token::SetEvent) return std::nullopt;
    const auto event = LastNamed(question, SymbolClass::Event);
    const std::vector<std::string_view> pieces = PiecesOf(TypedPart(question));
    if (!event || pieces.size() < 2) return std::nullopt;
    const std::string_view number = ParseNumber(pieces[0]) ? pieces[0] : pieces[1];
    if (!ParseNumber(number)) return std::nullopt;
    std::string instead(question.compilation.GetCommandText(Token::SetEvent));
    instead.append(" ").append(number).append(", ").append(event->text);
    if (EqualsIgnoreCase(instead, StatementOf(question.line))) return std::nullopt;
    return RewriteStatement(question, instead);
}

/// CALL ROUTINE Halt()
std::optional<Hint> FindWordBehindCall(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const SplitText split = SplitFirstWord(statement);
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    const std::string_view before = TrimBlanks(split.rest.substr(0, split.rest.find('(')));
    const std::size_t blank = before.rfind(' ');
    const bool isAsked = question.code == MessageCode::BlankInCalledName &&
                         EqualsIgnoreCase(split.first, call) && blank != kNone;
    const Symbol* symbol = isAsked ? SymbolOf(question, before.substr(blank + 1)) : nullptr;
    if (symbol == nullptr || symbol->symbolClass != SymbolClass::Routine) return std::nullopt;
    return RewriteStatement(question,
                            std::string(call) + " " + std::string(split.rest.substr(blank + 1)));
}

/// Light = GET ANALOG(1), ANALOG PORT(1)
std::optional<Hint> FindWordsBeforeCall(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::size_t equal = FindOutsideQuotes(statement, '=');
    if (question.code != MessageCode::BlankInCalledName || equal == kNone) return std::nullopt;
    const std::string_view value = TrimBlanks(statement.substr(equal + 1));
    const std::string_view before = TrimBlanks(value.substr(0, value.find('(')));
    const std::size_t blank = before.rfind(' ');
    if (blank == kNone) return std::nullopt;
    const std::string_view name = before.substr(blank + 1);
    const Command* entry = question.compilation.FindCommand(name);
    const Symbol* symbol = SymbolOf(question, name);
    const std::string_view first = SplitFirstWord(before).first;
    const Command* function = question.compilation.FindCommand(first);
    const bool isFirst = function != nullptr && function->family == TokenFamily::Function &&
                         EqualsIgnoreCase(function->command, first);
    if (isFirst && (entry == nullptr || entry->family != TokenFamily::Function))
        return RewritePiece(question, value,
                            std::string(first) + std::string(value.substr(before.size())));
    const bool isCalled = (entry != nullptr && entry->family == TokenFamily::Function) ||
                          (symbol != nullptr && symbol->symbolClass == SymbolClass::Routine &&
                           GivesResult(question, *symbol));
    if (!isCalled) return std::nullopt;
    return RewritePiece(question, value, std::string(value.substr(blank + 1)));
}

/// Speed = CALL Mean(1, 2)
std::optional<Hint> FindCallInValue(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    const std::size_t equal = FindOutsideQuotes(statement, '=');
    if (question.code != MessageCode::BlankInCalledName || equal == kNone) return std::nullopt;
    const std::string_view value = TrimBlanks(statement.substr(equal + 1));
    const SplitText split = SplitFirstWord(value);
    const auto routine = LastNamed(question, SymbolClass::Routine);
    if (!EqualsIgnoreCase(split.first, call) || !routine) return std::nullopt;
    const std::string_view called = TrimBlanks(value.substr(call.size()));
    if (!GivesResult(question, *routine->symbol))
        return MakeHint(
            question, MessageCode::RoutineWithoutResult,
            {ToUtf8(routine->text), ToUtf8(std::string(call) + " " + std::string(called))});
    return RewriteStatement(
        question, std::string(statement.substr(0, equal + 1)) + " " + std::string(called));
}

/// Mean(1, 2) alone, Speed = Mean
std::optional<Hint> FindRoutineAlone(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const auto routine = LastNamed(question, SymbolClass::Routine);
    if (!routine) return std::nullopt;
    const bool gives = GivesResult(question, *routine->symbol);
    const bool isFirst = routine->text.data() == statement.data();
    const bool isStatement =
        question.code == MessageCode::UnknownCall || question.code == MessageCode::UnknownStatement;
    if (isFirst && isStatement && gives)
        return MakeHint(question, MessageCode::ResultIsLost, {ToUtf8(routine->text)});
    const bool isAssigned = question.line.purpose == Purpose::Assignment ||
                            question.line.purpose == Purpose::FunctionAssignment;
    const bool isValue = question.code == MessageCode::TypeMismatch && isAssigned &&
                         EqualsIgnoreCase(question.extra, routine->text) &&
                         statement.find('(') == kNone;
    if (!isValue) return std::nullopt;
    std::string instead(routine->text);
    instead.append("(").append(ParametersOf(question, *routine->symbol)).append(")");
    const std::string_view call = question.compilation.GetCommandText(Token::Call);
    if (!gives)
        return MakeHint(question, MessageCode::RoutineWithoutResult,
                        {ToUtf8(routine->text), ToUtf8(std::string(call) + " " + instead)});
    return MakeHint(question, MessageCode::RoutineAsValue,
                    {ToUtf8(routine->text), ToUtf8(instead)});
}

}  // namespace

std::optional<Hint> FindCallHint(const HintQuestion& question) {
    for (const auto find :
         {FindEventOfStatement, FindOpenList, FindSecondEnd, FindParameterAsValue}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    if (!IsAboutCalls(question.code)) return std::nullopt;
    if (std::optional<Hint> verb = FindOtherVerb(question)) return verb;
    for (const auto find :
         {FindCalledEvent, FindCallInValue, FindWordsBeforeCall, FindWordBehindCall,
          FindCallWithoutParentheses, FindCallWithoutValues, FindRoutineAlone, FindCallOfNothing}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
