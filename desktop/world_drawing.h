#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "world/world.h"

namespace zentro {

/// What can be done to a world with a pencil.
enum class WorldTool : std::uint8_t {
    Line,
    Area,
    Wall,
    Box,
    Lamp,
    Start,
    Goal,
    Move,
    Erase,
    Ruler
};

/// A kind of thing that lies or stands on a floor.
enum class ThingKind : std::uint8_t { Line, Area, Wall, Box, Lamp, Start };

struct Thing {
    ThingKind kind{};
    std::size_t index = 0;  ///< among those of its kind; there is one start

    bool operator==(const Thing&) const = default;
};

/// The thing at the place, of several the one on top; nothing: only floor. The start is none: it
/// cannot be erased.
std::optional<Thing> ThingAt(const world::World& world, const world::Point& place);

/// Where the pencil is put down that points there: on the floor, and on its grid if it snaps.
world::Point PencilPlace(const world::World& world, const world::Point& wanted, bool snaps);

/// The world after the tool was drawn from one place to the other. Where that makes nothing, or
/// there is nothing to erase, it is as it was.
///
/// A line goes on with the one that ends where it begins. The start looks from the first place to
/// the second. A goal is an area to reach, which is drawn or lies there; a line to follow; or to
/// touch nothing, on a wall or box. The same once more takes the goal away. What lies at the first
/// place is moved to the second. A ruler changes nothing.
world::World Drawn(world::World world, WorldTool tool, const world::Point& from,
                   const world::Point& to);

inline constexpr double kPencilGrid = 5;  ///< centimetres

}  // namespace zentro
