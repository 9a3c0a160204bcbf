#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace zentro {

/// What an argument of an instruction is, and so how many bytes it takes.
enum class ArgumentType : std::uint8_t {
    None = 0,
    Byte = 1,     ///< one byte, part of the instruction
    Word = 2,     ///< two bytes, high byte first
    Address = 3,  ///< the address of a variable, a constant or a line: two bytes, high byte first
};

/// The size of an argument in the board's memory, in bytes.
constexpr int ArgumentSize(ArgumentType type) {
    switch (type) {
        case ArgumentType::None: return 0;
        case ArgumentType::Byte: return 1;
        case ArgumentType::Word:
        case ArgumentType::Address: return 2;
    }
    return 0;
}

/// How an instruction uses one of its arguments. All but numbers are addresses.
enum class ArgumentRole : std::uint8_t {
    None,
    Number,      ///< a byte that is part of the instruction
    JumpTarget,  ///< the address at which the program may go on
    Place,       ///< any other address as such: of a table, of a handler
    ByteRead,    ///< the rest are addresses of a byte or word in memory
    ByteWritten,
    ByteChanged,  ///< read, then written
    WordRead,
    WordWritten,
    WordChanged,
};

/// What an argument of this role is in the instruction.
constexpr ArgumentType TypeOf(ArgumentRole role) {
    if (role == ArgumentRole::None) return ArgumentType::None;
    return role == ArgumentRole::Number ? ArgumentType::Byte : ArgumentType::Address;
}

/// How many bytes of memory lie at the address that an argument of this role is.
constexpr std::uint32_t BytesUsed(ArgumentRole role) {
    switch (role) {
        case ArgumentRole::None:
        case ArgumentRole::Number: return 0;
        case ArgumentRole::JumpTarget:
        case ArgumentRole::Place:
        case ArgumentRole::ByteRead:
        case ArgumentRole::ByteWritten:
        case ArgumentRole::ByteChanged: return 1;
        case ArgumentRole::WordRead:
        case ArgumentRole::WordWritten:
        case ArgumentRole::WordChanged: return 2;
    }
    return 0;
}

/// The board's instructions by their opcodes.
enum class Opcode : std::uint8_t {
    Nop = 0,
    EmergencyStop = 1,
    PowerOff = 2,
    Escape = 3,
    Sleep = 4,
    End = 5,
    DisableEvents = 6,
    EnableEvents = 7,
    Reset = 8,
    ReadBattery = 9,
    Reserved10 = 10,
    MoveByte = 11,
    MoveWord = 12,
    Transmit = 13,
    Receive = 14,
    SetDataPointer = 15,
    ReadDataByte = 16,
    WriteDataByte = 17,
    ReadDataWord = 18,
    WriteDataWord = 19,
    StopMotors = 20,
    SetMotor = 21,
    DeferEvents = 22,
    PushByte = 23,
    PopByte = 24,
    PushWord = 25,
    PopWord = 26,
    ReadJoystickOne = 27,
    ReadJoystickTwo = 28,
    CalibrateJoystick = 29,
    SetActionPort = 30,
    ReadDigitalInput = 31,
    ReadAnalogInput = 32,
    ReadTimedInput = 33,
    GetProgramNumber = 34,
    ReadButton = 35,
    ReadPulseCountDigital = 36,
    ReadPulseCountTimed = 37,
    DisplayHex = 38,
    DisplayNumber = 39,
    SetServo = 40,
    SetServoPercent = 41,
    ConvertByte = 42,
    ConvertWord = 43,
    SetLeftLed = 44,
    SetRightLed = 45,
    DivideByte = 46,
    DivideWord = 47,
    PlaySound = 48,
    PlayTune = 49,
    LoopUntilZero = 50,
    Call = 51,
    Return = 52,
    Jump = 53,
    AddByte = 54,
    SubtractByte = 55,
    IncrementByte = 56,
    DecrementByte = 57,
    MultiplyByte = 58,
    RandomizeByte = 59,
    ComplimentByte = 60,
    ClearByte = 61,
    AddWord = 62,
    SubtractWord = 63,
    IncrementWord = 64,
    DecrementWord = 65,
    ClearWord = 66,
    GetClockTicks = 67,
    ReadEeprom = 68,
    WriteEeprom = 69,
    WaitForTime = 70,
    OnErrorCall = 71,
    SetEventWatch = 72,
    RemoveEventWatch = 73,
    RaiseEvent = 74,
    CompleteEvent = 75,
    SetFlagTrue = 76,
    SetFlagFalse = 77,
    IfFlagTrue = 78,
    IfFlagFalse = 79,
    IfByteEqual = 80,
    IfByteNotEqual = 81,
    IfByteLessThan = 82,
    IfByteGreaterThan = 83,
    IfByteLessThanOrEqual = 84,
    IfByteGreaterThanOrEqual = 85,
    IfWordEqual = 86,
    IfWordNotEqual = 87,
    IfWordLessThan = 88,
    IfWordGreaterThan = 89,
    IfWordLessThanOrEqual = 90,
    IfWordGreaterThanOrEqual = 91,
    Reserved92 = 92,
    Reserved93 = 93,
    Reserved94 = 94,
    LogicalAnd = 95,
    LogicalOr = 96,
    Reserved97 = 97,
    Reserved98 = 98,
    Reserved99 = 99,
    SetMotorFromVars = 100,
    Count,
};

