// How time passes for a virtual board: in real time, slowed down, or as fast as it goes.
#include <algorithm>
#include <cmath>

#include "board/trace.h"
#include "ui/board/virtual_board_host.h"

namespace zentro {

namespace {

constexpr std::uint64_t kInstructionsPerTick = 10'000;
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

/// A board at rest to which nobody is connected needs no time.
bool VirtualBoardHost::WantsTime() const {
    return !paused_ &&
           (State().processor.running || SomebodyListens() || State().outputs != Outputs{});
}

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
    pendingTime_ += std::clamp(milliseconds, 0.0, kLongestCatchUp);
    const double ticks = std::floor(pendingTime_ / kMillisecondsPerTick);
    pendingTime_ -= ticks * kMillisecondsPerTick;
    const auto count = static_cast<std::uint64_t>(ticks);
    const bool free = State().processor.running && State().processor.debug == DebugState::Off;
    if (!free || speed_.kind == BoardSpeed::Kind::RealTime) {
        PassRealTime(count);
    } else if (speed_.kind == BoardSpeed::Kind::SlowMotion) {
        PassSlowMotion(count);
    } else {
        RunAtFullSpeed();
    }
    LookAround();
}

void VirtualBoardHost::PassRealTime(std::uint64_t ticks) {
    stepsInTick_ = 0;
    lastStep_.clear();
    history_.PassTicks(ticks, kInstructionsPerTick, SomebodyListens());
}

/// While the program waits, time passes as it does; between its instructions it stands still, so
/// that they see the clock that they would see at the board's own speed.
void VirtualBoardHost::PassSlowMotion(std::uint64_t ticks) {
    const double perTick = speed_.instructionsPerSecond / static_cast<double>(kTicksPerSecond);
    for (std::uint64_t tick = 0; tick < ticks; ++tick) {
        if (MustWait(State()) || !State().processor.running) {
            history_.PassTicks(1, 0, SomebodyListens());
            continue;
        }
        pendingInstructions_ += perTick;
        for (; pendingInstructions_ >= 1; pendingInstructions_ -= 1) {
            if (!MustWait(State())) StepInstruction();
        }
    }
}

void VirtualBoardHost::RunAtFullSpeed() {
    QElapsedTimer working;
    working.start();
    while (State().processor.running && working.elapsed() < kWorkPerWakeUp)
        PassRealTime(kTicksBetweenLooks);
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
    lastStep_ = StepWithTrace(*std::make_unique<Board>(State())).value_or("");
    stepsInTick_ += history_.Run(1);
    if (stepsInTick_ < kInstructionsPerTick) return;
    stepsInTick_ = 0;
    history_.PassTicks(1, 0, listens);
}

}  // namespace zentro
