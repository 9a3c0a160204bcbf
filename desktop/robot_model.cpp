#include "desktop/robot_model.h"

#include <algorithm>
#include <cmath>

namespace zentro {

namespace {

constexpr double kFullSpeed = 0.5;  // metres in a second at 100 percent
constexpr double kWheelDistance = 0.16;
constexpr double kSecondsPerTick = 0.01;
constexpr double kEyesAhead = 0.09;
constexpr double kEyesApart = 0.05;  // less than the line's width: both can see it at once
constexpr double kDarkest = 25;
constexpr double kLightest = 225;
constexpr double kBlurredEdge = 0.02;

/// Metres in a second, negative backward.
double WheelSpeed(const Drive& motor) {
    const double speed = std::min<double>(motor.value, 100) / 100 * kFullSpeed;
    return motor.direction == kForward ? speed : -speed;
}

double DistanceToTrack(const FloorPoint& point) {
    const double beyondStraight = std::max(0.0, std::abs(point.x) - kTrackStraight / 2);
    return std::abs(std::hypot(beyondStraight, point.y) - kTrackRadius);
}

}  // namespace

void DriveRobot(RobotModel& robot, const Drive& left, const Drive& right) {
    const double leftSpeed = WheelSpeed(left);
    const double rightSpeed = WheelSpeed(right);
    if (leftSpeed == 0 && rightSpeed == 0) return;
    const double way = (leftSpeed + rightSpeed) / 2 * kSecondsPerTick;
    const double turn = (rightSpeed - leftSpeed) / kWheelDistance * kSecondsPerTick;
    const double middle = robot.heading + turn / 2;
    constexpr double kRoomX = kFloorWidth / 2 - kRobotRadius;
    constexpr double kRoomY = kFloorHeight / 2 - kRobotRadius;
    robot.place.x = std::clamp(robot.place.x + way * std::cos(middle), -kRoomX, kRoomX);
    robot.place.y = std::clamp(robot.place.y + way * std::sin(middle), -kRoomY, kRoomY);
    robot.heading = std::remainder(robot.heading + turn, 2 * std::acos(-1.0));
}

std::array<FloorPoint, 2> EyesOf(const RobotModel& robot) {
    const double cosine = std::cos(robot.heading);
    const double sine = std::sin(robot.heading);
    const auto eye = [&](double side) {
        return FloorPoint{robot.place.x + kEyesAhead * cosine - side * sine,
                          robot.place.y + kEyesAhead * sine + side * cosine};
    };
    return {eye(kEyesApart / 2), eye(-kEyesApart / 2)};
}

std::uint8_t BrightnessAt(const FloorPoint& point) {
    const double outside = (DistanceToTrack(point) - kTrackWidth / 2) / kBlurredEdge;
    const double light = std::clamp(outside + 0.5, 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround(kDarkest + light * (kLightest - kDarkest)));
}

}  // namespace zentro
