#include "ui/shell/arrange_windows.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace zentro {

std::vector<QRect> Tile(const QRect& area, int count, Tiling tiling) {
    std::vector<QRect> places;
    for (int i = 0; i < count; ++i) {
        // From border to border, so that what does not divide evenly leaves no gap.
        if (tiling == Tiling::Horizontal) {
            const int top = area.height() * i / count;
            const int bottom = area.height() * (i + 1) / count;
            places.emplace_back(area.left(), area.top() + top, area.width(), bottom - top);
        } else {
            const int left = area.width() * i / count;
            const int right = area.width() * (i + 1) / count;
            places.emplace_back(area.left() + left, area.top(), right - left, area.height());
        }
    }
    return places;
}

void TileWindows(QMdiArea& area, Tiling tiling) {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* window : area.subWindowList()) {
        if (window->isVisible() && !window->isMinimized()) windows += window;
    }
    const std::vector<QRect> places =
        Tile(area.viewport()->rect(), static_cast<int>(windows.size()), tiling);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        windows[i]->showNormal();
        windows[i]->setGeometry(places[static_cast<std::size_t>(i)]);
    }
}

void ArrangeMinimised(QMdiArea& area) {
    const QRect room = area.viewport()->rect();
    int left = 0;
    int bottom = room.height();
    for (QMdiSubWindow* window : area.subWindowList()) {
        if (!window->isMinimized()) continue;
        const QSize size = window->size();
        if (left > 0 && left + size.width() > room.width()) {
            left = 0;
            bottom -= size.height();
        }
        window->move(left, bottom - size.height());
        left += size.width();
    }
}

}  // namespace zentro
