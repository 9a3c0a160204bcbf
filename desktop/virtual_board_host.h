#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "comms/virtual_board_link.h"
#include "desktop/button_presses.h"
#include "desktop/history.h"
#include "desktop/playback.h"
#include "desktop/plot_curves.h"
#include "desktop/program_stops.h"
#include "desktop/robot_trail.h"
#include "desktop/scene_changes.h"
#include "faults/fault_report.h"
#include "sound/tone_generator.h"

namespace zentro {

/// How fast a virtual board goes.
struct BoardSpeed {
    enum class Kind : std::uint8_t {
        SlowMotion,  ///< so many instructions a second; waiting takes its usual time
        RealTime,
        FullSpeed,  ///< as fast as it goes; waiting takes no time
    };

    Kind kind = Kind::RealTime;
    double instructionsPerSecond = 3;  ///< of slow motion; above 0, at most a million

    bool operator==(const BoardSpeed&) const = default;
};

/// Owns a virtual board, lets time pass for it and lets it be stopped, stepped and stepped back. A
/// pause holds programs and the clock; the serial line goes on answering.
class VirtualBoardHost : public QObject {
    Q_OBJECT

  public:
    explicit VirtualBoardHost(QObject* parent = nullptr);
    ~VirtualBoardHost() override;

    /// The board's end of the serial line, for a terminal session.
    VirtualBoardLink& Link();

    const Board& State() const { return world_->board; }
    const Scene& World() const { return *world_; }

    /// Loads the text of an object file and puts the robot at its start. Returns what is wrong with
    /// it; empty: it was loaded.
    std::string LoadProgram(std::string_view objectText);
    bool HasProgram() const { return State().processor.programSize > 0; }

    /// Starts the program, or lets the one that is held or in debug mode go on.
    void Run();
    /// Ends the program; what it has switched on stays on.
    void Stop();
    /// What somebody at the other end of the serial line does to stop it: leaves its debug mode,
    /// ends the program and puts every output to rest. The robot stays where it is.
    void StopEverything();
    void Pause();
    void Resume();
    bool IsPaused() const { return paused_; }

    /// Holds the program and carries out one instruction; a wait before it passes at once, a sleep
    /// for at most a second. Without a running program it starts one and holds it at its beginning.
    void Step();
    /// Holds the program and takes its last instruction back, with all that happened since.
    /// False when nothing can be taken back.
    bool StepBack();
    bool CanStepBack() const { return history_.CanStepBack(); }

    /// The addresses at which source lines begin; null: nobody knows them.
    void SetLines(std::shared_ptr<const LineStarts> lines) { stops_.SetLines(std::move(lines)); }
    bool KnowsLines() const { return stops_.KnowsLines(); }
    /// Before these instructions the program is held whenever the condition says so.
    void SetBreakpoints(std::map<std::uint16_t, ProgramStops::Condition> breakpoints);

    /// Carries out the line at which the program is held, or the rest of it; a wait in it passes at
    /// once. A line that takes long goes on in real time, until it ends or the program is held.
    /// Without a running program it starts one and holds it at its first line. Lines must be known.
    void StepLine(LineStep step);
    /// Holds the program and takes the last line back, with all that it called: where lines were
    /// stepped, that of the last step. False when nothing can be taken back.
    bool StepLineBack();
    /// Starts the program or lets it go on, and holds it before the instruction at the address.
    void RunTo(std::uint16_t address);
    /// Whether a line is being carried out that takes long.
    bool IsSteppingLine() const { return !paused_ && stops_.IsStepping(); }

    /// Ends the program, switches everything off and puts the robot at its start.
    void Reset();

    // By hand: whatever the program and the motors are doing, they go on.
    void PutRobotAtStart();
    /// Where something is in the way, beside it.
    void PlaceRobot(const world::Pose& pose);

    /// The board stays as it is; the robot stands at the start of another world, and no input is
    /// held by hand. What was before cannot be taken back.
    void EnterWorld(std::shared_ptr<const world::WorldMap> map);
    /// The world has changed round the robot, which stays where it is if it has room there.
    void ChangeWorld(std::shared_ptr<const world::WorldMap> map);

    /// Whether the program has ended and its robot has stood since for as long as a goal may ask
    /// for.
    bool IsRunOver() const;

    /// Where the robot has been.
    const RobotTrail& Trail() const { return trail_; }
    /// With which it draws its way from here on.
    void TakePen(Pen pen);
    void WipeTrail();

    /// The run so far, to be replayed by zentro-board.
    RunRecorder::Made Record() const { return history_.Record(); }

    /// Puts the board at the beginning of a run that was recorded, held, on the floor of the world
    /// that is there. From then on it does what was recorded, until a hand does something else or
    /// it has come to its end and is run on.
    void Replay(Recording recording);
    bool IsReplaying() const { return playback_ != nullptr; }
    bool IsReplayOver() const { return playback_ != nullptr && playback_->IsOver(); }
    /// The program goes on by itself. Nobody is told.
    void LeaveReplay();

