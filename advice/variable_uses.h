#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// Which lines change which variable, and whether they can run while a loop does. Made once for a
/// program without errors, which outlives it.
class VariableUses {
  public:
    explicit VariableUses(const Compilation& compilation);

    /// A line that may give a variable something.
    struct Change {
        const Label* variable;
        const SourceLine* line;
    };

    /// In the order of the lines. The header of a routine changes its parameters.
    std::span<const Change> ChangesOf(const Label* variable) const;

    /// Whether the variable may get something while the lines from first to last run: from one of
    /// them, from a routine that they call, or from an event.
    bool MayChangeWithin(const Label* variable, const SourceLine& first,
                         const SourceLine& last) const;

    /// Whether the lines from first to last can be left in the middle, because the routine or the
    /// whole program ends.
    bool MayBeLeftWithin(const SourceLine& first, const SourceLine& last) const;

    /// Whether the line stands in an event.
    bool IsInEvent(const SourceLine& line) const;

    /// The symbol behind an element's location; nothing for the compiler's own.
    const Symbol* SymbolOf(const Label* location) const;
    /// The name as the user wrote it.
    std::string_view NameOf(const LineElement& variable) const;

  private:
    struct Call {
        const SourceLine* line;
        ParentId routine;
    };

    void Enter(const SourceLine& line);
    std::set<ParentId> RunningWith(const SourceLine& first, const SourceLine& last) const;

    const Compilation& compilation_;
    std::vector<const Symbol*> symbols_;  ///< the user's, in the order of their labels' places
    std::vector<Change> changes_;         ///< those of a variable side by side
    std::vector<Call> calls_;             ///< in the order of the lines
    std::vector<ParentId> events_;
    std::vector<const SourceLine*> exits_;  ///< lines that end a routine or the program
};

}  // namespace zentro
