#include "desktop/virtual_board_host.h"

#include <chrono>
#include <utility>

#include "board/loader.h"
#include "board/text.h"
#include "world/goals.h"

namespace zentro {

namespace {

constexpr qint64 kMillisecondsPerChange = 17;
constexpr char kTakeBack = '\x7f';
constexpr std::uint64_t kTicksToStand = kTicksPerSecond;  // after the end of a program

}  // namespace

/// The link to the board, with all that goes over it told to the history.
class VirtualBoardHost::RecordingLink : public VirtualBoardLink {
  public:
    explicit RecordingLink(VirtualBoardHost& host)
        : VirtualBoardLink(host.world_->board), host_(host) {}

    LinkOpening Open(const std::string& portName) override {
        kept_.clear();
        const std::size_t before = host_.State().output.size();
        LinkOpening opening = VirtualBoardLink::Open(portName);
        NoteTaken(before);
        host_.LookAround();
        return opening;
    }

    std::optional<std::string> Read(std::size_t limit) override {
        if (!kept_.empty() && IsOpen()) {
            std::string bytes = kept_.substr(0, limit);
            kept_.erase(0, bytes.size());
            return bytes;
        }
        const std::size_t before = host_.State().output.size();
        auto bytes = VirtualBoardLink::Read(limit);
        NoteTaken(before);
        return bytes;
    }

    bool Close() override {
        const bool closed = VirtualBoardLink::Close();
        host_.LookAround();
        return closed;
    }

    std::size_t Write(std::string_view bytes) override {
        host_.BreakOffReplay();
        const bool wasRunning = host_.State().processor.running;
        const bool wasDebugging = host_.State().processor.debug != DebugState::Off;
        const std::size_t written = host_.history_.Receive(bytes, [this](char character) {
            return VirtualBoardLink::Write({&character, 1}) == 1;
        });
        // Who starts a program over the line wants it to run.
        const Processor& processor = host_.State().processor;
        if (processor.running && !wasRunning) {
            host_.SetPaused(false);
            host_.stops_.Begin();
        } else if (wasDebugging && processor.debug == DebugState::Off) {
            host_.stops_.LeaveFrom(host_.State());
        }
        host_.LookAround();
        return written;
    }

    /// A board that replays never waits for its listener. Of what that has not taken the oldest is
    /// lost.
    void Keep(std::string_view output) {
        if (!IsOpen()) return;
        kept_ += output;
        if (kept_.size() > kMostKept) kept_.erase(0, kept_.size() - kMostKept);
    }

  private:
    static constexpr std::size_t kMostKept = 100'000;

    void NoteTaken(std::size_t before) {
        const std::size_t after = host_.State().output.size();
        if (after < before) host_.history_.NoteOutputTaken(before - after);
    }

