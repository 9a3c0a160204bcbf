#include <algorithm>
#include <cmath>

#include "world/canvas.h"
#include "world/floor_picture.h"

namespace zentro::world {

namespace {

constexpr double kPixels = 4;  // in a centimetre

struct Bounds {
    Point least;
    Point most;
};

Bounds Widened(const Point& a, const Point& b, double by) {
    return {{std::min(a.x, b.x) - by, std::min(a.y, b.y) - by},
            {std::max(a.x, b.x) + by, std::max(a.y, b.y) + by}};
}

/// Paints shapes that are given by the distance from their edge, below 0 inside; a pixel on the
/// edge is covered in part.
class PixelCanvas : public Canvas {
  public:
    explicit PixelCanvas(const Floor& floor) {
        image_.width = static_cast<int>(std::ceil(floor.width * kPixels));
        image_.height = static_cast<int>(std::ceil(floor.height * kPixels));
        image_.pixels.resize(3 * static_cast<std::size_t>(image_.width) *
                             static_cast<std::size_t>(image_.height));
    }

    void Rectangle(const Point& corner, const Point& size, const Paint& paint) override {
        const Point middle = Plus(corner, Times(size, 0.5));
        PaintShape(Widened(corner, Plus(corner, size), paint.edgeWidth), paint,
                   [&](const Point& at) {
                       return std::max(std::abs(at.x - middle.x) - size.x / 2,
                                       std::abs(at.y - middle.y) - size.y / 2);
                   });
    }

    void Circle(const Point& centre, double radius, const Paint& paint) override {
        PaintShape(Widened(centre, centre, radius + paint.edgeWidth), paint,
                   [&](const Point& at) { return Length(Minus(at, centre)) - radius; });
    }

    void Shade(const FloorPicture& picture, const Floor& floor) override {
        ForPixels({{0, 0}, {floor.width, floor.height}}, [&](int row, int column, const Point& at) {
            Cover(row, column, {}, 1 - ShareAt(picture, floor, at));
        });
    }

    void Path(const std::vector<Point>& points, double width, const Colour& colour) override {
        for (std::size_t end = 1; end < points.size(); ++end) {
            const Segment piece{points[end - 1], points[end]};
            PaintShape(Widened(piece.from, piece.to, width), {colour, colour, 0},
                       [&](const Point& at) { return Distance(piece, at) - width / 2; });
        }
    }

    PixelImage TakeImage() { return std::move(image_); }

  private:
    template <typename Outside>
    void PaintShape(const Bounds& bounds, const Paint& paint, Outside outside) {
        ForPixels(bounds, [&](int row, int column, const Point& at) {
            PaintPixel(row, column, paint, outside(at));
        });
    }

    /// Calls `use` with the row, the column and the middle of each.
    template <typename Use>
    void ForPixels(const Bounds& bounds, Use use) {
        const auto pixel = [](double value, int most) {
            return std::clamp(static_cast<int>(std::floor(value * kPixels)), 0, most);
        };
        const double height = image_.height / kPixels;
        const int top = pixel(height - bounds.most.y, image_.height);
        const int bottom = pixel(height - bounds.least.y + 1 / kPixels, image_.height);
        const int left = pixel(bounds.least.x, image_.width);
        const int right = pixel(bounds.most.x + 1 / kPixels, image_.width);
        for (int row = top; row < bottom; ++row) {
            for (int column = left; column < right; ++column) {
                const Point at{(column + 0.5) / kPixels, height - (row + 0.5) / kPixels};
                use(row, column, at);
            }
        }
    }

    void PaintPixel(int row, int column, const Paint& paint, double outside) {
        const auto covered = [](double distance) {
            return std::clamp(0.5 - distance * kPixels, 0.0, 1.0);
        };
        Cover(row, column, paint.fill, covered(outside));
        if (paint.edgeWidth > 0)
            Cover(row, column, paint.edge, covered(std::abs(outside) - paint.edgeWidth / 2));
    }

    void Cover(int row, int column, const Colour& colour, double share) {
        if (share <= 0) return;
        std::uint8_t* pixel = &image_.pixels[3 * (static_cast<std::size_t>(row) *
                                                      static_cast<std::size_t>(image_.width) +
                                                  static_cast<std::size_t>(column))];
        const double cover = colour.cover * share;
        for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
            *pixel = static_cast<std::uint8_t>(std::lround(*pixel + cover * (part - *pixel)));
            ++pixel;
        }
    }

    PixelImage image_;
};

}  // namespace

PixelImage PixelsOf(const WorldMap& map, const std::vector<Pose>& way) {
    PixelCanvas canvas(map.world.floor);
    DrawPicture(canvas, map, way);
    return canvas.TakeImage();
}

}  // namespace zentro::world
