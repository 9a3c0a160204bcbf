#include "world/picture.h"

#include "world/arithmetic.h"
#include "world/canvas.h"

namespace zentro::world {

namespace {

constexpr Colour kWall{0x7A, 0x3B, 0x12};
constexpr Colour kBox{0xB9, 0x8A, 0x5A};
constexpr Colour kGoal{0x2E, 0x7D, 0x32};
constexpr Colour kLamp{0xFF, 0xD5, 0x4A};
constexpr Colour kLampEdge{0xA0, 0x78, 0x00};
constexpr Colour kWay{0x15, 0x65, 0xC0};

Colour Grey(double brightness) {
    const std::uint8_t level = ToByte(brightness);
    return {level, level, level};
}

class Drawing {
  public:
    Drawing(Canvas& canvas, const WorldMap& map) : canvas_(canvas), map_(map) {}

    void Draw(const std::vector<Pose>& way) {
        const World& world = map_.world;
        const Floor& floor = world.floor;
        canvas_.Rectangle({0, 0}, {floor.width, floor.height}, {Grey(floor.brightness), kWall});
        for (const Area& area : world.areas)
            DrawArea(area);
        for (const Stroke& stroke : map_.strokes)
            DrawStroke(stroke);
        if (!world.picture.shades.empty()) canvas_.Shade(world.picture, floor);
        for (const Box& box : world.boxes)
            canvas_.Rectangle(box.corner, box.size, {kBox, kWall});
        for (const Segment& wall : world.walls)
            canvas_.Path({wall.from, wall.to}, 2, kWall);
        for (const Lamp& lamp : world.lamps)
            canvas_.Circle(lamp.place, 4, {kLamp, kLampEdge});
        DrawWay(way);
    }

  private:
    Colour Covered(double darkness) const { return Grey(map_.world.floor.brightness - darkness); }

    void DrawArea(const Area& area) {
        const Colour fill = Covered(area.darkness);
        const Paint paint{fill, area.name.empty() ? fill : kGoal};
        if (area.radius > 0)
            canvas_.Circle(area.corner, area.radius, paint);
        else
            canvas_.Rectangle(area.corner, area.size, paint);
    }

    void DrawStroke(const Stroke& stroke) {
        std::vector<Point> points;
        if (const Segment* segment = std::get_if<Segment>(&stroke.course)) {
            points = {segment->from, segment->to};
        } else {
            constexpr int kPieces = 64;
            const Arc& arc = std::get<Sweep>(stroke.course).arc;
            for (int piece = 0; piece <= kPieces; ++piece)
                points.push_back(PointOf(arc, arc.begin + arc.turn * piece / kPieces));
        }
        canvas_.Path(points, 2 * stroke.halfWidth, Covered(stroke.darkness));
    }

    void DrawWay(const std::vector<Pose>& way) {
        if (way.empty()) return;
        std::vector<Point> points;
        points.reserve(way.size());
        for (const Pose& pose : way)
            points.push_back(pose.place);
        canvas_.Path(points, 1, kWay);
        const Pose& end = way.back();
        const double radius = map_.world.robot.radius;
        Colour body = kWay;
        body.cover = 0.3;
        canvas_.Circle(way.front().place, 2, {kWay, kWay, 0});
        canvas_.Circle(end.place, radius, {body, kWay});
        canvas_.Path({end.place, Plus(end.place, Times(Direction(end.heading), radius))}, 1, kWay);
    }

    Canvas& canvas_;
    const WorldMap& map_;
};

}  // namespace

void DrawPicture(Canvas& canvas, const WorldMap& map, const std::vector<Pose>& way) {
    Drawing(canvas, map).Draw(way);
}

}  // namespace zentro::world
