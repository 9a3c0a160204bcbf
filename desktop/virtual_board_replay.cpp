// How a virtual board is led through a run that was recorded.

#include <utility>

#include "board/trace.h"
#include "desktop/virtual_board_host.h"

namespace zentro {

namespace {

constexpr std::uint64_t kLongestSleepOfStep = kTicksPerSecond;

}  // namespace

void VirtualBoardHost::Replay(Recording recording) {
    LeaveReplay();
    SetPaused(true);
    playback_ = std::make_unique<Playback>(std::move(recording), history_, *world_,
                                           [this] { KeepOutput(); });
    presses_ = {};
    stops_.Begin();
    doneSteps_.clear();
    stepBegan_.reset();
    endedAt_.reset();
    lastStep_.clear();
    trail_.Clear();
    wasRunning_ = State().processor.running;
    toldReplayEnd_ = false;
    LookAround();
    TellChange();  // a picture must not miss it
}

void VirtualBoardHost::LeaveReplay() {
    playback_.reset();
    stepsInTick_ = 0;
}

void VirtualBoardHost::BreakOffReplay() {
    if (playback_ == nullptr) return;
    const bool isOver = playback_->IsOver();
    LeaveReplay();
    emit ReplayLeft(isOver);
}

void VirtualBoardHost::KeepOutput() {
    std::string& output = world_->board.output;
    KeepForListener(output);
    history_.NoteOutputTaken(output.size());
    output.clear();
}

void VirtualBoardHost::TellEndOfReplay() {
    const bool isOver = IsReplayOver();
    if (isOver == std::exchange(toldReplayEnd_, isOver) || !isOver) return;
    SetPaused(true);
    emit ReplayEnded(QString::fromStdString(playback_->Difference()));
}

/// The rest of the instructions of a tick. True when the program is held before one of them.
bool VirtualBoardHost::ReplayWatched() {
    while (const std::uint64_t allowed = playback_->Allowed()) {
        const History::Watched watched = history_.RunUntil(
            allowed, [this](const Board& board) { return stops_.HoldsBefore(board); });
        playback_->Note(watched.done, !watched.isHeld && watched.done < allowed);
        if (watched.done > 0 && !stepBegan_) stepBegan_ = watched.first;
        if (!watched.isHeld) continue;
        HoldAtStop();
        return true;
    }
    return false;
}

/// One instruction, with the ticks before it; after the end of the program, and of a long sleep, a
/// second.
void VirtualBoardHost::ReplayInstruction() {
    const std::uint64_t stepsBefore = State().processor.steps;
    std::uint64_t slept = 0;
    lastStep_.clear();
    while (!IsReplayOver() && slept < kLongestSleepOfStep) {
        const bool isAsleep =
            !State().processor.running || State().processor.wait.kind == Wait::Kind::Event;
        if (playback_->Allowed() == 0) {
            if (isAsleep) ++slept;
            playback_->PassTick();
            continue;
        }
        const std::string trace = TraceOfNext();
        const std::uint64_t done = history_.Run(1);
        playback_->Note(done, done == 0);
        if (State().processor.steps == stepsBefore) continue;
        lastStep_ = trace;
        return;
    }
}

}  // namespace zentro
