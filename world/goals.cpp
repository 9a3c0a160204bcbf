#include "world/goals.h"

#include <algorithm>

#include "world/robot.h"
#include "world/sensors.h"

namespace zentro::world {

namespace {

void Decide(GoalState& goal, GoalStatus status, std::uint64_t tick) {
    goal.status = status;
    goal.tick = tick;
}

bool IsInside(const World& world, const std::string& name, const Point& point) {
    return std::ranges::any_of(
        world.areas, [&](const Area& area) { return area.name == name && Holds(area, point); });
}

bool HasReached(const World& world, const Goal& goal, const WorldState& state, bool moved,
                GoalState& progress) {
    if (!IsInside(world, goal.target, state.robot.place)) {
        progress.standing = 0;
        return false;
    }
    progress.standing = moved ? 0 : progress.standing + 1;
    return static_cast<double>(progress.standing) * kSecondsPerTick >= goal.stand;
}

bool HasFollowed(const std::vector<Point>& passages, const Goal& goal, const WorldState& state,
                 GoalState& progress) {
    bool all = true;
    for (std::size_t index = 0; index < passages.size(); ++index) {
        const std::uint64_t bit = std::uint64_t{1} << index;
        if ((progress.passed & bit) != 0) continue;
        const Point way = Minus(passages[index], state.robot.place);
        if (Dot(way, way) <= goal.tolerance * goal.tolerance)
            progress.passed |= bit;
        else
            all = false;
    }
    return all;
}

void DecideOne(const WorldMap& map, WorldState& state, std::size_t index, bool moved) {
    const Goal& goal = map.world.goals[index];
    GoalState& progress = state.goals[index];
    const bool over = static_cast<double>(state.tick) * kSecondsPerTick >= goal.seconds;
    if (goal.kind == GoalKind::Clear) {
        if (Touches(map, state.robot.place))
            Decide(progress, GoalStatus::Missed, state.tick);
        else if (over)
            Decide(progress, GoalStatus::Met, state.tick);
        return;
    }
    const bool met = goal.kind == GoalKind::Reach
                         ? HasReached(map.world, goal, state, moved, progress)
                         : HasFollowed(map.passages[index], goal, state, progress);
    if (met)
        Decide(progress, GoalStatus::Met, state.tick);
    else if (over)
        Decide(progress, GoalStatus::Missed, state.tick);
}

/// Whether only goals are open that have just to be kept.
bool NothingToDo(const WorldMap& map, const WorldState& state) {
    bool some = false;
    for (std::size_t index = 0; index < state.goals.size(); ++index) {
        if (map.world.goals[index].kind == GoalKind::Clear) continue;
        if (state.goals[index].status == GoalStatus::Open) return false;
        some = true;
    }
    return some;
}

}  // namespace

void DecideGoals(const WorldMap& map, WorldState& state, bool moved) {
    for (std::size_t index = 0; index < state.goals.size(); ++index) {
        if (state.goals[index].status == GoalStatus::Open) DecideOne(map, state, index, moved);
    }
    if (NothingToDo(map, state)) EndGoals(map, state);
}

bool AllDecided(const WorldState& state) {
    return std::ranges::none_of(
        state.goals, [](const GoalState& goal) { return goal.status == GoalStatus::Open; });
}

bool AllMet(const WorldState& state) {
    return std::ranges::all_of(
        state.goals, [](const GoalState& goal) { return goal.status == GoalStatus::Met; });
}

void EndGoals(const WorldMap& map, WorldState& state) {
    for (std::size_t index = 0; index < state.goals.size(); ++index) {
        if (state.goals[index].status != GoalStatus::Open) continue;
        const bool kept = map.world.goals[index].kind == GoalKind::Clear;
        Decide(state.goals[index], kept ? GoalStatus::Met : GoalStatus::Missed, state.tick);
    }
}

std::string GoalText(const Goal& goal) {
    switch (goal.kind) {
        case GoalKind::Reach:
            return "reach " + goal.target + (goal.stand > 0 ? " and stand still" : "");
        case GoalKind::Follow: return "follow " + goal.target;
        case GoalKind::Clear: break;
    }
    return "touch nothing";
}

}  // namespace zentro::world
