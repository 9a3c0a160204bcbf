#include "ui/board/board_look.h"

#include <QPainter>
#include <QStyle>

namespace zentro {

void DrawFitting(QPainter& painter, const QRect& area, Qt::Alignment alignment,
                 const QString& text) {
    const QFont font = painter.font();
    const int width = painter.fontMetrics().size(0, text).width();
    if (width > area.width()) {
        QFont smaller = font;
        smaller.setPointSizeF(font.pointSizeF() * area.width() / width);
        painter.setFont(smaller);
    }
    painter.drawText(area, static_cast<int>(alignment), text);
    painter.setFont(font);
}

void SetSpokenValue(QWidget& widget, const std::string& value) {
    widget.setAccessibleDescription(QString::fromStdString(value));
}

bool MayAnimate(const QWidget& widget) {
    return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
}

}  // namespace zentro
