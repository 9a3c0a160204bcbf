#include "ui/shell/desk.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <iterator>

#include "ui/shell/commands.h"

namespace zentro {

namespace {

constexpr CommandId kFirstSteps[] = {CommandId::NewSource, CommandId::OpenSource,
                                     CommandId::Examples, CommandId::OpenVirtualBoard,
                                     CommandId::Help};

const CommandRow& RowOf(CommandId id) {
    return *std::ranges::find(Commands(), id, &CommandRow::id);
}

}  // namespace

Desk::Desk(QWidget* parent) : QMdiArea(parent) {
    TakeColours();
}

void Desk::TakeColours() {
    setBackground(palette().color(QPalette::Window).darker(112));
}

void Desk::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) TakeColours();
    QMdiArea::changeEvent(event);
}

void Desk::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty()) return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::WindowText));
    QFont large = font();
    large.setPointSizeF(font().pointSizeF() * 1.3);
    painter.setFont(large);
    // Names end and shortcuts begin at one line down the middle.
    const int height = painter.fontMetrics().lineSpacing() * 3 / 2;
    const QRect area = viewport()->rect();
    int top = area.center().y() - height * static_cast<int>(std::size(kFirstSteps)) / 2;
    for (CommandId id : kFirstSteps) {
        const CommandRow& row = RowOf(id);
        const QRect left(area.left(), top, area.width() / 2 - height / 2, height);
        const QRect right(area.center().x() + height / 2, top, area.width() / 2, height);
        painter.drawText(left, Qt::AlignRight | Qt::AlignVCenter,
                         QString(row.caption).remove('&').trimmed());
        painter.drawText(right, Qt::AlignLeft | Qt::AlignVCenter,
                         *row.shortcut == '\0' ? "Help menu" : row.shortcut);
        top += height;
    }
}

}  // namespace zentro
