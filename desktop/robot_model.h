#pragma once

#include <array>
#include <cstdint>

#include "board/devices.h"

namespace zentro {

/// A place on the floor in metres from its middle: x to the right, y to the front.
struct FloorPoint {
    double x = 0;
    double y = 0;

    bool operator==(const FloorPoint&) const = default;
};

// The floor has walls round it and a closed dark line on it: two straight pieces and two half
// circles.
inline constexpr double kFloorWidth = 2.4;
inline constexpr double kFloorHeight = 1.5;
inline constexpr double kTrackStraight = 0.9;  ///< length of a straight piece
inline constexpr double kTrackRadius = 0.5;    ///< of the half circles
inline constexpr double kTrackWidth = 0.08;

inline constexpr double kRobotRadius = 0.11;

/// A small robot with a wheel on each side, seen from above. It starts on the line, looking along
/// it.
struct RobotModel {
    FloorPoint place{-kTrackStraight / 2, -kTrackRadius};
    double heading = 0;  ///< radians, anticlockwise from the x direction

    bool operator==(const RobotModel&) const = default;
};

/// Drives for 1/100 second with motor 1 as the left wheel and motor 2 as the right one. The walls
/// stop it.
void DriveRobot(RobotModel& robot, const Drive& left, const Drive& right);

/// Where its two eyes look at the floor: left, right.
std::array<FloorPoint, 2> EyesOf(const RobotModel& robot);

/// What an eye reads there: small over the dark line, large over the light floor.
std::uint8_t BrightnessAt(const FloorPoint& point);

}  // namespace zentro
