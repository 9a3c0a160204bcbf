#include "model/instruction.h"

namespace zentro {

namespace {

constexpr ArgumentType A = ArgumentType::Address;
constexpr ArgumentType B = ArgumentType::Byte;

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
    {Opcode::ReadBattery, "READ BATTERY", {A}},
    {Opcode::Reserved10, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::MoveByte, "MOVE BYTE", {A, A}},
    {Opcode::MoveWord, "MOVE WORD", {A, A}},
    {Opcode::Transmit, "TRANSMIT", {A}},
    {Opcode::Receive, "RECEIVE", {A}},
    {Opcode::SetDataPointer, "SET DATA POINTER", {A, A}},
    {Opcode::ReadDataByte, "READ DATA BYTE", {A, A}},
    {Opcode::WriteDataByte, "WRITE DATA BYTE", {A, A}},
    {Opcode::ReadDataWord, "READ DATA WORD", {A, A}},
    {Opcode::WriteDataWord, "WRITE DATA WORD", {A, A}},
    {Opcode::StopMotors, "STOP MOTORS", {}},
    {Opcode::SetMotor, "SET MOTOR", {B, B, A}},
    {Opcode::DeferEvents, "DEFER EVENTS", {}},
    {Opcode::PushByte, "PUSH BYTE", {A}},
    {Opcode::PopByte, "POP BYTE", {A}},
    {Opcode::PushWord, "PUSH WORD", {A}},
    {Opcode::PopWord, "POP WORD", {A}},
    {Opcode::ReadJoystickOne, "READ JOYSTICK ONE", {B, A, A}},
    {Opcode::ReadJoystickTwo, "READ JOYSTICK TWO", {B, A, A}},
    {Opcode::CalibrateJoystick, "CALIBRATE JOYSTICK", {B, B, A}},
    {Opcode::SetActionPort, "SET ACTION PORT", {B, B}},
    {Opcode::ReadDigitalInput, "READ DIGITAL INPUT", {B, A}},
    {Opcode::ReadAnalogInput, "READ ANALOG INPUT", {B, A}},
    {Opcode::ReadTimedInput, "READ TIMED INPUT", {B, A, A}},
    {Opcode::GetProgramNumber, "GET PROGRAM NUMBER", {A}},
    {Opcode::ReadButton, "READ BUTTON", {B, A}},
    {Opcode::ReadPulseCountDigital, "READ PULSE COUNT DIGITAL", {B, A}},
    {Opcode::ReadPulseCountTimed, "READ PULSE COUNT TIMED", {B, A}},
    {Opcode::DisplayHex, "DISPLAY HEX", {A}},
    {Opcode::DisplayNumber, "DISPLAY NUMBER", {A}},
    {Opcode::SetServo, "SET SERVO", {B, B, A}},
    {Opcode::SetServoPercent, "SET SERVO PERCENT", {B, B, A}},
    {Opcode::ConvertByte, "CONVERT BYTE", {A, A}},
    {Opcode::ConvertWord, "CONVERT WORD", {A, A, A}},
    {Opcode::SetLeftLed, "SET LEFT LED", {A}},
    {Opcode::SetRightLed, "SET RIGHT LED", {A}},
    {Opcode::DivideByte, "DIVIDE BYTE", {A, A}},
    {Opcode::DivideWord, "DIVIDE WORD", {A, A}},
    {Opcode::PlaySound, "PLAY SOUND", {B, B}},
    {Opcode::PlayTune, "PLAY TUNE", {A}},
    {Opcode::LoopUntilZero, "LOOP UNTIL ZERO", {A, A}},
    {Opcode::Call, "CALL", {A}},
    {Opcode::Return, "RETURN", {}},
    {Opcode::Jump, "JUMP", {A}},
    {Opcode::AddByte, "ADD BYTE", {A, A, A}},
    {Opcode::SubtractByte, "SUBTRACT BYTE", {A, A, A}},
    {Opcode::IncrementByte, "INCREMENT BYTE", {A}},
    {Opcode::DecrementByte, "DECREMENT BYTE", {A}},
    {Opcode::MultiplyByte, "MULTIPLY BYTE", {A, A, A}},
    {Opcode::RandomizeByte, "RANDOMIZE BYTE", {A}},
    {Opcode::ComplimentByte, "COMPLIMENT BYTE", {A}},
    {Opcode::ClearByte, "CLEAR BYTE", {A}},
    {Opcode::AddWord, "ADD WORD", {A, A, A}},
    {Opcode::SubtractWord, "SUBTRACT WORD", {A, A, A}},
    {Opcode::IncrementWord, "INCREMENT WORD", {A}},
    {Opcode::DecrementWord, "DECREMENT WORD", {A}},
    {Opcode::ClearWord, "CLEAR WORD", {A}},
    {Opcode::GetClockTicks, "GET CLOCK TICKS", {A}},
    {Opcode::ReadEeprom, "READ EEPROM", {A, A}, InstructionSupport::NotSupported},
    {Opcode::WriteEeprom, "WRITE EEPROM", {A, A}, InstructionSupport::NotSupported},
    {Opcode::WaitForTime, "WAIT FOR TIME", {A}},
    {Opcode::OnErrorCall, "ON ERROR CALL", {A}, InstructionSupport::NotSupported},
    {Opcode::SetEventWatch, "SET EVENT WATCH", {B, A}},
    {Opcode::RemoveEventWatch, "REMOVE EVENT WATCH", {A}},
    {Opcode::RaiseEvent, "RAISE EVENT", {B}},
    {Opcode::CompleteEvent, "COMPLETE EVENT", {}},
    {Opcode::SetFlagTrue, "SET FLAG TRUE", {A}},
    {Opcode::SetFlagFalse, "SET FLAG FALSE", {A}},
    {Opcode::IfFlagTrue, "IF FLAG TRUE", {A, A}},
    {Opcode::IfFlagFalse, "IF FLAG FALSE", {A, A}},
    {Opcode::IfByteEqual, "IF BYTE EQUAL", {A, A, A}},
    {Opcode::IfByteNotEqual, "IF BYTE NOT EQUAL", {A, A, A}},
    {Opcode::IfByteLessThan, "IF BYTE LESS THAN", {A, A, A}},
    {Opcode::IfByteGreaterThan, "IF BYTE GREATER THAN", {A, A, A}},
    {Opcode::IfByteLessThanOrEqual, "IF BYTE LESS THAN OR EQUAL", {A, A, A}},
    {Opcode::IfByteGreaterThanOrEqual, "IF BYTE GREATER THAN OR EQUAL", {A, A, A}},
    {Opcode::IfWordEqual, "IF WORD EQUAL", {A, A, A}},
    {Opcode::IfWordNotEqual, "IF WORD NOT EQUAL", {A, A, A}},
    {Opcode::IfWordLessThan, "IF WORD LESS THAN", {A, A, A}},
    {Opcode::IfWordGreaterThan, "IF WORD GREATER THAN", {A, A, A}},
    {Opcode::IfWordLessThanOrEqual, "IF WORD LESS THAN OR EQUAL", {A, A, A}},
    {Opcode::IfWordGreaterThanOrEqual, "IF WORD GREATER THAN OR EQUAL", {A, A, A}},
    {Opcode::Reserved92, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::Reserved93, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::Reserved94, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::LogicalAnd, "LOGICAL AND", {A, A, A}},
    {Opcode::LogicalOr, "LOGICAL OR", {A, A, A}},
    {Opcode::Reserved97, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::Reserved98, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::Reserved99, "Reserved", {}, InstructionSupport::Reserved},
    {Opcode::SetMotorFromVars, "SET MOTOR FROM VARS", {A, A, A}},
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
