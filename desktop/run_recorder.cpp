#include "desktop/run_recorder.h"

#include <algorithm>
#include <span>
#include <utility>

#include "recording/player.h"
#include "recording/recording_file.h"
#include "world/load_world.h"
#include "world/save_world.h"

namespace zentro {

namespace {

/// The pieces that differ from what a fresh board has there.
std::vector<BytesAt> Differences(std::span<const std::uint8_t> bytes, std::uint32_t from,
                                 std::uint8_t usual) {
    std::vector<BytesAt> pieces;
    for (std::uint32_t address = from; address < bytes.size(); ++address) {
        if (bytes[address] == usual) continue;
        const bool goesOn = !pieces.empty() && pieces.back().address + pieces.back().bytes.size() ==
                                                   std::size_t{address};
        if (!goesOn) pieces.push_back({address, {}});
        pieces.back().bytes.push_back(bytes[address]);
    }
    return pieces;
}

std::vector<std::uint8_t> BytesOf(const Memory& memory) {
    std::vector<std::uint8_t> bytes(kMemorySize);
    for (std::uint32_t address = 0; address < kMemorySize; ++address) {
        bytes[address] = memory.Byte(address);
    }
    return bytes;
}

/// The board as it is when the run begins.
Recording StartOf(const Scene& beginning) {
    const Board& board = beginning.board;
    Recording recording;
    recording.program = ProgramOf(board);
    recording.world = world::SaveWorld(beginning.map->world);
    recording.seed = board.random;
    recording.noise = beginning.state.noise;
    recording.clock = board.clock;
    recording.memory = Differences(BytesOf(board.memory), board.processor.programSize, 0);
    recording.eeprom = Differences(board.eeprom, 0, Board::ErasedEeprom()[0]);
    recording.sticks = board.devices.stickRest;
    return recording;
}

/// The inputs as hands have set them before the run began, and what was typed.
std::vector<Action> FirstActions(const Scene& beginning) {
    const Board& board = beginning.board;
    std::vector<Action> actions;
    for (const InputPlace& place : AllInputs()) {
        const auto input = FedInput(place);
        const bool isFed = input && IsFed(*beginning.map, *input);
        const bool isHeld = isFed && IsTakenOver(beginning.state, *input);
        const bool isPulses = place.field == InputField::Pulses;  // only their changes count
        const unsigned value = isPulses ? 0 : InputValue(board.inputs, place);
        const unsigned usual = isPulses ? 0 : InputValue(Inputs{}, place);
        if (isFed ? isHeld : value != usual)
            actions.push_back({board.clock, ActionKind::SetInput, place, value});
    }
    for (const char character : board.serial.line) {
        actions.push_back(
            {board.clock, ActionKind::Receive, {}, static_cast<unsigned char>(character)});
    }
    return actions;
}

}  // namespace

void ActionTape::Begin(std::uint64_t clock, bool serialLineIsOff) {
    *this = {};
    tick_ = clock;
    pace_ = kStepsPerTick;
    isOff_ = serialLineIsOff;
}

/// Of more than a file can hold, enough to see that.
void ActionTape::Put(Action action) {
    if (actions_.size() > kMostActions) return;
    action.tick = tick_;
    actions_.push_back(action);
}

void ActionTape::PutSteps() {
    while (steps_ > 0) {
        const auto piece = std::min<std::uint64_t>(steps_, kLargestPace);
        steps_ -= piece;
        Put({0, ActionKind::Step, {}, static_cast<std::uint32_t>(piece)});
    }
}

void ActionTape::PutCharacters(const std::string& characters) {
    for (const char character : characters) {
        isOff_ = isOff_ && character != 'W' && character != 'w';
        if (!isOff_) Put({0, ActionKind::Receive, {}, static_cast<unsigned char>(character)});
    }
}

void ActionTape::Add(const Happening& happening) {
    if (happening.kind == HappeningKind::TakeOutput) return;
    if (happening.kind != HappeningKind::Running) {
        PutSteps();
        PutCharacters(happening.characters);
        for (const Action& action : happening.actions) {
            Put(action);
        }
        return;
    }
    if (happening.times > 0) {
        PutSteps();
        if (std::exchange(pace_, happening.stepsPerTick) != happening.stepsPerTick)
            Put({0, ActionKind::Pace, {}, static_cast<std::uint32_t>(happening.stepsPerTick)});
        tick_ += happening.times;
    }
    steps_ += happening.steps;
}

std::vector<Action> ActionTape::Finish() {
    PutSteps();
    return std::move(actions_);
}

void RunRecorder::Begin(const Scene& scene) {
    beginning_ = std::make_unique<Scene>(scene);
    early_.Begin(scene.board.clock, scene.board.serial.off);
    hasStalled_ = false;
    outputs_ = {};
}

void RunRecorder::Clear(Missing why) {
    if (beginning_ != nullptr || why == Missing::NoRun) missing_ = why;
    beginning_.reset();
    outputs_ = {};
}

void RunRecorder::Absorb(const Happening& happening) {
    if (beginning_ != nullptr) early_.Add(happening);
}

void RunRecorder::TakeOutputs(Board& board) {
    for (const OutputChange& change : TakeChanges(board)) {
        if (beginning_ != nullptr) outputs_.Add(change);
    }
}

void RunRecorder::TakeBackTo(const Mark& mark) {
    outputs_.lines.resize(std::min(outputs_.lines.size(), mark.lines));
    outputs_.more = mark.more;
    outputs_.digest = mark.digest;
}

RunRecorder::Refusal RunRecorder::WhyNot() const {
    if (beginning_ == nullptr)
        return missing_ == Missing::WorldChanged ? Refusal::WorldChanged : Refusal::NoRun;
    const Board& board = beginning_->board;
    if (board.processor.debug != DebugState::Off) return Refusal::DebugMode;
    if (board.outputs != zentro::Outputs{} || board.devices.tune) return Refusal::OutputsOn;
    if (hasStalled_) return Refusal::CharactersWait;
    const world::World& world = beginning_->map->world;
    if (world::LoadWorld(world::SaveWorld(world)).world != world) return Refusal::WorldTooFine;
    return Refusal::None;
}

RunRecorder::Made RunRecorder::Make(const std::deque<Happening>& rest, const Board& now) const {
    Made made{WhyNot(), {}};
    if (made.refusal != Refusal::None) return made;
    ActionTape tape = early_;
    for (const Happening& happening : rest) {
        tape.Add(happening);
    }
    made.recording = StartOf(*beginning_);
    made.recording.actions = FirstActions(*beginning_);
    const std::vector<Action> later = tape.Finish();
    made.recording.actions.insert(made.recording.actions.end(), later.begin(), later.end());
    made.recording.ticks = now.clock - beginning_->board.clock;
    made.recording.outcome = Outcome{outputs_, now.processor.steps};
    if (made.recording.actions.size() > kMostActions || made.recording.ticks > kMostRecordedTicks)
        return {Refusal::TooLong, {}};
    return made;
}

}  // namespace zentro
