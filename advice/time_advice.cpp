#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

namespace {

/// The variable that a line counts on: Count in INCREMENT Count and in Count = Count + 5.
const Label* CountedBy(const Compilation& compilation, const SourceLine& line) {
    const auto elements = compilation.ElementsOf(line);
    if (elements.empty()) return nullptr;
    if (line.token == Token::Increment || line.token == Token::Decrement)
        return elements[0].location;
    const bool isSum = (line.token == Token::Plus || line.token == Token::Minus) &&
                       elements.size() == 3 && elements[1].location == elements[0].location;
    return isSum ? elements[0].location : nullptr;
}

bool IsShown(const SourceLine& line) {
    return line.token == Token::Display || line.token == Token::DisplayHex;
}

/// A pause, or a routine that may make one.
bool MayTakeTime(const SourceLine& line) {
    return line.token == Token::Wait || line.token == Token::Call ||
           line.token == Token::RoutineCall;
}

/// Lines that are over at once and show nothing else.
bool TakesNoTime(const SourceLine& line) {
    return IsShown(line) || line.purpose == Purpose::Assignment || line.token == Token::Increment ||
           line.token == Token::Decrement;
}

}  // namespace

void TimeAdvice::Look(const SourceLine& line) {
    LookAtClock(line);
    LookAtEnd(line);
    LookAtOnce(line);
    LookAtLoop(line);
}

/// UNTIL Time = 500, where Time gets nothing but the clock.
void TimeAdvice::LookAtClock(const SourceLine& line) {
    hasClock_ = hasClock_ || line.token == Token::Clock;
    const auto sides = SidesOf(search_.compilation, line);
    if (sides && IsEquality(sides->comparison)) equalities_.push_back(&line);
}

void TimeAdvice::Finish() {
    if (!hasClock_) return;
    for (const SourceLine* line : equalities_)
        LookAtEquality(*line);
}

void TimeAdvice::LookAtEquality(const SourceLine& line) {
    const auto compared = WithNumber(*SidesOf(search_.compilation, line));
    if (!compared) return;
    const auto changes = search_.uses.ChangesOf(compared->variable->location);
    const auto isOf = [&](Token token) {
        return std::ranges::count(changes, token,
                                  [](const VariableUses::Change& c) { return c.line->token; });
    };
    // What is taken off is the time at the beginning.
    const auto readings = isOf(Token::Clock);
    const bool isClock = readings > 0 && readings + isOf(Token::Minus) == std::ssize(changes);
    if (isClock)
        search_.Add(line, MessageCode::ClockMayBePast, search_.uses.NameOf(*compared->variable));
}

/// ENABLE EVENTS, and then nothing that lasts.
void TimeAdvice::LookAtEnd(const SourceLine& line) {
    if (line.token == Token::BeginProgram) isInProgram_ = true;
    if (line.token == Token::SetEvent) hasEvents_ = true;
    if (line.token == Token::EnableEvents) {
        lastsSinceEnabled_ = !isInProgram_;
        return;
    }
    const bool lasts = MayTakeTime(line) || line.token == Token::RaiseEvent ||
                       search_.role != BlockRole::None ||
                       line.purpose == Purpose::FunctionAssignment;
    lastsSinceEnabled_ = lastsSinceEnabled_ || lasts;
    if (line.token == Token::EndProgram && hasEvents_ && !lastsSinceEnabled_)
        search_.Add(line, MessageCode::EndsWithEvents);
}

/// Whether an IF compares what an input has read.
bool TimeAdvice::HoldsInput(const SourceLine& line) const {
    const auto sides = line.token == Token::If ? SidesOf(search_.compilation, line)
                                               : std::optional<ComparedSides>();
    const auto compared = sides ? WithNumber(*sides) : std::nullopt;
    if (!compared) return false;
    return std::ranges::any_of(search_.uses.ChangesOf(compared->variable->location),
                               [](const VariableUses::Change& change) {
                                   return change.line->token == Token::Analog ||
                                          change.line->token == Token::Digital ||
                                          change.line->token == Token::Button;
                               });
}

/// A program that sets a motor going, asks once whether to stop it, and ends.
void TimeAdvice::LookAtOnce(const SourceLine& line) {
    if (!isInProgram_) return;
    const BlockRole role = search_.role;
    const bool isChoice = line.token == Token::If || line.token == Token::Select;
    const bool lasts = MayTakeTime(line) || line.token == Token::EnableEvents ||
                       (role == BlockRole::Opens && !isChoice);
    takesTime_ = takesTime_ || lasts;
    if (line.token == Token::SetMotor) drives_ = true;
    if (takesTime_) return;
    if (asked_ == nullptr && drives_ && HoldsInput(line)) asked_ = &line;
    stops_ = stops_ || (asked_ != nullptr && line.token == Token::StopMotors);
    if (line.token == Token::EndProgram && stops_ && asked_ != nullptr)
        search_.Add(*asked_, MessageCode::AskedOnce);
}

/// A loop that counts and shows its count, and does nothing that takes time.
void TimeAdvice::LookAtLoop(const SourceLine& line) {
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) {
        loop_ = line.token == Token::If || line.token == Token::Select ? nullptr : &line;
        counted_.clear();
        shown_.clear();
        return;
    }
    if (role == BlockRole::Ends) {
        const bool isTooFast =
            loop_ != nullptr && std::ranges::any_of(shown_, [this](const Shown& shown) {
                return std::ranges::find(counted_, shown.variable) != counted_.end();
            });
        if (isTooFast) search_.Add(*shown_.front().line, MessageCode::TooFastToRead);
    }
    if (role != BlockRole::None || !TakesNoTime(line)) loop_ = nullptr;
    const auto elements = search_.compilation.ElementsOf(line);
    if (IsShown(line) && !elements.empty()) shown_.push_back({&line, elements[0].location});
    if (const Label* counted = CountedBy(search_.compilation, line)) counted_.push_back(counted);
}

}  // namespace zentro
