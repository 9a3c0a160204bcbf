#include "desktop/history.h"

#include <algorithm>
#include <utility>

#include "board/commands.h"

namespace zentro {

namespace {

constexpr std::uint64_t kTickCost = 20;
constexpr std::uint64_t kGap = 1'000'000;  // between copies while the board runs
constexpr std::size_t kMaxHappenings = 50'000;

/// Whether an instruction comes next, be it of a handler.
bool IsReady(const Board& board) {
    const Processor& processor = board.processor;
    const Wait& wait = processor.wait;
    const bool waits = wait.kind == Wait::Kind::Event ||
                       (wait.kind == Wait::Kind::Time && board.clock < wait.until);
    return processor.running && (!waits || EventIsDue(board.events));
}

/// Where an input stands that a world can feed.
InputPlace PlaceOf(const world::InputId& input) {
    const std::vector<InputPlace> places = AllInputs();
    const auto found = std::ranges::find_if(
        places, [&](const InputPlace& place) { return FedInput(place) == input; });
    return found == places.end() ? InputPlace{} : *found;
}

/// What a hand does that makes the one of the other; pulses are counted.
std::vector<Action> ActionsOf(const Inputs& before, const Inputs& after) {
    std::vector<Action> actions;
    for (const InputPlace& place : AllInputs()) {
        const unsigned was = InputValue(before, place);
        const unsigned is = InputValue(after, place);
        if (was == is) continue;
        const bool isPulses = place.field == InputField::Pulses;
        actions.push_back(
            {0, ActionKind::SetInput, place, isPulses ? static_cast<std::uint16_t>(is - was) : is});
    }
    return actions;
}

/// A hand takes an input over as it is.
Action HoldingAction(const Inputs& inputs, const world::InputId& input) {
    const InputPlace place = PlaceOf(input);
    const bool isPulses = place.field == InputField::Pulses;
    return {0, ActionKind::SetInput, place, isPulses ? 0 : InputValue(inputs, place)};
}

}  // namespace

History::History(Scene& world) : world_(world) {
    Forget();
}

void History::Forget(RunRecorder::Missing why) {
    recorder_.Clear(why);
    forgotten_ += happenings_.size();
    happenings_.clear();
    checkpoints_.clear();
    lastInstruction_.reset();
    KeepCheckpoint(End());
}

/// The program counts from what it meets at the start.
void History::BeginRun() {
    zentro::PutRobotAtStart(world_);
    ForgetInputHistory(world_.board);
    Devices& devices = world_.board.devices;
    devices.pulsesAtSecond = devices.pulsesAtStart;
    devices.pulsesLastSecond = {};
    devices.buttonsSeen = {};
    if (world_.board.outputs.note == 0) devices.noteEnd = 0;
    Forget();
    recorder_.Begin(world_);
    ++runs_;
}

void History::BeginReplay() {
    Forget();
    recorder_.Begin(world_);
    ++runs_;
}

bool History::CanStepBack() const {
    return lastInstruction_ && !(*lastInstruction_ < checkpoints_.front().at);
}

/// The last happening if it is of this kind, so that it can go on.
Happening* History::Last(Kind kind) {
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

std::uint64_t History::StepsInTick() const {
    std::uint64_t steps = 0;
    for (auto happening = happenings_.rbegin(); happening != happenings_.rend(); ++happening) {
        if (happening->kind != Kind::Running) continue;
        steps += happening->steps;
        if (happening->times > 0) break;
    }
    return steps;
}

/// Where the next piece of the last happening begins, or a new happening.
History::Position History::EndOrNext(bool continues) const {
    return continues ? End() : Position{forgotten_ + happenings_.size(), 0, 0};
}

std::uint64_t History::Execute(std::uint64_t budget, const Position& from) {
    if (wanted_ != nullptr) return ExecuteAsking(budget, from);
    const std::uint64_t done = RunInstructions(world_.board, budget);
    if (done > 0) lastInstruction_ = {from.happening, from.times, from.steps + done - 1};
    cost_ += done;
    return done;
}

/// The same one by one.
std::uint64_t History::ExecuteAsking(std::uint64_t budget, const Position& from) {
    std::uint64_t done = 0;
    while (done < budget) {
        const bool isWanted = (*wanted_)(world_.board);
        if (RunInstructions(world_.board, 1) == 0) break;
        if (isWanted) found_ = {from.happening, from.times, from.steps + done};
        ++done;
    }
    return done;
}

void History::FinishTick(bool somebodyListens) {
    PassTick(world_);
    cost_ += kTickCost;
    Settle();
    if (somebodyListens && world_.board.output.size() >= kOutputLimit) recorder_.NoteStall();
    if (!somebodyListens) world_.board.output.clear();
}

/// Only a recording tells how the outputs came to be as they are.
void History::Settle() {
    if (world_.board.changes.empty()) return;
    if (wanted_ == nullptr) recorder_.TakeOutputs(world_.board);
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

History::Watched History::RunUntil(std::uint64_t budget, const Question& holds) {
    Board& board = world_.board;
    if (board.processor.debug != DebugState::Off) return {};
    Happening* running = Last(Kind::Running);
    const Position from = EndOrNext(running != nullptr);
    Watched watched{.first = from};
    while (watched.done < budget) {
        // The answer counts for an instruction, not for a wait before it.
        if (IsReady(board) && holds(board)) {
            watched.isHeld = true;
            break;
        }
        if (RunInstructions(board, 1) == 0) break;
        ++watched.done;
    }
    if (watched.done == 0) return watched;
    lastInstruction_ = {from.happening, from.times, from.steps + watched.done - 1};
    cost_ += watched.done;
    if (running == nullptr) {
        Append({.kind = Kind::Running, .times = 0, .steps = watched.done});
    } else {
        running->steps += watched.done;
    }
    Settle();
    KeepCheckpointIfDue(End(), kGap);
    return watched;
}

void History::PassTicks(std::uint64_t count, std::uint64_t steps, bool somebodyListens) {
    const Happening* last = Last(Kind::Running);
    if (last == nullptr || last->steps != 0 || last->stepsPerTick != steps ||
        last->flag != somebodyListens)
        Append({.kind = Kind::Running, .flag = somebodyListens, .times = 0, .stepsPerTick = steps});
    for (std::uint64_t tick = 0; tick < count; ++tick) {
        Execute(steps, End());
        if (watcher_) watcher_(world_.board);
        FinishTick(somebodyListens);
        ++happenings_.back().times;
        KeepCheckpointIfDue(End(), kGap);
    }
}

void History::CarryOut(const Happening& happening) {
    Board& board = world_.board;
    switch (happening.kind) {
        case Kind::ChangeInputs: zentro::ChangeInputs(world_, happening.inputs); break;
        case Kind::HoldInput: zentro::HoldInput(world_, happening.input, happening.flag); break;
        case Kind::StopProgram: EndProgram(board, EndReason::Stopped); break;
        case Kind::PutAllToRest:
            StopEverything(board);
            zentro::PutRobotAtStart(world_);
            break;
        case Kind::PutRobotAtStart: zentro::PutRobotAtStart(world_); break;
        case Kind::PlaceRobot: zentro::PlaceRobot(world_, happening.pose); break;
        case Kind::Recorded: zentro::CarryOut(world_, happening.actions.front()); break;
        case Kind::Running:
        case Kind::Receive:
        case Kind::TakeOutput: break;
    }
    Settle();
}

void History::ChangeInputs(const Inputs& inputs) {
    if (inputs == world_.board.inputs) return;
    Append({.kind = Kind::ChangeInputs,
            .inputs = inputs,
            .actions = ActionsOf(world_.board.inputs, inputs)});
    CarryOut(happenings_.back());
}

void History::HoldInput(const world::InputId& input, bool held) {
    if (held == IsTakenOver(world_.state, input)) return;
    const Action action = held ? HoldingAction(world_.board.inputs, input)
                               : Action{0, ActionKind::LetGo, PlaceOf(input)};
    Append({.kind = Kind::HoldInput, .flag = held, .input = input, .actions = {action}});
    CarryOut(happenings_.back());
}

void History::StopProgram() {
    Append({.kind = Kind::StopProgram, .actions = {{.kind = ActionKind::StopProgram}}});
    CarryOut(happenings_.back());
}

void History::PutRobotAtStart() {
    Append({.kind = Kind::PutRobotAtStart, .actions = {{.kind = ActionKind::RobotToStart}}});
    CarryOut(happenings_.back());
}

void History::PlaceRobot(const world::Pose& pose) {
    Append({.kind = Kind::PlaceRobot,
            .pose = pose,
            .actions = {{.kind = ActionKind::PlaceRobot, .robot = pose}}});
    CarryOut(happenings_.back());
}

void History::PutAllToRest() {
    Append({.kind = Kind::PutAllToRest, .actions = {{.kind = ActionKind::StopAll}}});
    CarryOut(happenings_.back());
}

void History::CarryOutRecorded(const Action& action) {
    Append({.kind = Kind::Recorded, .actions = {action}});
    CarryOut(happenings_.back());
}

/// In debug mode a character can carry out an instruction.
bool History::ReceiveOne(char character, const Deliver& deliver, const Position& from) {
    const std::uint64_t stepsBefore = world_.board.processor.steps;
    const bool isWanted = wanted_ != nullptr && (*wanted_)(world_.board);
    if (!deliver(character)) return false;
    if (world_.board.processor.steps > stepsBefore) {
        lastInstruction_ = from;
        if (isWanted) found_ = from;
    }
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
        if (!isLoad && board.serial.loader.active) zentro::PutRobotAtStart(world_);
        isLoad = isLoad || board.serial.loader.active;
        const bool restarted = board.processor.steps < before.steps;
        if (!board.processor.running || (before.running && !restarted)) continue;
        BeginRun();
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
