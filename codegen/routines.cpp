#include <cassert>
#include <string>

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

std::string_view SizeWord(DataType type) {
    return IsByteSized(type) ? "Byte " : "Word ";
}

std::string_view Comment(Compilation& compilation, std::string_view verb, DataType type,
                         std::string_view name) {
    return compilation.texts.Concat(verb, SizeWord(type), name);
}

/// Pops what the stack holds into the elements of one use, from the last to the first.
void AppendPops(Compilation& compilation, SourceLine& line, ElementUse use) {
    for (auto element = line.elements.rbegin(); element != line.elements.rend(); ++element) {
        if (element->use != use) continue;
        Append(compilation, line, PopFor(element->type),
               Comment(compilation, "Pop ", element->type, element->Name()),
               {AddressArgument(*element)});
    }
}

void AppendDefault(Compilation& compilation, SourceLine& line, const Symbol& variable) {
    const std::string_view comment = compilation.texts.Concat("Defaulting ", variable.name);
    const std::string_view value = *variable.defaultValue;
    const ObjectArgument target = AddressArgument(variable.label);
    const std::int32_t number = NumberOf(value).value_or(0);
    if (variable.type == DataType::Flag) {
        Append(compilation, line, number == kFlagTrue ? Opcode::SetFlagTrue : Opcode::SetFlagFalse,
               comment, {target});
        return;
    }
    const bool isByte = variable.type == DataType::Byte;
    if (number == 0 && IsNumeric(value)) {
        Append(compilation, line, isByte ? Opcode::ClearByte : Opcode::ClearWord, comment,
               {target});
        return;
    }
    const ConstantKind kind = IsNumeric(value) ? ConstantKind::NamedOrNumber : ConstantKind::Text;
    const Constant& constant = compilation.symbols.AddConstant(value, value, kind);
    Append(compilation, line, isByte ? Opcode::MoveByte : Opcode::MoveWord, comment,
           {AddressArgument(isByte ? constant.byte : constant.word), target});
}

/// Gives the variables of a routine, or of the program, their initial values.
void AppendDefaults(Compilation& compilation, SourceLine& line, std::string_view parentName) {
    for (const Symbol* variable : compilation.symbols.SymbolsOf(parentName)) {
        if (variable->defaultValue) AppendDefault(compilation, line, *variable);
    }
}

/// The routine that the line calls.
const Symbol& CalledRoutine(Compilation& compilation, const SourceLine& line) {
    const LineElement* call = line.GetElement(ElementClass::Call);
    assert(call != nullptr);
    const Symbol* routine = compilation.symbols.FindOwn(call->value, kProgram);
    assert(routine != nullptr);
    return *routine;
}

/// The variables of a routine that a call from inside a routine must not lose: all but the one that
/// receives the result. A routine can call itself, and its variables have one place each.
std::vector<const Symbol*> VariablesToSave(Compilation& compilation, const SourceLine& line,
                                           const Symbol& routine) {
    std::vector<const Symbol*> variables;
    if (line.parentName == kProgram) return variables;
    const LineElement* result = line.GetElement(ElementUse::Written);
    for (const Symbol* symbol : compilation.symbols.SymbolsOf(routine.name)) {
        const bool isResult = result != nullptr && result->location == &symbol->label;
        if (!isResult) variables.push_back(symbol);
    }
    return variables;
}

void AppendSaves(Compilation& compilation, SourceLine& line, const Symbol& routine,
                 const std::vector<const Symbol*>& variables) {
    if (variables.empty()) return;
    const std::string_view verb = compilation.texts.Concat("Push ", routine.name, "'s Local ");
    for (const Symbol* variable : variables) {
        Append(compilation, line, PushFor(variable->type),
               Comment(compilation, verb, variable->type, variable->name),
               {AddressArgument(variable->label)});
    }
}

