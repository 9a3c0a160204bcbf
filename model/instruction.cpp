#include "model/instruction.h"

namespace zentro {

namespace {

using enum ArgumentRole;

constexpr std::array<Instruction, kInstructionCount> kInstructions{{
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
    {Opcode::ReadEeprom, "READ EEPROM", {ByteRead, ByteWritten}, InstructionSupport::NotSupported},
    {Opcode::WriteEeprom, "WRITE EEPROM", {ByteRead, ByteRead}, InstructionSupport::NotSupported},
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
    {Opcode::IfByteLessThanOrEqual, "IF BYTE LESS THAN OR EQUAL", {ByteRead, ByteRead, JumpTarget}},
    {Opcode::IfByteGreaterThanOrEqual,
     "IF BYTE GREATER THAN OR EQUAL",
     {ByteRead, ByteRead, JumpTarget}},
    {Opcode::IfWordEqual, "IF WORD EQUAL", {WordRead, WordRead, JumpTarget}},
    {Opcode::IfWordNotEqual, "IF WORD NOT EQUAL", {WordRead, WordRead, JumpTarget}},
    {Opcode::IfWordLessThan, "IF WORD LESS THAN", {WordRead, WordRead, JumpTarget}},
    {Opcode::IfWordGreaterThan, "IF WORD GREATER THAN", {WordRead, WordRead, JumpTarget}},
    {Opcode::IfWordLessThanOrEqual, "IF WORD LESS THAN OR EQUAL", {WordRead, WordRead, JumpTarget}},
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

constexpr bool RowsStandAtTheirOpcodes() {
    for (std::size_t row = 0; row < kInstructions.size(); ++row) {
        if (static_cast<std::size_t>(kInstructions[row].opcode) != row) return false;
    }
    return true;
}
static_assert(RowsStandAtTheirOpcodes(), "every opcode needs exactly one row, in order");

}  // namespace

std::span<const Instruction, kInstructionCount> InstructionTable() {
    return kInstructions;
}

const Instruction& InstructionFor(Opcode opcode) {
    return kInstructions[static_cast<std::size_t>(opcode)];
}

}  // namespace zentro
