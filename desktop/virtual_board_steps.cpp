// How a virtual board is led from line to line and held where it is to be held.

#include <algorithm>
#include <utility>

#include "desktop/virtual_board_host.h"

namespace zentro {

namespace {

// What a line may take at once, in instructions: so many, or a minute of waiting inside of what it
// calls. The wait of the line itself is what the user has asked for.
constexpr std::uint64_t kWorkOfStep = 500'000;
constexpr std::uint64_t kWorkOfTick = kWorkOfStep / (60 * kTicksPerSecond);
constexpr std::uint64_t kWorkOfSleepingTick = kWorkOfStep / kTicksPerSecond;
constexpr std::size_t kMostDoneSteps = 10'000;

}  // namespace

void VirtualBoardHost::SetBreakpoints(
    std::map<std::uint16_t, ProgramStops::Condition> breakpoints) {
    stops_.SetBreakpoints(std::move(breakpoints));
}

void VirtualBoardHost::StepLine(LineStep step) {
    if (IsSteppingLine()) return;
    if (State().processor.debug != DebugState::Off) SendCommand("G");
    if (IsReplayOver()) BreakOffReplay();
    SetPaused(false);
    lastStep_.clear();
    const bool isHeld = State().processor.running || IsReplaying();
    if (isHeld) {
        stops_.LeaveFrom(State());
        stops_.StepLine(step, State());
    } else {
        StartAnew();
        stops_.StepLine(LineStep::Into, State());
    }
    StepLineAtOnce();
    if (!isHeld) doneSteps_.clear();  // nothing comes before the first line
    LookAround();
}

void VirtualBoardHost::StepLineAtOnce() {
    std::uint64_t work = 0;
    while (State().processor.running && work < kWorkOfStep && !IsReplayOver()) {
        const std::uint64_t before = State().processor.steps;
        if (RunWatched()) return;
        work += State().processor.steps - before;
        const Wait& wait = State().processor.wait;
        if (wait.kind == Wait::Kind::Event) {
            work += kWorkOfSleepingTick;
        } else if (wait.kind == Wait::Kind::None || !stops_.IsAtLevelOfStep(State())) {
            work += kWorkOfTick;
        }
        FinishTick();
    }
}

/// The tick behind its instructions.
void VirtualBoardHost::FinishTick() {
    stepsInTick_ = 0;
    if (playback_ != nullptr) return playback_->PassTicks(1);
    history_.PassTicks(1, 0, SomebodyListens());
}

/// The rest of the instructions of a tick. True when the program is held before one of them.
bool VirtualBoardHost::RunWatched() {
    if (playback_ != nullptr) return ReplayWatched();
    const std::uint64_t left = kInstructionsPerTick - std::min(stepsInTick_, kInstructionsPerTick);
    const History::Watched watched =
        history_.RunUntil(left, [this](const Board& board) { return stops_.HoldsBefore(board); });
    stepsInTick_ += watched.done;
    if (watched.done > 0 && !stepBegan_) stepBegan_ = watched.first;
    if (watched.isHeld) HoldAtStop();
    return watched.isHeld;
}

void VirtualBoardHost::PassWatched(std::uint64_t ticks) {
    lastStep_.clear();
    for (std::uint64_t tick = 0; tick < ticks; ++tick) {
        const bool isMoving = State().processor.running || IsReplaying();
        if (!isMoving || IsReplayOver() || RunWatched()) return;
        FinishTick();
    }
}

void VirtualBoardHost::HoldAtStop() {
    SetPaused(true);
    stopReached_ = true;
}

/// A step or a run to a place is over. The step can be taken back as a whole.
void VirtualBoardHost::EndGoal() {
    const auto began = std::exchange(stepBegan_, std::nullopt);
    const auto last = history_.LastInstruction();
    if (stops_.IsStepping() && began && last) doneSteps_.push_back({*began, *last});
    if (doneSteps_.size() > kMostDoneSteps) doneSteps_.pop_front();
    stops_.EndGoal();
}

bool VirtualBoardHost::StepLineBack() {
    SetPaused(true);
    const bool done = TakeLineBack();
    if (playback_ != nullptr) playback_->FollowStepBack();
    if (done) ShowTakenBack();
    LookAround();
    return done;
}

bool VirtualBoardHost::TakeLineBack() {
    const auto last = history_.LastInstruction();
    // What has been taken back by other ways is no step any more.
    while (!doneSteps_.empty() && (!last || *last < doneSteps_.back().last))
        doneSteps_.pop_back();
    if (!doneSteps_.empty() && doneSteps_.back().last == last) {
        const History::Position first = doneSteps_.back().first;
        doneSteps_.pop_back();
        if (history_.StepBackTo(first)) return true;
    }
    const auto line = history_.FindBack(stops_.LineBefore(State()));
    return line && history_.StepBackTo(*line);
}

void VirtualBoardHost::RunTo(std::uint16_t address) {
    if (State().processor.debug != DebugState::Off) SendCommand("G");
    if (IsReplayOver()) BreakOffReplay();
    SetPaused(false);
    if (State().processor.running) {
        stops_.LeaveFrom(State());
    } else if (playback_ == nullptr) {
        StartAnew();
    }
    stops_.RunTo(address);
    LookAround();
}

}  // namespace zentro
