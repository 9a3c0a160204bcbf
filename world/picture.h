#pragma once

#include <string>
#include <vector>

#include "world/world_map.h"

namespace zentro::world {

/// The world from above as an SVG file, with the way that a robot went and the robot at its end.
std::string PictureOf(const WorldMap& map, const std::vector<Pose>& way);

}  // namespace zentro::world
