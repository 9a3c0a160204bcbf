#include <array>
#include <cstdio>

#include "world/canvas.h"
#include "world/floor_picture.h"

namespace zentro::world {

namespace {

/// With a tenth of a millimetre, which is more than anybody sees.
std::string Number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.2f", value);
    return text.data();
}

std::string Attribute(const char* name, double value) {
    return std::string(" ") + name + "=\"" + Number(value) + "\"";
}

std::string Attribute(const char* name, const Colour& colour) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", colour.red, colour.green, colour.blue);
    return std::string(" ") + name + "=\"" + text.data() + "\"";
}

std::string Look(const Paint& paint) {
    std::string look = Attribute("fill", paint.fill);
    if (paint.fill.cover < 1) look += Attribute("fill-opacity", paint.fill.cover);
    if (paint.edgeWidth == 0) return look;
    return look + Attribute("stroke", paint.edge) + Attribute("stroke-width", paint.edgeWidth);
}

class SvgCanvas : public Canvas {
  public:
    explicit SvgCanvas(const Floor& floor) : height_(floor.height) {
        const std::string width = Number(floor.width);
        const std::string height = Number(floor.height);
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(4 * floor.width) +
               "\" height=\"" + Number(4 * floor.height) + "\" viewBox=\"0 0 " + width + " " +
               height + "\">\n";
    }

    void Rectangle(const Point& corner, const Point& size, const Paint& paint) override {
        svg_ += "<rect" + Attribute("x", corner.x) + Attribute("y", Down(corner.y + size.y)) +
                Attribute("width", size.x) + Attribute("height", size.y) + Look(paint) + "/>\n";
    }

    void Circle(const Point& centre, double radius, const Paint& paint) override {
        svg_ += "<circle" + Attribute("cx", centre.x) + Attribute("cy", Down(centre.y)) +
                Attribute("r", radius) + Look(paint) + "/>\n";
    }

    void Shade(const FloorPicture& picture, const Floor& floor) override {
        const Point pixel{floor.width / static_cast<double>(picture.columns),
                          floor.height / static_cast<double>(picture.Rows())};
        svg_ += "<g shape-rendering=\"crispEdges\">\n";
        for (std::size_t row = 0; row < picture.Rows(); ++row)
            ShadeRow(&picture.shades[row * picture.columns], picture.columns, pixel,
                     floor.height - static_cast<double>(row + 1) * pixel.y);
        svg_ += "</g>\n";
    }

    void Path(const std::vector<Point>& points, double width, const Colour& colour) override {
        svg_ += "<polyline fill=\"none\"" + Attribute("stroke", colour) +
                Attribute("stroke-width", width) +
                " stroke-linecap=\"round\" stroke-linejoin=\"round\" points=\"";
        for (const Point& point : points)
            svg_ += Number(point.x) + "," + Number(Down(point.y)) + " ";
        svg_ += "\"/>\n";
    }

    std::string Text() const { return svg_ + "</svg>\n"; }

  private:
    /// A rectangle for all pixels of one shade that lie side by side.
    void ShadeRow(const std::uint8_t* shades, std::size_t columns, const Point& pixel, double y) {
        for (std::size_t begin = 0, end = 0; begin < columns; begin = end) {
            while (end < columns && shades[end] == shades[begin])
                ++end;
            if (shades[begin] == kBrightestShade) continue;
            const double cover = 1 - static_cast<double>(shades[begin]) / kBrightestShade;
            Rectangle({static_cast<double>(begin) * pixel.x, y},
                      {static_cast<double>(end - begin) * pixel.x, pixel.y},
                      {{.cover = cover}, {}, 0});
        }
    }

    double Down(double y) const { return height_ - y; }

    double height_;
    std::string svg_;
};

}  // namespace

std::string PictureOf(const WorldMap& map, const std::vector<Pose>& way) {
    SvgCanvas canvas(map.world.floor);
    DrawPicture(canvas, map, way);
    return canvas.Text();
}

}  // namespace zentro::world
