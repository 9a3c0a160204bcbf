#include "desktop/playback.h"

#include <algorithm>
#include <utility>

#include "board/processor.h"
#include "recording/player.h"

namespace zentro {

Playback::Playback(Recording recording, History& history, Scene& scene,
                   std::function<void()> takeOutput)
    : recording_(std::move(recording)),
      history_(history),
      scene_(scene),
      takeOutput_(std::move(takeOutput)) {
    Prepare(recording_, scene_.map, scene_);
    for (; Due() != nullptr && !StepIsDue(); ++first_) {
        zentro::CarryOut(scene_, *Due());
    }
    StartProgram(scene_.board);
    history_.BeginReplay();
    pace_ = PaceNow();
}

/// The action that comes before anything else can happen.
const Action* Playback::Due() const {
    if (Done() == recording_.actions.size()) return nullptr;
    const Action& next = recording_.actions[Done()];
    return next.tick <= scene_.board.clock ? &next : nullptr;
}

bool Playback::StepIsDue() const {
    return Due() != nullptr && Due()->kind == ActionKind::Step;
}

bool Playback::IsOver() const {
    return scene_.board.clock >= recording_.End() && Due() == nullptr;
}

std::uint64_t Playback::PaceNow() const {
    for (std::size_t index = Done(); index-- > 0;) {
        if (recording_.actions[index].kind == ActionKind::Pace)
            return recording_.actions[index].value;
    }
    return kStepsPerTick;
}

void Playback::MarkAsDone() {
    marks_.push_back({history_.End(), scene_.board.clock, scene_.board.processor.steps});
    inPhase_ = 0;
}

void Playback::CarryOut(const Action& action) {
    if (action.kind == ActionKind::Pace) {
        pace_ = action.value;
    } else {
        history_.CarryOutRecorded(action);
    }
    MarkAsDone();
}

std::uint64_t Playback::Allowed() {
    while (const Action* action = Due()) {
        if (action->kind != ActionKind::Step) {
            CarryOut(*action);
        } else if (inPhase_ < action->value) {
            return action->value - inPhase_;
        } else {
            MarkAsDone();
        }
    }
    if (IsOver()) return 0;
    return pace_ - std::min(pace_, inPhase_);
}

void Playback::Note(std::uint64_t done, bool isAll) {
    inPhase_ += done;
    const std::uint64_t whole = StepIsDue() ? Due()->value : pace_;
    if (!isAll && inPhase_ < whole) return;
    takeOutput_();
    if (StepIsDue()) {
        MarkAsDone();
    } else {
        inPhase_ = whole;
    }
}

void Playback::PassTick() {
    if (IsOver()) return;
    history_.PassTicks(1, 0, false);
    inPhase_ = 0;
}

/// So many ticks in which nothing but the program does anything, the present one among them.
std::uint64_t Playback::TicksToNext() const {
    std::uint64_t end = recording_.End();
    if (Done() < recording_.actions.size()) end = std::min(end, recording_.actions[Done()].tick);
    return end - scene_.board.clock;
}

void Playback::PassTicks(std::uint64_t count) {
    while (count > 0 && !IsOver()) {
        const std::uint64_t allowed = Allowed();
        if (StepIsDue() || (inPhase_ > 0 && allowed > 0)) {
            Note(history_.Run(allowed), true);
        } else if (inPhase_ > 0) {
            PassTick();
            --count;
        } else if (!IsOver()) {
            const std::uint64_t ticks = std::min(count, TicksToNext());
            history_.PassTicks(ticks, pace_, false);
            count -= ticks;
        }
    }
}

void Playback::FollowStepBack() {
    while (!marks_.empty() && history_.End() < marks_.back().end)
        marks_.pop_back();
    pace_ = PaceNow();
    const Board& board = scene_.board;
    const bool isInTick = !marks_.empty() && marks_.back().clock == board.clock;
    inPhase_ = isInTick
                   ? board.processor.steps - std::min(board.processor.steps, marks_.back().steps)
                   : history_.StepsInTick();
}

std::string Playback::Difference() const {
    if (!recording_.outcome) return {};
    return zentro::Difference(*recording_.outcome,
                              {history_.Outputs(), scene_.board.processor.steps});
}

}  // namespace zentro