/// Which of the board's instructions the compiler may emit.
enum class InstructionSupport : std::uint8_t {
    Available,
    Reserved,      ///< an opcode without a meaning yet: it takes no arguments
    NotSupported,  ///< the board has it, the compiler refuses to emit it
};

inline constexpr int kInstructionCount = static_cast<int>(Opcode::Count);
inline constexpr int kMaxArguments = 3;

/// One row of the instruction table. Its size follows from the roles of its arguments.
struct Instruction {
    Opcode opcode;
    std::string_view name;
    std::array<ArgumentRole, kMaxArguments> roles{};  ///< None from the first unused slot on
    InstructionSupport support = InstructionSupport::Available;

    constexpr ArgumentType Argument(std::size_t slot) const { return TypeOf(roles[slot]); }

    constexpr std::size_t ArgumentCount() const {
        std::size_t count = 0;
        while (count < kMaxArguments && roles[count] != ArgumentRole::None)
            ++count;
        return count;
    }

    /// The size of the whole instruction in the board's memory, in bytes.
    constexpr int Size() const {
        int size = 1;
        for (ArgumentRole role : roles)
            size += ArgumentSize(TypeOf(role));
        return size;
    }
};

/// The rows of the opcodes in their order.
constexpr std::array<Instruction, kInstructionCount> MakeInstructionTable() {
    using enum ArgumentRole;
    return {{
        {Opcode::Nop, "NOP", {}},
        {Opcode::EmergencyStop, "EMERGENCY STOP", {}},
        {Opcode::PowerOff, "POWER OFF", {}},
        {Opcode::Escape, "ESCAPE", {}},
        {Opcode::Sleep, "SLEEP", {}},
        {Opcode::End, "END", {}},
        {Opcode::DisableEvents, "DISABLE EVENTS", {}},
        {Opcode::EnableEvents, "ENABLE EVENTS", {}},
        {Opcode::Reset, "RESET", {}},
        {Opcode::ReadBattery, "READ BATTERY", {ByteWritten}},
        {Opcode::Reserved10, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::MoveByte, "MOVE BYTE", {ByteRead, ByteWritten}},
        {Opcode::MoveWord, "MOVE WORD", {WordRead, WordWritten}},
        {Opcode::Transmit, "TRANSMIT", {ByteRead}},
        {Opcode::Receive, "RECEIVE", {ByteWritten}},
        {Opcode::SetDataPointer, "SET DATA POINTER", {WordWritten, Place}},
        {Opcode::ReadDataByte, "READ DATA BYTE", {WordRead, ByteWritten}},
        {Opcode::WriteDataByte, "WRITE DATA BYTE", {WordRead, ByteRead}},
        {Opcode::ReadDataWord, "READ DATA WORD", {WordRead, WordWritten}},
        {Opcode::WriteDataWord, "WRITE DATA WORD", {WordRead, WordRead}},
        {Opcode::StopMotors, "STOP MOTORS", {}},
        {Opcode::SetMotor, "SET MOTOR", {Number, Number, ByteRead}},
        {Opcode::DeferEvents, "DEFER EVENTS", {}},
        {Opcode::PushByte, "PUSH BYTE", {ByteRead}},
        {Opcode::PopByte, "POP BYTE", {ByteWritten}},
        {Opcode::PushWord, "PUSH WORD", {WordRead}},
        {Opcode::PopWord, "POP WORD", {WordWritten}},
        {Opcode::ReadJoystickOne, "READ JOYSTICK ONE", {Number, ByteWritten, ByteWritten}},
        {Opcode::ReadJoystickTwo, "READ JOYSTICK TWO", {Number, ByteWritten, ByteWritten}},
        {Opcode::CalibrateJoystick, "CALIBRATE JOYSTICK", {Number, Number, ByteRead}},
        {Opcode::SetActionPort, "SET ACTION PORT", {Number, Number}},
        {Opcode::ReadDigitalInput, "READ DIGITAL INPUT", {Number, ByteWritten}},
        {Opcode::ReadAnalogInput, "READ ANALOG INPUT", {Number, ByteWritten}},
        {Opcode::ReadTimedInput, "READ TIMED INPUT", {Number, ByteWritten, ByteWritten}},
        {Opcode::GetProgramNumber, "GET PROGRAM NUMBER", {ByteWritten}},
        {Opcode::ReadButton, "READ BUTTON", {Number, ByteWritten}},
        {Opcode::ReadPulseCountDigital, "READ PULSE COUNT DIGITAL", {Number, ByteWritten}},
        {Opcode::ReadPulseCountTimed, "READ PULSE COUNT TIMED", {Number, ByteWritten}},
        {Opcode::DisplayHex, "DISPLAY HEX", {ByteRead}},
        {Opcode::DisplayNumber, "DISPLAY NUMBER", {ByteRead}},
        {Opcode::SetServo, "SET SERVO", {Number, Number, ByteRead}},
        {Opcode::SetServoPercent, "SET SERVO PERCENT", {Number, Number, ByteRead}},
        {Opcode::ConvertByte, "CONVERT BYTE", {ByteRead, WordWritten}},
        {Opcode::ConvertWord, "CONVERT WORD", {WordRead, ByteWritten, ByteWritten}},
        {Opcode::SetLeftLed, "SET LEFT LED", {ByteRead}},
        {Opcode::SetRightLed, "SET RIGHT LED", {ByteRead}},
        {Opcode::DivideByte, "DIVIDE BYTE", {ByteChanged, ByteChanged}},
        {Opcode::DivideWord, "DIVIDE WORD", {WordChanged, WordChanged}},
        {Opcode::PlaySound, "PLAY SOUND", {Number, Number}},
        {Opcode::PlayTune, "PLAY TUNE", {Place}},
        {Opcode::LoopUntilZero, "LOOP UNTIL ZERO", {ByteChanged, JumpTarget}},
        {Opcode::Call, "CALL", {JumpTarget}},
        {Opcode::Return, "RETURN", {}},
        {Opcode::Jump, "JUMP", {JumpTarget}},
        {Opcode::AddByte, "ADD BYTE", {ByteRead, ByteRead, ByteWritten}},
        {Opcode::SubtractByte, "SUBTRACT BYTE", {ByteRead, ByteRead, ByteWritten}},
        {Opcode::IncrementByte, "INCREMENT BYTE", {ByteChanged}},
        {Opcode::DecrementByte, "DECREMENT BYTE", {ByteChanged}},
        {Opcode::MultiplyByte, "MULTIPLY BYTE", {ByteRead, ByteRead, WordWritten}},
        {Opcode::RandomizeByte, "RANDOMIZE BYTE", {ByteWritten}},
        {Opcode::ComplimentByte, "COMPLIMENT BYTE", {ByteChanged}},
        {Opcode::ClearByte, "CLEAR BYTE", {ByteWritten}},
        {Opcode::AddWord, "ADD WORD", {WordRead, WordRead, WordWritten}},
        {Opcode::SubtractWord, "SUBTRACT WORD", {WordRead, WordRead, WordWritten}},
        {Opcode::IncrementWord, "INCREMENT WORD", {WordChanged}},
        {Opcode::DecrementWord, "DECREMENT WORD", {WordChanged}},
        {Opcode::ClearWord, "CLEAR WORD", {WordWritten}},
        {Opcode::GetClockTicks, "GET CLOCK TICKS", {WordWritten}},
        {Opcode::ReadEeprom,
         "READ EEPROM",
         {ByteRead, ByteWritten},
         InstructionSupport::NotSupported},
        {Opcode::WriteEeprom,
         "WRITE EEPROM",
         {ByteRead, ByteRead},
         InstructionSupport::NotSupported},
        {Opcode::WaitForTime, "WAIT FOR TIME", {WordRead}},
        {Opcode::OnErrorCall, "ON ERROR CALL", {Place}, InstructionSupport::NotSupported},
        {Opcode::SetEventWatch, "SET EVENT WATCH", {Number, Place}},
        {Opcode::RemoveEventWatch, "REMOVE EVENT WATCH", {ByteRead}},
        {Opcode::RaiseEvent, "RAISE EVENT", {Number}},
        {Opcode::CompleteEvent, "COMPLETE EVENT", {}},
        {Opcode::SetFlagTrue, "SET FLAG TRUE", {ByteWritten}},
        {Opcode::SetFlagFalse, "SET FLAG FALSE", {ByteWritten}},
        {Opcode::IfFlagTrue, "IF FLAG TRUE", {ByteRead, JumpTarget}},
        {Opcode::IfFlagFalse, "IF FLAG FALSE", {ByteRead, JumpTarget}},
        {Opcode::IfByteEqual, "IF BYTE EQUAL", {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfByteNotEqual, "IF BYTE NOT EQUAL", {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfByteLessThan, "IF BYTE LESS THAN", {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfByteGreaterThan, "IF BYTE GREATER THAN", {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfByteLessThanOrEqual,
         "IF BYTE LESS THAN OR EQUAL",
         {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfByteGreaterThanOrEqual,
         "IF BYTE GREATER THAN OR EQUAL",
         {ByteRead, ByteRead, JumpTarget}},
        {Opcode::IfWordEqual, "IF WORD EQUAL", {WordRead, WordRead, JumpTarget}},
        {Opcode::IfWordNotEqual, "IF WORD NOT EQUAL", {WordRead, WordRead, JumpTarget}},
        {Opcode::IfWordLessThan, "IF WORD LESS THAN", {WordRead, WordRead, JumpTarget}},
        {Opcode::IfWordGreaterThan, "IF WORD GREATER THAN", {WordRead, WordRead, JumpTarget}},
        {Opcode::IfWordLessThanOrEqual,
         "IF WORD LESS THAN OR EQUAL",
         {WordRead, WordRead, JumpTarget}},
        {Opcode::IfWordGreaterThanOrEqual,
         "IF WORD GREATER THAN OR EQUAL",
         {WordRead, WordRead, JumpTarget}},
        {Opcode::Reserved92, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::Reserved93, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::Reserved94, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::LogicalAnd, "LOGICAL AND", {ByteRead, ByteRead, ByteWritten}},
        {Opcode::LogicalOr, "LOGICAL OR", {ByteRead, ByteRead, ByteWritten}},
        {Opcode::Reserved97, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::Reserved98, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::Reserved99, "Reserved", {}, InstructionSupport::Reserved},
        {Opcode::SetMotorFromVars, "SET MOTOR FROM VARS", {ByteRead, ByteRead, ByteRead}},
    }};
}

/// The instruction set: the row of an opcode is at the opcode's number.
inline constexpr std::array<Instruction, kInstructionCount> kInstructionTable =
    MakeInstructionTable();

constexpr bool HasRowForEachOpcode() {
    for (std::size_t row = 0; row < kInstructionTable.size(); ++row) {
        if (static_cast<std::size_t>(kInstructionTable[row].opcode) != row) return false;
    }
    return true;
}
static_assert(HasRowForEachOpcode(), "every opcode needs exactly one row, in order");

constexpr std::span<const Instruction, kInstructionCount> InstructionTable() {
    return kInstructionTable;
}

/// The row of an opcode.
constexpr const Instruction& InstructionFor(Opcode opcode) {
    return kInstructionTable[static_cast<std::size_t>(opcode)];
}

}  // namespace zentro
