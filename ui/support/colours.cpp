#include "ui/support/colours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zentro {

namespace {

constexpr std::uint32_t kDesktopColour = 0x8000'0000U;

struct DesktopColour {
    std::uint32_t number;
    QPalette::ColorRole role;
};

constexpr std::array kDesktopColours{
    DesktopColour{4, QPalette::Window},           DesktopColour{5, QPalette::Base},
    DesktopColour{7, QPalette::WindowText},       DesktopColour{8, QPalette::Text},
    DesktopColour{13, QPalette::Highlight},       DesktopColour{14, QPalette::HighlightedText},
    DesktopColour{15, QPalette::Button},          DesktopColour{16, QPalette::Mid},
    DesktopColour{17, QPalette::PlaceholderText}, DesktopColour{18, QPalette::ButtonText},
    DesktopColour{23, QPalette::ToolTipText},     DesktopColour{24, QPalette::ToolTipBase},
};

double Linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

}  // namespace

QColor ToColour(std::int32_t value, const QPalette& palette) {
    const auto bits = static_cast<std::uint32_t>(value);
    if ((bits & kDesktopColour) != 0) {
        const auto* found =
            std::ranges::find(kDesktopColours, bits & 0xFFU, &DesktopColour::number);
        return palette.color(found == kDesktopColours.end() ? QPalette::Text : found->role);
    }
    return {static_cast<int>(bits & 0xFFU), static_cast<int>(bits >> 8 & 0xFFU),
            static_cast<int>(bits >> 16 & 0xFFU)};
}

std::int32_t FromColour(const QColor& colour) {
    return colour.red() | colour.green() << 8 | colour.blue() << 16;
}

bool IsDark(const QPalette& palette) {
    return Luminance(palette.color(QPalette::Base)) < Luminance(palette.color(QPalette::Text));
}

QColor ReadableOn(const QColor& colour, const QColor& background) {
    constexpr double kReadable = 4.5;  // what is asked of text that everybody is to read
    QColor shade = colour;
    const bool onDark = Luminance(background) < 0.18;
    for (int step = 1; step <= 20 && Contrast(shade, background) < kReadable; ++step) {
        const double mix = step / 20.0;
        const double end = onDark ? 1.0 : 0.0;
        shade = QColor::fromRgbF(static_cast<float>(colour.redF() * (1 - mix) + end * mix),
                                 static_cast<float>(colour.greenF() * (1 - mix) + end * mix),
                                 static_cast<float>(colour.blueF() * (1 - mix) + end * mix));
    }
    return shade;
}

QColor Mix(const QColor& colour, const QColor& other, int share) {
    const auto part = [&](int a, int b) { return (a * share + b * (100 - share)) / 100; };
    return {part(colour.red(), other.red()), part(colour.green(), other.green()),
            part(colour.blue(), other.blue())};
}

}  // namespace zentro
