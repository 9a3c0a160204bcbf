#include "codegen/generate_object_lines.h"

#include <array>
#include <cassert>

#include "codegen/generators.h"
#include "model/statement_table.h"

namespace zentro {

namespace {

using Generator = void (*)(Compilation&, SourceLine&);

/// What writes a line; null for what needs no code.
constexpr Generator GeneratorOf(Coding coding) {
    switch (coding) {
        case Coding::None: return nullptr;
        case Coding::ProgramStart: return GenerateBeginProgram;
        case Coding::ProgramEnd: return GenerateEndProgram;
        case Coding::RoutineStart: return GenerateRoutineStart;
        case Coding::Return: return GenerateReturn;
        case Coding::EventEnd: return GenerateCompleteEvent;
        case Coding::Call: return GenerateCall;
        case Coding::If: return GenerateIf;
        case Coding::Else: return GenerateElse;
        case Coding::JumpTarget: return GenerateJumpTarget;
        case Coding::While: return GenerateWhile;
        case Coding::EndWhile: return GenerateEndWhile;
        case Coding::Until: return GenerateUntil;
        case Coding::EndLoop: return GenerateEndLoop;
        case Coding::Select: return GenerateSelect;
        case Coding::Case: return GenerateCase;
        case Coding::Instruction: return GenerateInstruction;
        case Coding::Division: return GenerateDivision;
        case Coding::Not: return GenerateNot;
        case Coding::Complement: return GenerateComplement;
        case Coding::Joystick: return GenerateJoystick;
        case Coding::Leds: return GenerateSetLeds;
        case Coding::Silence: return GenerateStopSound;
    }
    return nullptr;
}

/// The generators by token, so that a line needs no search.
constexpr std::array<Generator, kTokenCount> MakeGeneratorTable() {
    std::array<Generator, kTokenCount> generators{};
    for (const Statement& row : kStatementTable)
        generators[static_cast<std::size_t>(row.token)] = GeneratorOf(row.code.coding);
    return generators;
}
constexpr std::array<Generator, kTokenCount> kGeneratorByToken = MakeGeneratorTable();

}  // namespace

void GenerateObjectLines(Compilation& compilation, SourceLine& line) {
    if (!line.GeneratesCode()) return;
    const Generator generate = kGeneratorByToken[static_cast<std::size_t>(line.token)];
    assert(generate != nullptr && "a line was classified as code that no generator knows");
    generate(compilation, line);
}

void GenerateJumpToProgram(Compilation& compilation, const SourceLine& line) {
    Append(compilation, line, Opcode::Jump, ObjectComment::SourceLine, {&compilation.programStart});
}

ObjectLine& Append(Compilation& compilation, const SourceLine& line, Opcode opcode,
                   ObjectComment comment, std::initializer_list<const Label*> arguments) {
    return compilation.objectLines.emplace_back(
        CreateObjectLine(opcode, line, comment, {arguments.begin(), arguments.size()}));
}

const LineElement& Target(const Compilation& compilation, const SourceLine& line) {
    const LineElement* element = compilation.GetElement(line, ElementUse::Written);
    assert(element != nullptr);
    return *element;
}

const LineElement& Operand(const Compilation& compilation, const SourceLine& line,
                           std::size_t index) {
    const LineElement* element = compilation.GetElement(line, ElementUse::Read, index);
    assert(element != nullptr);
    return *element;
}

const Label* LabelOfLine(const Compilation& compilation, std::int32_t lineNumber) {
    return compilation.GetSourceLine(lineNumber).label;
}

}  // namespace zentro