    /// What was chosen to be plotted. It goes back when steps are taken back, and begins anew with
    /// each run.
    const PlotCurves& Curves() const { return curves_; }
    /// Chooses the curves, at most PlotCurves::kMost.
    void Plot(const std::vector<PlotSource>& sources);

    /// A hand changes inputs. It holds those from then on that the world feeds.
    void SetInputs(const Inputs& inputs);
    /// Takes an input over from the world, or lets it go.
    void HoldInput(const world::InputId& input, bool held);
    void LetAllInputsGo();
    /// Somebody presses a button, counted from 0, and lets it go, however quickly: it stays down
    /// until the program has had a chance to look.
    void PressButton(std::size_t button);
    void LetButtonGo(std::size_t button);

    /// The instruction carried out last with its effect, "[0014] INCREMENT BYTE [0020] : [0020] =
    /// 7"; empty when it was not a single step or a slow one.
    const std::string& LastStep() const { return lastStep_; }
    const ProgramWords& Words() const { return words_; }

    void SetSpeed(const BoardSpeed& speed);
    const BoardSpeed& Speed() const { return speed_; }

    /// Told what sounds in each tick that passes at the board's own pace: not while the program is
    /// held or stepped, nor as fast as it goes.
    void SetSoundListener(std::function<void(const SoundTick&)> listener) {
        soundListener_ = std::move(listener);
    }

    /// What the user calls the things of the loaded program, for fault reports.
    void SetWords(ProgramWords words) { words_ = std::move(words); }

    /// Bytes of memory as they are now. Behind the end of memory each is FF.
    std::string ReadMemory(std::uint32_t address, std::size_t count) const;

    /// Lets so much time pass, at most a second. The host's own timer calls it.
    void Advance(double milliseconds);

  signals:
    void Changed();  ///< at most 60 times a second
    void FaultHappened(const zentro::FaultReport& report);
    void ProgramEnded();  ///< for whatever reason
    void StopReached();   ///< it is held at a breakpoint, or where a step or a run to a place ends

    /// Everything that was recorded has happened, and the board is held. `difference` tells where
    /// the outputs part from the recorded ones; empty: they do not.
    void ReplayEnded(const QString& difference);
    /// What is done by hand, or a run beyond its end, has ended the replay: the program goes on by
    /// itself.
    void ReplayLeft(bool beyondItsEnd);

  private:
    class RecordingLink;

    static constexpr std::uint64_t kInstructionsPerTick = 10'000;

    bool SomebodyListens() const;
    bool WantsTime() const;
    bool StandsForGoals() const;
    void SetPaused(bool paused);
    void WakeUp();
    void PassRealTime(std::uint64_t ticks);
    void PassWatched(std::uint64_t ticks);
    bool RunWatched();
    void HoldAtStop();
    void EndGoal();
    void StartAnew();
    void StepLineAtOnce();
    bool TakeLineBack();
    void ShowTakenBack();
    void FinishTick();
    void BreakOffReplay();
    void KeepOutput();
    void KeepForListener(std::string_view output);
    std::string TraceOfNext() const;
    bool ReplayWatched();
    void ReplayInstruction();
    void TellEndOfReplay();
    void PassSlowMotion(std::uint64_t ticks);
    void RunAtFullSpeed();
    void StepInstruction();
    void SendCommand(std::string_view command);
    void SetButton(std::size_t button, bool down);
    void LetButtonsUp();
    void LookAround();
    void FollowCurves();
    void TellChange();
    void PassTime(double milliseconds);

    std::unique_ptr<Scene> world_;
    History history_;
    std::unique_ptr<RecordingLink> link_;
    std::unique_ptr<Playback> playback_;  ///< null: the program runs by itself
    bool toldReplayEnd_ = false;
    ProgramStops stops_;
    ButtonPresses presses_;
    RobotTrail trail_;
    PlotCurves curves_;
    std::uint64_t plottedRun_ = 0;
    ProgramWords words_;
    std::function<void(const SoundTick&)> soundListener_;
    bool isHeard_ = false;  ///< time passes at the board's own pace
    std::string lastStep_;
    BoardSpeed speed_;
    bool paused_ = false;
    bool wasRunning_ = false;
    std::optional<std::uint64_t> endedAt_;  ///< by the board's clock; of the last program
    double pendingTime_ = 0;                ///< milliseconds not yet made into ticks
    double pendingInstructions_ = 0;        ///< of slow motion
    std::uint64_t stepsInTick_ = 0;         ///< carried out singly since the last tick
    /// A line step that can be taken back: the board right before its first and its last
    /// instruction.
    struct DoneStep {
        History::Position first;
        History::Position last;
    };
    std::deque<DoneStep> doneSteps_;
    std::optional<History::Position> stepBegan_;  ///< with the first instruction of a line step
    bool stopReached_ = false;                    ///< and not told yet
    QElapsedTimer sinceWakeUp_;
    QElapsedTimer sinceChange_;
    QTimer wakeUps_;
    QTimer laterChange_;
};

}  // namespace zentro
