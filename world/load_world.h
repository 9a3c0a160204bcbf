#pragma once

#include <string>
#include <string_view>

#include "world/world.h"

namespace zentro::world {

inline constexpr std::size_t kMostBytes = 1'000'000;  ///< of a world's file
inline constexpr std::size_t kMostThings = 500;       ///< of one kind in a world

struct LoadedWorld {
    World world;        ///< only if there is no error
    std::string error;  ///< what is wrong and where: "walls[3].to: ...", or empty
};

/// Reads a *.world file, JSON with comments. docs/board.md describes it. Whatever it holds, every
/// number in the world is one that the world can work with, and the robot has room at its start.
LoadedWorld LoadWorld(std::string_view text);

}  // namespace zentro::world
