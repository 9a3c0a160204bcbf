#include <optional>
#include <vector>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

/// The pieces of a call.
struct CallText {
    std::string_view name;
    std::string_view arguments;
    std::string_view rest;  ///< what follows the closing ")"
};

/// What a called routine or function takes and gives.
struct Callee {
    Token token = Token::None;
    std::string_view name;
    const Label* location = nullptr;  ///< of a routine
    std::vector<StatementValue> arguments;
    bool hasResult = false;
    DataType result = DataType::Any;
};

/// True when an operator or a comparison stands before the call: X + Name(
bool FollowsOperator(const Compilation& compilation, std::string_view name) {
    const std::string_view second = SplitFirstWord(SplitFirstWord(name, true).rest).first;
    return FamilyOf(compilation.configuration.commands.FindCommandToken(second)) ==
           TokenFamily::Operator;
}

std::optional<CallText> SplitCall(Compilation& compilation, SourceLine& line,
                                  std::string_view text) {
    const auto refuse = [&](MessageCode code) {
        compilation.diagnostics.PostError(code, &line);
        return std::nullopt;
    };
    const std::size_t open = FindOutsideQuotes(text, '(');
    const std::size_t firstClosing = FindOutsideQuotes(text, ')');
    // A stray ")" makes a condition look like a call.
    if (firstClosing == kNone || open == kNone || open > firstClosing) {
        return refuse(MessageCode::ParenthesisNotClosed);
    }
    const std::size_t closing = FindClosingParenthesis(text, open);
    CallText call;
    call.name = Trim(text.substr(0, open));
    call.arguments = Trim(text.substr(open + 1, closing - open - 1));
    call.rest = Trim(text.substr(closing + 1));
    if (call.name.empty()) return refuse(MessageCode::CallWithoutName);
    if (call.name.find(' ') != kNone) {
        return refuse(FollowsOperator(compilation, call.name) ? MessageCode::CallInsideStatement
                                                              : MessageCode::BlankInCalledName);
    }
    if (RefuseCall(compilation, call.arguments, line)) return std::nullopt;
    return call;
}

/// A routine of the program, by its header.
std::optional<Callee> FindRoutine(Compilation& compilation, SourceLine& line,
                                  std::string_view name) {
    const Symbol* symbol = compilation.symbols.FindOwn(name, ParentId::Program);
    if (symbol == nullptr || symbol->symbolClass != SymbolClass::Routine) {
        compilation.diagnostics.PostError(MessageCode::UnknownRoutine, &line, Shorten(name));
        return std::nullopt;
    }
    Callee callee;
    callee.token = Token::RoutineCall;
    callee.name = symbol->name;
    callee.location = &symbol->label;
    const SourceLine& header = compilation.GetSourceLine(symbol->declareLineNo);
    for (const LineElement& element : compilation.ElementsOf(header)) {
        if (element.use == ElementUse::Written) {
            callee.hasResult = true;
            callee.result = element.type;
        } else {
            callee.arguments.push_back({{}, StatementValue::Kind::Operand, element.type, {}});
        }
    }
    return callee;
}

/// A function of the language. As a condition only NOT can stand alone.
std::optional<Callee> FindCalledFunction(Compilation& compilation, SourceLine& line,
                                         const Command& entry, CallRole role) {
    const auto refuse = [&](MessageCode code, std::string_view extra = {}) {
        compilation.diagnostics.PostError(code, &line, extra);
        return std::nullopt;
    };
    if (entry.family != TokenFamily::Function) {
        return refuse(MessageCode::UnknownRoutine, entry.command);
    }
    if (role == CallRole::Condition && entry.id != Token::Not) {
        return refuse(MessageCode::NotACondition);
    }
    const Statement* expected = FindFunction(entry.id);
    if (expected == nullptr) return refuse(MessageCode::NotSupported);
    Callee callee{entry.id, entry.command, nullptr, {}, true, expected->result};
    const auto values = expected->Values();
    callee.arguments.assign(values.begin(), values.end());
    return callee;
}

/// A function whose argument is of any type works on its target's type.
Expectation ExpectationFor(const StatementValue& argument, const Callee& callee,
                           const std::optional<LineElement>& target) {
    Expectation expected = ExpectationOf(argument);
    const bool followsTarget = callee.token == Token::Not && target && IsByteSized(target->type);
    if (followsTarget) expected.type = target->type;
    return expected;
}

void ParseCallArguments(Compilation& compilation, SourceLine& line, const Callee& callee,
                        const std::vector<std::string_view>& items,
                        const std::optional<LineElement>& target) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        AddOperand(compilation, items[i], line,
                   ExpectationFor(callee.arguments[i], callee, target));
    }
    if (!target || callee.result == DataType::Any) return;
    if (!TypeSuits(target->type, callee.result)) {
        compilation.diagnostics.PostRangeError(line, {SymbolClass::Variable, target->type},
                                               Shorten(callee.name),
                                               {SymbolClass::Variable, callee.result});
    }
}

/// Tells the line what it calls: as its token, or as the kind of its condition.
void AddCall(Compilation& compilation, SourceLine& line, const Callee& callee, CallRole role) {
    LineElement call;
    call.elementClass = ElementClass::Call;
    call.location = callee.location;
    compilation.AddElement(line, call);
    if (role != CallRole::Condition) {
        line.token = callee.token;
        return;
    }
    LineElement kind;
    kind.elementClass = ElementClass::Comparison;
    kind.comparison = callee.token;
    compilation.AddElement(line, kind);
}

std::optional<LineElement> TargetOf(const Compilation& compilation, const SourceLine& line) {
    const LineElement* target = compilation.GetElement(line, ElementUse::Written);
    return target == nullptr ? std::nullopt : std::optional(*target);
}

}  // namespace

std::optional<std::string_view> ParseCall(Compilation& compilation, SourceLine& line,
                                          std::string_view text, CallRole role) {
    const std::optional<LineElement> target = TargetOf(compilation, line);
    const std::optional<CallText> call = SplitCall(compilation, line, text);
    if (!call) return std::nullopt;
    const Command* entry = compilation.FindCommand(call->name);
    const std::optional<Callee> callee = entry == nullptr
                                             ? FindRoutine(compilation, line, call->name)
                                             : FindCalledFunction(compilation, line, *entry, role);
    if (!callee) return call->rest;
    AddCall(compilation, line, *callee, role);
    const std::vector<std::string_view> items = SplitCommaList(call->arguments);
    const bool wantsResult = role != CallRole::Statement;
    if (items.size() != callee->arguments.size() || wantsResult != callee->hasResult) {
        compilation.diagnostics.PostError(MessageCode::WrongArgumentCount, &line);
        return call->rest;
    }
    ParseCallArguments(compilation, line, *callee, items, target);
    return call->rest;
}

void ParseCallStatement(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    line.purpose = Purpose::Statement;
    const auto rest = ParseCall(compilation, line, arguments, CallRole::Statement);
    if (rest && !rest->empty()) {
        compilation.diagnostics.PostError(MessageCode::UnexpectedText, &line);
    }
}

}  // namespace zentro
