#pragma once

#include <algorithm>

namespace zentro {

/// The lines that edits have touched and that still have to be looked at, as one range from 0.
struct TouchedLines {
    int first = 0;
    int last = -1;

    bool IsEmpty() const { return last < first; }
    void Clear() { *this = {}; }

    void Add(int from, int to) {
        first = IsEmpty() ? from : std::min(first, from);
        last = std::max(last, to);
    }

    /// An edit in a line put that many lines after it, or took them away.
    void Edit(int line, int linesAdded) {
        if (!IsEmpty()) {
            const auto moved = [&](int known) {
                return known > line ? std::max(known + linesAdded, line) : known;
            };
            *this = {moved(first), moved(last)};
        }
        Add(line, line + std::max(linesAdded, 0));
    }
};

}  // namespace zentro
