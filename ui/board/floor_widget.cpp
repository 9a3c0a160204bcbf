#include "ui/board/floor_widget.h"

#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "ui/board/board_look.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

constexpr qsizetype kLongestTrail = 1500;
constexpr double kTrailStep = 0.015;  // metres
constexpr double kGrid = 0.25;        // metres
constexpr double kMargin = 6;         // pixels
constexpr int kButtonMargin = 4;
const QColor kTrail(0xE0, 0x6C, 0x1F);
const QColor kLedOn(0xFF, 0xC4, 0x2E);
const QColor kLedOff(0x6A, 0x5A, 0x30);

QRectF FloorRect() {
    return {-kFloorWidth / 2, -kFloorHeight / 2, kFloorWidth, kFloorHeight};
}

QPainterPath TrackPath() {
    constexpr double kHalf = kTrackStraight / 2 + kTrackRadius;
    QPainterPath track;
    track.addRoundedRect(QRectF(-kHalf, -kTrackRadius, 2 * kHalf, 2 * kTrackRadius), kTrackRadius,
                         kTrackRadius);
    return track;
}

}  // namespace

FloorWidget::FloorWidget(QWidget* parent)
    : QWidget(parent), putBack_(new QPushButton(tr("Back to Start"), this)) {
    setObjectName("Floor");
    setAccessibleName(tr("Robot on the floor"));
    setToolTip(tr("Motor 1 is the left wheel, motor 2 the right one"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    putBack_->setObjectName("BtnRobotToStart");
    putBack_->setToolTip(tr("Put the robot back at its start; the program goes on"));
    putBack_->setAutoDefault(false);
    connect(putBack_, &QPushButton::clicked, this, &FloorWidget::PutBackClicked);
    FollowRobot();
}

/// Below the floor, where it covers neither line nor robot.
void FloorWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const QRect floor = FromMetres().mapRect(FloorRect()).toRect();
    putBack_->adjustSize();
    putBack_->move(floor.right() - putBack_->width(), floor.bottom() + kButtonMargin);
}

void FloorWidget::Show(const RobotModel& robot, const Outputs& outputs) {
    if (robot == robot_ && outputs.leds == leds_) return;
    if (robot == RobotModel{}) trail_.clear();
    robot_ = robot;
    leds_ = outputs.leds;
    FollowRobot();
    update();
}

void FloorWidget::FollowRobot() {
    const QPointF place(robot_.place.x, robot_.place.y);
    if (!trail_.isEmpty() && QLineF(trail_.last(), place).length() < kTrailStep) return;
    if (trail_.size() >= kLongestTrail) trail_.removeFirst();
    trail_.append(place);
    const int degrees = static_cast<int>(std::lround(robot_.heading * 180 / std::acos(-1.0)));
    setAccessibleDescription(tr("%1 cm to the right and %2 cm to the front, turned by %3 degrees")
                                 .arg(std::lround(place.x() * 100))
                                 .arg(std::lround(place.y() * 100))
                                 .arg(degrees));
}

QTransform FloorWidget::FromMetres() const {
    const double below = putBack_->sizeHint().height() + kButtonMargin;
    const double scale = std::min((width() - 2 * kMargin) / kFloorWidth,
                                  (height() - below - 2 * kMargin) / kFloorHeight);
    QTransform transform;
    transform.translate(width() / 2.0, (height() - below) / 2.0);
    transform.scale(scale, -scale);
    return transform;
}

void FloorWidget::PaintFloor(QPainter& painter) const {
    const bool dark = IsDark(palette());
    painter.setPen(QPen(palette().mid(), 0.02));
    painter.setBrush(dark ? QColor(0x50, 0x56, 0x5C) : QColor(0xF4, 0xEF, 0xE4));
    painter.drawRect(FloorRect());
    // To judge distances by.
    painter.setPen(QPen(dark ? QColor(0x5C, 0x62, 0x69) : QColor(0xE6, 0xDF, 0xD0), 0));
    for (int line = -4; line <= 4; ++line) {
        const double at = line * kGrid;
        painter.drawLine(QPointF(at, -kFloorHeight / 2), QPointF(at, kFloorHeight / 2));
        if (std::abs(at) < kFloorHeight / 2)
            painter.drawLine(QPointF(-kFloorWidth / 2, at), QPointF(kFloorWidth / 2, at));
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x16, 0x18, 0x1A), kTrackWidth));
    painter.drawPath(TrackPath());
}

void FloorWidget::PaintRobot(QPainter& painter) const {
    painter.translate(robot_.place.x, robot_.place.y);
    painter.rotate(robot_.heading * 180 / std::acos(-1.0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHousing);
    for (double side : {-1.0, 1.0})
        painter.drawRoundedRect(QRectF(-0.035, side * 0.085 - 0.017, 0.07, 0.034), 0.01, 0.01);
    painter.setPen(QPen(kPrint, 0.008));
    painter.setBrush(kBoardGreen.lighter(130));
    painter.drawEllipse(QPointF(0, 0), kRobotRadius * 0.78, kRobotRadius * 0.78);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGold);
    painter.drawPolygon(
        QPolygonF({QPointF(0.055, 0), QPointF(0.02, 0.022), QPointF(0.02, -0.022)}));
    for (std::size_t led = 0; led < leds_.size(); ++led) {
        painter.setBrush(leds_[led] ? kLedOn : kLedOff);
        painter.drawEllipse(QPointF(-0.03, led == 0 ? 0.035 : -0.035), 0.017, 0.017);
    }
}

void FloorWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(FromMetres(), true);
    PaintFloor(painter);
    painter.setPen(QPen(kTrail, 0.012, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(trail_);
    for (const FloorPoint& eye : EyesOf(robot_)) {
        painter.setPen(QPen(kHousing, 0.006));
        painter.setBrush(QColor(0x8F, 0xD8, 0xFF));
        painter.drawEllipse(QPointF(eye.x, eye.y), 0.014, 0.014);
    }
    PaintRobot(painter);
}

}  // namespace zentro
