#pragma once

#include <optional>
#include <vector>

#include "desktop/world_drawing.h"

namespace zentro {

struct Bounds {
    world::Point least;
    world::Point most;
};

/// The thing that is taken at the place to be moved. The robot's start is one too; it lies over
/// lines and areas.
std::optional<Thing> MovableAt(const world::World& world, const world::Point& place);

/// The room that the thing takes.
Bounds BoundsOf(const world::World& world, const Thing& thing);

/// The world after the thing at one place was moved to the other, but not beyond the floor. Where
/// nothing is taken it is as it was.
world::World Moved(world::World world, const world::Point& from, const world::Point& to);

/// A place at which each of the world's things is taken, if it is not hidden below another.
std::vector<world::Point> PlacesOfThings(const world::World& world);

}  // namespace zentro
