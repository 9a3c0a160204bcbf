#include <cassert>

#include "codegen/generators.h"
#include "config/text.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

Opcode PushFor(DataType type) {
    return IsByteSized(type) ? Opcode::PushByte : Opcode::PushWord;
}
Opcode PopFor(DataType type) {
    return IsByteSized(type) ? Opcode::PopByte : Opcode::PopWord;
}

/// Pops what the stack holds into the elements of one use, from the last to the first.
void AppendPops(Compilation& compilation, SourceLine& line, ElementUse use) {
    const auto elements = compilation.ElementsOf(line);
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
        if (element->use != use) continue;
        Append(compilation, line, PopFor(element->type), ObjectComment::PopParameter,
               {element->location});
    }
}

void AppendDefault(Compilation& compilation, SourceLine& line, const Symbol& variable) {
    const auto append = [&](Opcode opcode, std::initializer_list<const Label*> arguments) {
        Append(compilation, line, opcode, ObjectComment::Default, arguments);
    };
    const Label* target = &variable.label;
    const std::string_view value = variable.defaultValue;
    const std::int32_t number = NumberOf(value).value_or(0);
    if (variable.type == DataType::Flag) {
        return append(number == kFlagTrue ? Opcode::SetFlagTrue : Opcode::SetFlagFalse, {target});
    }
    const bool isByte = variable.type == DataType::Byte;
    if (number == 0 && IsNumeric(value)) {
        return append(isByte ? Opcode::ClearByte : Opcode::ClearWord, {target});
    }
    const ConstantKind kind = IsNumeric(value) ? ConstantKind::NamedOrNumber : ConstantKind::Text;
    const Constant& constant = compilation.symbols.AddConstant(value, value, kind);
    append(isByte ? Opcode::MoveByte : Opcode::MoveWord,
           {isByte ? &constant.byte : &constant.word, target});
}

/// Gives the variables of a routine, or of the program, their initial values.
void AppendDefaults(Compilation& compilation, SourceLine& line, ParentId parent) {
    for (const Symbol* variable = compilation.symbols.FirstOf(parent); variable != nullptr;
         variable = variable->nextOfParent) {
        if (variable->IsDefaulted()) AppendDefault(compilation, line, *variable);
    }
}

const Symbol& RoutineNamed(Compilation& compilation, std::string_view name) {
    const Symbol* routine = compilation.symbols.FindOwn(name, ParentId::Program);
    assert(routine != nullptr);
    return *routine;
}

/// The variables of a routine that a call from inside a routine must not lose: all but the one that
/// receives the result. A routine can call itself, and its variables have one place each.
std::vector<const Symbol*> VariablesToSave(Compilation& compilation, const SourceLine& line,
                                           std::string_view routineName) {
    std::vector<const Symbol*> variables;
    if (line.parent == ParentId::Program) return variables;
    const LineElement* result = compilation.GetElement(line, ElementUse::Written);
    const ParentId routine = compilation.symbols.ParentWithName(routineName);
    for (const Symbol* variable = compilation.symbols.FirstOf(routine); variable != nullptr;
         variable = variable->nextOfParent) {
        const bool isResult = result != nullptr && result->location == &variable->label;
        if (!isResult) variables.push_back(variable);
    }
    return variables;
}

void AppendArgumentPushes(Compilation& compilation, SourceLine& line, const Symbol& routine) {
    const auto parameters =
        compilation.ElementsOf(compilation.GetSourceLine(routine.declareLineNo));
    auto parameter = parameters.begin();
    for (const LineElement& argument : compilation.ElementsOf(line)) {
        if (argument.use != ElementUse::Read) continue;
        Append(compilation, line, PushFor(parameter->type), ObjectComment::PushArgument,
               {argument.location});
        ++parameter;
    }
}

/// Within a routine, whose start is an instruction.
bool LastIsReturn(const Compilation& compilation) {
    return compilation.objectLines.back().opcode == Opcode::Return;
}

void AppendPush(Compilation& compilation, SourceLine& line, DataType type, const Label* value) {
    Append(compilation, line, PushFor(type), ObjectComment::PushArgument, {value});
}

/// The end of a routine is reached although it has to return something: it returns 0.
void AppendZero(Compilation& compilation, SourceLine& line, DataType type) {
    compilation.diagnostics.PostError(MessageCode::RoutineEndReached, &line);
    const Constant& zero = compilation.symbols.AddConstant("0", "0", ConstantKind::NamedOrNumber);
    AppendPush(compilation, line, type, IsByteSized(type) ? &zero.byte : &zero.word);
}

}  // namespace

void GenerateBeginProgram(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::Nop, ObjectComment::SourceLine).label =
        &compilation.programStart;
    AppendDefaults(compilation, line, ParentId::Program);
}

void GenerateEndProgram(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::End, ObjectComment::SourceLine).label =
        &compilation.programEnd;
}

void GenerateRoutineStart(Compilation& compilation, SourceLine& line) {
    Symbol* routine =
        compilation.symbols.FindOwn(compilation.symbols.NameOf(line.parent), ParentId::Program);
    assert(routine != nullptr);
    Append(compilation, line, Opcode::Nop, ObjectComment::SourceLine).label = &routine->label;
    AppendPops(compilation, line, ElementUse::Read);
    AppendDefaults(compilation, line, line.parent);
}

void GenerateReturn(Compilation& compilation, SourceLine& line) {
    const Symbol& routine = RoutineNamed(compilation, compilation.symbols.NameOf(line.parent));
    if (routine.symbolClass == SymbolClass::Event) return GenerateCompleteEvent(compilation, line);
    const LineElement* result = compilation.GetElement(
        compilation.GetSourceLine(routine.declareLineNo), ElementUse::Written);
    if (result != nullptr) {
        if (LastIsReturn(compilation)) return;
        if (line.token == Token::Return) {
            const LineElement& value = Operand(compilation, line, 0);
            AppendPush(compilation, line, value.type, value.location);
        } else {
            AppendZero(compilation, line, result->type);
        }
    }
    Append(compilation, line, Opcode::Return, ObjectComment::Return);
}

void GenerateCompleteEvent(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::CompleteEvent, ObjectComment::SourceLine);
}

void GenerateCall(Compilation& compilation, SourceLine& line) {
    const LineElement* call = compilation.GetElement(line, ElementClass::Call);
    assert(call != nullptr);
    const Symbol& routine = RoutineNamed(compilation, call->Name());
    const std::vector<const Symbol*> saved = VariablesToSave(compilation, line, routine.name);
    for (const Symbol* variable : saved) {
        Append(compilation, line, PushFor(variable->type), ObjectComment::SaveLocal,
               {&variable->label});
    }
    AppendArgumentPushes(compilation, line, routine);
    Append(compilation, line, Opcode::Call, ObjectComment::SourceLine, {&routine.label});
    AppendPops(compilation, line, ElementUse::Written);
    for (auto variable = saved.rbegin(); variable != saved.rend(); ++variable) {
        Append(compilation, line, PopFor((*variable)->type), ObjectComment::RestoreLocal,
               {&(*variable)->label});
    }
}

}  // namespace zentro
