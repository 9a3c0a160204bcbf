#include <algorithm>

#include "advice/advice_finders.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

bool BeginsSound(Token token) {
    return token == Token::PlaySound || token == Token::PlayTune;
}

/// Lines that are carried out when those before them have been, RETURN excepted: it may stand at
/// the end of a routine whatever comes before.
bool IsPlainLine(const SourceLine& line) {
    switch (line.purpose) {
        case Purpose::Statement:
        case Purpose::Assignment:
        case Purpose::FunctionAssignment:
        case Purpose::BlockStart:
            return line.token != Token::Return && line.token != Token::BeginProgram;
        default: return false;
    }
}

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

void OrderAdvice::Look(const SourceLine& line) {
    if (before_ != nullptr) LookAtPair(*before_, line);
    FollowMotors(line);
    before_ = &line;
}

void OrderAdvice::LookAtPair(const SourceLine& before, const SourceLine& line) {
    if (before.token == Token::EndLoop && IsPlainLine(line))
        search_.Add(line, MessageCode::NeverReached);
    if (BeginsSound(before.token) && BeginsSound(line.token))
        search_.Add(line, MessageCode::SoundCutOff);
    const bool opensBranch = before.token == Token::If || before.token == Token::Else;
    if (opensBranch && line.token == Token::EndIf) search_.Add(before, MessageCode::BlockEmpty);
}

/// Only what is certain counts: speeds that are numbers, in lines that are always carried out.
void OrderAdvice::SetMotor(const SourceLine& line) {
    motorOn_ = nullptr;
    hasWaited_ = false;
    const auto elements = search_.compilation.ElementsOf(line);
    const bool isCertain = depth_ == 0 && !elements.empty() && elements.back().IsConstant();
    if (isCertain && NumberOf(elements.back().constant->value).value_or(0) > 0) motorOn_ = &line;
}

void OrderAdvice::FollowMotors(const SourceLine& line) {
    if (line.token == Token::BeginProgram) {
        isInProgram_ = true;
        depth_ = 0;
        return;
    }
    if (!isInProgram_) return;
    if (line.token == Token::EndProgram) {
        if (motorOn_ != nullptr && hasWaited_) search_.Add(*motorOn_, MessageCode::MotorStaysOn);
        isInProgram_ = false;
        motorOn_ = nullptr;
        return;
    }
    if (line.token == Token::SetMotor) return SetMotor(line);
    if (line.token == Token::Wait && depth_ == 0) hasWaited_ = true;
    if (MayStopMotors(line.token)) motorOn_ = nullptr;
    if (line.purpose == Purpose::BlockStart) ++depth_;
    if (line.purpose == Purpose::BlockEnd) --depth_;
}

}  // namespace zentro
