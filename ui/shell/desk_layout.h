#pragma once

#include <QRect>
#include <QSize>
#include <cstdint>
#include <map>
#include <set>

namespace zentro {

/// What a child window is for the desk.
enum class DeskPart : std::uint8_t {
    Source,
    Board,
    Listing,
    Output,
    Terminal,
    Variables,
    Plot,
    Help,
    Tool,  ///< is small and stands wherever it was put
};

/// Places for the open windows that cover the area without covering each other: the source at the
/// left with the compiler's output below it, the board at the right with the terminal, the listing
/// and the variables below it. While no board is open the terminal has its place, and without both
/// the listing; the variables then stand at the left. The handbook has a column of its own where
/// the area is wide enough; else it stands below the source while a board is open, and at the right
/// otherwise. The plot stands below the source, and the compiler's output then below the board
/// where there is room. Where the area is too low to divide, only the compiler's output keeps a
/// place of its own, and what else would stand below something has the same place as the board.
/// Tools have no place here.
std::map<DeskPart, QRect> LayOutDesk(const QRect& area, const std::set<DeskPart>& open);

/// The place of a main window that never had one, on a screen with so much room.
QRect FirstMainWindowPlace(const QRect& screen);

}  // namespace zentro