    VirtualBoardHost& host_;
    std::string kept_;
};

VirtualBoardHost::VirtualBoardHost(QObject* parent)
    : QObject(parent),
      world_(MakeScene()),
      history_(*world_),
      link_(std::make_unique<RecordingLink>(*this)) {
    using namespace std::chrono_literals;
    wakeUps_.setInterval(10ms);
    wakeUps_.setTimerType(Qt::PreciseTimer);
    connect(&wakeUps_, &QTimer::timeout, this, &VirtualBoardHost::WakeUp);
    laterChange_.setSingleShot(true);
    connect(&laterChange_, &QTimer::timeout, this, &VirtualBoardHost::TellChange);
    history_.WatchTicks([this](const Board& board) {
        if (isHeard_ && soundListener_) soundListener_({board.outputs.note, board.devices.noteEnd});
        FollowCurves();
        if (playback_ != nullptr) link_->Keep(board.output);
    });
    sinceWakeUp_.start();
}

VirtualBoardHost::~VirtualBoardHost() = default;

VirtualBoardLink& VirtualBoardHost::Link() {
    return *link_;
}

bool VirtualBoardHost::SomebodyListens() const {
    return link_->IsOpen();
}

std::string VirtualBoardHost::LoadProgram(std::string_view objectText) {
    LeaveReplay();
    Stop();
    std::string problem = LoadObjectText(world_->board, objectText);
    zentro::PutRobotAtStart(*world_);
    history_.Forget();
    endedAt_.reset();
    LookAround();
    return problem;
}

void VirtualBoardHost::Run() {
    const bool held = State().processor.running;
    const bool debugging = State().processor.debug != DebugState::Off;
    if (debugging) SendCommand("G");
    if (IsReplayOver()) BreakOffReplay();
    SetPaused(false);
    if (held) {
        stops_.LeaveFrom(State());
    } else if (playback_ == nullptr) {
        StartAnew();
    }
    LookAround();
}

void VirtualBoardHost::StartAnew() {
    StartProgram(world_->board);
    history_.BeginRun();
    stops_.Begin();
    endedAt_.reset();
}

void VirtualBoardHost::Stop() {
    BreakOffReplay();
    history_.StopProgram();
    SetPaused(false);
    LookAround();
}

void VirtualBoardHost::StopEverything() {
    BreakOffReplay();
    for (const char* command : {"X", "Z"})
        SendCommand(command);
    SetPaused(false);
    LookAround();
}

void VirtualBoardHost::Pause() {
    SetPaused(true);
    LookAround();
}

void VirtualBoardHost::Resume() {
    SetPaused(false);
    LookAround();
}

void VirtualBoardHost::SetPaused(bool paused) {
    EndGoal();
    if (paused_ && !paused) stops_.LeaveFrom(State());
    paused_ = paused;
    pendingTime_ = 0;
    pendingInstructions_ = 0;
}

void VirtualBoardHost::Step() {
    if (IsReplayOver()) BreakOffReplay();
    SetPaused(true);
    if (playback_ != nullptr) {
        ReplayInstruction();
    } else if (!State().processor.running) {
        StartAnew();
    } else if (State().processor.debug == DebugState::AtPrompt) {
        SendCommand("");
    } else {
        StepInstruction();
    }
    LookAround();
}

bool VirtualBoardHost::StepBack() {
    SetPaused(true);
    const bool done = history_.StepBack();
    if (playback_ != nullptr) playback_->FollowStepBack();
    ShowTakenBack();
    LookAround();
    return done;
}

void VirtualBoardHost::ShowTakenBack() {
    lastStep_.clear();
    // What the board had said then, a terminal has long read.
    history_.NoteOutputTaken(State().output.size());
    world_->board.output.clear();
    wasRunning_ = State().processor.running;
}

void VirtualBoardHost::Reset() {
    BreakOffReplay();
    history_.PutAllToRest();
    SetPaused(false);
    LookAround();
    TellChange();  // a picture must not miss it
}

void VirtualBoardHost::PutRobotAtStart() {
    BreakOffReplay();
    history_.PutRobotAtStart();
    LookAround();
    TellChange();  // a picture must not miss it
}

void VirtualBoardHost::PlaceRobot(const world::Pose& pose) {
    BreakOffReplay();
    history_.PlaceRobot(pose);
    LookAround();
}

void VirtualBoardHost::EnterWorld(std::shared_ptr<const world::WorldMap> map) {
    BreakOffReplay();
    zentro::MoveToWorld(*world_, std::move(map));
    history_.Forget(RunRecorder::Missing::WorldChanged);
    trail_.Clear();
    endedAt_.reset();
    LookAround();
    TellChange();  // a picture must not miss it
}

void VirtualBoardHost::ChangeWorld(std::shared_ptr<const world::WorldMap> map) {
    BreakOffReplay();
    zentro::ChangeWorld(*world_, std::move(map));
    history_.Forget(RunRecorder::Missing::WorldChanged);
    LookAround();
    TellChange();
}

void VirtualBoardHost::TakePen(Pen pen) {
    trail_.TakePen(pen);
}

void VirtualBoardHost::WipeTrail() {
    trail_.Clear();
    LookAround();
}

void VirtualBoardHost::Plot(const std::vector<PlotSource>& sources) {
    curves_.Choose(sources, State());
    LookAround();
}

void VirtualBoardHost::FollowCurves() {
    if (std::exchange(plottedRun_, history_.Runs()) != history_.Runs()) curves_.BeginRun(State());
    curves_.Look(State());
}

void VirtualBoardHost::SetInputs(const Inputs& inputs) {
    if (inputs != State().inputs) BreakOffReplay();
    history_.ChangeInputs(inputs);
    LookAround();
}

void VirtualBoardHost::SetButton(std::size_t button, bool down) {
    Inputs inputs = State().inputs;
    inputs.buttons[button] = down;
    history_.ChangeInputs(inputs);
    if (!down) history_.HoldInput({world::InputKind::Button, button}, false);
}

void VirtualBoardHost::PressButton(std::size_t button) {
    BreakOffReplay();
    if (presses_.IsDown(button)) SetButton(button, false);  // each press is one for the program
    presses_.Begin(State(), button);
    SetButton(button, true);
    LookAround();
}

void VirtualBoardHost::LetButtonGo(std::size_t button) {
    presses_.End(button);
    LookAround();
}

void VirtualBoardHost::LetButtonsUp() {
    const auto comingUp = presses_.TakeThoseThatComeUp(State(), WantsTime());
    for (std::size_t button = 0; button < comingUp.size(); ++button) {
        if (comingUp[button]) SetButton(button, false);
    }
}

void VirtualBoardHost::HoldInput(const world::InputId& input, bool held) {
    BreakOffReplay();
    history_.HoldInput(input, held);
    LookAround();
}

void VirtualBoardHost::LetAllInputsGo() {
    BreakOffReplay();
    for (const world::Sensor& sensor : world_->map->world.sensors)
        history_.HoldInput(sensor.input, false);
    LookAround();
}

void VirtualBoardHost::SetSpeed(const BoardSpeed& speed) {
    speed_ = speed;
    pendingInstructions_ = 0;
    LookAround();
}

std::string VirtualBoardHost::ReadMemory(std::uint32_t address, std::size_t count) const {
    std::string bytes;
    for (std::uint64_t at = address; at < address + std::uint64_t{count}; ++at) {
        const bool isThere = at < kMemorySize;
        bytes += static_cast<char>(isThere ? State().memory.Byte(static_cast<std::uint32_t>(at))
                                           : kNothingThere);
    }
    return bytes;
}

/// A line of the board's command line or debug mode, instead of what somebody has begun to type.
void VirtualBoardHost::SendCommand(std::string_view command) {
    std::string line(State().serial.line.size(), kTakeBack);
    line += command;
    history_.Receive(line + '\r', [this](char character) {
        ReceiveCharacters(world_->board, {&character, 1});
        return true;
    });
}

/// After anything that may have changed the board.
void VirtualBoardHost::LookAround() {
    TellEndOfReplay();
    LetButtonsUp();
    trail_.Follow(world_->state);
    FollowCurves();
    const Processor& processor = State().processor;
    const bool ended = wasRunning_ && !processor.running;
    wasRunning_ = processor.running;
    if (ended) endedAt_ = State().clock;
    if (WantsTime() && !wakeUps_.isActive()) {
        sinceWakeUp_.start();
        wakeUps_.start();
    } else if (!WantsTime()) {
        wakeUps_.stop();
    }
    if (laterChange_.isActive()) {
        // It will be told.
    } else if (!sinceChange_.isValid() || sinceChange_.elapsed() >= kMillisecondsPerChange) {
        TellChange();
    } else {
        laterChange_.start(static_cast<int>(kMillisecondsPerChange - sinceChange_.elapsed()));
    }
    if (std::exchange(stopReached_, false)) emit StopReached();
    if (!ended) return;
    EndGoal();
    if (processor.end == EndReason::Fault) emit FaultHappened(DescribeFault(State(), words_));
    emit ProgramEnded();
}

void VirtualBoardHost::TellChange() {
    sinceChange_.start();
    emit Changed();
}

/// A board at rest to which nobody is connected needs no time.
bool VirtualBoardHost::WantsTime() const {
    return !paused_ && (State().processor.running || IsReplaying() || SomebodyListens() ||
                        State().outputs != Outputs{} || StandsForGoals());
}

/// A goal may ask for a stand after the end of a program, which takes time. None passes after a
/// program that was stepped to its end.
bool VirtualBoardHost::StandsForGoals() const {
    return !paused_ && !State().processor.running && endedAt_ &&
           State().clock < *endedAt_ + kTicksToStand && !AllDecided(world_->state);
}

bool VirtualBoardHost::IsRunOver() const {
    const auto& motors = State().outputs.motors;
    return !State().processor.running && endedAt_ && !StandsForGoals() && motors[0].value == 0 &&
           motors[1].value == 0;
}

void VirtualBoardHost::KeepForListener(std::string_view output) {
    link_->Keep(output);
}

}  // namespace zentro
