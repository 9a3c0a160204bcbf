#pragma once

#include "world/world_map.h"

namespace zentro::world {

/// What a floor, distance or light sensor reads there, 0 to 255 before it is rounded. Noise aside.
double Reading(const WorldMap& map, const Sensor& sensor, const Pose& robot);

/// Whether a bumper there touches something.
bool IsPressed(const WorldMap& map, const Sensor& bumper, const Pose& robot);

/// How far it is from the sensor to the nearest thing in its cone; at most its range.
double FreeWay(const WorldMap& map, const Sensor& sensor, const Pose& robot);

/// Whether the robot touches anything at all.
bool Touches(const WorldMap& map, const Pose& robot);

}  // namespace zentro::world
