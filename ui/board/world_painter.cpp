#include "ui/board/world_painter.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "ui/board/board_look.h"
#include "ui/board/floor_picture.h"
#include "ui/support/colours.h"
#include "world/arithmetic.h"
#include "world/sensors.h"

namespace zentro {

namespace {

using world::Point;
using world::SensorKind;

constexpr double kUsualBrightness = 225;
constexpr double kGoalEdge = 1.2;
const QColor kInk(0x16, 0x18, 0x1A);
const QColor kWall(0x9A, 0x4B, 0x1C);
const QColor kBox(0xC4, 0x96, 0x62);
const QColor kGoal(0x2E, 0x9E, 0x4B);
const QColor kLedOn(0xFF, 0xC4, 0x2E);
const QColor kLedOff(0x6A, 0x5A, 0x30);
const QColor kEye(0x8F, 0xD8, 0xFF);
const QColor kSight(0x2F, 0x8F, 0xE8);

QPointF ToQt(const Point& point) {
    return {point.x, point.y};
}

double ToDegrees(double radians) {
    return radians * 180 / world::kPi;
}

/// Dark places are as dark on every screen; a light floor is no lamp in a dark room.
class FloorColours {
  public:
    FloorColours(const QPalette& palette, bool isPaper)
        : dark_(!isPaper && IsDark(palette)),
          paper_(isPaper ? QColor(Qt::white)
                 : dark_ ? QColor(0x50, 0x56, 0x5C)
                         : QColor(0xF4, 0xEF, 0xE4)) {}

    QColor Of(double brightness) const {
        const double share = std::min(1.0, std::max(0.0, brightness) / kUsualBrightness);
        return Mix(paper_, kInk, static_cast<int>(std::lround(share * 100)));
    }
    QColor Grid(const QColor& floor) const {
        return dark_ ? floor.lighter(115) : floor.darker(106);
    }

  private:
    bool dark_;
    QColor paper_;
};

class WorldPainting {
  public:
    WorldPainting(QPainter& painter, const world::WorldMap& map, const QPalette& palette,
                  const FloorLook& look)
        : painter_(painter),
          map_(map),
          world_(map.world),
          colours_(palette, look.isPaper),
          look_(look) {}

    void Paint() {
        PaintFloor();
        for (const world::Area& area : world_.areas)
            PaintArea(area);
        for (const world::Stroke& stroke : map_.strokes)
            PaintStroke(stroke);
        if (!world_.picture.shades.empty()) PaintPicture();
        for (const world::Area& area : world_.areas)
            if (!area.name.empty()) PaintEdge(area);
        for (const world::Lamp& lamp : world_.lamps)
            PaintLamp(lamp);
        for (const world::Box& box : world_.boxes)
            PaintBox(box);
        painter_.setPen(QPen(kWall, 2, Qt::SolidLine, Qt::RoundCap));
        for (const world::Segment& wall : world_.walls)
            painter_.drawLine(ToQt(wall.from), ToQt(wall.to));
    }

  private:
    QColor Covered(double darkness) const {
        return colours_.Of(world_.floor.brightness - darkness);
    }

    void PaintPattern() {
        painter_.setPen(QPen(colours_.Grid(Covered(0)), 0));
        const world::Floor& floor = world_.floor;
        const auto fields = [this](double size) {
            return static_cast<int>(std::ceil(size / look_.pattern));
        };
        for (int line = 1; line < fields(floor.width); ++line) {
            const double x = line * look_.pattern;
            painter_.drawLine(QPointF(x, 0), QPointF(x, floor.height));
        }
        for (int line = 1; line < fields(floor.height); ++line) {
            const double y = line * look_.pattern;
            painter_.drawLine(QPointF(0, y), QPointF(floor.width, y));
        }
    }

    void PaintFloor() {
        const QRectF floor(0, 0, world_.floor.width, world_.floor.height);
        painter_.fillRect(floor, Covered(0));
        if (!look_.isPaper) PaintPattern();
        painter_.setPen(QPen(kWall, 2));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(floor);
    }

    void DrawShape(const world::Area& area) {
        if (area.radius > 0) {
            painter_.drawEllipse(ToQt(area.corner), area.radius, area.radius);
        } else {
            painter_.drawRect(QRectF(ToQt(area.corner), QSizeF(area.size.x, area.size.y)));
        }
    }

    void PaintArea(const world::Area& area) {
        if (area.darkness == 0) return;
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(Covered(area.darkness));
        DrawShape(area);
    }

