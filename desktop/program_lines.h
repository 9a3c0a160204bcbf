#pragma once

#include <QString>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "desktop/program_report.h"
#include "desktop/program_stops.h"
#include "model/compilation.h"

namespace zentro {

/// Where the lines of a compiled program begin in the board's memory. Files are told apart by their
/// keys, lines count from 1 in the text that was compiled.
class ProgramLines {
  public:
    ProgramLines(const Compilation& compilation, const FileKeys& keyOf);

    const std::shared_ptr<const LineStarts>& Starts() const { return starts_; }
    /// Nothing: the line has no code, or the program has no such file.
    std::optional<std::uint16_t> StartOf(const QString& fileKey, int line) const;
    /// The line, or else the next one that has code; nothing: none in this file.
    std::optional<int> LineWithCode(const QString& fileKey, int line) const;
    /// The routine or event that the line belongs to.
    ParentId ScopeOf(const QString& fileKey, int line) const;

  private:
    std::map<QString, std::map<int, std::uint16_t>> lines_;
    std::map<QString, std::vector<ParentId>> scopes_;  ///< of all lines, code or not
    std::shared_ptr<const LineStarts> starts_;
};

}  // namespace zentro
