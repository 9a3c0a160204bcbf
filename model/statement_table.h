#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "model/statement.h"

namespace zentro {

// The table of statements, for what is made from it while compiling. Others ask `FindStatement`.

namespace statement_table {

using Sources = std::array<ArgumentSource, kMaxArguments>;
using ValueSlots = std::array<StatementValue, kMaxStatementValues>;

inline constexpr std::array<std::string_view, 2> kOneToTwo{"1", "2"};
inline constexpr std::array<std::string_view, 3> kOneToThree{"1", "2", "3"};
inline constexpr std::array<std::string_view, 4> kOneToFour{"1", "2", "3", "4"};
inline constexpr std::array<std::string_view, 6> kOneToSix{"1", "2", "3", "4", "5", "6"};
inline constexpr std::int32_t kFull = 100;        // percent
inline constexpr std::int32_t kWidestAngle = 90;  // degrees
inline constexpr std::array<std::string_view, 2> kDirections{"F", "B"};
inline constexpr std::array<std::string_view, 2> kAxes{"X", "Y"};
inline constexpr std::array<std::string_view, 23> kEvents{
    "3",  "4",  "5",  "6",  "9",  "10", "11", "12", "13", "14", "15", "16",
    "17", "18", "19", "20", "21", "22", "23", "24", "25", "26", "27"};

constexpr StatementValue Operand(std::string_view name, DataType type) {
    return {name, StatementValue::Kind::Operand, type, {}};
}
constexpr StatementValue Any(std::string_view name) {
    return Operand(name, DataType::Any);
}
constexpr StatementValue Byte(std::string_view name, std::int32_t mostMeant = 0) {
    return {name, StatementValue::Kind::Operand, DataType::Byte, {}, mostMeant};
}
constexpr StatementValue Word(std::string_view name) {
    return Operand(name, DataType::Word);
}
constexpr StatementValue Pointer(std::string_view name) {
    return Operand(name, DataType::Pointer);
}
constexpr StatementValue Table(std::string_view name) {
    return Operand(name, DataType::Table);
}
constexpr StatementValue Variable(std::string_view name) {
    return {name, StatementValue::Kind::Variable, DataType::Any};
}
constexpr StatementValue Handler(std::string_view name) {
    return {name, StatementValue::Kind::EventHandler, DataType::Any};
}
/// A number that becomes part of the instruction, one of those in the list if there is one.
constexpr StatementValue Constant(std::string_view name,
                                  std::span<const std::string_view> allowed = {}) {
    return {name, StatementValue::Kind::Constant, DataType::Byte, allowed};
}

constexpr StatementCode One(Opcode opcode, const Sources& arguments = {}) {
    return {Coding::Instruction, opcode, opcode, arguments};
}
constexpr StatementCode Sized(Opcode byteForm, Opcode wordForm, const Sources& arguments) {
    return {Coding::Instruction, byteForm, wordForm, arguments};
}

constexpr Statement Declaration(Token token, Reading reading) {
    return {token, reading};
}
constexpr Statement Block(Token token, Reading reading, Coding coding, BlockRole role,
                          CompileState block) {
    return {token, reading, {coding}, {}, {role, block}};
}
constexpr Statement Values(Token token, const StatementCode& code, const ValueSlots& values) {
    return {token, Reading::Values, code, values};
}
constexpr Statement Words(Token token, const StatementCode& code) {
    return {token, Reading::Words, code};
}
constexpr Statement Unsupported(Token token) {
    return {token, Reading::Unsupported};
}
constexpr Statement Assignment(Token token, const StatementCode& code) {
    return {token, Reading::Assignment, code};
}
constexpr Statement Function(Token token, DataType result, const StatementCode& code,
                             const ValueSlots& values = {}) {
    return {token, Reading::Function, code, values, {}, result};
}
constexpr Statement UnsupportedFunction(Token token) {
    return {token, Reading::UnsupportedFunction};
}

constexpr std::array kDeclarations{
    Declaration(Token::Include, Reading::Include),
    Declaration(Token::SharedParameters, Reading::SharedParameters),
    Declaration(Token::DefineByte, Reading::ByteDeclaration),
    Declaration(Token::DefineWord, Reading::WordDeclaration),
    Declaration(Token::DefineConstant, Reading::ConstantDeclaration),
    Declaration(Token::DefineFlag, Reading::FlagDeclaration),
    Declaration(Token::DefinePointer, Reading::PointerDeclaration),
    Declaration(Token::Reserve, Reading::TableRoom),
};

constexpr auto MakeBlocks() {
    using enum BlockRole;
    using State = CompileState;
    return std::array{
        Block(Token::DefineTable, Reading::TableHeader, Coding::None, Opens, State::Table),
        Block(Token::EndTable, Reading::BlockEnd, Coding::None, Ends, State::Table),
        Block(Token::DefineRoutine, Reading::RoutineHeader, Coding::RoutineStart, Opens,
              State::Routine),
        Block(Token::EndRoutine, Reading::BlockEnd, Coding::Return, Ends, State::Routine),
        Block(Token::DefineEvent, Reading::EventHeader, Coding::RoutineStart, Opens, State::Event),
        Block(Token::EndEvent, Reading::BlockEnd, Coding::EventEnd, Ends, State::Event),
        Block(Token::BeginProgram, Reading::ProgramStart, Coding::ProgramStart, Opens,
              State::Program),
        Block(Token::EndProgram, Reading::BlockEnd, Coding::ProgramEnd, Ends, State::Program),
        Block(Token::If, Reading::If, Coding::If, Opens, State::If),
        Block(Token::Else, Reading::Else, Coding::Else, Continues, State::If),
        Block(Token::EndIf, Reading::BlockEnd, Coding::JumpTarget, Ends, State::If),
        Block(Token::While, Reading::While, Coding::While, Opens, State::While),
        Block(Token::EndWhile, Reading::BlockEnd, Coding::EndWhile, Ends, State::While),
        Block(Token::Repeat, Reading::LoopStart, Coding::JumpTarget, Opens, State::Repeat),
        Block(Token::Until, Reading::Until, Coding::Until, Ends, State::Repeat),
        Block(Token::Loop, Reading::LoopStart, Coding::JumpTarget, Opens, State::Loop),
        Block(Token::EndLoop, Reading::BlockEnd, Coding::EndLoop, Ends, State::Loop),
        Block(Token::Select, Reading::Select, Coding::Select, Opens, State::Select),
        Block(Token::Case, Reading::Case, Coding::Case, Continues, State::Select),
        Block(Token::CaseElse, Reading::CaseElse, Coding::Else, Continues, State::Select),
        Block(Token::EndSelect, Reading::BlockEnd, Coding::JumpTarget, Ends, State::Select),
    };
}

constexpr auto MakePlainStatements() {
    using enum ArgumentSource;
    return std::array{
        Statement{Token::Call, Reading::Call, {Coding::Call}},
        Statement{Token::Return, Reading::Return, {Coding::Return}},
        Words(Token::EmergencyStop, One(Opcode::EmergencyStop)),
        Words(Token::PowerOff, One(Opcode::PowerOff)),
        Words(Token::Escape, One(Opcode::Escape)),
        Words(Token::DisableEvents, One(Opcode::DisableEvents)),
        Words(Token::EnableEvents, One(Opcode::EnableEvents)),
        Words(Token::DeferEvents, One(Opcode::DeferEvents)),
        Words(Token::StopMotors, One(Opcode::StopMotors)),
        Words(Token::StopSound, {Coding::Silence}),
        Values(Token::SetMotor, One(Opcode::SetMotor, {Value1, Value2, Operand3}),
               {Constant("motor", kOneToFour), Constant("direction", kDirections),
                Byte("speed", kFull)}),
        Values(Token::SetServo, One(Opcode::SetServo, {Value1, Value2, Operand3}),
               {Constant("servo", kOneToThree), Constant("direction", kDirections),
                Byte("position", kWidestAngle)}),
        Values(Token::SetServoPercent, One(Opcode::SetServoPercent, {Value1, Value2, Operand3}),
               {Constant("servo", kOneToThree), Constant("direction", kDirections),
                Byte("percent", kFull)}),
        Values(Token::CalibrateJoystick,
               One(Opcode::CalibrateJoystick, {NamedValue1, NamedValue2, Operand3}),
               {Constant("joystick", kOneToTwo), Constant("reading across"),
                Constant("reading along")}),
        Values(Token::SetPort, One(Opcode::SetActionPort, {NamedValue1, NamedValue2}),
               {Constant("action port", kOneToThree), Constant("ON or OFF")}),
        Values(Token::SetLeds, {Coding::Leds, Opcode::SetLeftLed, Opcode::SetRightLed},
               {Byte("left ON or OFF"), Byte("right ON or OFF")}),
        Values(Token::PlaySound, One(Opcode::PlaySound, {Value1, Value2}),
               {Constant("note"), Constant("length")}),
        Values(Token::PlayTune, One(Opcode::PlayTune, {Operand1}), {Table("table")}),
        Values(Token::DisplayHex, One(Opcode::DisplayHex, {Operand1}), {Byte("number")}),
        Values(Token::Display, One(Opcode::DisplayNumber, {Operand1}), {Byte("number")}),
        Values(Token::Wait, One(Opcode::WaitForTime, {Operand1}), {Word("hundredths of a second")}),
        Values(Token::SetEvent, One(Opcode::SetEventWatch, {Value1, Operand2}),
               {Constant("event", kEvents), Handler("name")}),
        Values(Token::ClearEvent, One(Opcode::RemoveEventWatch, {Operand1}),
               {Constant("event", kEvents)}),
        Values(Token::RaiseEvent, One(Opcode::RaiseEvent, {NamedValue1}),
               {Constant("event", kEvents)}),
        Values(Token::Push, Sized(Opcode::PushByte, Opcode::PushWord, {Operand1}), {Any("value")}),
        Values(Token::Write,
               Sized(Opcode::WriteDataByte, Opcode::WriteDataWord, {Operand1, Operand2}),
               {Pointer("pointer"), Any("value")}),
        Values(Token::Increment, Sized(Opcode::IncrementByte, Opcode::IncrementWord, {Operand1}),
               {Variable("variable")}),
        Values(Token::Decrement, Sized(Opcode::DecrementByte, Opcode::DecrementWord, {Operand1}),
               {Variable("variable")}),
        Unsupported(Token::SetMotorFromVariables),
        Unsupported(Token::WriteEeprom),
        Unsupported(Token::OnErrorCall),
    };
}

constexpr auto MakeAssignments() {
    using enum ArgumentSource;
    constexpr Sources kMove{Operand1, Target};
    constexpr Sources kCombine{Operand1, Operand2, Target};
    return std::array{
        Assignment(Token::Equal, Sized(Opcode::MoveByte, Opcode::MoveWord, kMove)),
        Assignment(Token::Plus, Sized(Opcode::AddByte, Opcode::AddWord, kCombine)),
        Assignment(Token::Minus, Sized(Opcode::SubtractByte, Opcode::SubtractWord, kCombine)),
        Assignment(Token::Multiply, One(Opcode::MultiplyByte, kCombine)),
        Assignment(Token::And, One(Opcode::LogicalAnd, kCombine)),
        Assignment(Token::Or, One(Opcode::LogicalOr, kCombine)),
        Assignment(Token::Divide, {Coding::Division, Opcode::DivideByte, Opcode::DivideWord}),
        Assignment(Token::Mod, {Coding::Division, Opcode::DivideByte, Opcode::DivideWord}),
        Statement{Token::RoutineCall, Reading::RoutineCall, {Coding::Call}},
    };
}

constexpr auto MakeFunctions() {
    using enum ArgumentSource;
    constexpr auto kByte = DataType::Byte;
    constexpr StatementCode kJoystick{Coding::Joystick, Opcode::ReadJoystickOne,
                                      Opcode::ReadJoystickTwo};
    constexpr ValueSlots kStick{Constant("joystick", kOneToTwo), Constant("axis", kAxes)};
    constexpr StatementCode kTimed = One(Opcode::ReadTimedInput, {NamedValue1, Target, Scratch});
    constexpr StatementCode kLowByte = One(Opcode::ConvertWord, {Operand1, Target, Scratch});
    constexpr ValueSlots kInput{Constant("input", kOneToFour)};
    return std::array{
        Function(Token::Battery, kByte, One(Opcode::ReadBattery, {Target})),
        Function(Token::AddressOf, DataType::Pointer,
                 One(Opcode::SetDataPointer, {Target, Operand1}), {Table("table")}),
        Function(Token::Pop, DataType::Any, Sized(Opcode::PopByte, Opcode::PopWord, {Target})),
        Function(Token::Joystick, kByte, kJoystick, kStick),
        Function(Token::Stick, kByte, kJoystick, kStick),
        Function(Token::Digital, kByte, One(Opcode::ReadDigitalInput, {Value1, Target}), kInput),
        Function(Token::Analog, kByte, One(Opcode::ReadAnalogInput, {NamedValue1, Target}),
                 {Constant("input", kOneToSix)}),
        Function(Token::Timed, kByte, kTimed, kInput),
        Function(Token::PulseLength, kByte, kTimed, kInput),
        Function(Token::PulseCount, kByte,
                 One(Opcode::ReadPulseCountDigital, {NamedValue1, Target}), kInput),
        Function(Token::TimedPulseCount, kByte,
                 One(Opcode::ReadPulseCountTimed, {NamedValue1, Target}), kInput),
        Function(Token::ProgramNumber, kByte, One(Opcode::GetProgramNumber, {Target})),
        Function(Token::Button, kByte, One(Opcode::ReadButton, {NamedValue1, Target}),
                 {Constant("button", kOneToSix)}),
        Function(Token::ToByte, kByte, kLowByte, {Word("word")}),
        Function(Token::LowByte, kByte, kLowByte, {Word("word")}),
        Function(Token::ToWord, DataType::Word, One(Opcode::ConvertByte, {Operand1, Target}),
                 {Byte("byte")}),
        Function(Token::Random, kByte, One(Opcode::RandomizeByte, {Target})),
        Function(Token::Complement, kByte, {Coding::Complement}, {Byte("byte")}),
        Function(Token::Clock, DataType::Word, One(Opcode::GetClockTicks, {Target})),
        Function(Token::Not, DataType::Flag, {Coding::Not}, {Any("flag")}),
        Function(Token::Read, DataType::Any,
                 Sized(Opcode::ReadDataByte, Opcode::ReadDataWord, {Operand1, Target}),
                 {Pointer("pointer")}),
        UnsupportedFunction(Token::Receive),
        UnsupportedFunction(Token::ReceiveWord),
        UnsupportedFunction(Token::ReadEeprom),
        UnsupportedFunction(Token::ReadEepromWord),
        UnsupportedFunction(Token::LastError),
    };
}

constexpr auto MakeTable() {
    constexpr auto kBlocks = MakeBlocks();
    constexpr auto kStatements = MakePlainStatements();
    constexpr auto kAssignments = MakeAssignments();
    constexpr auto kFunctions = MakeFunctions();
    std::array<Statement, kDeclarations.size() + kBlocks.size() + kStatements.size() +
                              kAssignments.size() + kFunctions.size()>
        table{};
    auto* next = table.begin();
    const auto add = [&](const auto& rows) {
        for (const Statement& row : rows)
            *next++ = row;
    };
    add(kDeclarations);
    add(kBlocks);
    add(kStatements);
    add(kAssignments);
    add(kFunctions);
    return table;
}

/// Whether the arguments of an instruction have a source each.
constexpr bool FitsInstruction(const StatementCode& code, Opcode opcode) {
    const Instruction& instruction = InstructionFor(opcode);
    for (std::size_t slot = 0; slot < kMaxArguments; ++slot) {
        const bool hasSource = code.arguments[slot] != ArgumentSource::None;
        if (hasSource != (slot < instruction.ArgumentCount())) return false;
    }
    return instruction.support == InstructionSupport::Available;
}

}  // namespace statement_table

inline constexpr auto kStatementTable = statement_table::MakeTable();

/// The statements by token, so that a line needs no search; null for other tokens.
constexpr std::array<const Statement*, kTokenCount> MakeStatementsByToken() {
    std::array<const Statement*, kTokenCount> byToken{};
    for (const Statement& row : kStatementTable)
        byToken[static_cast<std::size_t>(row.token)] = &row;
    return byToken;
}
inline constexpr std::array<const Statement*, kTokenCount> kStatementByToken =
    MakeStatementsByToken();

/// The tokens from DEFINE BYTE to OR are declarations, statements, functions and the operators of
/// assignments. RESERVE stands among the reserved words.
constexpr bool HasOneRowForEachStatement() {
    std::array<int, kTokenCount> rows{};
    for (const Statement& row : kStatementTable)
        ++rows[static_cast<std::size_t>(row.token)];
    for (std::size_t token = 0; token < kTokenCount; ++token) {
        const bool isStatement = (token >= static_cast<std::size_t>(Token::DefineByte) &&
                                  token <= static_cast<std::size_t>(Token::Or)) ||
                                 token == static_cast<std::size_t>(Token::Reserve);
        if (rows[token] != (isStatement ? 1 : 0)) return false;
    }
    return true;
}
static_assert(HasOneRowForEachStatement(), "every statement needs exactly one row");

constexpr bool EachCodeFitsItsInstructions() {
    for (const Statement& row : kStatementTable) {
        if (row.code.coding != Coding::Instruction) continue;
        if (!statement_table::FitsInstruction(row.code, row.code.byteForm) ||
            !statement_table::FitsInstruction(row.code, row.code.wordForm))
            return false;
    }
    return true;
}
static_assert(EachCodeFitsItsInstructions(), "each argument of an instruction needs its source");

}  // namespace zentro
