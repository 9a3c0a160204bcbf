#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "advice/variable_uses.h"
#include "model/compilation.h"
#include "model/statement.h"

namespace zentro {

/// A piece of advice that is still to be posted.
struct Finding {
    std::int32_t lineNumber = 0;  ///< over all files
    MessageCode code{};
    std::string_view extra{};  ///< the name that it is about
};

/// What the finders share.
struct AdviceSearch {
    const Compilation& compilation;
    const VariableUses uses{compilation};
    std::vector<Finding> findings{};
    BlockRole role = BlockRole::None;  ///< inside of a routine, of the line that is looked at

    void Add(const SourceLine& line, MessageCode code, std::string_view extra = {}) {
        findings.push_back({line.lineNumber, code, extra});
    }
};

/// What a line says by itself: a speed over 100, Speed = Speed, a comparison that never changes. Or
/// by itself and where its variable comes from: a button's value compared with 1, a joystick's as a
/// speed.
class LineAdvice {
  public:
    /// The search outlives the object.
    explicit LineAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    /// A comparison of a variable with 1.
    struct ComparedWithOne {
        const SourceLine* line;
        const LineElement* variable;
    };

    void LookAtComparison(const SourceLine& line);
    bool HoldsButton(const LineElement& variable) const;
    void LookAtSpeed(const SourceLine& line);
    bool HoldsJoystick(const LineElement& variable) const;

    AdviceSearch& search_;
    std::vector<ComparedWithOne> comparedWithOne_;
    bool isInEvent_ = false;
};

/// What follows from the line before: what is never reached, sounds that cut each other off, blocks
/// with nothing in them.
class OrderAdvice {
  public:
    /// The search outlives the object.
    explicit OrderAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    void LookAtPair(const SourceLine& before, const SourceLine& line);

    AdviceSearch& search_;
    const SourceLine* before_ = nullptr;
};

/// Motors that the program's own lines set going, outside all of its blocks, and that nobody stops.
class MotorAdvice {
  public:
    /// The search outlives the object.
    explicit MotorAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    /// What is certain of a motor.
    struct Motor {
        const SourceLine* on = nullptr;  ///< the last line that set it going
        bool hasWaited = false;          ///< since then
    };
    static constexpr std::size_t kMotors = 4;

    void SetMotor(const SourceLine& line);
    void EndProgram();

    AdviceSearch& search_;
    std::array<Motor, kMotors> motors_{};
    bool isInProgram_ = false;
    int depth_ = 0;
};

/// Pauses in which nobody can see what the line before does, in programs that know no others: their
/// author counts in seconds.
class PauseAdvice {
  public:
    /// The search outlives the object.
    explicit PauseAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    /// What the lines just before have done, as far as it is certain.
    enum class Motors {
        Unknown,
        AtRest,
        Started,  ///< from rest, one or several
        Paused,   ///< for a short time since they started
    };

    void LookAtSigns(const SourceLine& line);
    void FollowMotors(const SourceLine& line);
    bool EndsTurn(const SourceLine& line) const;
    Motors After(const SourceLine& line);

    AdviceSearch& search_;
    const SourceLine* before_ = nullptr;
    const SourceLine* beforeThat_ = nullptr;
    int depth_ = 0;  ///< of the blocks
    Motors motors_ = Motors::Unknown;
    std::vector<const SourceLine*> started_;
    std::vector<const SourceLine*> tooShort_;
    bool areAllShort_ = true;
};

/// Loops that wait for what cannot come: a value that nothing in them changes, a number that a
/// count steps over, a count that each round begins anew.
class LoopAdvice {
  public:
    /// The search outlives the object.
    explicit LoopAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    /// A block that is open.
    struct Block {
        const SourceLine* first;
        std::vector<const SourceLine*> setToZero{};  ///< lines of this very block
    };

    void LookAtLoop(const SourceLine& first, const SourceLine& last);
    void LookAtSteps(const SourceLine& line);
    void LookAtCount(const SourceLine& line);
    bool IsCountedOnlyHere(const LineElement& variable) const;

    AdviceSearch& search_;
    std::vector<Block> blocks_;
};

/// Events, routines and variables that nothing uses, and names that hide others.
class NameAdvice {
  public:
    /// The search outlives the object.
    explicit NameAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    bool IsOfMainFile(const Symbol& symbol) const;
    void LookAtVariables();

    AdviceSearch& search_;
    std::unordered_set<const Label*> watched_;  ///< events
    std::unordered_set<const Label*> called_;   ///< routines
    const SourceLine* firstSetEvent_ = nullptr;
    bool eventsAreEnabled_ = false;
    bool isInProgram_ = false;
    bool isWritten_ = false;  ///< a statement stands in the program
};

/// An output of the board: a motor, a servo or a port by its number, the LEDs or the display.
struct SetOutput {
    Token kind = Token::None;
    std::int32_t number = 0;

