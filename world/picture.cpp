#include "world/picture.h"

#include <array>
#include <cstdio>

#include "world/arithmetic.h"

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

std::string Grey(double brightness) {
    const std::string level = std::to_string(ToByte(brightness));
    return "rgb(" + level + "," + level + "," + level + ")";
}

class Drawing {
  public:
    explicit Drawing(const WorldMap& map) : map_(map), floor_(map.world.floor) {}

    std::string Draw(const std::vector<Pose>& way) {
        Begin();
        for (const Area& area : map_.world.areas)
            AddArea(area);
        for (const Stroke& stroke : map_.strokes)
            AddStroke(stroke);
        for (const Box& box : map_.world.boxes)
            AddBox(box);
        for (const Segment& wall : map_.world.walls)
            AddPath({wall.from, wall.to}, "#7a3b12", 2, "round");
        for (const Lamp& lamp : map_.world.lamps)
            AddCircle(lamp.place, 4, "fill=\"#ffd54a\" stroke=\"#a07800\"");
        AddWay(way);
        return svg_ + "</svg>\n";
    }

  private:
    double Down(double y) const { return floor_.height - y; }

    void Begin() {
        const std::string width = Number(floor_.width);
        const std::string height = Number(floor_.height);
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(4 * floor_.width) +
               "\" height=\"" + Number(4 * floor_.height) + "\" viewBox=\"0 0 " + width + " " +
               height + "\">\n";
        AddRectangle({0, 0}, {floor_.width, floor_.height}, Grey(floor_.brightness), "#7a3b12");
    }

    void AddRectangle(const Point& corner, const Point& size, const std::string& fill,
                      const std::string& edge) {
        svg_ += "<rect" + Attribute("x", corner.x) + Attribute("y", Down(corner.y + size.y)) +
                Attribute("width", size.x) + Attribute("height", size.y) + " fill=\"" + fill +
                "\" stroke=\"" + edge + "\"/>\n";
    }

    void AddCircle(const Point& centre, double radius, const std::string& look) {
        svg_ += "<circle" + Attribute("cx", centre.x) + Attribute("cy", Down(centre.y)) +
                Attribute("r", radius) + " " + look + "/>\n";
    }

    void AddPath(const std::vector<Point>& points, const std::string& colour, double width,
                 const std::string& ends) {
        svg_ += "<polyline fill=\"none\" stroke=\"" + colour + "\"" +
                Attribute("stroke-width", width) + " stroke-linecap=\"" + ends +
                "\" stroke-linejoin=\"round\" points=\"";
        for (const Point& point : points) {
            svg_ += Number(point.x) + "," + Number(Down(point.y)) + " ";
        }
        svg_ += "\"/>\n";
    }

    void AddArea(const Area& area) {
        const std::string fill = Grey(floor_.brightness - area.darkness);
        const std::string edge = area.name.empty() ? fill : "#2e7d32";
        if (area.radius > 0)
            AddCircle(area.corner, area.radius, "fill=\"" + fill + "\" stroke=\"" + edge + "\"");
        else
            AddRectangle(area.corner, area.size, fill, edge);
    }

    void AddStroke(const Stroke& stroke) {
        std::vector<Point> points;
        if (const Segment* segment = std::get_if<Segment>(&stroke.course)) {
            points = {segment->from, segment->to};
        } else {
            constexpr int kPieces = 64;
            const Arc& arc = std::get<Sweep>(stroke.course).arc;
            for (int piece = 0; piece <= kPieces; ++piece) {
                points.push_back(PointOf(arc, arc.begin + arc.turn * piece / kPieces));
            }
        }
        AddPath(points, Grey(floor_.brightness - stroke.darkness), 2 * stroke.halfWidth, "round");
    }

    void AddBox(const Box& box) { AddRectangle(box.corner, box.size, "#b98a5a", "#7a3b12"); }

    void AddWay(const std::vector<Pose>& way) {
        std::vector<Point> points;
        for (const Pose& pose : way)
            points.push_back(pose.place);
        AddPath(points, "#1565c0", 1, "round");
        if (way.empty()) return;
        const Pose& end = way.back();
        const double radius = map_.world.robot.radius;
        AddCircle(way.front().place, 2, "fill=\"#1565c0\"");
        AddCircle(end.place, radius, "fill=\"#1565c0\" fill-opacity=\"0.3\" stroke=\"#1565c0\"");
        const Point nose = Plus(end.place, Times(Direction(end.heading), radius));
        AddPath({end.place, nose}, "#1565c0", 1, "round");
    }

    const WorldMap& map_;
    const Floor& floor_;
    std::string svg_;
};

}  // namespace

std::string PictureOf(const WorldMap& map, const std::vector<Pose>& way) {
    return Drawing(map).Draw(way);
}

}  // namespace zentro::world