void AppendRestores(Compilation& compilation, SourceLine& line,
                    const std::vector<const Symbol*>& variables) {
    for (auto variable = variables.rbegin(); variable != variables.rend(); ++variable) {
        Append(compilation, line, PopFor((*variable)->type),
               Comment(compilation, "Pop Local ", (*variable)->type, (*variable)->name),
               {AddressArgument((*variable)->label)});
    }
}

void AppendArgumentPushes(Compilation& compilation, SourceLine& line, const Symbol& routine) {
    const SourceLine& header = compilation.GetSourceLine(routine.declareLineNo);
    const std::size_t arguments = line.CountElements(ElementUse::Read);
    for (std::size_t i = 0; i < arguments; ++i) {
        const LineElement& argument = Operand(line, i);
        const DataType type = Operand(header, i).type;
        Append(compilation, line, PushFor(type),
               Comment(compilation, "Push ", type, argument.Name()), {AddressArgument(argument)});
    }
}

bool LastIsReturn(const Compilation& compilation) {
    return !compilation.objectLines.empty() &&
           compilation.objectLines.back().purpose == ObjectPurpose::Instruction &&
           compilation.objectLines.back().opcode == Opcode::Return;
}

void AppendPush(Compilation& compilation, SourceLine& line, DataType type, const Label& value) {
    Append(compilation, line, PushFor(type), Comment(compilation, "Push ", type, value.name),
           {AddressArgument(value)});
}

/// The end of a routine is reached although it has to return something: it returns 0.
void AppendZero(Compilation& compilation, SourceLine& line, DataType type) {
    compilation.diagnostics.PostError(MessageCode::RoutineEndReached, &line);
    const Constant& zero = compilation.symbols.AddConstant("0", "0", ConstantKind::NamedOrNumber);
    AppendPush(compilation, line, type, IsByteSized(type) ? zero.byte : zero.word);
}

}  // namespace

void GenerateBeginProgram(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::Nop, line.parsedLine).label = &compilation.programStart;
    AppendDefaults(compilation, line, kProgram);
}

void GenerateEndProgram(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::End, line.parsedLine).label = &compilation.programEnd;
}

void GenerateRoutineStart(Compilation& compilation, SourceLine& line) {
    Symbol* routine = compilation.symbols.RoutineDeclaredAt(line.lineNumber);
    assert(routine != nullptr);
    Append(compilation, line, Opcode::Nop, line.parsedLine).label = &routine->label;
    AppendPops(compilation, line, ElementUse::Read);
    AppendDefaults(compilation, line, routine->name);
}

void GenerateReturn(Compilation& compilation, SourceLine& line) {
    const Symbol* routine = compilation.symbols.FindOwn(line.parentName, kProgram);
    assert(routine != nullptr);
    if (routine->symbolClass == SymbolClass::Event) {
        GenerateCompleteEvent(compilation, line);
        return;
    }
    const LineElement* result =
        compilation.GetSourceLine(routine->declareLineNo).GetElement(ElementUse::Written);
    if (result != nullptr) {
        if (LastIsReturn(compilation)) return;
        if (line.token == Token::Return) {
            const LineElement& value = Operand(line, 0);
            AppendPush(compilation, line, value.type, *value.location);
        } else {
            AppendZero(compilation, line, result->type);
        }
    }
    Append(compilation, line, Opcode::Return, "Return");
}

void GenerateCompleteEvent(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::CompleteEvent, line.parsedLine);
}

void GenerateCall(Compilation& compilation, SourceLine& line) {
    const Symbol& routine = CalledRoutine(compilation, line);
    const std::vector<const Symbol*> saved = VariablesToSave(compilation, line, routine);
    AppendSaves(compilation, line, routine, saved);
    AppendArgumentPushes(compilation, line, routine);
    Append(compilation, line, Opcode::Call, line.parsedLine, {AddressArgument(routine.label)});
    AppendPops(compilation, line, ElementUse::Written);
    AppendRestores(compilation, line, saved);
}

}  // namespace zentro
