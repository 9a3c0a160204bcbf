#pragma once

#include <string>

#include "world/world_state.h"

namespace zentro::world {

/// Looks at the goals that are still open, once a tick.
void DecideGoals(const WorldMap& map, WorldState& state, bool moved);

/// No goal is open. A world without goals has none to decide.
bool AllDecided(const WorldState& state);
bool AllMet(const WorldState& state);

/// The run is over: what had only to be kept is met, what is open is missed.
void EndGoals(const WorldMap& map, WorldState& state);

/// What the goal asks for: "follow track", "reach home and stand still", "touch nothing".
std::string GoalText(const Goal& goal);

}  // namespace zentro::world
