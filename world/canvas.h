#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "world/picture.h"

namespace zentro::world {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    double cover = 1;  ///< how much of what is below it hides
};

/// How a shape looks. Its edge lies half inside, half outside.
struct Paint {
    Colour fill;
    Colour edge;
    double edgeWidth = 1;  ///< centimetres; 0: no edge
};

/// What pictures of a floor are drawn on, in centimetres with y upwards.
class Canvas {
  public:
    Canvas() = default;
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    virtual ~Canvas() = default;

    virtual void Rectangle(const Point& corner, const Point& size, const Paint& paint) = 0;
    virtual void Circle(const Point& centre, double radius, const Paint& paint) = 0;
    /// Makes what is drawn already as dark as the picture says.
    virtual void Shade(const FloorPicture& picture, const Floor& floor) = 0;
    /// With round ends and corners.
    virtual void Path(const std::vector<Point>& points, double width, const Colour& colour) = 0;
};

/// Draws all of it.
void DrawPicture(Canvas& canvas, const WorldMap& map, const std::vector<Pose>& way);

}  // namespace zentro::world
