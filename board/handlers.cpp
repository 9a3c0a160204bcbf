#include "board/handlers.h"

// An opcode without a case does not build, although there is a default.
#pragma GCC diagnostic error "-Wswitch-enum"

namespace zentro::handle {

namespace {

constexpr InstructionHandler ChooseHandler(Opcode opcode) {
    switch (opcode) {
        case Opcode::EmergencyStop: return EmergencyStop;
        case Opcode::PowerOff: return PowerOff;
        case Opcode::Escape: return Escape;
        case Opcode::Sleep: return Sleep;
        case Opcode::End: return End;
        case Opcode::DisableEvents: return DisableEvents;
        case Opcode::EnableEvents: return EnableEvents;
        case Opcode::Reset: return Reset;
        case Opcode::ReadBattery: return ReadBattery;
        case Opcode::Transmit: return Transmit;
        case Opcode::Receive: return Receive;
        case Opcode::StopMotors: return StopMotors;
        case Opcode::SetMotor: return SetMotor;
        case Opcode::DeferEvents: return DeferEvents;
        case Opcode::ReadJoystickOne: return ReadJoystickOne;
        case Opcode::ReadJoystickTwo: return ReadJoystickTwo;
        case Opcode::CalibrateJoystick: return CalibrateJoystick;
        case Opcode::SetActionPort: return SetActionPort;
        case Opcode::ReadDigitalInput: return ReadDigitalInput;
        case Opcode::ReadAnalogInput: return ReadAnalogInput;
        case Opcode::ReadTimedInput: return ReadTimedInput;
        case Opcode::GetProgramNumber: return GetProgramNumber;
        case Opcode::ReadButton: return ReadButton;
        case Opcode::ReadPulseCountDigital: return ReadPulseCountDigital;
        case Opcode::ReadPulseCountTimed: return ReadPulseCountTimed;
        case Opcode::DisplayHex: return DisplayHex;
        case Opcode::DisplayNumber: return DisplayNumber;
        case Opcode::SetServo: return SetServo;
        case Opcode::SetServoPercent: return SetServoPercent;
        case Opcode::SetLeftLed: return SetLeftLed;
        case Opcode::SetRightLed: return SetRightLed;
        case Opcode::PlaySound: return PlaySound;
        case Opcode::PlayTune: return PlayTune;
        case Opcode::RandomizeByte: return RandomizeByte;
        case Opcode::GetClockTicks: return GetClockTicks;
        case Opcode::ReadEeprom: return ReadEeprom;
        case Opcode::WriteEeprom: return WriteEeprom;
        case Opcode::WaitForTime: return WaitForTime;
        case Opcode::OnErrorCall: return OnErrorCall;
        case Opcode::SetEventWatch: return SetEventWatch;
        case Opcode::RemoveEventWatch: return RemoveEventWatch;
        case Opcode::RaiseEvent: return RaiseEvent;
        case Opcode::CompleteEvent: return CompleteEvent;
        case Opcode::SetMotorFromVars: return SetMotorFromVars;

        // The loop in execute.cpp carries these out.
        case Opcode::Nop:
        case Opcode::Reserved10:
        case Opcode::MoveByte:
        case Opcode::MoveWord:
        case Opcode::SetDataPointer:
        case Opcode::ReadDataByte:
        case Opcode::WriteDataByte:
        case Opcode::ReadDataWord:
        case Opcode::WriteDataWord:
        case Opcode::PushByte:
        case Opcode::PopByte:
        case Opcode::PushWord:
        case Opcode::PopWord:
        case Opcode::ConvertByte:
        case Opcode::ConvertWord:
        case Opcode::DivideByte:
        case Opcode::DivideWord:
        case Opcode::LoopUntilZero:
        case Opcode::Call:
        case Opcode::Return:
        case Opcode::Jump:
        case Opcode::AddByte:
        case Opcode::SubtractByte:
        case Opcode::IncrementByte:
        case Opcode::DecrementByte:
        case Opcode::MultiplyByte:
        case Opcode::ComplimentByte:
        case Opcode::ClearByte:
        case Opcode::AddWord:
        case Opcode::SubtractWord:
        case Opcode::IncrementWord:
        case Opcode::DecrementWord:
        case Opcode::ClearWord:
        case Opcode::SetFlagTrue:
        case Opcode::SetFlagFalse:
        case Opcode::IfFlagTrue:
        case Opcode::IfFlagFalse:
        case Opcode::IfByteEqual:
        case Opcode::IfByteNotEqual:
        case Opcode::IfByteLessThan:
        case Opcode::IfByteGreaterThan:
        case Opcode::IfByteLessThanOrEqual:
        case Opcode::IfByteGreaterThanOrEqual:
        case Opcode::IfWordEqual:
        case Opcode::IfWordNotEqual:
        case Opcode::IfWordLessThan:
        case Opcode::IfWordGreaterThan:
        case Opcode::IfWordLessThanOrEqual:
        case Opcode::IfWordGreaterThanOrEqual:
        case Opcode::Reserved92:
        case Opcode::Reserved93:
        case Opcode::Reserved94:
        case Opcode::LogicalAnd:
        case Opcode::LogicalOr:
        case Opcode::Reserved97:
        case Opcode::Reserved98:
        case Opcode::Reserved99:
        case Opcode::Count:
        default: return nullptr;
    }
}

constexpr auto kHandlers = [] {
    std::array<InstructionHandler, kInstructionCount> handlers{};
    for (std::size_t opcode = 0; opcode < handlers.size(); ++opcode) {
        handlers[opcode] = ChooseHandler(static_cast<Opcode>(opcode));
    }
    return handlers;
}();

}  // namespace

InstructionHandler HandlerFor(Opcode opcode) {
    return kHandlers[static_cast<std::size_t>(opcode)];
}

}  // namespace zentro::handle
