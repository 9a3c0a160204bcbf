#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "desktop/history_happening.h"
#include "desktop/run_recorder.h"
#include "desktop/scene_changes.h"

namespace zentro {

/// Does to a board what its host wants and remembers it, so that instructions can be taken back one
/// by one. Now and then it keeps a copy of everything; what happened since is told as a short list
/// of happenings, and going back means to repeat them from a copy on. Copies are few: they thin out
/// with age, and what happened before the oldest is forgotten.
class History {
  public:
    /// The world outlives the history. Nobody else may change it without a call of Forget.
    explicit History(Scene& world);

    /// Carries out at most so many instructions of the present tick. Returns how many. In debug
    /// mode, none.
    std::uint64_t Run(std::uint64_t budget);

    /// A point between two instructions, of this history alone.
    struct Position {
        std::uint64_t happening = 0;  ///< counted from the beginning, also of what is forgotten
        std::uint64_t times = 0;
        std::uint64_t steps = 0;  ///< of Running, behind them

        auto operator<=>(const Position&) const = default;
    };

    /// Asked about a board that is about to carry out an instruction.
    using Question = std::function<bool(const Board&)>;

    /// What came of instructions that were looked at one by one.
    struct Watched {
        std::uint64_t done = 0;
        Position first;       ///< right before the first of them, if there was one
        bool isHeld = false;  ///< the answer before the next instruction was yes
    };

    /// Like Run, but holds before an instruction for which `holds` says yes.
    Watched RunUntil(std::uint64_t budget, const Question& holds);

    /// Lets ticks pass, at most `steps` instructions before each. What the board said is thrown
    /// away when nobody listens.
    void PassTicks(std::uint64_t count, std::uint64_t steps, bool somebodyListens);

    /// A hand changes inputs, and holds those from then on that the world feeds.
    void ChangeInputs(const Inputs& inputs);
    /// Takes an input over from the world, or lets it go.
    void HoldInput(const world::InputId& input, bool held);

    /// Hands one character to the board and returns whether it arrived.
    using Deliver = std::function<bool(char)>;

    /// Characters arrive on the serial line. `deliver` hands each of them over. Returns how many
    /// arrived. The start of a program, or of a load, forgets what was before and puts the robot at
    /// its start.
    std::size_t Receive(std::string_view characters, const Deliver& deliver);

    /// Of the board's output the first so many characters have been taken.
    void NoteOutputTaken(std::size_t count);

    void StopProgram();
    void PutRobotAtStart();
    /// A hand puts the robot there.
    void PlaceRobot(const world::Pose& pose);
    /// The program is stopped, all outputs are off, the robot is at its start.
    void PutAllToRest();

    /// Takes back the last instruction and all that happened since: the world is then what it was
    /// right before it. False when nothing is remembered.
    bool StepBack();
    bool CanStepBack() const;

    /// Right before the last instruction; nothing: none was carried out.
    std::optional<Position> LastInstruction() const { return lastInstruction_; }
    /// Takes back everything from that point on. False when it is not remembered any more.
    bool StepBackTo(Position target);
    /// The last instruction that can be taken back and about which `wanted` says yes.
    std::optional<Position> FindBack(const Question& wanted);

    /// From here on nothing can be taken back, and the run that was going on cannot be recorded.
    void Forget(RunRecorder::Missing why = RunRecorder::Missing::NoRun);

    /// A program has been started: the robot is put at its start, and nothing before that can be
    /// taken back.
    void BeginRun();
    /// The same for a run that was recorded: the scene is as it was when that began.
    void BeginReplay();
    /// Does what a recording says. Pace and steps are not for it.
    void CarryOutRecorded(const Action& action);
    /// How many runs have begun.
    std::uint64_t Runs() const { return runs_; }

    /// The run so far, from its beginning on.
    RunRecorder::Made Record() const { return recorder_.Make(happenings_, world_.board); }

    /// The outputs of the run as they changed.
    const OutputLog& Outputs() const { return recorder_.Outputs(); }

    /// The present.
    Position End() const;
    /// Instructions since the last tick.
    std::uint64_t StepsInTick() const;

    /// Told of the board after the instructions of each tick, not of those that are repeated.
    using TickWatcher = std::function<void(const Board&)>;
    void WatchTicks(TickWatcher watcher) { watcher_ = std::move(watcher); }

  private:
    using Kind = HappeningKind;

    struct Checkpoint {
        std::unique_ptr<Scene> world;
        Position at;
        std::optional<Position> lastInstruction;
        std::uint64_t cost = 0;
        RunRecorder::Mark outputs;
    };

    /// What a happening costs beside its instructions, of which costs are counted.
    static constexpr std::uint64_t kHappeningCost = 50;

    Happening* Last(Kind kind);
    void Append(Happening happening);
    Position EndOrNext(bool continues) const;

    std::uint64_t Execute(std::uint64_t budget, const Position& from);
    std::uint64_t ExecuteAsking(std::uint64_t budget, const Position& from);
    void FinishTick(bool somebodyListens);
    bool ReceiveOne(char character, const Deliver& deliver, const Position& from);
    void CarryOut(const Happening& happening);
    void Settle();

    void GoTo(const Checkpoint& checkpoint);
    void Replay(Position at, const Position& target);
    void ReplayRunning(const Happening& happening, Position& at, const Position& stop);
    void ReplayOther(const Happening& happening, Position& at, const Position& stop);
    void CutAt(const Position& position);

    void KeepCheckpoint(const Position& at);
    void KeepCheckpointIfDue(const Position& at, std::uint64_t gap);
    void ThinOut();
    void DropOldest();

    Scene& world_;
    std::deque<Happening> happenings_;
    std::uint64_t forgotten_ = 0;  ///< happenings before the first that is kept
    std::vector<Checkpoint> checkpoints_;
    std::optional<Position> lastInstruction_;  ///< right before it
    std::uint64_t cost_ = 0;                   ///< of repeating everything, in instructions
    std::uint64_t runs_ = 0;
    TickWatcher watcher_;
    RunRecorder recorder_;
    const Question* wanted_ = nullptr;  ///< asked of each instruction that is repeated
    std::optional<Position> found_;     ///< the last one about which it said yes
};

}  // namespace zentro
