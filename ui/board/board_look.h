#pragma once

#include <QColor>
#include <QString>
#include <QWidget>
#include <string>

class QPainter;

namespace zentro {

// The colours of the board's picture: the same in light and dark, as those of a real board are.
inline constexpr QColor kBoardGreen{0x17, 0x4F, 0x43};
inline constexpr QColor kBoardEdge{0x0C, 0x33, 0x2B};
inline constexpr QColor kPrint{0xF2, 0xF5, 0xEE};     ///< what is printed on the board
inline constexpr QColor kDimPrint{0xA9, 0xC6, 0xB9};  ///< of less weight, still readable
inline constexpr QColor kGold{0xE3, 0xB3, 0x4A};
inline constexpr QColor kHousing{0x1E, 0x22, 0x26};  ///< of motors, servos and the display
inline constexpr QColor kSegmentOn{0xFF, 0x5A, 0x3C};
inline constexpr QColor kSegmentOff{0x3A, 0x28, 0x26};
inline constexpr QColor kLampOff{0x2A, 0x60, 0x53};

/// Draws text, in a smaller font where a line of it is too wide for the area.
void DrawFitting(QPainter& painter, const QRect& area, Qt::Alignment alignment,
                 const QString& text);

/// Tells a picture's value to those who do not see it.
void SetSpokenValue(QWidget& widget, const std::string& value);

/// Whether the desktop wants things to move.
bool MayAnimate(const QWidget& widget);

}  // namespace zentro
