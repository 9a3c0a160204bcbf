#pragma once

#include <variant>
#include <vector>

#include "world/world.h"

namespace zentro::world {

/// One piece of a dark line.
struct Stroke {
    std::variant<Segment, Sweep> course;
    double halfWidth = 0;
    double darkness = 0;
};

/// A sensor and what follows from its place on the robot.
struct SensorPlan {
    Sensor sensor;
    Point facing;             ///< its direction on the robot, of length 1
    double widest = 1;        ///< the cosine of half its cone
    std::vector<Point> rays;  ///< directions on the robot, of a distance sensor
};

/// A world and what follows from it, worked out once. Nothing in it changes while robots drive, so
/// any number of them can share it.
struct WorldMap {
    World world;
    std::vector<Stroke> strokes;
    std::vector<Segment> obstacles;  ///< walls and the sides of boxes
    std::vector<Segment> barriers;   ///< the same and the walls round the floor
    std::vector<SensorPlan> sensors;
    /// For each goal the places that must be passed, at most 64.
    std::vector<std::vector<Point>> passages;
};

WorldMap MakeMap(World world);
SensorPlan MakePlan(const Sensor& sensor);

/// What an eye over that point reads.
double BrightnessAt(const WorldMap& map, const Point& point);

/// Whether the point belongs to the area.
bool Holds(const Area& area, const Point& point);

/// The four sides of a rectangle.
std::vector<Segment> SidesOf(const Point& corner, const Point& size);

/// Whether a robot can stand there without touching anything.
bool IsFree(const WorldMap& map, const Point& middle);

/// The nearest points of all that is closer than `reach`, the floor's edge included, as ways from
/// the middle.
std::vector<Point> Touched(const WorldMap& map, const Point& middle, double reach);

}  // namespace zentro::world
