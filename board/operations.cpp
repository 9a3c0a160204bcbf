#include "board/operations.h"

#include "board/handlers.h"

namespace zentro {

namespace {

using enum OperandRole;

constexpr std::array<Operation, kInstructionCount> kOperations{{
    {Opcode::Nop},
    {Opcode::EmergencyStop, {}, handle::EmergencyStop},
    {Opcode::PowerOff, {}, handle::PowerOff},
    {Opcode::Escape, {}, handle::Escape},
    {Opcode::Sleep, {}, handle::Sleep},
    {Opcode::End, {}, handle::End},
    {Opcode::DisableEvents, {}, handle::DisableEvents},
    {Opcode::EnableEvents, {}, handle::EnableEvents},
    {Opcode::Reset, {}, handle::Reset},
    {Opcode::ReadBattery, {ByteWritten}, handle::ReadBattery},
    {Opcode::Reserved10},
    {Opcode::MoveByte, {ByteRead, ByteWritten}},
    {Opcode::MoveWord, {WordRead, WordWritten}},
    {Opcode::Transmit, {ByteRead}, handle::Transmit},
    {Opcode::Receive, {ByteWritten}, handle::Receive},
    {Opcode::SetDataPointer, {WordWritten, Place}},
    {Opcode::ReadDataByte, {WordRead, ByteWritten}, handle::ReadDataByte},
    {Opcode::WriteDataByte, {WordRead, ByteRead}, handle::WriteDataByte},
    {Opcode::ReadDataWord, {WordRead, WordWritten}, handle::ReadDataWord},
    {Opcode::WriteDataWord, {WordRead, WordRead}, handle::WriteDataWord},
    {Opcode::StopMotors, {}, handle::StopMotors},
    {Opcode::SetMotor, {Number, Number, ByteRead}, handle::SetMotor},
    {Opcode::DeferEvents, {}, handle::DeferEvents},
    {Opcode::PushByte, {ByteRead}, handle::PushByte},
    {Opcode::PopByte, {ByteWritten}, handle::PopByte},
    {Opcode::PushWord, {WordRead}, handle::PushWord},
    {Opcode::PopWord, {WordWritten}, handle::PopWord},
    {Opcode::ReadJoystickOne, {Number, ByteWritten, ByteWritten}, handle::ReadJoystickOne},
    {Opcode::ReadJoystickTwo, {Number, ByteWritten, ByteWritten}, handle::ReadJoystickTwo},
    {Opcode::CalibrateJoystick, {Number, Number, ByteRead}, handle::CalibrateJoystick},
    {Opcode::SetActionPort, {Number, Number}, handle::SetActionPort},
    {Opcode::ReadDigitalInput, {Number, ByteWritten}, handle::ReadDigitalInput},
    {Opcode::ReadAnalogInput, {Number, ByteWritten}, handle::ReadAnalogInput},
    {Opcode::ReadTimedInput, {Number, ByteWritten, ByteWritten}, handle::ReadTimedInput},
    {Opcode::GetProgramNumber, {ByteWritten}, handle::GetProgramNumber},
    {Opcode::ReadButton, {Number, ByteWritten}, handle::ReadButton},
    {Opcode::ReadPulseCountDigital, {Number, ByteWritten}, handle::ReadPulseCountDigital},
    {Opcode::ReadPulseCountTimed, {Number, ByteWritten}, handle::ReadPulseCountTimed},
    {Opcode::DisplayHex, {ByteRead}, handle::DisplayHex},
    {Opcode::DisplayNumber, {ByteRead}, handle::DisplayNumber},
    {Opcode::SetServo, {Number, Number, ByteRead}, handle::SetServo},
    {Opcode::SetServoPercent, {Number, Number, ByteRead}, handle::SetServoPercent},
    {Opcode::ConvertByte, {ByteRead, WordWritten}},
    {Opcode::ConvertWord, {WordRead, ByteWritten, ByteWritten}},
    {Opcode::SetLeftLed, {ByteRead}, handle::SetLeftLed},
    {Opcode::SetRightLed, {ByteRead}, handle::SetRightLed},
    {Opcode::DivideByte, {ByteChanged, ByteChanged}, handle::DivideByte},
    {Opcode::DivideWord, {WordChanged, WordChanged}, handle::DivideWord},
    {Opcode::PlaySound, {Number, Number}, handle::PlaySound},
    {Opcode::PlayTune, {Place}, handle::PlayTune},
    {Opcode::LoopUntilZero, {ByteChanged, Place}},
    {Opcode::Call, {Place}, handle::Call},
    {Opcode::Return, {}, handle::Return},
    {Opcode::Jump, {Place}},
    {Opcode::AddByte, {ByteRead, ByteRead, ByteWritten}},
    {Opcode::SubtractByte, {ByteRead, ByteRead, ByteWritten}},
    {Opcode::IncrementByte, {ByteChanged}},
    {Opcode::DecrementByte, {ByteChanged}},
    {Opcode::MultiplyByte, {ByteRead, ByteRead, WordWritten}},
    {Opcode::RandomizeByte, {ByteWritten}, handle::RandomizeByte},
    {Opcode::ComplimentByte, {ByteChanged}},
    {Opcode::ClearByte, {ByteWritten}},
    {Opcode::AddWord, {WordRead, WordRead, WordWritten}},
    {Opcode::SubtractWord, {WordRead, WordRead, WordWritten}},
    {Opcode::IncrementWord, {WordChanged}},
    {Opcode::DecrementWord, {WordChanged}},
    {Opcode::ClearWord, {WordWritten}},
    {Opcode::GetClockTicks, {WordWritten}, handle::GetClockTicks},
    {Opcode::ReadEeprom, {ByteRead, ByteWritten}, handle::ReadEeprom},
    {Opcode::WriteEeprom, {ByteRead, ByteRead}, handle::WriteEeprom},
    {Opcode::WaitForTime, {WordRead}, handle::WaitForTime},
    {Opcode::OnErrorCall, {Place}, handle::OnErrorCall},
    {Opcode::SetEventWatch, {Number, Place}, handle::SetEventWatch},
    {Opcode::RemoveEventWatch, {ByteRead}, handle::RemoveEventWatch},
    {Opcode::RaiseEvent, {Number}, handle::RaiseEvent},
    {Opcode::CompleteEvent, {}, handle::CompleteEvent},
    {Opcode::SetFlagTrue, {ByteWritten}},
    {Opcode::SetFlagFalse, {ByteWritten}},
    {Opcode::IfFlagTrue, {ByteRead, Place}},
    {Opcode::IfFlagFalse, {ByteRead, Place}},
    {Opcode::IfByteEqual, {ByteRead, ByteRead, Place}},
    {Opcode::IfByteNotEqual, {ByteRead, ByteRead, Place}},
    {Opcode::IfByteLessThan, {ByteRead, ByteRead, Place}},
    {Opcode::IfByteGreaterThan, {ByteRead, ByteRead, Place}},
    {Opcode::IfByteLessThanOrEqual, {ByteRead, ByteRead, Place}},
    {Opcode::IfByteGreaterThanOrEqual, {ByteRead, ByteRead, Place}},
    {Opcode::IfWordEqual, {WordRead, WordRead, Place}},
    {Opcode::IfWordNotEqual, {WordRead, WordRead, Place}},
    {Opcode::IfWordLessThan, {WordRead, WordRead, Place}},
    {Opcode::IfWordGreaterThan, {WordRead, WordRead, Place}},
    {Opcode::IfWordLessThanOrEqual, {WordRead, WordRead, Place}},
    {Opcode::IfWordGreaterThanOrEqual, {WordRead, WordRead, Place}},
    {Opcode::Reserved92},
    {Opcode::Reserved93},
    {Opcode::Reserved94},
    {Opcode::LogicalAnd, {ByteRead, ByteRead, ByteWritten}},
    {Opcode::LogicalOr, {ByteRead, ByteRead, ByteWritten}},
    {Opcode::Reserved97},
    {Opcode::Reserved98},
    {Opcode::Reserved99},
    {Opcode::SetMotorFromVars, {ByteRead, ByteRead, ByteRead}, handle::SetMotorFromVars},
}};

constexpr bool RowsStandAtTheirOpcodes() {
    for (std::size_t row = 0; row < kOperations.size(); ++row) {
        if (static_cast<std::size_t>(kOperations[row].opcode) != row) return false;
    }
    return true;
}
static_assert(RowsStandAtTheirOpcodes(), "every opcode needs exactly one row, in order");

}  // namespace

const Operation& OperationFor(Opcode opcode) {
    return kOperations[static_cast<std::size_t>(opcode)];
}

}  // namespace zentro
