#include "ui/board/stick_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/board/board_look.h"

namespace zentro {

namespace {

constexpr int kMiddle = 128;
constexpr int kMost = 255;
constexpr int kFirstPush = 48;  // of an arrow key; while it is held the stick moves on
constexpr int kFurtherPush = 16;
constexpr double kKnob = 0.19;  // radius, of the field's width

std::uint8_t Clamped(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, long{kMost}));
}

/// How an arrow key pushes the stick.
struct Push {
    int key;
    std::uint8_t StickPosition::*way;
    int direction;
};

constexpr std::array kPushes{
    Push{Qt::Key_Left, &StickPosition::x, -1},
    Push{Qt::Key_Right, &StickPosition::x, 1},
    Push{Qt::Key_Up, &StickPosition::y, 1},
    Push{Qt::Key_Down, &StickPosition::y, -1},
};

const Push* PushOf(const QKeyEvent& event) {
    const auto* found = std::ranges::find(kPushes, event.key(), &Push::key);
    return found == kPushes.end() ? nullptr : found;
}

}  // namespace

StickWidget::StickWidget(int number, QWidget* parent) : QWidget(parent) {
    setObjectName("Joystick" + QString::number(number));
    setAccessibleName(tr("Joystick %1").arg(number));
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(tr("Drag the stick, or push it with the arrow keys"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void StickWidget::Show(const StickPosition& position) {
    if (position == position_) return;
    position_ = position;
    SetSpokenValue(*this, "x " + std::to_string(position.x) + ", y " + std::to_string(position.y));
    update();
}

void StickWidget::MoveTo(const StickPosition& position) {
    if (position == position_) return;
    Show(position);
    emit Moved(position);
}

QRectF StickWidget::Field() const {
    const double side = std::min(width(), height()) - 4;
    return {(width() - side) / 2, (height() - side) / 2, side, side};
}

void StickWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) mouseMoveEvent(event);
}

void StickWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton)) return;
    const QRectF field = Field();
    const double reach = field.width() * (1 - 2 * kKnob);
    const QPointF moved = event->position() - field.center();
    MoveTo({Clamped(kMiddle + moved.x() / reach * kMost),
            Clamped(kMiddle - moved.y() / reach * kMost)});
}

void StickWidget::mouseReleaseEvent(QMouseEvent*) {
    MoveTo({});
}

void StickWidget::keyPressEvent(QKeyEvent* event) {
    const Push* push = PushOf(*event);
    if (push == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    StickPosition moved = position_;
    const int by = event->isAutoRepeat() ? kFurtherPush : kFirstPush;
    moved.*push->way = Clamped(moved.*push->way + push->direction * by);
    MoveTo(moved);
}

void StickWidget::keyReleaseEvent(QKeyEvent* event) {
    const Push* push = PushOf(*event);
    if (push == nullptr) {
        QWidget::keyReleaseEvent(event);
    } else if (!event->isAutoRepeat()) {
        StickPosition moved = position_;
        moved.*push->way = kMiddle;
        MoveTo(moved);
    }
}

void StickWidget::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

/// The key that is let go elsewhere is not heard here.
void StickWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    MoveTo({});
    update();
}

void StickWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF field = Field();
    const QColor line = palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid);
    painter.setPen(QPen(line, hasFocus() ? 2 : 1.2));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(field, 10, 10);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    painter.drawLine(QPointF(field.center().x(), field.top() + 6),
                     QPointF(field.center().x(), field.bottom() - 6));
    painter.drawLine(QPointF(field.left() + 6, field.center().y()),
                     QPointF(field.right() - 6, field.center().y()));
    const double reach = field.width() * (1 - 2 * kKnob);
    const QPointF knob = field.center() + QPointF((position_.x - kMiddle) * reach / kMost,
                                                  (kMiddle - position_.y) * reach / kMost);
    painter.setPen(QPen(palette().text(), field.width() * 0.06, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(field.center(), knob);
    painter.setPen(QPen(palette().color(QPalette::Text), 1.2));
    painter.setBrush(palette().highlight());
    painter.drawEllipse(knob, field.width() * kKnob * 0.85, field.width() * kKnob * 0.85);
}

}  // namespace zentro
