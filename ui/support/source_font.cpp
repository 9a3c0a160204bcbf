#include "ui/support/source_font.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>
#include <array>

namespace zentro {

namespace {

/// Where the wanted font is missing. Each desktop has one of them; the clearest come first.
constexpr std::array kMonospaced = {"Cascadia Mono",  "Consolas",         "Menlo",
                                    "Noto Sans Mono", "DejaVu Sans Mono", "Liberation Mono",
                                    "Ubuntu Mono",    "Courier New"};

QFont UsualFixedFont() {
    const auto known = std::find_if(kMonospaced.begin(), kMonospaced.end(), [](const char* name) {
        return QFontDatabase::hasFamily(name) && QFontDatabase::isFixedPitch(name);
    });
    return known == kMonospaced.end() ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                      : QFont(*known);
}

}  // namespace

QFont SourceFont(const QString& name, double points) {
    QFont font = QFontDatabase::hasFamily(name) ? QFont(name) : UsualFixedFont();
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(points);
    return font;
}

QFont ColumnFont(const QString& name, double points) {
    const QFont font = SourceFont(name, points);
    if (QFontInfo(font).fixedPitch()) return font;
    QFont fixed = UsualFixedFont();
    fixed.setPointSizeF(points);
    return fixed;
}

QFont FixedFont() {
    const QFont system = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (QFontInfo(system).fixedPitch()) return system;
    QFont fixed = UsualFixedFont();
    fixed.setPointSizeF(QFontInfo(system).pointSizeF());
    return fixed;
}

}  // namespace zentro
