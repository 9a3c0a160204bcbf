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
};

/// Which of the board's instructions the compiler may emit.
enum class InstructionSupport : std::uint8_t {
    Available,
    Reserved,      ///< an opcode without a meaning yet: it takes no arguments
    NotSupported,  ///< the board has it, the compiler refuses to emit it
};

inline constexpr int kInstructionCount = 101;
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

/// The instruction set: the row of an opcode is at the opcode's number.
std::span<const Instruction, kInstructionCount> InstructionTable();

/// The row of an opcode.
const Instruction& InstructionFor(Opcode opcode);

}  // namespace zentro
