#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "world/world_map.h"

namespace zentro::world {

// The world from above, with the way that a robot went and the robot at its end.

/// As an SVG file.
std::string PictureOf(const WorldMap& map, const std::vector<Pose>& way);

/// Row by row from the upper left corner.
struct PixelImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;  ///< red, green and blue of each
};

/// As pixels, four to a centimetre.
PixelImage PixelsOf(const WorldMap& map, const std::vector<Pose>& way);

}  // namespace zentro::world
