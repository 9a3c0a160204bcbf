#pragma once

#include <optional>

namespace zentro {

/// An edit that has put lines into a text or taken lines out. Lines count from 1.
struct LineMove {
    int line = 1;  ///< the first that was taken out, or that stood where lines were put in
    int removed = 0;
    int added = 0;
    int carriedTo = 0;  ///< where the first that was taken out stands now; 0: they are gone
};

/// Where a line stands after the edit; nothing: it was taken out.
constexpr std::optional<int> LineAfter(const LineMove& move, int line) {
    const bool isTakenOut = line >= move.line && line < move.line + move.removed;
    if (isTakenOut && move.carriedTo == 0) return std::nullopt;
    if (isTakenOut) return move.carriedTo + line - move.line;
    const int after = line < move.line ? line : line - move.removed + move.added;
    return move.carriedTo == 0 || after < move.carriedTo ? after : after + move.removed;
}

/// Where it stood before the edit; nothing: it was put in.
constexpr std::optional<int> LineBefore(const LineMove& move, int line) {
    if (move.carriedTo != 0) return LineAfter({move.carriedTo, move.removed, 0, move.line}, line);
    return LineAfter({move.line, move.added, move.removed}, line);
}

}  // namespace zentro
