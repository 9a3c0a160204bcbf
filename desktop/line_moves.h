#pragma once

#include <optional>

namespace zentro {

/// An edit that has put lines into a text or taken lines out. Lines count from 1.
struct LineMove {
    int line = 1;  ///< the first that was taken out, or that stood where lines were put in
    int removed = 0;
    int added = 0;
};

/// Where a line stands after the edit; nothing: it was taken out.
constexpr std::optional<int> LineAfter(const LineMove& move, int line) {
    if (line < move.line) return line;
    if (line < move.line + move.removed) return std::nullopt;
    return line - move.removed + move.added;
}

/// Where it stood before the edit; nothing: it was put in.
constexpr std::optional<int> LineBefore(const LineMove& move, int line) {
    return LineAfter({move.line, move.added, move.removed}, line);
}

}  // namespace zentro
