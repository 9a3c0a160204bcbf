#pragma once

#include <array>
#include <cstddef>

#include "board/devices.h"
#include "world/world_map.h"

namespace zentro::world {

inline constexpr double kSecondsPerTick = 0.01;

/// Centimetres that the left and the right wheel go in a tick, below 0 backward.
std::array<double, 2> WheelWays(const RobotMeasures& robot, const Outputs& outputs);

/// Where the robot is a tick later. It slides along what it hits.
Pose Driven(const WorldMap& map, const Pose& from, const std::array<double, 2>& wheelWays);

/// Where a hand puts the robot that wants it there: beside what is in the way, or back where it
/// was.
Pose Placed(const WorldMap& map, const Pose& from, const Pose& wanted);

}  // namespace zentro::world
