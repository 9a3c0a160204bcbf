#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

namespace zentro {

/// A colour of the settings, 0x00BBGGRR, or a colour of the desktop by number when its top bit is
/// set, as the palette has it now.
QColor ToColour(std::int32_t value, const QPalette& palette);

/// A colour as the settings keep it.
std::int32_t FromColour(const QColor& colour);

/// Whether text is light on dark.
bool IsDark(const QPalette& palette);

/// The colour, or a lighter or darker shade of it, that can be read on the background.
QColor ReadableOn(const QColor& colour, const QColor& background);

/// So much of one colour in the other, in hundredths.
QColor Mix(const QColor& colour, const QColor& other, int share);

}  // namespace zentro
