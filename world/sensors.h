#pragma once

#include <vector>

#include "world/world_map.h"

namespace zentro::world {

/// Where a robot stands and which way is ahead.
struct Stance {
    Point place;
    Point ahead;
};
Stance StanceOf(const Pose& robot);

/// What a floor, distance or light sensor reads there, 0 to 255 before it is rounded. Noise aside.
double Reading(const WorldMap& map, const SensorPlan& plan, const Stance& robot);

/// How far it is from a distance sensor to the nearest thing in its cone; at most its range.
double FreeWay(const WorldMap& map, const SensorPlan& plan, const Stance& robot);

/// The lamps that a light sensor sees there, past every wall and box.
std::vector<Lamp> LampsSeen(const WorldMap& map, const SensorPlan& plan, const Stance& robot);

/// Whether a bumper there touches something.
bool IsPressed(const WorldMap& map, const SensorPlan& bumper, const Stance& robot);

/// Whether the robot touches anything at all.
bool Touches(const WorldMap& map, const Point& middle);

}  // namespace zentro::world