    bool operator==(const SetOutput&) const = default;
};

/// Outputs that are set twice with no time between: nobody sees the first.
class OutputAdvice {
  public:
    /// The search outlives the object.
    explicit OutputAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    AdviceSearch& search_;
    std::vector<SetOutput> set_;  ///< since time last passed
    bool motorStarted_ = false;   ///< since then
};

/// Motors of a LOOP that something sets going and nothing ever stops.
class MotorInLoopAdvice {
  public:
    /// The search outlives the object.
    explicit MotorInLoopAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    /// A block that is open.
    struct Block {
        Token token;
        bool hasOtherBranch = false;
        std::vector<const SourceLine*> motors{};  ///< lines of this very block that set one going
    };

    static bool MayStop(Token token);

    AdviceSearch& search_;
    std::vector<Block> blocks_;
    std::vector<const SourceLine*> candidates_;
    std::vector<std::int32_t> numbers_;  ///< of all motors that are set going, with repetitions
    bool isStopped_ = false;
};

/// Values that never come or are never left: a case that stands twice, a tune without an end, a sum
/// that does not fit, a flag that stays TRUE, a variable that stays 0, the bytes behind a table.
class ValueAdvice {
  public:
    /// The search outlives the object.
    explicit ValueAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    /// A block that is open.
    struct Block {
        const SourceLine* first;
        std::set<std::int32_t> cases{};
        bool hasPause = false;
    };

    void LookAtCase(const SourceLine& line);
    void LookAtTune(const SourceLine& line);
    void LookAtSum(const SourceLine& line);
    void LookAtPause(const SourceLine& line);
    void LookAtBlock(const Block& block, const SourceLine& last);
    void LookAtRounds(const SourceLine& first, const SourceLine& last);
    std::int32_t RoundsOf(const SourceLine& first, const SourceLine& last) const;
    const Symbol* TableReadBy(const SourceLine& step, const SourceLine& first) const;
    bool HoldsReading(const LineElement& variable) const;
    bool OnlyRises(const LineElement& flag) const;
    bool StaysZero(const Symbol& symbol) const;

    AdviceSearch& search_;
    std::vector<Block> blocks_;
};

/// Choices that choose nothing: the same lines both ways, what was asked above already, what the
/// line above has made equal, what is read before a LOOP only.
class ChoiceAdvice {
  public:
    /// The search outlives the object.
    explicit ChoiceAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    /// A block that is open: an IF with all lines inside of it, another one with its IF lines.
    struct Block {
        const SourceLine* first;
        const SourceLine* other = nullptr;  ///< its ELSE
        std::vector<const SourceLine*> lines{};
        std::vector<const SourceLine*> otherLines{};  ///< below ELSE
    };

    void LookAtWays(const Block& block);
    void LookAtPair(const SourceLine& before, const SourceLine& line);
    void LookAtReadings(const Block& loop, const SourceLine& last);
    bool IsReadBefore(const LineElement& variable, const SourceLine& loop) const;

    AdviceSearch& search_;
    std::vector<Block> blocks_;
    const SourceLine* before_ = nullptr;
};

/// What comes too early or too fast: a clock that is past a number, events of a program that ends
/// at once, numbers that nobody can read.
class TimeAdvice {
  public:
    /// The search outlives the object.
    explicit TimeAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);
    void Finish();

  private:
    struct Shown {
        const SourceLine* line;
        const Label* variable;
    };

    void LookAtClock(const SourceLine& line);
    void LookAtEquality(const SourceLine& line);
    void LookAtEnd(const SourceLine& line);
    void LookAtOnce(const SourceLine& line);
    bool HoldsInput(const SourceLine& line) const;
    void LookAtLoop(const SourceLine& line);

    AdviceSearch& search_;
    bool hasClock_ = false;
    std::vector<const SourceLine*> equalities_;  ///< lines that compare with = or <>
    bool isInProgram_ = false;
    bool hasEvents_ = false;
    bool lastsSinceEnabled_ = true;
    bool takesTime_ = false;             ///< the program, as far as it was seen
    bool drives_ = false;                ///< a motor is set going
    bool stops_ = false;                 ///< the motors, after asking
    const SourceLine* asked_ = nullptr;  ///< the first IF that is about an input while it drives
    const SourceLine* loop_ = nullptr;   ///< the innermost, as long as nothing in it takes time
    std::vector<const Label*> counted_;
    std::vector<Shown> shown_;
};

}  // namespace zentro
