#pragma once

#include <QRect>
#include <vector>

class QMdiArea;

namespace zentro {

enum class Tiling { Horizontal, Vertical };

/// Places for `count` windows that share the area evenly: one below the other, or side by side.
std::vector<QRect> Tile(const QRect& area, int count, Tiling tiling);

/// Tiles the windows that are not minimised.
void TileWindows(QMdiArea& area, Tiling tiling);

/// Puts the minimised windows in rows along the lower edge.
void ArrangeMinimised(QMdiArea& area);

}  // namespace zentro
