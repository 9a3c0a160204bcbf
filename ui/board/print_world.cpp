#include "ui/board/print_world.h"

#include <QPainter>
#include <QPrinter>
#include <cmath>

#include "ui/board/world_painter.h"

namespace zentro {

namespace {

constexpr double kMillimetres = 10;  // of a centimetre

/// What a sheet takes of the floor, in centimetres.
QSizeF SheetSize(const QPrinter& printer) {
    return printer.pageRect(QPrinter::Millimeter).size() / kMillimetres;
}

/// "B3": the second row's third sheet.
QString SheetName(int row, int column) {
    constexpr int kLetters = 26;
    QString letters;
    for (int rest = row; rest >= 0; rest = rest / kLetters - 1)
        letters.prepend(QChar('A' + rest % kLetters));
    return letters + QString::number(column + 1);
}

void PrintSheet(QPainter& painter, const QPrinter& printer, const world::WorldMap& map, int row,
                int column) {
    const QSizeF sheet = SheetSize(printer);
    const double pixels = printer.pageRect(QPrinter::DevicePixel).width() / sheet.width();
    painter.save();
    painter.scale(pixels, -pixels);
    painter.translate(-column * sheet.width(), -(map.world.floor.height - row * sheet.height()));
    PaintWorld(painter, map, {}, {.isPaper = true});
    PaintStart(painter, map);
    painter.restore();
    painter.setPen(QPen(Qt::gray, 0));
    painter.setBrush(Qt::NoBrush);
    const QRectF frame(QPointF(0, 0), sheet * pixels);
    painter.drawRect(frame);
    painter.drawText(frame.adjusted(pixels, pixels, -pixels, -pixels), Qt::AlignLeft | Qt::AlignTop,
                     SheetName(row, column));
}

}  // namespace

SheetCount SheetsFor(const QPrinter& printer, const world::WorldMap& map) {
    const QSizeF sheet = SheetSize(printer);
    const world::Floor& floor = map.world.floor;
    return {static_cast<int>(std::ceil(floor.width / sheet.width())),
            static_cast<int>(std::ceil(floor.height / sheet.height()))};
}

void PrintWorld(QPrinter& printer, const world::WorldMap& map) {
    const SheetCount sheets = SheetsFor(printer, map);
    QPainter painter(&printer);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int row = 0; row < sheets.down; ++row) {
        for (int column = 0; column < sheets.across; ++column) {
            if (row + column > 0) printer.newPage();
            PrintSheet(painter, printer, map, row, column);
        }
    }
}

}  // namespace zentro
