#include "codegen/generate_object_lines.h"

#include <array>
#include <cassert>

#include "codegen/generators.h"

namespace zentro {

namespace {

using Generator = void (*)(Compilation&, SourceLine&);

struct GeneratorRow {
    Token token;
    Generator generate;
};

/// The generators by token. Tokens without a row generate nothing.
constexpr std::array kGenerators{
    GeneratorRow{Token::BeginProgram, GenerateBeginProgram},
    GeneratorRow{Token::EndProgram, GenerateEndProgram},
    GeneratorRow{Token::DefineRoutine, GenerateRoutineStart},
    GeneratorRow{Token::DefineEvent, GenerateRoutineStart},
    GeneratorRow{Token::EndRoutine, GenerateReturn},
    GeneratorRow{Token::Return, GenerateReturn},
    GeneratorRow{Token::EndEvent, GenerateCompleteEvent},
    GeneratorRow{Token::Call, GenerateCall},
    GeneratorRow{Token::RoutineCall, GenerateCall},

    GeneratorRow{Token::If, GenerateIf},
    GeneratorRow{Token::Else, GenerateElse},
    GeneratorRow{Token::EndIf, GenerateJumpTarget},
    GeneratorRow{Token::While, GenerateWhile},
    GeneratorRow{Token::EndWhile, GenerateEndWhile},
    GeneratorRow{Token::Repeat, GenerateJumpTarget},
    GeneratorRow{Token::Until, GenerateUntil},
    GeneratorRow{Token::Loop, GenerateJumpTarget},
    GeneratorRow{Token::EndLoop, GenerateEndLoop},
    GeneratorRow{Token::Select, GenerateSelect},
    GeneratorRow{Token::Case, GenerateCase},
    GeneratorRow{Token::CaseElse, GenerateElse},
    GeneratorRow{Token::EndSelect, GenerateJumpTarget},

    GeneratorRow{Token::Equal, GenerateMove},
    GeneratorRow{Token::Plus, GenerateArithmetic},
    GeneratorRow{Token::Minus, GenerateArithmetic},
    GeneratorRow{Token::Multiply, GenerateArithmetic},
    GeneratorRow{Token::And, GenerateArithmetic},
    GeneratorRow{Token::Or, GenerateArithmetic},
    GeneratorRow{Token::Divide, GenerateDivision},
    GeneratorRow{Token::Mod, GenerateDivision},
    GeneratorRow{Token::Not, GenerateNot},

    GeneratorRow{Token::EmergencyStop, GenerateDevice},
    GeneratorRow{Token::PowerOff, GenerateDevice},
    GeneratorRow{Token::Escape, GenerateDevice},
    GeneratorRow{Token::DisableEvents, GenerateDevice},
    GeneratorRow{Token::EnableEvents, GenerateDevice},
    GeneratorRow{Token::DeferEvents, GenerateDevice},
    GeneratorRow{Token::StopMotors, GenerateDevice},
    GeneratorRow{Token::SetMotor, GenerateDevice},
    GeneratorRow{Token::SetServo, GenerateDevice},
    GeneratorRow{Token::SetServoPercent, GenerateDevice},
    GeneratorRow{Token::CalibrateJoystick, GenerateDevice},
    GeneratorRow{Token::SetPort, GenerateDevice},
    GeneratorRow{Token::PlaySound, GenerateDevice},
    GeneratorRow{Token::PlayTune, GenerateDevice},
    GeneratorRow{Token::DisplayHex, GenerateDevice},
    GeneratorRow{Token::Display, GenerateDevice},
    GeneratorRow{Token::Wait, GenerateDevice},
    GeneratorRow{Token::SetEvent, GenerateDevice},
    GeneratorRow{Token::ClearEvent, GenerateDevice},
    GeneratorRow{Token::RaiseEvent, GenerateDevice},
    GeneratorRow{Token::Battery, GenerateDevice},
    GeneratorRow{Token::AddressOf, GenerateDevice},
    GeneratorRow{Token::Digital, GenerateDevice},
    GeneratorRow{Token::Analog, GenerateDevice},
    GeneratorRow{Token::Timed, GenerateDevice},
    GeneratorRow{Token::PulseLength, GenerateDevice},
    GeneratorRow{Token::ProgramNumber, GenerateDevice},
    GeneratorRow{Token::Button, GenerateDevice},
    GeneratorRow{Token::PulseCount, GenerateDevice},
    GeneratorRow{Token::TimedPulseCount, GenerateDevice},
    GeneratorRow{Token::ToByte, GenerateDevice},
    GeneratorRow{Token::LowByte, GenerateDevice},
    GeneratorRow{Token::ToWord, GenerateDevice},
    GeneratorRow{Token::Random, GenerateDevice},
    GeneratorRow{Token::Clock, GenerateDevice},

    GeneratorRow{Token::Push, GenerateSized},
    GeneratorRow{Token::Pop, GenerateSized},
    GeneratorRow{Token::Write, GenerateSized},
    GeneratorRow{Token::Read, GenerateSized},
    GeneratorRow{Token::Increment, GenerateSized},
    GeneratorRow{Token::Decrement, GenerateSized},

    GeneratorRow{Token::Joystick, GenerateJoystick},
    GeneratorRow{Token::Stick, GenerateJoystick},
    GeneratorRow{Token::SetLeds, GenerateSetLeds},
    GeneratorRow{Token::Complement, GenerateComplement},
    GeneratorRow{Token::StopSound, GenerateStopSound},
};

constexpr std::array<Generator, kTokenCount> MakeGeneratorTable() {
    std::array<Generator, kTokenCount> generators{};
    for (const GeneratorRow& row : kGenerators) {
        generators[static_cast<std::size_t>(row.token)] = row.generate;
    }
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
