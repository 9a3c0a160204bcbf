#include "ui/board/history.h"

#include <algorithm>
#include <utility>

#include "board/commands.h"

namespace zentro {

namespace {

constexpr std::uint64_t kTickCost = 20;
constexpr std::uint64_t kGap = 1'000'000;  // between copies while the board runs
constexpr std::size_t kMaxHappenings = 50'000;

}  // namespace

History::History(BoardWorld& world) : world_(world) {
    Forget();
}

void History::Forget() {
    forgotten_ += happenings_.size();
    happenings_.clear();
    checkpoints_.clear();
    lastInstruction_.reset();
    KeepCheckpoint(End());
}

bool History::CanStepBack() const {
    return lastInstruction_ && !(*lastInstruction_ < checkpoints_.front().at);
}

/// The last happening if it is of this kind, so that it can go on.
History::Happening* History::Last(Kind kind) {
    return !happenings_.empty() && happenings_.back().kind == kind ? &happenings_.back() : nullptr;
}

void History::Append(Happening happening) {
    happenings_.push_back(std::move(happening));
    cost_ += kHappeningCost;
    if (happenings_.size() <= kMaxHappenings) return;
    if (checkpoints_.size() == 1) KeepCheckpoint(End());
    DropOldest();
}

History::Position History::End() const {
    if (happenings_.empty()) return {forgotten_, 0, 0};
    const Happening& last = happenings_.back();
    return {forgotten_ + happenings_.size() - 1, last.times, last.steps};
}

/// Where the next piece of the last happening begins, or a new happening.
History::Position History::EndOrNext(bool continues) const {
    return continues ? End() : Position{forgotten_ + happenings_.size(), 0, 0};
}

std::uint64_t History::Execute(std::uint64_t budget, const Position& from) {
    const std::uint64_t done = RunInstructions(world_.board, budget);
    if (done > 0) lastInstruction_ = {from.happening, from.times, from.steps + done - 1};
    cost_ += done;
    return done;
}

void History::FinishTick(bool somebodyListens) {
    PassTick(world_);
    cost_ += kTickCost;
    Settle();
    if (!somebodyListens) world_.board.output.clear();
}

/// Outputs are shown as they are: nobody asks how they came to be so.
void History::Settle() {
    world_.board.changes.clear();
}

std::uint64_t History::Run(std::uint64_t budget) {
    if (world_.board.processor.debug != DebugState::Off) return 0;
    Happening* running = Last(Kind::Running);
    const std::uint64_t done = Execute(budget, EndOrNext(running != nullptr));
    if (done == 0) return 0;
    if (running == nullptr) {
        Append({.kind = Kind::Running, .times = 0, .steps = done});
    } else {
        running->steps += done;
    }
    Settle();
    KeepCheckpointIfDue(End(), kGap);
    return done;
}

void History::PassTicks(std::uint64_t count, std::uint64_t steps, bool somebodyListens) {
    const Happening* last = Last(Kind::Running);
    if (last == nullptr || last->steps != 0 || last->stepsPerTick != steps ||
        last->flag != somebodyListens)
        Append({.kind = Kind::Running, .flag = somebodyListens, .times = 0, .stepsPerTick = steps});
    for (std::uint64_t tick = 0; tick < count; ++tick) {
        Execute(steps, End());
        FinishTick(somebodyListens);
        ++happenings_.back().times;
        KeepCheckpointIfDue(End(), kGap);
    }
}

void History::CarryOut(const Happening& happening) {
    Board& board = world_.board;
    switch (happening.kind) {
        case Kind::ChangeInputs: SetInputs(board, happening.inputs); break;
        case Kind::LetRobotSee: world_.robotSees = happening.flag; break;
        case Kind::StopProgram: EndProgram(board, EndReason::Stopped); break;
        case Kind::PutAllToRest:
            StopEverything(board);
            world_.robot = {};
            break;
        case Kind::Running:
        case Kind::Receive:
        case Kind::TakeOutput: break;
    }
    Settle();
}

void History::ChangeInputs(const Inputs& inputs) {
    if (inputs == world_.board.inputs) return;
    Append({.kind = Kind::ChangeInputs, .inputs = inputs});
    CarryOut(happenings_.back());
}

void History::LetRobotSee(bool sees) {
    if (sees == world_.robotSees) return;
    Append({.kind = Kind::LetRobotSee, .flag = sees});
    CarryOut(happenings_.back());
}

void History::StopProgram() {
    Append({.kind = Kind::StopProgram});
    CarryOut(happenings_.back());
}

void History::PutAllToRest() {
    Append({.kind = Kind::PutAllToRest});
    CarryOut(happenings_.back());
}

/// In debug mode a character can carry out an instruction.
bool History::ReceiveOne(char character, const Deliver& deliver, const Position& from) {
    const std::uint64_t stepsBefore = world_.board.processor.steps;
    if (!deliver(character)) return false;
    if (world_.board.processor.steps > stepsBefore) lastInstruction_ = from;
    cost_ += kHappeningCost;
    return true;
}

std::size_t History::Receive(std::string_view characters, const Deliver& deliver) {
    const Board& board = world_.board;
    bool isLoad = board.serial.loader.active;
    std::size_t arrived = 0;
    for (char character : characters) {
        const Processor before = board.processor;
        Happening* receive = Last(Kind::Receive);
        if (!ReceiveOne(character, deliver, EndOrNext(receive != nullptr))) break;
        ++arrived;
        if (receive == nullptr) {
            Append({.kind = Kind::Receive, .characters = {character}});
        } else {
            receive->characters += character;
            ++receive->times;
        }
        Settle();
        isLoad = isLoad || board.serial.loader.active;
        const bool restarted = board.processor.steps < before.steps;
        if (board.processor.running && (!before.running || restarted)) Forget();
    }
    if (isLoad) Forget();
    return arrived;
}

void History::NoteOutputTaken(std::size_t count) {
    if (count == 0) return;
    if (Happening* taken = Last(Kind::TakeOutput)) {
        taken->times += count;
    } else {
        Append({.kind = Kind::TakeOutput, .times = count});
    }
}

}  // namespace zentro
