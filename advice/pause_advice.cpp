#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

namespace {

// In hundredths of a second.
constexpr std::int32_t kLongestUnseenSign = 3;  // of a lamp or a number on the display
constexpr std::int32_t kLongestUnseenTurn = 5;  // of a motor that was at rest

bool IsPauseUpTo(const Compilation& compilation, const SourceLine& line, std::int32_t longest) {
    if (line.token != Token::Wait) return false;
    const auto elements = compilation.ElementsOf(line);
    return elements.size() == 1 && ValueOf(elements.front()).value_or(longest + 1) <= longest;
}

/// Whether both lines show something that is written there, and not the same.
bool ShowDifferentThings(const Compilation& compilation, const SourceLine& first,
                         const SourceLine& second) {
    const bool isSign = first.token == Token::SetLeds || first.token == Token::Display ||
                        first.token == Token::DisplayHex;
    if (!isSign || first.token != second.token) return false;
    const auto one = compilation.ElementsOf(first);
    const auto other = compilation.ElementsOf(second);
    if (!std::ranges::all_of(one, &LineElement::IsConstant) ||
        !std::ranges::all_of(other, &LineElement::IsConstant))
        return false;
    return !std::ranges::equal(one, other, {}, ValueOf, ValueOf);
}

/// Lines that do not touch motors, and may stand between those that do.
bool LeavesMotorsAlone(Token token) {
    return token == Token::SetLeds || token == Token::Display || token == Token::PlaySound;
}

}  // namespace

void PauseAdvice::LookAtSigns(const SourceLine& line) {
    if (before_ == nullptr || beforeThat_ == nullptr) return;
    if (IsPauseUpTo(search_.compilation, *before_, kLongestUnseenSign) &&
        ShowDifferentThings(search_.compilation, *beforeThat_, line))
        tooShort_.push_back(before_);
}

/// Whether the line stops one of the motors that have been started, or turns it round.
bool PauseAdvice::EndsTurn(const SourceLine& line) const {
    if (line.token == Token::StopMotors) return true;
    if (line.token != Token::SetMotor) return false;
    const auto elements = search_.compilation.ElementsOf(line);
    const auto endsTurnOf = [&](const SourceLine* start) {
        const auto started = search_.compilation.ElementsOf(*start);
        return ValueOf(started[0]) == ValueOf(elements[0]) &&
               (ValueOf(started[1]) != ValueOf(elements[1]) || ValueOf(elements[2]) == 0);
    };
    return std::ranges::any_of(started_, endsTurnOf);
}

/// A motor that turns may well be turned round for a moment, to brake: only from rest it is certain
/// that the pause was meant to be the time of the drive.
PauseAdvice::Motors PauseAdvice::After(const SourceLine& line) {
    if (line.token == Token::BeginProgram) return Motors::AtRest;
    if (depth_ != 0) return Motors::Unknown;
    if (line.token == Token::StopMotors) return Motors::AtRest;
    const bool mayStart = motors_ == Motors::AtRest || motors_ == Motors::Started;
    if (line.token == Token::SetMotor) {
        const bool isCertain = search_.compilation.ElementsOf(line).back().IsConstant();
        return mayStart && isCertain ? Motors::Started : Motors::Unknown;
    }
    if (IsPauseUpTo(search_.compilation, line, kLongestUnseenTurn) && motors_ == Motors::Started)
        return Motors::Paused;
    const bool isPauseAtRest = line.token == Token::Wait && motors_ == Motors::AtRest;
    return mayStart && (isPauseAtRest || LeavesMotorsAlone(line.token)) ? motors_ : Motors::Unknown;
}

void PauseAdvice::FollowMotors(const SourceLine& line) {
    if (motors_ == Motors::Paused && EndsTurn(line)) tooShort_.push_back(before_);
    motors_ = After(line);
    if (motors_ == Motors::AtRest) started_.clear();
    if (motors_ == Motors::Started && line.token == Token::SetMotor) started_.push_back(&line);
}

void PauseAdvice::Look(const SourceLine& line) {
    if (line.token == Token::Wait && !IsPauseUpTo(search_.compilation, line, kLongestUnseenTurn))
        areAllShort_ = false;
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) ++depth_;
    LookAtSigns(line);
    FollowMotors(line);
    if (role == BlockRole::Ends) --depth_;
    beforeThat_ = before_;
    before_ = &line;
}

void PauseAdvice::Finish() {
    if (!areAllShort_) return;
    for (const SourceLine* pause : tooShort_)
        search_.Add(*pause, MessageCode::PauseTooShort);
}

}  // namespace zentro
