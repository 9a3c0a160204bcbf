// The table that says what carries out each instruction: a function of the loop, or a handler that
// the loop calls.
#include "board/instruction_actions.h"

#include "board/loop.h"

// An opcode without a case does not build, and neither does a case without a function.
#pragma GCC diagnostic error "-Wswitch-enum"

namespace zentro {

namespace {

struct Execution {
    LoopAction action = nullptr;
    handle::InstructionHandler handler = nullptr;
};

constexpr Execution InLoop(LoopAction action) {
    return {action, nullptr};
}
constexpr Execution Outside(handle::InstructionHandler handler) {
    return {loop::Outside, handler};
}

constexpr Execution ExecutionOf(Opcode opcode) {
    switch (opcode) {
        case Opcode::Nop: return InLoop(loop::Nop);
        case Opcode::EmergencyStop: return Outside(handle::EmergencyStop);
        case Opcode::PowerOff: return Outside(handle::PowerOff);
        case Opcode::Escape: return Outside(handle::Escape);
        case Opcode::Sleep: return Outside(handle::Sleep);
        case Opcode::End: return Outside(handle::End);
        case Opcode::DisableEvents: return Outside(handle::DisableEvents);
        case Opcode::EnableEvents: return Outside(handle::EnableEvents);
        case Opcode::Reset: return Outside(handle::Reset);
        case Opcode::ReadBattery: return Outside(handle::ReadBattery);
        case Opcode::Reserved10: return InLoop(loop::Nop);
        case Opcode::MoveByte: return InLoop(loop::MoveByte);
        case Opcode::MoveWord: return InLoop(loop::MoveWord);
        case Opcode::Transmit: return Outside(handle::Transmit);
        case Opcode::Receive: return Outside(handle::Receive);
        case Opcode::SetDataPointer: return InLoop(loop::SetDataPointer);
        case Opcode::ReadDataByte: return InLoop(loop::ReadDataByte);
        case Opcode::WriteDataByte: return InLoop(loop::WriteDataByte);
        case Opcode::ReadDataWord: return InLoop(loop::ReadDataWord);
        case Opcode::WriteDataWord: return InLoop(loop::WriteDataWord);
        case Opcode::StopMotors: return Outside(handle::StopMotors);
        case Opcode::SetMotor: return Outside(handle::SetMotor);
        case Opcode::DeferEvents: return Outside(handle::DeferEvents);
        case Opcode::PushByte: return InLoop(loop::PushByte);
        case Opcode::PopByte: return InLoop(loop::PopByte);
        case Opcode::PushWord: return InLoop(loop::PushWord);
        case Opcode::PopWord: return InLoop(loop::PopWord);
        case Opcode::ReadJoystickOne: return Outside(handle::ReadJoystickOne);
        case Opcode::ReadJoystickTwo: return Outside(handle::ReadJoystickTwo);
        case Opcode::CalibrateJoystick: return Outside(handle::CalibrateJoystick);
        case Opcode::SetActionPort: return Outside(handle::SetActionPort);
        case Opcode::ReadDigitalInput: return Outside(handle::ReadDigitalInput);
        case Opcode::ReadAnalogInput: return Outside(handle::ReadAnalogInput);
        case Opcode::ReadTimedInput: return Outside(handle::ReadTimedInput);
        case Opcode::GetProgramNumber: return Outside(handle::GetProgramNumber);
        case Opcode::ReadButton: return Outside(handle::ReadButton);
        case Opcode::ReadPulseCountDigital: return Outside(handle::ReadPulseCountDigital);
        case Opcode::ReadPulseCountTimed: return Outside(handle::ReadPulseCountTimed);
        case Opcode::DisplayHex: return Outside(handle::DisplayHex);
        case Opcode::DisplayNumber: return Outside(handle::DisplayNumber);
        case Opcode::SetServo: return Outside(handle::SetServo);
        case Opcode::SetServoPercent: return Outside(handle::SetServoPercent);
        case Opcode::ConvertByte: return InLoop(loop::ConvertByte);
        case Opcode::ConvertWord: return InLoop(loop::ConvertWord);
        case Opcode::SetLeftLed: return Outside(handle::SetLeftLed);
        case Opcode::SetRightLed: return Outside(handle::SetRightLed);
        case Opcode::DivideByte: return InLoop(loop::DivideByte);
        case Opcode::DivideWord: return InLoop(loop::DivideWord);
        case Opcode::PlaySound: return Outside(handle::PlaySound);
        case Opcode::PlayTune: return Outside(handle::PlayTune);
        case Opcode::LoopUntilZero: return InLoop(loop::LoopUntilZero);
        case Opcode::Call: return InLoop(loop::Call);
        case Opcode::Return: return InLoop(loop::Return);
        case Opcode::Jump: return InLoop(loop::Jump);
        case Opcode::AddByte: return InLoop(loop::AddByte);
        case Opcode::SubtractByte: return InLoop(loop::SubtractByte);
        case Opcode::IncrementByte: return InLoop(loop::IncrementByte);
        case Opcode::DecrementByte: return InLoop(loop::DecrementByte);
        case Opcode::MultiplyByte: return InLoop(loop::MultiplyByte);
        case Opcode::RandomizeByte: return Outside(handle::RandomizeByte);
        case Opcode::ComplimentByte: return InLoop(loop::ComplimentByte);
        case Opcode::ClearByte: return InLoop(loop::ClearByte);
        case Opcode::AddWord: return InLoop(loop::AddWord);
        case Opcode::SubtractWord: return InLoop(loop::SubtractWord);
        case Opcode::IncrementWord: return InLoop(loop::IncrementWord);
        case Opcode::DecrementWord: return InLoop(loop::DecrementWord);
        case Opcode::ClearWord: return InLoop(loop::ClearWord);
        case Opcode::GetClockTicks: return Outside(handle::GetClockTicks);
        case Opcode::ReadEeprom: return Outside(handle::ReadEeprom);
        case Opcode::WriteEeprom: return Outside(handle::WriteEeprom);
        case Opcode::WaitForTime: return Outside(handle::WaitForTime);
        case Opcode::OnErrorCall: return Outside(handle::OnErrorCall);
        case Opcode::SetEventWatch: return Outside(handle::SetEventWatch);
        case Opcode::RemoveEventWatch: return Outside(handle::RemoveEventWatch);
        case Opcode::RaiseEvent: return Outside(handle::RaiseEvent);
        case Opcode::CompleteEvent: return Outside(handle::CompleteEvent);
        case Opcode::SetFlagTrue: return InLoop(loop::SetFlagTrue);
        case Opcode::SetFlagFalse: return InLoop(loop::ClearByte);
        case Opcode::IfFlagTrue: return InLoop(loop::IfFlagTrue);
        case Opcode::IfFlagFalse: return InLoop(loop::IfFlagFalse);
        case Opcode::IfByteEqual: return InLoop(loop::IfByteEqual);
        case Opcode::IfByteNotEqual: return InLoop(loop::IfByteNotEqual);
        case Opcode::IfByteLessThan: return InLoop(loop::IfByteLessThan);
        case Opcode::IfByteGreaterThan: return InLoop(loop::IfByteGreaterThan);
        case Opcode::IfByteLessThanOrEqual: return InLoop(loop::IfByteLessThanOrEqual);
        case Opcode::IfByteGreaterThanOrEqual: return InLoop(loop::IfByteGreaterThanOrEqual);
        case Opcode::IfWordEqual: return InLoop(loop::IfWordEqual);
        case Opcode::IfWordNotEqual: return InLoop(loop::IfWordNotEqual);
        case Opcode::IfWordLessThan: return InLoop(loop::IfWordLessThan);
        case Opcode::IfWordGreaterThan: return InLoop(loop::IfWordGreaterThan);
        case Opcode::IfWordLessThanOrEqual: return InLoop(loop::IfWordLessThanOrEqual);
        case Opcode::IfWordGreaterThanOrEqual: return InLoop(loop::IfWordGreaterThanOrEqual);
        case Opcode::Reserved92: return InLoop(loop::Nop);
        case Opcode::Reserved93: return InLoop(loop::Nop);
        case Opcode::Reserved94: return InLoop(loop::Nop);
        case Opcode::LogicalAnd: return InLoop(loop::LogicalAnd);
        case Opcode::LogicalOr: return InLoop(loop::LogicalOr);
        case Opcode::Reserved97: return InLoop(loop::Nop);
        case Opcode::Reserved98: return InLoop(loop::Nop);
        case Opcode::Reserved99: return InLoop(loop::Nop);
        case Opcode::SetMotorFromVars: return Outside(handle::SetMotorFromVars);
        case Opcode::Count: break;
    }
    return {};
}

constexpr auto kExecutions = [] {
    std::array<Execution, kInstructionCount> executions{};
    for (std::size_t opcode = 0; opcode < executions.size(); ++opcode) {
        executions[opcode] = ExecutionOf(static_cast<Opcode>(opcode));
    }
    return executions;
}();

}  // namespace

LoopAction ActionFor(Opcode opcode) {
    return kExecutions[static_cast<std::size_t>(opcode)].action;
}

handle::InstructionHandler HandlerFor(Opcode opcode) {
    return kExecutions[static_cast<std::size_t>(opcode)].handler;
}

}  // namespace zentro
