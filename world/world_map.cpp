#include "world/world_map.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "world/arithmetic.h"
#include "world/floor_picture.h"

namespace zentro::world {

namespace {

constexpr double kBlurredEdge = 2;  // an eye sees a small patch of the floor, not a point
constexpr int kRays = 9;            // in the cone of a distance sensor
constexpr double kPassageDistance = 5;
constexpr std::size_t kMostPassages = 64;

double LengthOf(const Stroke& stroke) {
    if (const Segment* segment = std::get_if<Segment>(&stroke.course))
        return Length(Minus(segment->to, segment->from));
    const Arc& arc = std::get<Sweep>(stroke.course).arc;
    return arc.radius * arc.turn;
}

Point PointAt(const Stroke& stroke, double share) {
    if (const Segment* segment = std::get_if<Segment>(&stroke.course))
        return Plus(segment->from, Times(Minus(segment->to, segment->from), share));
    const Arc& arc = std::get<Sweep>(stroke.course).arc;
    return PointOf(arc, arc.begin + arc.turn * share);
}

double DistanceTo(const Stroke& stroke, const Point& point) {
    if (const Segment* segment = std::get_if<Segment>(&stroke.course))
        return Distance(*segment, point);
    return Distance(std::get<Sweep>(stroke.course), point);
}

void AddStrokes(const Line& line, std::vector<Stroke>& strokes) {
    const auto add = [&](const std::variant<Segment, Sweep>& course) {
        strokes.push_back({course, line.width / 2, line.darkness});
    };
    if (line.arc) add(MakeSweep(*line.arc));
    for (std::size_t end = 1; end < line.points.size(); ++end) {
        add(Segment{line.points[end - 1], line.points[end]});
    }
}

/// Places along all lines of that name, evenly spread.
std::vector<Point> PassagesOf(const World& world, const std::string& name) {
    std::vector<Stroke> strokes;
    for (const Line& line : world.lines) {
        if (line.name == name) AddStrokes(line, strokes);
    }
    double length = 0;
    for (const Stroke& stroke : strokes)
        length += LengthOf(stroke);
    const double apart = std::max(kPassageDistance, length / kMostPassages);
    std::vector<Point> passages;
    double next = apart / 2;  // from the beginning of the stroke
    for (const Stroke& stroke : strokes) {
        const double end = LengthOf(stroke);
        for (; next < end && passages.size() < kMostPassages; next += apart) {
            passages.push_back(PointAt(stroke, next / end));
        }
        next -= end;
    }
    return passages;
}

/// How much of an eye's patch lies inside, when its middle is so far outside of an edge.
double Covered(double outside) {
    return std::clamp(0.5 - outside / kBlurredEdge, 0.0, 1.0);
}

/// Below 0 inside the area.
double DistanceOutside(const Area& area, const Point& point) {
    if (area.radius > 0) return Length(Minus(point, area.corner)) - area.radius;
    const Point middle = Plus(area.corner, Times(area.size, 0.5));
    return std::max(std::abs(point.x - middle.x) - area.size.x / 2,
                    std::abs(point.y - middle.y) - area.size.y / 2);
}

}  // namespace

std::vector<Segment> SidesOf(const Point& corner, const Point& size) {
    const Point right{corner.x + size.x, corner.y};
    const Point across = Plus(corner, size);
    const Point left{corner.x, corner.y + size.y};
    return {{corner, right}, {right, across}, {across, left}, {left, corner}};
}

SensorPlan MakePlan(const Sensor& sensor) {
    SensorPlan plan{sensor, Direction(sensor.heading), Cosine(sensor.cone / 2), {}};
    if (sensor.kind != SensorKind::Distance) return plan;
    const int rays = sensor.cone == 0 ? 1 : kRays;
    for (int ray = 0; ray < rays; ++ray) {
        const double share = rays == 1 ? 0 : static_cast<double>(ray) / (rays - 1) - 0.5;
        plan.rays.push_back(Direction(sensor.heading + share * sensor.cone));
    }
    return plan;
}

WorldMap MakeMap(World world) {
    WorldMap map;
    map.world = std::move(world);
    for (const Line& line : map.world.lines)
        AddStrokes(line, map.strokes);
    map.obstacles = map.world.walls;
    for (const Box& box : map.world.boxes) {
        const std::vector<Segment> sides = SidesOf(box.corner, box.size);
        map.obstacles.insert(map.obstacles.end(), sides.begin(), sides.end());
    }
    map.barriers = SidesOf({0, 0}, {map.world.floor.width, map.world.floor.height});
    map.barriers.insert(map.barriers.end(), map.obstacles.begin(), map.obstacles.end());
    for (const Sensor& sensor : map.world.sensors)
        map.sensors.push_back(MakePlan(sensor));
    for (const Goal& goal : map.world.goals) {
        const bool follows = goal.kind == GoalKind::Follow;
        map.passages.push_back(follows ? PassagesOf(map.world, goal.target) : std::vector<Point>{});
    }
    return map;
}

double BrightnessAt(const WorldMap& map, const Point& point) {
    double darkness = 0;
    for (const Stroke& stroke : map.strokes) {
        const double covered = Covered(DistanceTo(stroke, point) - stroke.halfWidth);
        darkness = std::max(darkness, covered * stroke.darkness);
    }
    for (const Area& area : map.world.areas) {
        if (area.darkness == 0) continue;
        darkness = std::max(darkness, Covered(DistanceOutside(area, point)) * area.darkness);
    }
    const World& world = map.world;
    return (world.floor.brightness - darkness) * ShareAt(world.picture, world.floor, point);
}

bool Holds(const Area& area, const Point& point) {
    return DistanceOutside(area, point) <= 0;
}

std::vector<Point> Touched(const WorldMap& map, const Point& middle, double reach) {
    std::vector<Point> ways;
    for (const Segment& barrier : map.barriers) {
        const Point way = Minus(Nearest(barrier, middle), middle);
        if (Dot(way, way) < reach * reach) ways.push_back(way);
    }
    return ways;
}

bool IsFree(const WorldMap& map, const Point& middle) {
    const Floor& floor = map.world.floor;
    const double radius = map.world.robot.radius;
    if (middle.x < radius || middle.x > floor.width - radius || middle.y < radius ||
        middle.y > floor.height - radius)
        return false;
    if (std::ranges::any_of(map.world.boxes, [&](const Box& box) {
            return Holds({.name = {}, .corner = box.corner, .size = box.size}, middle);
        }))
        return false;
    return std::ranges::none_of(map.obstacles, [&](const Segment& obstacle) {
        const Point way = Minus(middle, Nearest(obstacle, middle));
        return Dot(way, way) < radius * radius;
    });
}

}  // namespace zentro::world
