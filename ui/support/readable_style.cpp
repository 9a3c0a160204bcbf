#include "ui/support/readable_style.h"

#include <QPainter>
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

/// A button that stays pressed looks like the others on a dark desktop, and nearly so on a light
/// one.
void ReadableStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isButton = element == PE_PanelButtonTool || element == PE_PanelButtonCommand;
    if (!isButton || (option->state & State_On) == 0) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(option->palette.color(QPalette::Highlight), 2));
    painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), 2, 2);
    painter->restore();
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
