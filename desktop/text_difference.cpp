#include "desktop/text_difference.h"

#include <QStringList>
#include <algorithm>
#include <cstdlib>
#include <optional>
#include <span>

namespace zentro {

namespace {

using Lines = std::span<const QString>;

/// More changes than this are not sorted out: the work grows with the square of their number.
constexpr int kMostChanges = 1000;

/// The shortest way from the old lines to the new ones. On diagonal k, which is the number of old
/// lines passed less the number of new ones, Reach(k) is how many old lines the best way of the
/// present number of changes has passed.
class ShortestWay {
  public:
    ShortestWay(Lines oldLines, Lines newLines)
        : old_(oldLines), new_(newLines), reach_(2 * kMostChanges + 3, 0) {}

    /// The lines, or nothing when the way is too long.
    std::optional<std::vector<DifferenceLine>> Find() {
        for (int changes = 0; changes <= kMostChanges; ++changes) {
            steps_.emplace_back();
            for (int k = -changes; k <= changes; k += 2) {
                if (Advance(changes, k)) return Trace(changes, k);
            }
        }
        return std::nullopt;
    }

  private:
    int& Reach(int k) {
        const int index = k + kMostChanges + 1;
        return reach_[static_cast<std::size_t>(index)];
    }

    /// Whether diagonal k is come to by adding a line, from k + 1, not by removing one, from k - 1.
    bool IsAdded(int changes, int k) {
        return k == -changes || (k != changes && Reach(k - 1) < Reach(k + 1));
    }

    /// Makes one change and then passes all lines that are the same. True at the end.
    bool Advance(int changes, int k) {
        const bool added = IsAdded(changes, k);
        int passed = 0;
        if (changes > 0) passed = added ? Reach(k + 1) : Reach(k - 1) + 1;
        const auto oldSize = static_cast<int>(old_.size());
        const auto newSize = static_cast<int>(new_.size());
        const int start = passed;
        while (passed < oldSize && passed - k < newSize && passed - k >= 0 &&
               old_[static_cast<std::size_t>(passed)] ==
                   new_[static_cast<std::size_t>(passed - k)]) {
            ++passed;
        }
        Reach(k) = passed;
        steps_.back().push_back({added, start});
        return passed >= oldSize && passed - k >= newSize;
    }

    std::vector<DifferenceLine> Trace(int changes, int k) {
        std::vector<DifferenceLine> lines;
        int passed = Reach(k);
        for (; changes >= 0; --changes) {
            const Step step = steps_[static_cast<std::size_t>(changes)]
                                    [static_cast<std::size_t>((k + changes) / 2)];
            for (; passed > step.start; --passed) {
                lines.push_back({LineChange::Same, old_[static_cast<std::size_t>(passed - 1)]});
            }
            if (changes == 0) break;
            if (step.added) {
                lines.push_back(
                    {LineChange::Added, new_[static_cast<std::size_t>(passed - k - 1)]});
                ++k;
            } else {
                lines.push_back({LineChange::Removed, old_[static_cast<std::size_t>(--passed)]});
                --k;
            }
        }
        std::ranges::reverse(lines);
        return lines;
    }

    struct Step {
        bool added;
        int start;  ///< old lines passed after the change
    };

    Lines old_;
    Lines new_;
    std::vector<int> reach_;
    std::vector<std::vector<Step>> steps_;  ///< by the number of changes
};

/// An empty text has no line.
QStringList LinesOf(const QString& text) {
    return text.isEmpty() ? QStringList() : text.split('\n');
}

void Append(std::vector<DifferenceLine>& to, LineChange change, Lines lines) {
    for (const QString& line : lines) {
        to.push_back({change, line});
    }
}

}  // namespace

std::vector<DifferenceLine> DifferenceOf(const QString& oldText, const QString& newText) {
    const QStringList oldList = LinesOf(oldText);
    const QStringList newList = LinesOf(newText);
    Lines oldLines(oldList.data(), static_cast<std::size_t>(oldList.size()));
    Lines newLines(newList.data(), static_cast<std::size_t>(newList.size()));
    const auto head =
        static_cast<std::size_t>(std::ranges::mismatch(oldLines, newLines).in1 - oldLines.begin());
    const Lines before = oldLines.first(head);
    oldLines = oldLines.subspan(head);
    newLines = newLines.subspan(head);
    std::size_t tail = 0;
    while (tail < oldLines.size() && tail < newLines.size() &&
           oldLines[oldLines.size() - tail - 1] == newLines[newLines.size() - tail - 1]) {
        ++tail;
    }
    const Lines after = oldLines.last(tail);
    oldLines = oldLines.first(oldLines.size() - tail);
    newLines = newLines.first(newLines.size() - tail);

    std::vector<DifferenceLine> lines;
    Append(lines, LineChange::Same, before);
    if (const auto middle = ShortestWay(oldLines, newLines).Find()) {
        lines.insert(lines.end(), middle->begin(), middle->end());
    } else {
        Append(lines, LineChange::Removed, oldLines);
        Append(lines, LineChange::Added, newLines);
    }
    Append(lines, LineChange::Same, after);
    return lines;
}

std::vector<DifferenceLine> AroundChanges(const std::vector<DifferenceLine>& lines,
                                          std::size_t context) {
    std::vector<bool> isShown(lines.size(), false);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].change == LineChange::Same) continue;
        const std::size_t end = std::min(lines.size(), i + context + 1);
        for (std::size_t near = i - std::min(i, context); near < end; ++near) {
            isShown[near] = true;
        }
    }
    std::vector<DifferenceLine> shown;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (isShown[i]) {
            shown.push_back(lines[i]);
        } else if (shown.empty() || shown.back().change != LineChange::LeftOut) {
            shown.push_back({LineChange::LeftOut, {}});
        }
    }
    return shown;
}

}  // namespace zentro
