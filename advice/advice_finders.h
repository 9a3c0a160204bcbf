#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/compilation.h"

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
    std::vector<Finding> findings{};

    void Add(const SourceLine& line, MessageCode code, std::string_view extra = {}) {
        findings.push_back({line.lineNumber, code, extra});
    }
};

/// What a line says by itself: a speed over 100, Speed = Speed, a comparison that never changes.
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

    AdviceSearch& search_;
    std::vector<ComparedWithOne> comparedWithOne_;
    bool isInEvent_ = false;
};

/// What follows from the order of the lines: what is never reached, sounds that cut each other off,
/// motors that nobody stops.
class OrderAdvice {
  public:
    /// The search outlives the object.
    explicit OrderAdvice(AdviceSearch& search) : search_(search) {}

    /// Takes the lines that generate code, in their order.
    void Look(const SourceLine& line);

  private:
    void LookAtPair(const SourceLine& before, const SourceLine& line);
    void FollowMotors(const SourceLine& line);
    void SetMotor(const SourceLine& line);

    AdviceSearch& search_;
    const SourceLine* before_ = nullptr;
    // The program's own lines, outside all of its blocks, one after the other.
    bool isInProgram_ = false;
    int depth_ = 0;
    const SourceLine* motorOn_ = nullptr;  ///< the last line that set one going for certain
    bool hasWaited_ = false;               ///< since then
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
    std::vector<const Label*> watched_;  ///< events
    std::vector<const Label*> called_;   ///< routines
    const SourceLine* firstSetEvent_ = nullptr;
    bool eventsAreEnabled_ = false;
    bool isInProgram_ = false;
    bool isWritten_ = false;  ///< a statement stands in the program
};

}  // namespace zentro
