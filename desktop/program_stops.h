#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "board/board.h"

namespace zentro {

/// For each address whether a source line begins there.
using LineStarts = std::vector<bool>;

/// The instruction that the board carries out next, which may be the first of an event's handler.
struct NextInstruction {
    std::uint32_t address = 0;
    std::uint16_t depth = 0;  ///< calls that are not finished
    bool inHandler = false;
};
NextInstruction NextOf(const Board& board);

/// Where the program is: at the next instruction, or while it waits at the one that waits.
std::uint32_t WhereItStands(const Board& board);

/// How a source line is carried out.
enum class LineStep : std::uint8_t {
    Over,  ///< with the routines that it calls, and the handlers that come in between
    Into,  ///< up to the next line, in whichever routine or handler that is
};

/// Before which instructions a program is to be held: at breakpoints, and where a step or a run to
/// some place ends. It knows addresses; what lines are there others know.
class ProgramStops {
  public:
    /// Whether a breakpoint holds the program this time; nothing set: always.
    using Condition = std::function<bool(const Board&)>;

    void SetLines(std::shared_ptr<const LineStarts> lines) { lines_ = std::move(lines); }
    bool KnowsLines() const { return lines_ != nullptr; }
    bool IsLineStart(std::uint32_t address) const;

    void SetBreakpoints(std::map<std::uint16_t, Condition> breakpoints);

    /// The program goes on from where it is held: the instruction there is not held again.
    void LeaveFrom(const Board& board);
    /// The program has begun anew.
    void Begin() { left_.reset(); }

    void StepLine(LineStep step, const Board& board);
    void RunTo(std::uint16_t address) { target_ = address; }
    /// A step or a run to some place is over, or given up.
    void EndGoal();
    bool IsStepping() const { return step_.has_value(); }
    /// Whether the board is where the step began, beside what it called: not deeper.
    bool IsAtLevelOfStep(const Board& board) const;

    /// Whether the instructions have to be looked at one by one.
    bool MustWatch() const { return step_ || target_ || !breakpoints_.empty(); }
    /// Asked before each instruction.
    bool HoldsBefore(const Board& board) const;

    /// Whether a line begins with the next instruction that is not inside a call or handler of what
    /// the board does now: a place to go back to.
    std::function<bool(const Board&)> LineBefore(const Board& now) const;

  private:
    struct Step {
        LineStep kind = LineStep::Over;
        NextInstruction from;
    };

    bool EndsStep(const NextInstruction& next) const;

    std::shared_ptr<const LineStarts> lines_;
    std::map<std::uint16_t, Condition> breakpoints_;
    std::vector<bool> isBreakpoint_;  ///< by address
    std::optional<Step> step_;
    std::optional<std::uint16_t> target_;
    std::optional<std::uint64_t> left_;  ///< the instruction, by its number, that is not held
};

}  // namespace zentro
