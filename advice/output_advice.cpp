#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

namespace {

/// What a line sets; nothing for lines that set no output for certain.
std::optional<SetOutput> OutputOf(const Compilation& compilation, const SourceLine& line) {
    switch (line.token) {
        case Token::Display:
        case Token::DisplayHex: return SetOutput{Token::Display};
        case Token::SetLeds: return SetOutput{Token::SetLeds};
        case Token::SetServo:
        case Token::SetServoPercent:
        case Token::SetPort:
        case Token::SetMotor: break;
        default: return std::nullopt;
    }
    const auto elements = compilation.ElementsOf(line);
    const auto number = elements.empty() ? std::nullopt : ValueOf(elements.front());
    if (!number) return std::nullopt;
    const bool isServo = line.token == Token::SetServo || line.token == Token::SetServoPercent;
    return SetOutput{isServo ? Token::SetServo : line.token, *number};
}

/// Whether the line sets a motor going.
bool StartsMotor(const Compilation& compilation, const SourceLine& line) {
    const auto elements = compilation.ElementsOf(line);
    return line.token == Token::SetMotor && !elements.empty() &&
           ValueOf(elements.back()).value_or(1) > 0;
}

/// Lines that take no time and change nothing that can be seen.
bool IsSum(const SourceLine& line) {
    return line.purpose == Purpose::Assignment || line.token == Token::Increment ||
           line.token == Token::Decrement;
}

/// What lets the lines before it be seen, or may not follow them at once.
bool KeepsOutputs(const SourceLine& line) {
    return IsSum(line) || line.token == Token::EndIf || line.token == Token::EndSelect;
}

}  // namespace

void OutputAdvice::Look(const SourceLine& line) {
    const Compilation& compilation = search_.compilation;
    if (line.token == Token::StopMotors) {
        if (motorStarted_) search_.Add(line, MessageCode::ReplacedAtOnce);
        std::erase_if(set_, [](const SetOutput& one) { return one.kind == Token::SetMotor; });
        motorStarted_ = false;
        return;
    }
    const auto output = OutputOf(compilation, line);
    if (output) {
        if (std::ranges::find(set_, *output) != set_.end())
            search_.Add(line, MessageCode::ReplacedAtOnce);
        else
            set_.push_back(*output);
        motorStarted_ = motorStarted_ || StartsMotor(compilation, line);
        return;
    }
    if (KeepsOutputs(line)) return;
    set_.clear();
    motorStarted_ = false;
}

/// A motor that one line alone sets going, if something is so, and that no line stops.
void MotorInLoopAdvice::Look(const SourceLine& line) {
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) blocks_.push_back({line.token});
    if (role == BlockRole::Continues && !blocks_.empty()) {
        blocks_.back().hasOtherBranch = true;
        for (const SourceLine* set : blocks_.back().motors)
            std::erase(candidates_, set);
    }
    if (role == BlockRole::Ends && !blocks_.empty()) blocks_.pop_back();
    if (MayStop(line.token)) isStopped_ = true;
    if (line.token != Token::SetMotor) return;
    const auto elements = search_.compilation.ElementsOf(line);
    const auto number = elements.empty() ? std::nullopt : ValueOf(elements.front());
    if (!number || ValueOf(elements.back()).value_or(0) == 0) {
        isStopped_ = true;
        return;
    }
    numbers_.push_back(*number);
    const auto size = blocks_.size();
    const bool isInIf = size >= 2 && blocks_.back().token == Token::If &&
                        !blocks_.back().hasOtherBranch && blocks_[size - 2].token == Token::Loop;
    if (!isInIf) return;
    blocks_.back().motors.push_back(&line);
    candidates_.push_back(&line);
}

bool MotorInLoopAdvice::MayStop(Token token) {
    switch (token) {
        case Token::StopMotors:
        case Token::EmergencyStop:
        case Token::PowerOff:
        case Token::Escape: return true;
        default: return false;
    }
}

/// Speaks of the last of them alone: one STOP MOTORS stops all.
void MotorInLoopAdvice::Finish() {
    if (isStopped_ || candidates_.empty() || candidates_.size() != numbers_.size()) return;
    std::ranges::sort(numbers_);
    if (std::ranges::adjacent_find(numbers_) != numbers_.end()) return;
    search_.Add(*candidates_.back(), MessageCode::MotorNeverStopped);
}

}  // namespace zentro
