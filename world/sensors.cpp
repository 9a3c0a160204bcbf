#include "world/sensors.h"

#include <algorithm>
#include <cmath>

#include "world/arithmetic.h"

namespace zentro::world {

namespace {

constexpr int kRays = 9;  // in the cone of a distance sensor
constexpr double kTouch = 0.1;

Point PlaceOf(const Sensor& sensor, const Pose& robot) {
    return Plus(robot.place, Turned(sensor.place, Direction(robot.heading)));
}

/// How far a ray goes, at most `most`.
double RayTo(const WorldMap& map, const Point& eye, const Point& direction, double most) {
    double length = most;
    for (const Segment& barrier : map.barriers) {
        if (const std::optional<double> found = RayLength(eye, direction, barrier))
            length = std::min(length, *found);
    }
    return length;
}

double Light(const WorldMap& map, const Sensor& sensor, const Pose& robot) {
    const Point eye = PlaceOf(sensor, robot);
    const Point ahead = Direction(robot.heading + sensor.heading);
    double light = 0;
    for (const Lamp& lamp : map.world.lamps) {
        const Segment beam{eye, lamp.place};
        const auto shades = [&](const Segment& obstacle) { return Meet(beam, obstacle); };
        if (std::ranges::any_of(map.obstacles, shades)) continue;
        const Point way = Minus(lamp.place, eye);
        const double distance = Length(way);
        // What comes from the side counts less, what comes from behind not at all.
        const double facing = distance == 0 ? 1 : std::max(0.0, Dot(way, ahead) / distance);
        const double far = distance / lamp.halfAt;
        light += lamp.brightness * facing / (1 + far * far);
    }
    return light;
}

}  // namespace

double FreeWay(const WorldMap& map, const Sensor& sensor, const Pose& robot) {
    const Point eye = PlaceOf(sensor, robot);
    const double middle = robot.heading + sensor.heading;
    double nearest = sensor.range;
    const int rays = sensor.cone == 0 ? 1 : kRays;
    for (int ray = 0; ray < rays; ++ray) {
        const double share = rays == 1 ? 0 : static_cast<double>(ray) / (rays - 1) - 0.5;
        const Point direction = Direction(middle + share * sensor.cone);
        nearest = std::min(nearest, RayTo(map, eye, direction, sensor.range));
    }
    return nearest;
}

double Reading(const WorldMap& map, const Sensor& sensor, const Pose& robot) {
    switch (sensor.kind) {
        case SensorKind::Floor: return BrightnessAt(map, PlaceOf(sensor, robot));
        case SensorKind::Distance:
            return 255 * (1 - FreeWay(map, sensor, robot) / sensor.range);
        case SensorKind::Light: return Light(map, sensor, robot);
        case SensorKind::Bumper:
        case SensorKind::Wheel: break;
    }
    return 0;
}

bool IsPressed(const WorldMap& map, const Sensor& bumper, const Pose& robot) {
    const Point middle = Direction(robot.heading + bumper.heading);
    const double widest = Cosine(bumper.cone / 2);
    const double reach = map.world.robot.radius + kTouch;
    return std::ranges::any_of(Touched(map, robot.place, reach), [&](const Point& way) {
        return Dot(way, middle) >= widest * Length(way);
    });
}

bool Touches(const WorldMap& map, const Pose& robot) {
    return !Touched(map, robot.place, map.world.robot.radius + kTouch).empty();
}

}  // namespace zentro::world
