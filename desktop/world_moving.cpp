#include "desktop/world_moving.h"

#include <algorithm>

namespace zentro {

namespace {

using world::Point;
using world::World;

Bounds Around(const Point& middle, double radius) {
    return {{middle.x - radius, middle.y - radius}, {middle.x + radius, middle.y + radius}};
}

Bounds Around(const std::vector<Point>& points) {
    const auto [left, right] = std::ranges::minmax(points, {}, &Point::x);
    const auto [low, high] = std::ranges::minmax(points, {}, &Point::y);
    return {{left.x, low.y}, {right.x, high.y}};
}

Bounds RoomOf(const world::Line& line) {
    if (line.arc) return Around(line.arc->centre, line.arc->radius);
    return line.points.empty() ? Bounds{} : Around(line.points);
}

Bounds RoomOf(const world::Area& area) {
    return area.radius > 0 ? Around(area.corner, area.radius)
                           : Bounds{area.corner, Plus(area.corner, area.size)};
}

/// The way, or as much of it as keeps within the floor what lies within it.
double Kept(double way, double least, double most, double floor) {
    return std::clamp(way, std::min(0.0, -least), std::max(0.0, floor - most));
}

void Shift(world::Line& line, const Point& way) {
    for (Point& point : line.points)
        point = Plus(point, way);
    if (line.arc) line.arc->centre = Plus(line.arc->centre, way);
}

void ShiftThing(World& world, const Thing& thing, const Point& way) {
    const auto shift = [&way](Point& point) { point = Plus(point, way); };
    switch (thing.kind) {
        case ThingKind::Line: return Shift(world.lines[thing.index], way);
        case ThingKind::Area: return shift(world.areas[thing.index].corner);
        case ThingKind::Box: return shift(world.boxes[thing.index].corner);
        case ThingKind::Lamp: return shift(world.lamps[thing.index].place);
        case ThingKind::Start: return shift(world.start.place);
        case ThingKind::Wall: break;
    }
    shift(world.walls[thing.index].from);
    shift(world.walls[thing.index].to);
}

Point MiddleOf(const Bounds& bounds) {
    return Times(Plus(bounds.least, bounds.most), 0.5);
}

/// A line is taken on itself, not in the middle of the room that it takes.
Point PlaceOn(const world::Line& line) {
    if (line.arc) return world::PointOf(*line.arc, line.arc->begin);
    return line.points.empty() ? Point{} : line.points.front();
}

}  // namespace

std::optional<Thing> MovableAt(const World& world, const Point& place) {
    const std::optional<Thing> thing = ThingAt(world, place);
    const bool isFlat = !thing || thing->kind == ThingKind::Line || thing->kind == ThingKind::Area;
    const bool isOnStart = Length(Minus(world.start.place, place)) <= world.robot.radius;
    return isFlat && isOnStart ? Thing{ThingKind::Start} : thing;
}

Bounds BoundsOf(const World& world, const Thing& thing) {
    switch (thing.kind) {
        case ThingKind::Line: return RoomOf(world.lines[thing.index]);
        case ThingKind::Area: return RoomOf(world.areas[thing.index]);
        case ThingKind::Lamp: return Around(world.lamps[thing.index].place, 0);
        case ThingKind::Start: return Around(world.start.place, world.robot.radius);
        case ThingKind::Box: {
            const world::Box& box = world.boxes[thing.index];
            return {box.corner, Plus(box.corner, box.size)};
        }
        case ThingKind::Wall: break;
    }
    return Around({world.walls[thing.index].from, world.walls[thing.index].to});
}

World Moved(World world, const Point& from, const Point& to) {
    const std::optional<Thing> thing = MovableAt(world, from);
    if (!thing) return world;
    const Bounds room = BoundsOf(world, *thing);
    const Point way = Minus(to, from);
    ShiftThing(world, *thing,
               {Kept(way.x, room.least.x, room.most.x, world.floor.width),
                Kept(way.y, room.least.y, room.most.y, world.floor.height)});
    return world;
}

std::vector<Point> PlacesOfThings(const World& world) {
    std::vector<Point> places{world.start.place};
    for (const world::Line& line : world.lines)
        places.push_back(PlaceOn(line));
    for (const world::Area& area : world.areas)
        places.push_back(MiddleOf(RoomOf(area)));
    for (const world::Segment& wall : world.walls)
        places.push_back(Times(Plus(wall.from, wall.to), 0.5));
    for (const world::Box& box : world.boxes)
        places.push_back(Plus(box.corner, Times(box.size, 0.5)));
    for (const world::Lamp& lamp : world.lamps)
        places.push_back(lamp.place);
    return places;
}

}  // namespace zentro
