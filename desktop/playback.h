#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "desktop/history.h"
#include "recording/recording.h"

namespace zentro {

/// Does to a board what a recording says, through a history, so that every instruction can be taken
/// back and is carried out again as it was recorded, at whatever pace the user goes.
class Playback {
  public:
    /// Puts the scene at the beginning of the run, with the program started; its map stays. Nothing
    /// that was before can be taken back. `takeOutput` takes what the board says away from it. The
    /// history and the scene outlive the playback.
    Playback(Recording recording, History& history, Scene& scene, std::function<void()> takeOutput);

    /// Everything that was recorded has happened.
    bool IsOver() const;

    /// Does what is due before the next instruction. Returns how many instructions may follow; 0:
    /// only the tick is left of the present 1/100 second, or it is over.
    std::uint64_t Allowed();
    /// So many of them were carried out. `isAll`: the program cannot carry out more of them.
    void Note(std::uint64_t done, bool isAll);
    /// The next 1/100 second, when no more instructions are allowed.
    void PassTick();

    /// Whole ticks with all that happens in them, up to the end of the recording.
    void PassTicks(std::uint64_t count);

    /// Instructions were taken back.
    void FollowStepBack();

    /// Where the outputs up to now part from the recorded ones, in a sentence; empty: they do not,
    /// or nobody knows them.
    std::string Difference() const;

    const Recording& Played() const { return recording_; }

  private:
    /// How the board was when an action had been carried out.
    struct Mark {
        History::Position end;
        std::uint64_t clock = 0;
        std::uint64_t steps = 0;
    };

    const Action* Due() const;
    bool StepIsDue() const;
    std::uint64_t Done() const { return first_ + marks_.size(); }
    void CarryOut(const Action& action);
    void MarkAsDone();
    std::uint64_t PaceNow() const;
    std::uint64_t TicksToNext() const;

    Recording recording_;
    History& history_;
    Scene& scene_;
    std::function<void()> takeOutput_;
    std::size_t first_ = 0;    ///< actions before the program started, which are never taken back
    std::vector<Mark> marks_;  ///< of the actions since
    std::uint64_t pace_ = 0;
    std::uint64_t inPhase_ = 0;  ///< instructions of the step that is due, else of the tick
};

}  // namespace zentro
