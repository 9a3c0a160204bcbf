#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// True for a line that means to declare something and whose first words are mistyped: DEFINE BITE
/// Speed = 1, DEFIN BYTE Speed = 1.
bool IsLostDeclaration(const Compilation& compilation, const SourceLine& line);

/// Holds back messages that may only be consequences of mistakes in declarations: what is said of
/// the names that a line with a mistake was to declare, what is said of blocks after an end that is
/// not understood, and names that only parts of the program that were not read may know.
class ConsequenceFilter : public MessageFilter {
  public:
    /// The compilation outlives the filter.
    explicit ConsequenceFilter(const Compilation& compilation) : compilation_(compilation) {}

    bool HoldsBack(const PostedMessage& message, const SourceLine& line) override;

    /// The declarations are read. `wholly`: and no file or part of a file was left out.
    void DeclarationsRead(bool wholly);

    /// Whether an end was not understood, so that blocks may seem to be open that are not.
    bool HasLostEnd() const { return lostEndLineNo_ != 0; }

    /// What was posted, with the numbers of the lines over all files.
    const std::vector<std::pair<std::int32_t, PostedMessage>>& Posted() const { return posted_; }

  private:
    struct Declaration {
        std::int32_t lineNo;
        ParentId parent;  ///< who can see the name
    };

    void NoteDeclaration(const SourceLine& line);
    bool IsConsequence(MessageCode code, const SourceLine& line) const;
    bool IsDoubtful(std::string_view name, const SourceLine& line) const;
    bool IsDeclaredByLine(std::string_view name, std::int32_t lineNo) const;
    bool IsUnknown(std::string_view name, const SourceLine& line) const;

    const Compilation& compilation_;
    /// What lines with mistakes declare, by the name in capitals.
    std::unordered_map<std::string, std::vector<Declaration>> doubtful_;
    std::vector<std::pair<std::int32_t, PostedMessage>> posted_;
    std::int32_t lastNoted_ = 0;      ///< line
    std::int32_t lostEndLineNo_ = 0;  ///< the first end that is not understood; 0: none
    bool readsDeclarations_ = true;
    bool namesMayBeMissing_ = false;
};

}  // namespace zentro
