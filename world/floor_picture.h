#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "world/world.h"

namespace zentro::world {

inline constexpr std::size_t kMostPictureSide = 500;  ///< pixels across or down
inline constexpr std::uint8_t kBrightestShade = 15;

/// How much of the floor's brightness the picture leaves at a place, 0 to 1: all of it where there
/// is no picture. Between the middles of pixels it goes over from one to the other.
double ShareAt(const FloorPicture& picture, const Floor& floor, const Point& place);

/// Adds a row of hexadecimal digits, one for each pixel. Returns what is wrong with it, and leaves
/// the picture as it is then; empty: nothing.
std::string AddRow(FloorPicture& picture, std::string_view digits);

/// The rows as AddRow reads them.
std::vector<std::string> RowsOf(const FloorPicture& picture);

}  // namespace zentro::world
