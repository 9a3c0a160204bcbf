#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "desktop/history_happening.h"
#include "recording/recording.h"

namespace zentro {

/// The actions of a recording that happenings come to, one after the other.
class ActionTape {
  public:
    /// A fresh tape; `clock` is the board's at the start.
    void Begin(std::uint64_t clock, bool serialLineIsOff);
    void Add(const Happening& happening);
    /// What has been added, with what is done in the present tick.
    std::vector<Action> Finish();

  private:
    void Put(Action action);
    void PutSteps();
    void PutCharacters(const std::string& characters);

    std::vector<Action> actions_;
    std::uint64_t tick_ = 0;
    std::uint64_t pace_ = 0;
    std::uint64_t steps_ = 0;  ///< in the present tick, not put yet
    bool isOff_ = false;       ///< the serial line: nothing is heard before a "W"
};

/// What becomes a recording of a run, beside what a history remembers anyway: how the run began,
/// what a history has forgotten of it since, and its outputs as they changed.
class RunRecorder {
  public:
    /// A run begins, with this board and its world as they are.
    void Begin(const Scene& scene);
    /// There is no run whose beginning is known, for this reason.
    enum class Missing : std::uint8_t { NoRun, WorldChanged };
    void Clear(Missing why);

    /// A happening that can never be taken back any more.
    void Absorb(const Happening& happening);
    /// A program had to wait until its characters were taken.
    void NoteStall() { hasStalled_ = true; }

    /// Takes the changes of the outputs from the board.
    void TakeOutputs(Board& board);
    /// A point in the outputs, to which they can be taken back.
    struct Mark {
        std::size_t lines = 0;
        std::uint64_t more = 0;
        std::uint64_t digest = OutputLog::kFirstDigest;
    };
    Mark MarkOutputs() const { return {outputs_.lines.size(), outputs_.more, outputs_.digest}; }
    void TakeBackTo(const Mark& mark);
    const OutputLog& Outputs() const { return outputs_; }

    /// Why there can be no recording of the run so far.
    enum class Refusal : std::uint8_t {
        None,
        NoRun,
        WorldChanged,    ///< while it went on
        DebugMode,       ///< it was started in the board's own debug mode
        OutputsOn,       ///< they were when it began
        CharactersWait,  ///< the terminal was too slow for the program
        WorldTooFine,    ///< its numbers are lost when it is saved
        TooLong,
    };
    struct Made {
        Refusal refusal = Refusal::NoRun;
        Recording recording;
    };
    /// The run up to now; `rest` is what a history still remembers of it.
    Made Make(const std::deque<Happening>& rest, const Board& now) const;

  private:
    Refusal WhyNot() const;

    std::unique_ptr<Scene> beginning_;
    Missing missing_ = Missing::NoRun;
    ActionTape early_;
    bool hasStalled_ = false;
    OutputLog outputs_;
};

}  // namespace zentro
