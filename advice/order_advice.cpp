#include "advice/advice_finders.h"

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

}  // namespace

void OrderAdvice::Look(const SourceLine& line) {
    if (before_ != nullptr) LookAtPair(*before_, line);
    before_ = &line;
}

void OrderAdvice::LookAtPair(const SourceLine& before, const SourceLine& line) {
    if (before.token == Token::EndLoop && IsPlainLine(line))
        search_.Add(line, MessageCode::NeverReached);
    if (before.token == Token::Return && IsPlainLine(line))
        search_.Add(line, MessageCode::BelowReturn);
    if (BeginsSound(before.token) && BeginsSound(line.token))
        search_.Add(line, MessageCode::SoundCutOff);
    if (BeginsSound(before.token) && line.token == Token::StopSound)
        search_.Add(line, MessageCode::SoundStopped);
    const bool opensBranch = before.token == Token::If || before.token == Token::Else;
    if (opensBranch && line.token == Token::EndIf) search_.Add(before, MessageCode::BlockEmpty);
}

}  // namespace zentro
