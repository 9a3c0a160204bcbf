#include "ui/shell/desk.h"

#include <QEvent>
#include <QPainter>

#include "ui/shell/commands.h"

namespace zentro {

namespace {

constexpr CommandId kFirstSteps[] = {CommandId::NewSource, CommandId::OpenSource,
                                     CommandId::Examples, CommandId::OpenVirtualBoard,
                                     CommandId::Help};

/// "New Source File   Ctrl+N", a line for each thing to begin with.
QString FirstSteps() {
    QStringList lines;
    for (CommandId id : kFirstSteps) {
        for (const CommandRow& row : Commands()) {
            if (row.id != id) continue;
            QString line = QString(row.caption).remove('&').trimmed();
            if (*row.shortcut != '\0') line += QString("   ") + row.shortcut;
            lines += line;
        }
    }
    return lines.join('\n');
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
    painter.drawText(viewport()->rect(), Qt::AlignCenter, FirstSteps());
}

}  // namespace zentro
