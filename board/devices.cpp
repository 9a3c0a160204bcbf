#include "board/devices.h"

#include <algorithm>

#include "board/board.h"

namespace zentro {

namespace {

constexpr int kAnalogEventChange = 8;

std::uint8_t NumberOf(EventNumber first, std::size_t index) {
    return static_cast<std::uint8_t>(static_cast<std::size_t>(first) + index);
}

void NoticeAnalogChange(Board& board, std::size_t index) {
    std::uint8_t& reference = board.devices.analogReference[index];
    const std::uint8_t value = board.inputs.analog[index];
    const int change = value > reference ? value - reference : reference - value;
    if (change <= kAnalogEventChange) return;
    reference = value;
    HappenEvent(board, NumberOf(EventNumber::AnalogInput1, index));
}

/// Stores a new value of an output and, if it is new, notes the change.
template <typename Value>
void Change(Board& board, Value& output, const Value& value, OutputChange change) {
    if (output == value) return;
    output = value;
    change.tick = board.clock;
    board.changes.push_back(change);
}

template <std::size_t Count>
void SetDrive(Board& board, std::array<Drive, Count>& drives, unsigned number, Drive drive,
              OutputKind kind) {
    const bool known = drive.direction == kForward || drive.direction == kBackward;
    if (!known || number < 1 || number > Count) return;
    OutputChange change{.kind = kind, .number = static_cast<std::uint8_t>(number)};
    change.value = drive.value;
    change.direction = drive.direction;
    Change(board, drives[number - 1], drive, change);
}

template <std::size_t Count>
void SetSwitch(Board& board, std::array<bool, Count>& switches, unsigned number, bool on,
               OutputKind kind) {
    if (number < 1 || number > Count) return;
    OutputChange change{.kind = kind, .number = static_cast<std::uint8_t>(number)};
    change.value = on ? 1 : 0;
    Change(board, switches[number - 1], on, change);
}

/// A note that begins is told even if the one before was the same.
void StartNote(Board& board, std::uint8_t note, std::uint8_t length) {
    if (note == 0 && board.outputs.note == 0) return;
    OutputChange change{.tick = board.clock, .kind = OutputKind::Note};
    change.value = note;
    change.length = length;
    board.outputs.note = note;
    board.devices.noteEnd = board.clock + length;
    board.changes.push_back(change);
}

void ContinueTune(Board& board) {
    Devices& devices = board.devices;
    const std::uint32_t at = devices.tune.value_or(kMemorySize);
    if (at + 1 >= kMemorySize || board.memory.Byte(at) == 0) {
        devices.tune.reset();
        StartNote(board, 0, 0);
        return;
    }
    devices.tune = at + 2;
    StartNote(board, board.memory.Byte(at), std::max(board.memory.Byte(at + 1), std::uint8_t{1}));
}

void CountPulsesOfSecond(Board& board) {
    for (std::size_t index = 0; index < board.inputs.pulses.size(); ++index) {
        const auto counted = static_cast<std::uint16_t>(board.inputs.pulses[index] -
                                                        board.devices.pulsesAtSecond[index]);
        board.devices.pulsesLastSecond[index] =
            static_cast<std::uint8_t>(std::min<std::uint16_t>(counted, 255));
    }
    board.devices.pulsesAtSecond = board.inputs.pulses;
}

}  // namespace

void SetInputs(Board& board, const Inputs& inputs) {
    const Inputs before = board.inputs;
    board.inputs = inputs;
    for (std::size_t index = 0; index < inputs.digital.size(); ++index) {
        if (inputs.digital[index] != before.digital[index])
            HappenEvent(board, NumberOf(EventNumber::DigitalInput1, index));
    }
    for (std::size_t index = 0; index < inputs.buttons.size(); ++index) {
        if (!inputs.buttons[index] || before.buttons[index]) continue;
        board.devices.buttonsSeen[index] = false;
        HappenEvent(board, NumberOf(EventNumber::Button1, index));
    }
    for (std::size_t index = 0; index < inputs.analog.size(); ++index) {
        NoticeAnalogChange(board, index);
    }
    for (std::size_t index = 0; index < inputs.pulses.size(); ++index) {
        for (std::uint16_t pulse = before.pulses[index]; pulse != inputs.pulses[index]; ++pulse) {
            HappenEvent(board, NumberOf(EventNumber::PulseInput1, index));
        }
    }
}

void ForgetInputHistory(Board& board) {
    board.devices.analogReference = board.inputs.analog;
    board.devices.pulsesAtStart = board.inputs.pulses;
}

void SetMotor(Board& board, unsigned number, unsigned direction, unsigned speed) {
    const Drive drive{static_cast<char>(direction), static_cast<std::uint8_t>(speed)};
    SetDrive(board, board.outputs.motors, number, drive, OutputKind::Motor);
}

void SetServo(Board& board, unsigned number, unsigned direction, unsigned position) {
    const Drive drive{static_cast<char>(direction), static_cast<std::uint8_t>(position)};
    SetDrive(board, board.outputs.servos, number, drive, OutputKind::Servo);
}

void SetPort(Board& board, unsigned number, bool on) {
    SetSwitch(board, board.outputs.ports, number, on, OutputKind::Port);
}

void SetLed(Board& board, unsigned number, bool on) {
    SetSwitch(board, board.outputs.leds, number, on, OutputKind::Led);
}

void ShowOnDisplay(Board& board, Display display) {
    OutputChange change{.kind = OutputKind::Display, .value = display.value};
    change.form = display.form;
    Change(board, board.outputs.display, display, change);
}

void PlayNote(Board& board, unsigned note, unsigned length) {
    board.devices.tune.reset();
    const bool sounds = note != 0 && length != 0;
    StartNote(board, static_cast<std::uint8_t>(sounds ? note : 0),
              static_cast<std::uint8_t>(sounds ? length : 0));
}

void PlayTune(Board& board, std::uint32_t address) {
    board.devices.tune = address;
    ContinueTune(board);
}

void StopMotors(Board& board) {
    for (unsigned number = 1; number <= board.outputs.motors.size(); ++number) {
        SetMotor(board, number, kForward, 0);
    }
}

void PutOutputsToRest(Board& board) {
    StopMotors(board);
    for (unsigned number = 1; number <= board.outputs.servos.size(); ++number) {
        SetServo(board, number, kForward, 0);
    }
    for (unsigned number = 1; number <= board.outputs.ports.size(); ++number) {
        SetPort(board, number, false);
    }
    for (unsigned number = 1; number <= board.outputs.leds.size(); ++number) {
        SetLed(board, number, false);
    }
    ShowOnDisplay(board, {});
    PlayNote(board, 0, 0);
}

void AdvanceDevices(Board& board) {
    if (board.clock % kTicksPerSecond == 0) CountPulsesOfSecond(board);
    if (board.outputs.note != 0 && board.clock >= board.devices.noteEnd) ContinueTune(board);
}

}  // namespace zentro
