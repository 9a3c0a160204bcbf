#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

namespace {

/// What may stop motors, or end the program before its last line.
bool MayStopMotors(Token token) {
    switch (token) {
        case Token::StopMotors:
        case Token::EmergencyStop:
        case Token::PowerOff:
        case Token::Escape:
        case Token::Loop:
        case Token::Call:
        case Token::RoutineCall:
        case Token::EnableEvents: return true;
        default: return false;
    }
}

}  // namespace

/// Only what is certain counts: speeds that are numbers, in lines that are always carried out.
void MotorAdvice::SetMotor(const SourceLine& line) {
    const auto elements = search_.compilation.ElementsOf(line);
    if (elements.empty()) return;
    const auto number = static_cast<std::size_t>(ValueOf(elements.front()).value_or(0));
    if (number < 1 || number > kMotors) return;
    const bool isOn = depth_ == 0 && ValueOf(elements.back()).value_or(0) > 0;
    motors_[number - 1] = {isOn ? &line : nullptr, false};
}

/// Speaks of the last of them alone: one STOP MOTORS stops all.
void MotorAdvice::EndProgram() {
    const SourceLine* last = nullptr;
    for (const Motor& motor : motors_) {
        if (motor.on == nullptr || !motor.hasWaited) continue;
        if (last == nullptr || motor.on->lineNumber > last->lineNumber) last = motor.on;
    }
    if (last != nullptr) search_.Add(*last, MessageCode::MotorStaysOn);
    isInProgram_ = false;
}

void MotorAdvice::Look(const SourceLine& line) {
    if (line.token == Token::BeginProgram) isInProgram_ = true;
    if (!isInProgram_) return;
    if (line.token == Token::EndProgram) return EndProgram();
    if (line.token == Token::SetMotor) return SetMotor(line);
    if (line.token == Token::Wait && depth_ == 0) {
        for (Motor& motor : motors_)
            motor.hasWaited = true;
    }
    if (MayStopMotors(line.token)) motors_ = {};
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) ++depth_;
    if (role == BlockRole::Ends) --depth_;
}

}  // namespace zentro
