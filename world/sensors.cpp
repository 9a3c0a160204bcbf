#include "world/sensors.h"

#include <algorithm>

namespace zentro::world {

namespace {

constexpr double kTouch = 0.1;

Point EyeOf(const SensorPlan& plan, const Stance& robot) {
    return Plus(robot.place, Turned(plan.sensor.place, robot.ahead));
}

bool IsShaded(const WorldMap& map, const Segment& beam) {
    return std::ranges::any_of(map.obstacles,
                               [&](const Segment& obstacle) { return Meet(beam, obstacle); });
}

double Light(const WorldMap& map, const SensorPlan& plan, const Stance& robot) {
    const Point eye = EyeOf(plan, robot);
    const Point facing = Turned(plan.facing, robot.ahead);
    double light = 0;
    for (const Lamp& lamp : map.world.lamps) {
        if (IsShaded(map, {eye, lamp.place})) continue;
        const Point way = Minus(lamp.place, eye);
        const double distance = Length(way);
        // What comes from the side counts less, what comes from behind not at all.
        const double share = distance == 0 ? 1 : std::max(0.0, Dot(way, facing) / distance);
        const double far = distance / lamp.halfAt;
        light += lamp.brightness * share / (1 + far * far);
    }
    return light;
}

}  // namespace

Stance StanceOf(const Pose& robot) {
    return {robot.place, Direction(robot.heading)};
}

double FreeWay(const WorldMap& map, const SensorPlan& plan, const Stance& robot) {
    const Point eye = EyeOf(plan, robot);
    double nearest = plan.sensor.range;
    for (const Point& ray : plan.rays) {
        const Point direction = Turned(ray, robot.ahead);
        for (const Segment& barrier : map.barriers) {
            nearest = RayLength(eye, direction, barrier, nearest);
        }
    }
    return nearest;
}

std::vector<Lamp> LampsSeen(const WorldMap& map, const SensorPlan& plan, const Stance& robot) {
    const Point eye = EyeOf(plan, robot);
    const Point facing = Turned(plan.facing, robot.ahead);
    std::vector<Lamp> seen;
    for (const Lamp& lamp : map.world.lamps) {
        const bool isAhead = Dot(Minus(lamp.place, eye), facing) > 0;
        if (isAhead && !IsShaded(map, {eye, lamp.place})) seen.push_back(lamp);
    }
    return seen;
}

double Reading(const WorldMap& map, const SensorPlan& plan, const Stance& robot) {
    switch (plan.sensor.kind) {
        case SensorKind::Floor: return BrightnessAt(map, EyeOf(plan, robot));
        case SensorKind::Distance: return 255 * (1 - FreeWay(map, plan, robot) / plan.sensor.range);
        case SensorKind::Light: return Light(map, plan, robot);
        case SensorKind::Bumper:
        case SensorKind::Wheel: break;
    }
    return 0;
}

bool IsPressed(const WorldMap& map, const SensorPlan& bumper, const Stance& robot) {
    const Point facing = Turned(bumper.facing, robot.ahead);
    const double reach = map.world.robot.radius + kTouch;
    return std::ranges::any_of(Touched(map, robot.place, reach), [&](const Point& way) {
        return Dot(way, facing) >= bumper.widest * Length(way);
    });
}

bool Touches(const WorldMap& map, const Point& middle) {
    return !Touched(map, middle, map.world.robot.radius + kTouch).empty();
}

}  // namespace zentro::world
