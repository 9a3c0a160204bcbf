#pragma once

#include <cstdint>

#include "world/world_state.h"

namespace zentro::world {

/// A world with everything in it: lines, areas, walls at angles, boxes, lamps, all kinds of sensors
/// with noise, all kinds of goals.
World FullWorld();

/// Drives in that world by random motors for so many ticks, and digests every bit of the state and
/// of the inputs after each tick.
std::uint64_t DigestOfLongDrive(int ticks);

inline constexpr int kLongDrive = 20'000;

}  // namespace zentro::world
