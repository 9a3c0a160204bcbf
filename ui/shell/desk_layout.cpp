#include "ui/shell/desk_layout.h"

#include <algorithm>
#include <vector>

namespace zentro {

namespace {

// Pixels, from which a column of that kind is worth reading.
constexpr int kWidthForHelpColumn = 1600;
constexpr int kLeastBoardHeight = 380;
constexpr int kLeastStripHeight = 150;
constexpr int kLeastSourceHeight = 200;
constexpr int kLeastOutputHeight = 100;  // its title, two lines and the count of the mistakes
constexpr int kLeastHeightToDivide = 300;
constexpr int kMostTitleHeight = 40;  // of the main window, which the desktop draws around it

constexpr QSize kMostOfMainWindow{1600, 1000};

/// Hundredths of the whole.
int Share(int whole, int hundredths) {
    return whole * hundredths / 100;
}

/// A column: what stands above, and side by side below it. All of them have the same place above.
struct Column {
    std::vector<DeskPart> above;
    std::vector<DeskPart> below;

    bool IsEmpty() const { return above.empty() && below.empty(); }
};

using Places = std::map<DeskPart, QRect>;

void PlaceSideBySide(const QRect& area, const std::vector<DeskPart>& parts, Places& places) {
    const int count = static_cast<int>(parts.size());
    for (int i = 0; i < count; ++i) {
        const int left = area.width() * i / count;
        const int right = area.width() * (i + 1) / count;
        places[parts[static_cast<std::size_t>(i)]] =
            QRect(area.left() + left, area.top(), right - left, area.height());
    }
}

void PlaceColumn(const QRect& area, const Column& column, int leastAbove, Places& places) {
    if (column.above.empty()) return PlaceSideBySide(area, column.below, places);
    int strip = 0;
    if (!column.below.empty()) {
        const bool isToRead = std::ranges::any_of(column.below, [](DeskPart part) {
            return part == DeskPart::Help || part == DeskPart::Plot;
        });
        const bool isOutputAlone = column.below == std::vector{DeskPart::Output};
        strip = std::max(Share(area.height(), isToRead        ? 50
                                              : isOutputAlone ? 20
                                                              : 30),
                         isOutputAlone ? kLeastOutputHeight : kLeastStripHeight);
        const int least = std::min(kLeastOutputHeight, area.height() / 2);
        strip = std::clamp(strip, 0, std::max(area.height() - leastAbove, least));
    }
    const QRect above = area.adjusted(0, 0, 0, -strip);
    for (const DeskPart part : column.above)
        places[part] = above;
    PlaceSideBySide(QRect(area.left(), above.bottom() + 1, area.width(), strip), column.below,
                    places);
}

}  // namespace

std::map<DeskPart, QRect> LayOutDesk(const QRect& area, const std::set<DeskPart>& open) {
    const auto isOpen = [&](DeskPart part) { return open.contains(part); };
    const bool hasHelpColumn = area.width() >= kWidthForHelpColumn && isOpen(DeskPart::Board);
    const bool isLow = area.height() < kLeastHeightToDivide;
    Column left;
    Column right;
    Column help;
    const auto put = [&](DeskPart part, std::vector<DeskPart>& where) {
        if (isOpen(part)) where.push_back(part);
    };
    put(DeskPart::Source, left.above);
    // One reads a lesson below the text that one types, and sees the board beside both.
    const bool readsBelow = isOpen(DeskPart::Help) && isOpen(DeskPart::Board) && !hasHelpColumn &&
                            !isLow && isOpen(DeskPart::Source);
    if (readsBelow) left.below.push_back(DeskPart::Help);
    const bool plotsBelow = isOpen(DeskPart::Plot) && isOpen(DeskPart::Source) && !isLow;
    if (plotsBelow) left.below.push_back(DeskPart::Plot);
    const bool isRightFull =
        !isOpen(DeskPart::Board) ||
        (isOpen(DeskPart::Terminal) && isOpen(DeskPart::Variables) && isOpen(DeskPart::Listing));
    const bool makesRoom = readsBelow || (plotsBelow && !isRightFull);
    put(DeskPart::Output, makesRoom ? right.below : left.below);
    if (!plotsBelow) put(DeskPart::Plot, isLow ? right.above : left.above);
    put(DeskPart::Variables, isOpen(DeskPart::Board) ? right.below : left.below);
    put(DeskPart::Board, right.above);
    put(DeskPart::Terminal, isOpen(DeskPart::Board) ? right.below : right.above);
    const bool isRightTaken = isOpen(DeskPart::Board) || isOpen(DeskPart::Terminal);
    put(DeskPart::Listing, isRightTaken ? right.below : right.above);
    if (!readsBelow) put(DeskPart::Help, hasHelpColumn ? help.above : right.above);
    // Half a board and half a listing are of no use: the one that was opened last is in front.
    if (isLow) right.above.insert(right.above.end(), right.below.begin(), right.below.end());
    if (isLow) right.below.clear();

    QRect rest = area;
    Places places;
    if (!help.IsEmpty()) {
        const int width = Share(area.width(), 28);
        PlaceColumn(QRect(rest.right() + 1 - width, rest.top(), width, rest.height()), help, 0,
                    places);
        rest.setWidth(rest.width() - width);
    }
    if (!left.IsEmpty() && !right.IsEmpty()) {
        const int width = Share(rest.width(), isOpen(DeskPart::Board) ? 42 : 50);
        PlaceColumn(QRect(rest.left(), rest.top(), width, rest.height()), left, kLeastSourceHeight,
                    places);
        PlaceColumn(rest.adjusted(width, 0, 0, 0), right, kLeastBoardHeight, places);
    } else if (!left.IsEmpty()) {
        PlaceColumn(rest, left, kLeastSourceHeight, places);
    } else if (!right.IsEmpty()) {
        PlaceColumn(rest, right, kLeastBoardHeight, places);
    }
    return places;
}

QRect FirstMainWindowPlace(const QRect& screen) {
    const QSize room(screen.width(), screen.height() - kMostTitleHeight);
    QRect place(QPoint(0, 0), room.boundedTo(kMostOfMainWindow));
    place.moveCenter(screen.center());
    place.moveTop(std::max(place.top(), screen.top() + kMostTitleHeight));
    return place;
}

}  // namespace zentro
