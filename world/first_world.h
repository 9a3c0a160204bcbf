#pragma once

#include "world/world.h"

namespace zentro::world {

/// The world that is there before anybody chooses one: oval.world, as it was when this was built.
World FirstWorld();

}  // namespace zentro::world
