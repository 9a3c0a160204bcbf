#include <algorithm>

#include "board/board.h"
#include "board/handlers.h"

namespace zentro::handle {

namespace {

constexpr unsigned kServoRange = 90;  // degrees to each side of the centre

/// The reading of input `number`, 0 if there is no such input.
template <typename Value, std::size_t Count>
unsigned Reading(const std::array<Value, Count>& inputs, unsigned number) {
    return number >= 1 && number <= Count ? inputs[number - 1] : Value{};
}

std::uint8_t FromFlag(unsigned flag) {
    return flag != 0 ? kTrue : kFalse;
}

/// What a joystick shows when its position at rest is taken as the middle.
unsigned Calibrated(std::uint8_t position, std::uint8_t rest) {
    return static_cast<unsigned>(std::clamp(position - rest + 128, 0, 255));
}

void ReadJoystick(Board& board, std::size_t index, const DecodedInstruction& instruction) {
    const StickPosition position = board.inputs.joysticks[index];
    const StickPosition rest = board.devices.stickRest[index];
    unsigned reading = 0;
    if (instruction.a == 'X') reading = Calibrated(position.x, rest.x);
    if (instruction.a == 'Y') reading = Calibrated(position.y, rest.y);
    board.memory.StoreByte(instruction.b, reading);
    board.memory.StoreByte(instruction.c, 0);
}

}  // namespace

void ReadBattery(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.a, board.inputs.battery);
}

void GetProgramNumber(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.a, board.inputs.programNumber);
}

void ReadDigitalInput(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.b, FromFlag(Reading(board.inputs.digital, instruction.a)));
}

void ReadButton(Board& board, const DecodedInstruction& instruction) {
    const bool isDown = Reading(board.inputs.buttons, instruction.a) != 0;
    if (isDown) board.devices.buttonsSeen[instruction.a - 1U] = true;
    board.memory.StoreByte(instruction.b, FromFlag(isDown));
}

void ReadAnalogInput(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.b, Reading(board.inputs.analog, instruction.a));
}

void ReadTimedInput(Board& board, const DecodedInstruction& instruction) {
    const unsigned ticks = Reading(board.inputs.timed, instruction.a);
    board.memory.StoreByte(instruction.b, ticks);
    board.memory.StoreByte(instruction.c, ticks >> 8);
}

void ReadPulseCountDigital(Board& board, const DecodedInstruction& instruction) {
    const unsigned count = Reading(board.inputs.pulses, instruction.a) -
                           Reading(board.devices.pulsesAtStart, instruction.a);
    board.memory.StoreByte(instruction.b, count);
}

void ReadPulseCountTimed(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.b, Reading(board.devices.pulsesLastSecond, instruction.a));
}

void ReadJoystickOne(Board& board, const DecodedInstruction& instruction) {
    ReadJoystick(board, 0, instruction);
}

void ReadJoystickTwo(Board& board, const DecodedInstruction& instruction) {
    ReadJoystick(board, 1, instruction);
}

void CalibrateJoystick(Board& board, const DecodedInstruction& instruction) {
    if (instruction.a < 1 || instruction.a > board.devices.stickRest.size()) return;
    board.devices.stickRest[instruction.a - 1U] = {static_cast<std::uint8_t>(instruction.b),
                                                   board.memory.Byte(instruction.c)};
}

void StopMotors(Board& board, const DecodedInstruction&) {
    zentro::StopMotors(board);
}

void SetMotor(Board& board, const DecodedInstruction& instruction) {
    zentro::SetMotor(board, instruction.a, instruction.b, board.memory.Byte(instruction.c));
}

void SetMotorFromVars(Board& board, const DecodedInstruction& instruction) {
    zentro::SetMotor(board, board.memory.Byte(instruction.a), board.memory.Byte(instruction.b),
                     board.memory.Byte(instruction.c));
}

void SetServo(Board& board, const DecodedInstruction& instruction) {
    zentro::SetServo(board, instruction.a, instruction.b, board.memory.Byte(instruction.c));
}

void SetServoPercent(Board& board, const DecodedInstruction& instruction) {
    const unsigned percent = board.memory.Byte(instruction.c);
    zentro::SetServo(board, instruction.a, instruction.b, percent * kServoRange / 100);
}

void SetActionPort(Board& board, const DecodedInstruction& instruction) {
    SetPort(board, instruction.a, instruction.b != 0);
}

void SetLeftLed(Board& board, const DecodedInstruction& instruction) {
    SetLed(board, 1, board.memory.Byte(instruction.a) != 0);
}

void SetRightLed(Board& board, const DecodedInstruction& instruction) {
    SetLed(board, 2, board.memory.Byte(instruction.a) != 0);
}

void DisplayHex(Board& board, const DecodedInstruction& instruction) {
    ShowOnDisplay(board, {Display::Form::Hex, board.memory.Byte(instruction.a)});
}

void DisplayNumber(Board& board, const DecodedInstruction& instruction) {
    ShowOnDisplay(board, {Display::Form::Number, board.memory.Byte(instruction.a)});
}

void PlaySound(Board& board, const DecodedInstruction& instruction) {
    PlayNote(board, instruction.a, instruction.b);
}

void PlayTune(Board& board, const DecodedInstruction& instruction) {
    zentro::PlayTune(board, instruction.a);
}

void Transmit(Board& board, const DecodedInstruction& instruction) {
    if (board.output.size() >= kOutputLimit) {
        // The line is busy: try again at the next tick.
        board.processor.address = board.processor.instruction;
        board.processor.wait = {Wait::Kind::Time, board.clock + 1};
        return;
    }
    const std::uint8_t character = board.memory.Byte(instruction.a);
    Print(board, std::string(1, static_cast<char>(character)));
    OutputChange change{.tick = board.clock, .kind = OutputKind::Transmit};
    change.value = character;
    board.changes.push_back(change);
}

void Receive(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.a, board.serial.received);
    board.serial.received = 0;
}

}  // namespace zentro::handle
