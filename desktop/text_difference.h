#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zentro {

enum class LineChange : std::uint8_t {
    Same,
    Removed,
    Added,
    LeftOut,  ///< stands for lines that are the same and not shown
};

struct DifferenceLine {
    LineChange change = LineChange::Same;
    QString text;

    bool operator==(const DifferenceLine&) const = default;
};

/// How the lines of the new text come from those of the old one, with as few changes as can be. For
/// texts that have little in common the part that differs is given as removed and added whole.
std::vector<DifferenceLine> DifferenceOf(const QString& oldText, const QString& newText);

/// The changes with so many lines around each; what lies between is left out.
std::vector<DifferenceLine> AroundChanges(const std::vector<DifferenceLine>& lines,
                                          std::size_t context);

}  // namespace zentro