    /// A place that a goal may be about.
    void PaintEdge(const world::Area& area) {
        painter_.setPen(QPen(kGoal, kGoalEdge, Qt::DashLine));
        painter_.setBrush(Qt::NoBrush);
        DrawShape(area);
    }

    void PaintStroke(const world::Stroke& stroke) {
        QPainterPath path;
        if (const auto* segment = std::get_if<world::Segment>(&stroke.course)) {
            path.moveTo(ToQt(segment->from));
            path.lineTo(ToQt(segment->to));
        } else {
            const world::Arc& arc = std::get<world::Sweep>(stroke.course).arc;
            // Qt counts angles in a picture whose y points down.
            const QRectF circle(arc.centre.x - arc.radius, arc.centre.y - arc.radius,
                                2 * arc.radius, 2 * arc.radius);
            path.arcMoveTo(circle, -ToDegrees(arc.begin));
            path.arcTo(circle, -ToDegrees(arc.begin), -ToDegrees(arc.turn));
        }
        painter_.setBrush(Qt::NoBrush);
        painter_.setPen(QPen(Covered(stroke.darkness), 2 * stroke.halfWidth, Qt::SolidLine,
                             Qt::RoundCap, Qt::RoundJoin));
        painter_.drawPath(path);
    }

    void PaintPicture() {
        const world::Floor& floor = world_.floor;
        painter_.save();
        painter_.setRenderHint(QPainter::SmoothPixmapTransform);
        // A picture's rows go down, the floor's places up.
        painter_.translate(0, floor.height);
        painter_.scale(1, -1);
        painter_.drawImage(QRectF(0, 0, floor.width, floor.height), ShadowOf(world_.picture, kInk));
        painter_.restore();
    }

