#pragma once

#include <string>

#include "world/world.h"

namespace zentro::world {

/// The text of a *.world file that LoadWorld reads as the same world; lengths and angles are
/// rounded to a millionth. Comments that a file had are not in a World.
std::string SaveWorld(const World& world);

}  // namespace zentro::world
