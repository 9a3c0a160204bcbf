#include "ui/support/readable_style.h"

#include <QStyleOptionTitleBar>

#include "ui/support/colours.h"

namespace zentro {

/// Some desktops give all colours but this one.
void ReadableStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QColor hint = palette.color(group, QPalette::Text);
        hint.setAlphaF(0.5F);
        palette.setColor(group, QPalette::PlaceholderText, hint);
    }
}

/// The buttons of an inactive title bar are black whatever they stand on, those of an active one
/// white. So on a dark desktop an inactive one is drawn as an active one without its colour.
void ReadableStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionTitleBar*>(option);
    const bool isInactive = bar != nullptr && (bar->titleBarState & State_Active) == 0;
    if (control != CC_TitleBar || !isInactive || !IsDark(bar->palette))
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    constexpr int kLighter = 135;  // hundredths
    QStyleOptionTitleBar readable(*bar);
    readable.titleBarState |= State_Active;
    readable.state |= State_Active;
    readable.palette.setColor(QPalette::Highlight,
                              bar->palette.color(QPalette::Window).lighter(kLighter));
    QProxyStyle::drawComplexControl(control, &readable, painter, widget);
}

}  // namespace zentro
