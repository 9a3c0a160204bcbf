#include "desktop/board_text.h"

#include <array>
#include <cstdio>

#include "board/text.h"

namespace zentro {

namespace {

/// Waits so short come one after the other: telling of each would only flicker.
constexpr std::uint64_t kShortWait = 20;  // ticks

std::string DescribeWait(const Board& board, bool paused) {
    const Wait& wait = board.processor.wait;
    const std::string start = paused ? "paused, " : "";
    if (wait.kind == Wait::Kind::Event) return start + "asleep until an event happens";
    const std::uint64_t left = wait.until > board.clock ? wait.until - board.clock : 0;
    if (left == 0 && paused) return "paused";
    if (!paused && left < kShortWait) return "running";
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "waiting, %.*f seconds left", paused ? 2 : 1,
                  static_cast<double>(left) / static_cast<double>(kTicksPerSecond));
    return start + text.data();
}

std::string DescribeEnd(const Board& board, const ProgramWords& words) {
    const Processor& processor = board.processor;
    const std::string place = ", at " + FormatAddress(processor.instruction);
    switch (processor.end) {
        case EndReason::None: break;
        case EndReason::End: return "the program has ended" + place;
        case EndReason::EmergencyStop: return "ended by an emergency stop" + place;
        case EndReason::PowerOff: return "ended by switching off" + place;
        case EndReason::Escape: return "ended by an escape" + place;
        case EndReason::Stopped: return "stopped at " + FormatAddress(processor.address);
        case EndReason::Fault: return "stopped: " + DescribeFault(board, words).WholeText();
    }
    if (processor.programSize == 0) return "no program loaded";
    return "ready, " + std::to_string(processor.programSize) + " bytes loaded";
}

std::string DescribeDirection(char direction) {
    return direction == kForward ? " forward" : " backward";
}

}  // namespace

std::string DescribeState(const Board& board, bool paused, const ProgramWords& words) {
    const Processor& processor = board.processor;
    if (board.serial.loader.active) return "a program is being loaded";
    if (!processor.running) return DescribeEnd(board, words);
    if (processor.wait.kind != Wait::Kind::None) return DescribeWait(board, paused);
    if (paused) return "paused";
    if (processor.debug == DebugState::AtPrompt) return "debug mode, waiting for a command";
    return "running";
}

std::string DescribeMotor(const Drive& motor) {
    if (motor.value == 0) return "at rest";
    return std::to_string(motor.value) + " %" + DescribeDirection(motor.direction);
}

std::string DescribeServo(const Drive& servo) {
    if (servo.value == 0) return "centre";
    return std::to_string(servo.value) + "°" + DescribeDirection(servo.direction);
}

std::string DescribeDisplay(const Display& display) {
    switch (display.form) {
        case Display::Form::Dark: return "dark";
        case Display::Form::Number: return std::to_string(display.value);
        case Display::Form::Hex: return FormatHexByte(display.value) + " hexadecimal";
    }
    return {};
}

std::string DescribeNote(std::uint8_t note) {
    constexpr std::array kPitches{"C", "C♯", "D", "D♯", "E", "F", "F♯", "G", "G♯", "A", "A♯", "B"};
    if (note == 0) return "silence";
    const int octave = note / static_cast<int>(kPitches.size()) - 1;
    return kPitches[note % kPitches.size()] + std::to_string(octave);
}

std::string DescribeSpeed(const BoardSpeed& speed) {
    switch (speed.kind) {
        case BoardSpeed::Kind::RealTime: return "real time";
        case BoardSpeed::Kind::FullSpeed: return "as fast as it goes";
        case BoardSpeed::Kind::SlowMotion: break;
    }
    const auto count = static_cast<long long>(speed.instructionsPerSecond);
    return std::to_string(count) + (count == 1 ? " instruction" : " instructions") + " a second";
}

}  // namespace zentro
