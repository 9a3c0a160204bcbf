#include "ui/board/lamp_widgets.h"

#include <QPainter>
#include <QRadialGradient>
#include <algorithm>
#include <array>

#include "board/text.h"
#include "desktop/board_text.h"
#include "ui/board/board_look.h"

namespace zentro {

namespace {

/// The segments of a digit: top, right above and below, bottom, left below and above, middle.
enum Segment : unsigned { A = 1, B = 2, C = 4, D = 8, E = 16, F = 32, G = 64 };

constexpr std::array<unsigned, 16> kSegmentsOfDigit{
    A | B | C | D | E | F,
    B | C,
    A | B | D | E | G,
    A | B | C | D | G,
    B | C | F | G,
    A | C | D | F | G,
    A | C | D | E | F | G,
    A | B | C,
    A | B | C | D | E | F | G,
    A | B | C | D | F | G,
    A | B | C | E | F | G,
    C | D | E | F | G,
    A | D | E | F,
    B | C | D | E | G,
    A | D | E | F | G,
    A | E | F | G,
};

/// Where each segment runs in a digit one unit wide and two high.
constexpr std::array<QLineF, 7> kSegmentLines{
    QLineF(0, 0, 1, 0), QLineF(1, 0, 1, 1), QLineF(1, 1, 1, 2), QLineF(0, 2, 1, 2),
    QLineF(0, 1, 0, 2), QLineF(0, 0, 0, 1), QLineF(0, 1, 1, 1),
};

unsigned SegmentsOf(QChar character) {
    bool isDigit = false;
    const unsigned digit = QString(character).toUInt(&isDigit, 16);
    return isDigit ? kSegmentsOfDigit[digit] : 0;
}

void PaintDigit(QPainter& painter, const QRectF& place, unsigned segments) {
    const double unitX = place.width();
    const double unitY = place.height() / 2;
    const double thickness = place.height() * 0.11;
    for (std::size_t segment = 0; segment < kSegmentLines.size(); ++segment) {
        const bool on = (segments >> segment & 1U) != 0;
        QLineF line(place.x() + kSegmentLines[segment].x1() * unitX,
                    place.y() + kSegmentLines[segment].y1() * unitY,
                    place.x() + kSegmentLines[segment].x2() * unitX,
                    place.y() + kSegmentLines[segment].y2() * unitY);
        const double gap = thickness * 0.75 / line.length();
        line = QLineF(line.pointAt(gap), line.pointAt(1 - gap));
        painter.setPen(QPen(on ? kSegmentOn : kSegmentOff, thickness, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(line);
    }
}

void PaintCaption(QPainter& painter, const QRect& area, Qt::Alignment alignment,
                  const QString& text, const QColor& colour, bool bold) {
    QFont font = painter.font();
    font.setBold(bold);
    painter.setFont(font);
    painter.setPen(colour);
    DrawFitting(painter, area, alignment | Qt::AlignHCenter, text);
}

}  // namespace

LampWidget::LampWidget(const QString& name, const QColor& light, QWidget* parent)
    : QWidget(parent), light_(light) {
    setAccessibleName(name);
    SetSpokenValue(*this, "off");
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void LampWidget::Show(bool on) {
    if (on == on_) return;
    on_ = on;
    SetSpokenValue(*this, on ? "on" : "off");
    update();
}

void LampWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintCaption(painter, rect(), Qt::AlignTop, accessibleName(), kPrint, true);
    PaintCaption(painter, rect(), Qt::AlignBottom, accessibleDescription(), on_ ? kGold : kDimPrint,
                 on_);
    const int line = painter.fontMetrics().height();
    const QRectF room = QRectF(rect()).adjusted(0, line, 0, -line);
    const double halo = std::min(room.width(), room.height()) / 2;
    const double radius = std::min(halo * 0.62, 16.0);
    painter.setPen(Qt::NoPen);
    if (on_) {
        QRadialGradient glow(room.center(), halo);
        QColor faint = light_;
        faint.setAlpha(0);
        glow.setColorAt(0.4, light_);
        glow.setColorAt(1, faint);
        painter.setBrush(glow);
        painter.drawEllipse(room.center(), halo, halo);
    }
    painter.setPen(QPen(on_ ? light_.lighter(150) : kDimPrint, 1.5));
    painter.setBrush(on_ ? light_.lighter(125) : kLampOff);
    painter.drawEllipse(room.center(), radius, radius);
}

DisplayWidget::DisplayWidget(QWidget* parent) : QWidget(parent) {
    setObjectName("NumberDisplay");
    setAccessibleName(tr("Number display"));
    SetSpokenValue(*this, DescribeDisplay(display_));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void DisplayWidget::Show(const Display& display) {
    if (display == display_) return;
    display_ = display;
    SetSpokenValue(*this, DescribeDisplay(display));
    update();
}

QString DisplayWidget::Digits() const {
    switch (display_.form) {
        case Display::Form::Dark: return "   ";
        case Display::Form::Number: return QString::number(display_.value).rightJustified(3);
        case Display::Form::Hex:
            return QString::fromStdString(FormatHexByte(display_.value)).rightJustified(3);
    }
    return {};
}

void DisplayWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintCaption(painter, rect(), Qt::AlignTop, tr("Display"), kPrint, true);
    PaintCaption(painter, rect(), Qt::AlignBottom, accessibleDescription(),
                 display_.form == Display::Form::Dark ? kDimPrint : kGold,
                 display_.form != Display::Form::Dark);
    const int line = painter.fontMetrics().height();
    QRectF room = QRectF(rect()).adjusted(0, line + 2, 0, -line - 3);
    const double width = std::min(room.width(), room.height() * 2.2);
    room = QRectF(room.center().x() - width / 2, room.top(), width, room.height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHousing);
    painter.drawRoundedRect(room, 5, 5);
    const double height = std::min(room.height() * 0.68, width * 0.34);
    const double digitWidth = height * 0.5;
    const double pitch = digitWidth * 1.7;
    const QString digits = Digits();
    for (int index = 0; index < digits.size(); ++index) {
        const double left = room.center().x() + (index - 1) * pitch - digitWidth / 2;
        PaintDigit(painter, {left, room.center().y() - height / 2, digitWidth, height},
                   SegmentsOf(digits[index]));
    }
}

NoteWidget::NoteWidget(QWidget* parent) : QWidget(parent) {
    setObjectName("Sounder");
    setAccessibleName(tr("Sound"));
    SetSpokenValue(*this, DescribeNote(note_));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void NoteWidget::Show(std::uint8_t note) {
    if (note == note_) return;
    note_ = note;
    SetSpokenValue(*this, DescribeNote(note));
    update();
}

void NoteWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool sounds = note_ != 0;
    PaintCaption(painter, rect(), Qt::AlignTop, accessibleName(), kPrint, true);
    PaintCaption(painter, rect(), Qt::AlignBottom, accessibleDescription(),
                 sounds ? kGold : kDimPrint, sounds);
    const int line = painter.fontMetrics().height();
    const QRectF room = QRectF(rect()).adjusted(0, line + 1, 0, -line - 1);
    const double size = std::min(room.width(), room.height()) * 0.9;
    // Two notes joined by a beam.
    painter.translate(room.center().x() - size / 2, room.center().y() - size / 2);
    const QColor colour = sounds ? kGold : kDimPrint;
    painter.setPen(QPen(colour, size * 0.07, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(size * 0.34, size * 0.15), QPointF(size * 0.34, size * 0.76));
    painter.drawLine(QPointF(size * 0.82, size * 0.08), QPointF(size * 0.82, size * 0.68));
    painter.setPen(QPen(colour, size * 0.14, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(size * 0.31, size * 0.19), QPointF(size * 0.85, size * 0.12));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(size * 0.22, size * 0.78), size * 0.15, size * 0.11);
    painter.drawEllipse(QPointF(size * 0.70, size * 0.70), size * 0.15, size * 0.11);
}

}  // namespace zentro
