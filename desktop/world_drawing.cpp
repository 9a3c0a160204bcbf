#include "desktop/world_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "desktop/world_moving.h"
#include "world/world_map.h"

namespace zentro {

namespace {

using world::Point;
using world::World;

constexpr double kReach = 3;      // centimetres from a wall or beside a line
constexpr double kLampReach = 5;  // its picture is as large
constexpr double kSmallest = 1;   // of what is drawn
constexpr double kAreaDarkness = 120;

double Away(const Point& a, const Point& b) {
    return Length(Minus(a, b));
}

double DistanceTo(const world::Line& line, const Point& place) {
    if (line.arc) return Distance(world::MakeSweep(*line.arc), place);
    double nearest = line.points.empty() ? HUGE_VAL : Away(line.points.front(), place);
    for (std::size_t end = 1; end < line.points.size(); ++end)
        nearest = std::min(nearest, Distance({line.points[end - 1], line.points[end]}, place));
    return nearest;
}

bool Holds(const world::Box& box, const Point& place) {
    return world::Holds({.name = {}, .corner = box.corner, .size = box.size}, place);
}

/// The last of the things for which it is true: it was drawn over the others.
template <typename Things, typename Question>
std::optional<std::size_t> LastOf(const Things& things, Question isIt) {
    for (std::size_t index = things.size(); index > 0; --index) {
        if (isIt(things[index - 1])) return index - 1;
    }
    return std::nullopt;
}

struct Rectangle {
    Point corner;
    Point size;
};

std::optional<Rectangle> Between(const Point& a, const Point& b) {
    const Rectangle rectangle{{std::min(a.x, b.x), std::min(a.y, b.y)},
                              {std::abs(a.x - b.x), std::abs(a.y - b.y)}};
    if (rectangle.size.x < kSmallest || rectangle.size.y < kSmallest) return std::nullopt;
    return rectangle;
}

void DrawLine(World& world, const Point& from, const Point& to) {
    if (Away(from, to) < kSmallest) return;
    for (world::Line& line : world.lines) {
        if (line.points.empty() || line.points.back() != from) continue;
        line.points.push_back(to);
        return;
    }
    world::Line line;
    line.points = {from, to};
    world.lines.push_back(std::move(line));
}

void DrawStart(World& world, const Point& from, const Point& to) {
    world.start.place = from;
    if (Away(from, to) >= kSmallest) world.start.heading = std::atan2(to.y - from.y, to.x - from.x);
}

/// A name that no line and no area has.
std::string FreeName(const World& world, const std::string& word) {
    const auto isTaken = [&](const std::string& name) {
        return std::ranges::find(world.areas, name, &world::Area::name) != world.areas.end() ||
               std::ranges::find(world.lines, name, &world::Line::name) != world.lines.end();
    };
    std::string name = word;
    for (int number = 2; isTaken(name); ++number)
        name = word + " " + std::to_string(number);
    return name;
}

/// The goal if there is none like it, otherwise none.
void Toggle(World& world, world::GoalKind kind, const std::string& target) {
    const auto isSame = [&](const world::Goal& goal) {
        return goal.kind == kind && goal.target == target;
    };
    if (std::erase_if(world.goals, isSame) > 0) return;
    world::Goal goal;
    goal.kind = kind;
    goal.target = target;
    world.goals.push_back(std::move(goal));
}

void DrawGoalOn(World& world, const Thing& thing) {
    switch (thing.kind) {
        case ThingKind::Area: {
            std::string& name = world.areas[thing.index].name;
            if (name.empty()) name = FreeName(world, "goal");
            return Toggle(world, world::GoalKind::Reach, name);
        }
        case ThingKind::Line: {
            std::string& name = world.lines[thing.index].name;
            if (name.empty()) name = FreeName(world, "line");
            return Toggle(world, world::GoalKind::Follow, name);
        }
        case ThingKind::Wall:
        case ThingKind::Box: return Toggle(world, world::GoalKind::Clear, {});
        case ThingKind::Lamp:
        case ThingKind::Start: break;
    }
}

void DrawGoal(World& world, const Point& from, const Point& to) {
    const std::optional<Rectangle> place = Between(from, to);
    if (!place) {
        if (const std::optional<Thing> thing = ThingAt(world, from)) DrawGoalOn(world, *thing);
        return;
    }
    world::Area area;
    area.name = FreeName(world, "goal");
    area.corner = place->corner;
    area.size = place->size;
    Toggle(world, world::GoalKind::Reach, area.name);
    world.areas.push_back(std::move(area));
}

/// A goal is gone with the last thing that it was about.
void DropLostGoals(World& world) {
    std::erase_if(world.goals, [&](const world::Goal& goal) {
        switch (goal.kind) {
            case world::GoalKind::Reach:
                return std::ranges::find(world.areas, goal.target, &world::Area::name) ==
                       world.areas.end();
            case world::GoalKind::Follow:
                return std::ranges::find(world.lines, goal.target, &world::Line::name) ==
                       world.lines.end();
            case world::GoalKind::Clear: break;
        }
        return false;
    });
}

template <typename Things>
void Remove(Things& things, std::size_t index) {
    things.erase(things.begin() + static_cast<std::ptrdiff_t>(index));
}

void Erase(World& world, const Point& place) {
    const std::optional<Thing> thing = ThingAt(world, place);
    if (!thing) return;
    switch (thing->kind) {
        case ThingKind::Line: Remove(world.lines, thing->index); break;
        case ThingKind::Area: Remove(world.areas, thing->index); break;
        case ThingKind::Wall: Remove(world.walls, thing->index); break;
        case ThingKind::Box: Remove(world.boxes, thing->index); break;
        case ThingKind::Lamp: Remove(world.lamps, thing->index); break;
        case ThingKind::Start: break;
    }
    DropLostGoals(world);
}

}  // namespace

std::optional<Thing> ThingAt(const World& world, const Point& place) {
    const auto isNear = [&](double distance, double reach) { return distance <= reach; };
    if (const auto lamp = LastOf(world.lamps, [&](const world::Lamp& one) {
            return isNear(Away(one.place, place), kLampReach);
        }))
        return Thing{ThingKind::Lamp, *lamp};
    if (const auto wall = LastOf(world.walls, [&](const world::Segment& one) {
            return isNear(Distance(one, place), kReach);
        }))
        return Thing{ThingKind::Wall, *wall};
    if (const auto box =
            LastOf(world.boxes, [&](const world::Box& one) { return Holds(one, place); }))
        return Thing{ThingKind::Box, *box};
    if (const auto line = LastOf(world.lines, [&](const world::Line& one) {
            return isNear(DistanceTo(one, place), std::max(kReach, one.width / 2));
        }))
        return Thing{ThingKind::Line, *line};
    if (const auto area =
            LastOf(world.areas, [&](const world::Area& one) { return world::Holds(one, place); }))
        return Thing{ThingKind::Area, *area};
    return std::nullopt;
}

Point PencilPlace(const World& world, const Point& wanted, bool snaps) {
    const double grid = snaps ? kPencilGrid : 1;
    const auto on = [&](double value, double most) {
        return std::clamp(std::round(value / grid) * grid, 0.0, most);
    };
    return {on(wanted.x, world.floor.width), on(wanted.y, world.floor.height)};
}

World Drawn(World world, WorldTool tool, const Point& from, const Point& to) {
    const std::optional<Rectangle> place = Between(from, to);
    switch (tool) {
        case WorldTool::Line: DrawLine(world, from, to); break;
        case WorldTool::Wall:
            if (Away(from, to) >= kSmallest) world.walls.push_back({from, to});
            break;
        case WorldTool::Area:
            if (place) world.areas.push_back({{}, place->corner, place->size, 0, kAreaDarkness});
            break;
        case WorldTool::Box:
            if (place) world.boxes.push_back({place->corner, place->size});
            break;
        case WorldTool::Lamp: world.lamps.push_back({.place = to}); break;
        case WorldTool::Start: DrawStart(world, from, to); break;
        case WorldTool::Goal: DrawGoal(world, from, to); break;
        case WorldTool::Move: return Moved(std::move(world), from, to);
        case WorldTool::Erase: Erase(world, to); break;
        case WorldTool::Ruler: break;
    }
    return world;
}

}  // namespace zentro
