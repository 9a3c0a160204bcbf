#include "world/robot.h"

#include <algorithm>
#include <optional>

#include "world/arithmetic.h"

namespace zentro::world {

namespace {

double WheelWay(const RobotMeasures& robot, const Drive& motor) {
    const double share = static_cast<double>(std::min<int>(motor.value, 100)) / 100;
    const double way = share * robot.fullSpeed * kSecondsPerTick;
    return motor.direction == kForward ? way : -way;
}

/// Keeps the middle of the robot away from the floor's edge.
Point InsideFloor(const WorldMap& map, const Point& middle) {
    const Floor& floor = map.world.floor;
    const double radius = map.world.robot.radius;
    return {std::clamp(middle.x, radius, floor.width - radius),
            std::clamp(middle.y, radius, floor.height - radius)};
}

/// Pushes the robot out of the obstacle that it overlaps most; nothing when it overlaps none.
std::optional<Point> PushedOut(const WorldMap& map, const Point& middle) {
    const double radius = map.world.robot.radius;
    double square = radius * radius;
    std::optional<Point> nearest;
    for (const Segment& obstacle : map.obstacles) {
        const Point way = Minus(middle, Nearest(obstacle, middle));
        if (Dot(way, way) >= square) continue;
        square = Dot(way, way);
        nearest = way;
    }
    if (!nearest) return std::nullopt;
    // A hair more than needed, so that rounding does not leave it inside.
    constexpr double kHair = 1e-6;
    const double length = Length(*nearest);
    if (length == 0) return middle;
    return Plus(middle, Times(*nearest, (radius + kHair - length) / length));
}

/// As far as the robot comes on its way to `wanted`.
Point Reached(const WorldMap& map, const Point& from, const Point& wanted) {
    constexpr int kMostPushes = 4;  // into a corner, off both of its walls and once more
    Point middle = InsideFloor(map, wanted);
    for (int push = 0; push < kMostPushes; ++push) {
        const std::optional<Point> pushed = PushedOut(map, middle);
        if (!pushed) return middle;
        middle = InsideFloor(map, *pushed);
    }
    return PushedOut(map, middle) ? from : middle;
}

}  // namespace

std::array<double, 2> WheelWays(const RobotMeasures& robot, const Outputs& outputs) {
    return {WheelWay(robot, outputs.motors[0]), WheelWay(robot, outputs.motors[1])};
}

Pose Driven(const WorldMap& map, const Pose& from, const std::array<double, 2>& wheelWays) {
    const auto [left, right] = wheelWays;
    if (left == 0 && right == 0) return from;
    const double turn = (right - left) / map.world.robot.wheelDistance;
    const Point ahead = Direction(from.heading + turn / 2);
    const Point wanted = Plus(from.place, Times(ahead, (left + right) / 2));
    return {Reached(map, from.place, wanted), Unwound(from.heading + turn)};
}

Pose Placed(const WorldMap& map, const Pose& from, const Pose& wanted) {
    const Point place = Reached(map, from.place, wanted.place);
    return {IsFree(map, place) ? place : from.place, Unwound(wanted.heading)};
}

}  // namespace zentro::world
