#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hints/other_languages.h"
#include "model/compilation.h"

namespace zentro {

/// Finds what may have been meant by the lines of a program. Asked only when a message is posted,
/// so that a program without mistakes pays nothing for it.
class LineHints : public HintSource {
  public:
    /// The compilation outlives the hints.
    explicit LineHints(const Compilation& compilation) : compilation_(compilation) {}

    /// A second message against a line does not repeat the hint of the first.
    Hint HintFor(MessageCode code, const SourceLine& line, std::string_view extra) override;
    Hint HintForProgram(MessageCode code) override;

  private:
    const Compilation& compilation_;
    std::optional<std::vector<OtherLanguageRow>> rows_;  ///< read with the first mistake
    const SourceLine* lastLine_ = nullptr;
    std::string lastText_;
};

}  // namespace zentro
