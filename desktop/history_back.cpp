// How what a board did is taken back, and which copies are kept for it.
#include <utility>

#include "board/commands.h"
#include "desktop/history.h"

namespace zentro {

namespace {

// Some hundred million instructions and more can be repeated in a second. A copy of the world takes
// 34 KB and as long as a thousand of them, the first thousand behind it as long as five.
constexpr std::uint64_t kReplayGap = 20'000;       // close, where the user goes back step by step
constexpr std::uint64_t kLargestGap = 50'000'000;  // a step back must not be felt as a wait
constexpr std::size_t kMaxCheckpoints = 64;

}  // namespace

bool History::StepBack() {
    return CanStepBack() && StepBackTo(*lastInstruction_);
}

void History::GoTo(const Checkpoint& checkpoint) {
    world_ = *checkpoint.world;
    lastInstruction_ = checkpoint.lastInstruction;
    cost_ = checkpoint.cost;
}

bool History::StepBackTo(Position target) {
    if (!lastInstruction_ || *lastInstruction_ < target || target < checkpoints_.front().at)
        return false;
    while (target < checkpoints_.back().at)
        checkpoints_.pop_back();
    const Checkpoint& checkpoint = checkpoints_.back();
    GoTo(checkpoint);
    recorder_.TakeBackTo(checkpoint.outputs);
    Replay(checkpoint.at, target);
    CutAt(target);
    return true;
}

/// Everything is repeated piece by piece, the last piece first, and put back as it was.
std::optional<History::Position> History::FindBack(const Question& wanted) {
    Checkpoint present;
    present.world = std::make_unique<Scene>(world_);
    present.at = End();
    present.lastInstruction = lastInstruction_;
    present.cost = cost_;
    wanted_ = &wanted;
    found_.reset();
    Position end = present.at;
    for (auto piece = checkpoints_.rbegin(); piece != checkpoints_.rend() && !found_; ++piece) {
        GoTo(*piece);
        Replay(piece->at, end);
        end = piece->at;
    }
    wanted_ = nullptr;
    GoTo(present);
    return found_;
}

void History::Replay(Position at, const Position& target) {
    while (at < target) {
        const Happening& happening = happenings_[at.happening - forgotten_];
        const bool isLast = at.happening == target.happening;
        const Position stop =
            isLast ? target : Position{at.happening, happening.times, happening.steps};
        if (happening.kind == Kind::Running) {
            ReplayRunning(happening, at, stop);
        } else {
            ReplayOther(happening, at, stop);
        }
        if (!isLast) at = {at.happening + 1, 0, 0};
    }
    Settle();
}

void History::ReplayRunning(const Happening& happening, Position& at, const Position& stop) {
    while (at.times < stop.times) {
        Execute(happening.stepsPerTick, at);
        FinishTick(happening.flag);
        ++at.times;
        KeepCheckpointIfDue(at, kReplayGap);
    }
    Execute(stop.steps - at.steps, at);
    at.steps = stop.steps;
}

void History::ReplayOther(const Happening& happening, Position& at, const Position& stop) {
    const auto deliver = [this](char character) {
        ReceiveCharacters(world_.board, {&character, 1});
        return true;
    };
    cost_ += kHappeningCost;
    for (; at.times < stop.times; ++at.times) {
        if (happening.kind == Kind::Receive) {
            ReceiveOne(happening.characters[at.times], deliver, at);
        } else if (happening.kind == Kind::TakeOutput) {
            world_.board.output.erase(0, 1);
        } else {
            CarryOut(happening);
        }
    }
}

/// What stands behind the position has not happened.
void History::CutAt(const Position& position) {
    happenings_.resize(position.happening - forgotten_ + 1);
    Happening& last = happenings_.back();
    last.times = position.times;
    last.steps = position.steps;
    if (last.kind == Kind::Receive) last.characters.resize(position.times);
    if (last.times == 0 && last.steps == 0) happenings_.pop_back();
}

void History::KeepCheckpoint(const Position& at) {
    auto& checkpoint = checkpoints_.emplace_back();
    checkpoint.world = std::make_unique<Scene>(world_);
    checkpoint.at = at;
    checkpoint.lastInstruction = lastInstruction_;
    checkpoint.cost = cost_;
    checkpoint.outputs = recorder_.MarkOutputs();
    ThinOut();
}

void History::KeepCheckpointIfDue(const Position& at, std::uint64_t gap) {
    if (wanted_ != nullptr) return;  // what is repeated has its copies
    if (cost_ - checkpoints_.back().cost >= gap) KeepCheckpoint(at);
}

/// Takes out the copy that is missed least: the gap that it leaves is small for its age.
void History::ThinOut() {
    while (checkpoints_.size() > kMaxCheckpoints) {
        std::size_t best = 0;
        double least = 0;
        for (std::size_t index = 1; index + 1 < checkpoints_.size(); ++index) {
            const std::uint64_t gap = checkpoints_[index + 1].cost - checkpoints_[index - 1].cost;
            const double missed =
                static_cast<double>(gap) /
                static_cast<double>(cost_ - checkpoints_[index].cost + kReplayGap);
            if (gap > kLargestGap || (best != 0 && missed >= least)) continue;
            best = index;
            least = missed;
        }
        if (best == 0) {
            DropOldest();
        } else {
            checkpoints_.erase(checkpoints_.begin() + static_cast<std::ptrdiff_t>(best));
        }
    }
}

void History::DropOldest() {
    checkpoints_.erase(checkpoints_.begin());
    while (forgotten_ < checkpoints_.front().at.happening) {
        recorder_.Absorb(happenings_.front());
        happenings_.pop_front();
        ++forgotten_;
    }
}

}  // namespace zentro
