// How a virtual board's time passes: as it does, in slow motion, or as fast as it goes.
#include <algorithm>
#include <cmath>

#include "board/trace.h"
#include "desktop/virtual_board_host.h"

namespace zentro {

namespace {

constexpr double kMillisecondsPerTick = 10;
constexpr double kLongestCatchUp = 1000;  // milliseconds
constexpr std::uint64_t kLongestSleepOfStep = kTicksPerSecond;
constexpr qint64 kWorkPerWakeUp = 8;  // milliseconds; leaves the window time to draw
constexpr std::uint64_t kTicksBetweenLooks = 8;

bool IsWaiting(const Board& board) {
    const Wait& wait = board.processor.wait;
    return wait.kind == Wait::Kind::Event ||
           (wait.kind == Wait::Kind::Time && board.clock < wait.until);
}

/// Whether only time can bring the next instruction.
bool MustWait(const Board& board) {
    return board.processor.running && IsWaiting(board) && !EventIsDue(board.events);
}

}  // namespace

void VirtualBoardHost::WakeUp() {
    const double elapsed = static_cast<double>(sinceWakeUp_.nsecsElapsed()) / 1e6;
    sinceWakeUp_.start();
    Advance(elapsed);
}

void VirtualBoardHost::Advance(double milliseconds) {
    if (!WantsTime()) {
        LookAround();
        return;
    }
    isHeard_ = speed_.kind != BoardSpeed::Kind::FullSpeed;
    PassTime(milliseconds);
    isHeard_ = false;
    LookAround();
}

void VirtualBoardHost::PassTime(double milliseconds) {
    pendingTime_ += std::clamp(milliseconds, 0.0, kLongestCatchUp);
    const double ticks = std::floor(pendingTime_ / kMillisecondsPerTick);
    pendingTime_ -= ticks * kMillisecondsPerTick;
    const auto count = static_cast<std::uint64_t>(ticks);
    const bool free = State().processor.running && State().processor.debug == DebugState::Off;
    // The rest of a line that is stepped need not be seen.
    const bool isSlow = speed_.kind == BoardSpeed::Kind::SlowMotion && !stops_.IsStepping();
    if (free && isSlow) {
        PassSlowMotion(count);
    } else if (free && speed_.kind == BoardSpeed::Kind::FullSpeed) {
        RunAtFullSpeed();
    } else {
        PassRealTime(count);
    }
}

void VirtualBoardHost::PassRealTime(std::uint64_t ticks) {
    const bool isDebugging = State().processor.debug != DebugState::Off;
    if (stops_.MustWatch() && !isDebugging) return PassWatched(ticks);
    stepsInTick_ = 0;
    lastStep_.clear();
    if (playback_ != nullptr) return playback_->PassTicks(ticks);
    history_.PassTicks(ticks, kInstructionsPerTick, SomebodyListens());
}

/// While the program waits, time passes as it does; between its instructions it stands still, so
/// that they see the clock that they would see at the board's own speed.
void VirtualBoardHost::PassSlowMotion(std::uint64_t ticks) {
    const double perTick = speed_.instructionsPerSecond / static_cast<double>(kTicksPerSecond);
    for (std::uint64_t tick = 0; tick < ticks; ++tick) {
        if (MustWait(State()) || !State().processor.running) {
            if (playback_ != nullptr) {
                playback_->PassTicks(1);
            } else {
                history_.PassTicks(1, 0, SomebodyListens());
            }
            continue;
        }
        pendingInstructions_ += perTick;
        for (; pendingInstructions_ >= 1; pendingInstructions_ -= 1) {
            if (MustWait(State())) continue;
            if (stops_.MustWatch() && stops_.HoldsBefore(State())) return HoldAtStop();
            if (playback_ != nullptr) {
                ReplayInstruction();
            } else {
                StepInstruction();
            }
        }
    }
}

void VirtualBoardHost::RunAtFullSpeed() {
    QElapsedTimer working;
    working.start();
    while (State().processor.running && !paused_ && !IsReplayOver() &&
           working.elapsed() < kWorkPerWakeUp) {
        PassRealTime(kTicksBetweenLooks);
        LetButtonsUp();
        trail_.Follow(world_->state);
    }
}

/// In debug mode the instruction was asked for on the serial line, and time has to pass for it.
void VirtualBoardHost::StepInstruction() {
    const bool listens = SomebodyListens();
    std::uint64_t slept = 0;
    while (MustWait(State()) && slept < kLongestSleepOfStep) {
        if (State().processor.wait.kind == Wait::Kind::Event) ++slept;
        history_.PassTicks(1, 0, listens);
    }
    if (State().processor.debug != DebugState::Off) {
        history_.PassTicks(1, kInstructionsPerTick, listens);
        return;
    }
    lastStep_ = TraceOfNext();
    stepsInTick_ += history_.Run(1);
    if (stepsInTick_ < kInstructionsPerTick) return;
    stepsInTick_ = 0;
    history_.PassTicks(1, 0, listens);
}

/// What the next instruction will do.
std::string VirtualBoardHost::TraceOfNext() const {
    if (MustWait(State())) return {};
    return StepWithTrace(*std::make_unique<Board>(State())).value_or("");
}

}  // namespace zentro
