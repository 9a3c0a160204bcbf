#pragma once

#include <string>

#include "world/picture.h"

namespace zentro {

/// The content of a PNG file. Empty: there is no memory for it.
std::string PngOf(const world::PixelImage& image);

}  // namespace zentro
