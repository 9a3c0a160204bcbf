#include "ui/board/drive_widgets.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/board_text.h"
#include "ui/board/board_look.h"

namespace zentro {

namespace {

constexpr double kDegreesPerTick = 3.6;  // at 100 percent: one turn a second
constexpr int kSpokes = 5;

/// The title above a picture and its value below it, which may take two lines; returns the room
/// between them.
QRectF PaintCaptions(QPainter& painter, const QRect& area, const QString& title,
                     const std::string& value, bool active) {
    const int line = painter.fontMetrics().height();
    QFont bold = painter.font();
    bold.setBold(true);
    painter.setPen(kPrint);
    painter.setFont(bold);
    DrawFitting(painter, area, Qt::AlignTop | Qt::AlignHCenter, title);
    bold.setBold(active);
    painter.setFont(bold);
    painter.setPen(active ? kGold : kDimPrint);
    QString text = QString::fromStdString(value);
    text.replace("% ", "%\n");
    DrawFitting(painter, area, Qt::AlignBottom | Qt::AlignHCenter, text);
    return QRectF(area).adjusted(2, line + 2, -2, -2 * line - 3);
}

QRectF SquareIn(const QRectF& room) {
    const double side = std::min(room.width(), room.height());
    QRectF square(0, 0, side, side);
    square.moveCenter(room.center());
    return square;
}

void PaintWheel(QPainter& painter, double radius, bool turning) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHousing);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    painter.setBrush(turning ? QColor(0x6C, 0x78, 0x82) : QColor(0x4C, 0x56, 0x5E));
    painter.drawEllipse(QPointF(0, 0), radius * 0.74, radius * 0.74);
    painter.setPen(QPen(kHousing, radius * 0.13, Qt::SolidLine, Qt::RoundCap));
    for (int spoke = 0; spoke < kSpokes; ++spoke) {
        painter.drawLine(QPointF(0, -radius * 0.2), QPointF(0, -radius * 0.6));
        painter.rotate(360.0 / kSpokes);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGold);
    painter.drawEllipse(QPointF(0, 0), radius * 0.16, radius * 0.16);
    // One mark on the tyre shows that it turns, and which way.
    painter.drawEllipse(QPointF(0, -radius * 0.87), radius * 0.08, radius * 0.08);
}

/// An arrow along the rim, clockwise for forward.
void PaintTurnArrow(QPainter& painter, double radius, bool forward) {
    painter.save();
    if (!forward) painter.scale(-1, 1);
    const QRectF circle(-radius, -radius, 2 * radius, 2 * radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(kGold, 2.5, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(circle, 20 * 16, 50 * 16);
    painter.rotate(70);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGold);
    painter.drawPolygon(
        QPolygonF({QPointF(-3, -radius - 6), QPointF(8, -radius), QPointF(-3, -radius + 6)}));
    painter.restore();
}

}  // namespace

MotorWidget::MotorWidget(int number, QWidget* parent) : QWidget(parent) {
    setObjectName("Motor" + QString::number(number));
    setAccessibleName(tr("Motor %1").arg(number));
    SetSpokenValue(*this, DescribeMotor(motor_));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void MotorWidget::Show(const Drive& motor, int ticks) {
    const bool turns = motor.value != 0 && ticks != 0 && MayAnimate(*this);
    if (motor == motor_ && !turns) return;
    if (turns) {
        const int sign = motor.direction == kForward ? 1 : -1;
        angle_ += sign * ticks * kDegreesPerTick * std::min<int>(motor.value, 100) / 100.0;
    }
    if (motor != motor_) SetSpokenValue(*this, DescribeMotor(motor));
    motor_ = motor;
    update();
}

void MotorWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool turning = motor_.value != 0;
    const QRectF square =
        SquareIn(PaintCaptions(painter, rect(), accessibleName(), DescribeMotor(motor_), turning));
    const double radius = square.width() / 2;
    painter.translate(square.center());
    painter.save();
    painter.rotate(angle_);
    PaintWheel(painter, radius * 0.84, turning);
    painter.restore();
    if (turning) PaintTurnArrow(painter, radius * 0.94, motor_.direction == kForward);
}

ServoWidget::ServoWidget(int number, QWidget* parent) : QWidget(parent) {
    setObjectName("Servo" + QString::number(number));
    setAccessibleName(tr("Servo %1").arg(number));
    SetSpokenValue(*this, DescribeServo(servo_));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ServoWidget::Show(const Drive& servo) {
    if (servo == servo_) return;
    servo_ = servo;
    SetSpokenValue(*this, DescribeServo(servo));
    update();
}

void ServoWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF room =
        PaintCaptions(painter, rect(), accessibleName(), DescribeServo(servo_), servo_.value != 0);
    // A half circle over the servo's case, in which the arm swings.
    const double radius = std::min(room.width() / 2, room.height() * 0.72) - 2;
    const QPointF axle(room.center().x(), room.top() + radius + 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHousing);
    painter.drawRoundedRect(QRectF(axle.x() - radius * 0.55, axle.y() - radius * 0.22, radius * 1.1,
                                   room.bottom() - axle.y() + radius * 0.22),
                            4, 4);
    painter.translate(axle);
    painter.setPen(QPen(kDimPrint, 1.4));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(-radius, -radius, 2 * radius, 2 * radius), 0, 180 * 16);
    for (int mark = -90; mark <= 90; mark += 45) {
        painter.save();
        painter.rotate(mark);
        painter.drawLine(QPointF(0, -radius), QPointF(0, -radius * 0.88));
        painter.restore();
    }
    const int angle = std::min<int>(servo_.value, 90);
    painter.rotate(servo_.direction == kForward ? angle : -angle);
    painter.setPen(QPen(kPrint, std::max(5.0, radius * 0.16), Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, 0), QPointF(0, -radius * 0.76));
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGold);
    painter.drawEllipse(QPointF(0, 0), radius * 0.12, radius * 0.12);
}

}  // namespace zentro