    void PaintBox(const world::Box& box) {
        const QRectF sides(ToQt(box.corner), QSizeF(box.size.x, box.size.y));
        painter_.setPen(QPen(kWall, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter_.setBrush(kBox);
        painter_.drawRect(sides);
        painter_.drawLine(sides.topLeft(), sides.bottomRight());
        painter_.drawLine(sides.topRight(), sides.bottomLeft());
    }

    void PaintLamp(const world::Lamp& lamp) {
        QRadialGradient glow(ToQt(lamp.place), lamp.halfAt);
        glow.setColorAt(0, QColor(0xFF, 0xD5, 0x4A, 150));
        glow.setColorAt(1, QColor(0xFF, 0xD5, 0x4A, 0));
        painter_.save();
        painter_.setClipRect(QRectF(0, 0, world_.floor.width, world_.floor.height));
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(glow);
        painter_.drawEllipse(ToQt(lamp.place), lamp.halfAt, lamp.halfAt);
        painter_.restore();
        painter_.setPen(QPen(QColor(0xA0, 0x78, 0x00), 0.8));
        painter_.setBrush(QColor(0xFF, 0xD5, 0x4A));
        painter_.drawEllipse(ToQt(lamp.place), 4, 4);
    }

    QPainter& painter_;
    const world::WorldMap& map_;
    const world::World& world_;
    FloorColours colours_;
    FloorLook look_;
};

void MoveTo(QPainter& painter, const world::Pose& pose) {
    painter.translate(ToQt(pose.place));
    painter.rotate(ToDegrees(pose.heading));
}

/// The part of the robot's edge that a bumper covers.
void PaintBumper(QPainter& painter, const world::Sensor& bumper, double radius) {
    const QRectF circle(-radius, -radius, 2 * radius, 2 * radius);
    constexpr double kUnits = -16;  // sixteenths of a degree, counted the other way
    painter.drawArc(circle, static_cast<int>(ToDegrees(bumper.heading - bumper.cone / 2) * kUnits),
                    static_cast<int>(ToDegrees(bumper.cone) * kUnits));
}

void PaintSensor(QPainter& painter, const world::Sensor& sensor, double radius) {
    constexpr double kSize = 1.4;
    painter.setPen(QPen(kHousing, 0.6));
    switch (sensor.kind) {
        case SensorKind::Floor:
            painter.setBrush(kEye);
            painter.drawEllipse(ToQt(sensor.place), kSize, kSize);
            break;
        case SensorKind::Light:
        case SensorKind::Distance:
            painter.save();
            painter.translate(ToQt(sensor.place));
            painter.rotate(ToDegrees(sensor.heading));
            painter.setBrush(sensor.kind == SensorKind::Light ? kLedOn : kSight);
            painter.drawRect(QRectF(-kSize, -kSize, 2 * kSize, 2 * kSize));
            painter.restore();
            break;
        case SensorKind::Bumper:
            painter.setPen(QPen(kHousing, 1.2, Qt::SolidLine, Qt::FlatCap));
            PaintBumper(painter, sensor, radius - 0.6);
            break;
        case SensorKind::Wheel: break;
    }
}

void PaintBody(QPainter& painter, const std::array<bool, 2>& leds) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(kHousing);
    for (const double side : {-1.0, 1.0})
        painter.drawRoundedRect(QRectF(-3.5, side * 8.5 - 1.7, 7, 3.4), 1, 1);
    painter.setPen(QPen(kPrint, 0.8));
    painter.setBrush(kBoardGreen.lighter(130));
    painter.drawEllipse(QPointF(0, 0), 8.6, 8.6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kGold);
    painter.drawPolygon(QPolygonF({QPointF(5.5, 0), QPointF(2, 2.2), QPointF(2, -2.2)}));
    for (std::size_t led = 0; led < leds.size(); ++led) {
        painter.setBrush(leds[led] ? kLedOn : kLedOff);
        painter.drawEllipse(QPointF(-3, led == 0 ? 3.5 : -3.5), 1.7, 1.7);
    }
}

}  // namespace

void PaintWorld(QPainter& painter, const world::WorldMap& map, const QPalette& palette,
                const FloorLook& look) {
    painter.save();
    WorldPainting(painter, map, palette, look).Paint();
    painter.restore();
}

QColor ColourOf(Pen pen) {
    switch (pen) {
        case Pen::None: return Qt::transparent;
        case Pen::Orange: break;
        case Pen::Blue: return {0x2F, 0x7D, 0xE1};
        case Pen::Green: return {0x2E, 0x9E, 0x4B};
        case Pen::Red: return {0xD9, 0x3A, 0x3A};
    }
    return {0xE0, 0x6C, 0x1F};
}

void PaintTrail(QPainter& painter, const std::vector<TrailPiece>& pieces) {
    for (const TrailPiece& piece : pieces) {
        painter.setPen(QPen(ColourOf(piece.pen), 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPolygonF way;
        for (const Point& point : piece.points)
            way.append(ToQt(point));
        painter.drawPolyline(way);
    }
}

void PaintRobot(QPainter& painter, const world::WorldMap& map, const world::Pose& robot,
                const std::array<bool, 2>& leds) {
    constexpr double kDrawnRadius = 11;
    const world::RobotMeasures& measures = map.world.robot;
    painter.save();
    MoveTo(painter, robot);
    painter.save();
    painter.scale(measures.radius / kDrawnRadius, measures.radius / kDrawnRadius);
    PaintBody(painter, leds);
    painter.restore();
    for (const world::SensorPlan& plan : map.sensors)
        PaintSensor(painter, plan.sensor, measures.radius);
    painter.restore();
}

void PaintSight(QPainter& painter, const world::WorldMap& map, const world::Pose& robot) {
    const world::Stance stance = world::StanceOf(robot);
    painter.save();
    for (const world::SensorPlan& plan : map.sensors) {
        const Point eye = Plus(robot.place, Turned(plan.sensor.place, stance.ahead));
        painter.setPen(QPen(kSight, 0));
        if (plan.sensor.kind == SensorKind::Distance) {
            const double way = FreeWay(map, plan, stance);
            for (const Point& ray : plan.rays)
                painter.drawLine(ToQt(eye), ToQt(Plus(eye, Times(Turned(ray, stance.ahead), way))));
        } else if (plan.sensor.kind == SensorKind::Light) {
            painter.setPen(QPen(kLedOn, 0));
            for (const world::Lamp& lamp : LampsSeen(map, plan, stance))
                painter.drawLine(ToQt(eye), ToQt(lamp.place));
        } else if (plan.sensor.kind == SensorKind::Bumper && IsPressed(map, plan, stance)) {
            painter.setPen(QPen(kSight, 1.5));
            painter.save();
            MoveTo(painter, robot);
            PaintBumper(painter, plan.sensor, map.world.robot.radius + 1);
            painter.restore();
        }
    }
    painter.restore();
}

void PaintStart(QPainter& painter, const world::WorldMap& map) {
    const double radius = map.world.robot.radius;
    painter.save();
    MoveTo(painter, map.world.start);
    painter.setPen(QPen(kGoal, 0.8, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(0, 0), radius, radius);
    painter.drawPolyline(QPolygonF(
        {QPointF(radius / 3, radius / 3), QPointF(radius, 0), QPointF(radius / 3, -radius / 3)}));
    painter.restore();
}

}  // namespace zentro
