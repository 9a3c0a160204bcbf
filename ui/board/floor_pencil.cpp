#include "ui/board/floor_pencil.h"

#include <QPainter>
#include <QPalette>
#include <cmath>

#include "desktop/world_moving.h"
#include "world/arithmetic.h"

namespace zentro {

namespace {

QString ThingWords(ThingKind kind) {
    switch (kind) {
        case ThingKind::Line: return FloorPencil::tr("a line");
        case ThingKind::Area: return FloorPencil::tr("an area");
        case ThingKind::Wall: return FloorPencil::tr("a wall");
        case ThingKind::Box: return FloorPencil::tr("a box");
        case ThingKind::Start: return FloorPencil::tr("the start");
        case ThingKind::Lamp: break;
    }
    return FloorPencil::tr("a lamp");
}

/// How long it is and where it points.
QString RulerWords(const world::Segment& ruler) {
    const world::Point way = Minus(ruler.to, ruler.from);
    const double angle = world::Degrees(std::atan2(way.y, way.x));
    return FloorPencil::tr("%1 cm, %2°").arg(Length(way), 0, 'f', 1).arg(std::lround(angle));
}

}  // namespace

QString ToolWords(WorldTool tool) {
    switch (tool) {
        case WorldTool::Line: return FloorPencil::tr("Line");
        case WorldTool::Area: return FloorPencil::tr("Area");
        case WorldTool::Wall: return FloorPencil::tr("Wall");
        case WorldTool::Box: return FloorPencil::tr("Box");
        case WorldTool::Lamp: return FloorPencil::tr("Lamp");
        case WorldTool::Start: return FloorPencil::tr("Start");
        case WorldTool::Goal: return FloorPencil::tr("Goal");
        case WorldTool::Move: return FloorPencil::tr("Move");
        case WorldTool::Ruler: return FloorPencil::tr("Ruler");
        case WorldTool::Erase: break;
    }
    return FloorPencil::tr("Erase");
}

QString ToolHelp(WorldTool tool) {
    switch (tool) {
        case WorldTool::Line:
            return FloorPencil::tr(
                "Draw a dark line; one that begins at the end of another goes "
                "on with it");
        case WorldTool::Area: return FloorPencil::tr("Draw a grey piece of floor");
        case WorldTool::Wall: return FloorPencil::tr("Draw a wall");
        case WorldTool::Box: return FloorPencil::tr("Draw a box that stands fast");
        case WorldTool::Lamp: return FloorPencil::tr("Put up a lamp");
        case WorldTool::Start:
            return FloorPencil::tr("Put down the robot's start, and draw which way it looks there");
        case WorldTool::Goal:
            return FloorPencil::tr(
                "Draw an area that is to be reached; or press an area to be "
                "reached, a line to be followed, a wall that is not to be "
                "touched. Press once more, and it is no goal any more");
        case WorldTool::Move:
            return FloorPencil::tr("Take what you press and move it, the robot's start too");
        case WorldTool::Ruler:
            return FloorPencil::tr("Lay a ruler anywhere: how far it is, and at which angle");
        case WorldTool::Erase: break;
    }
    return FloorPencil::tr("Take away what you press");
}

void FloorPencil::Choose(WorldTool tool) {
    tool_ = tool;
    ruler_.reset();
    from_.reset();
    thing_ = -1;
}

/// What is to be moved is taken where it is pressed, and then goes by steps of the grid.
void FloorPencil::MoveTo(const world::World& world, const world::Point& wanted) {
    if (tool_ != WorldTool::Move) {
        at_ = PencilPlace(world, wanted, snaps_);
    } else if (!from_) {
        at_ = PencilPlace(world, wanted, false);
    } else {
        const double grid = snaps_ ? kPencilGrid : 1;
        const world::Point way = Minus(wanted, *from_);
        at_ = Plus(*from_, {std::round(way.x / grid) * grid, std::round(way.y / grid) * grid});
    }
}

void FloorPencil::MoveToThing(const world::World& world, int step) {
    const std::vector<world::Point> places = PlacesOfThings(world);
    const auto count = static_cast<int>(places.size());
    const int from = thing_ < 0 && step < 0 ? 0 : thing_;
    thing_ = (from + step + count) % count;
    at_ = PencilPlace(world, places[static_cast<std::size_t>(thing_)], false);
}

void FloorPencil::MoveBy(const world::World& world, const world::Point& steps) {
    MoveTo(world, Plus(at_, Times(steps, snaps_ ? kPencilGrid : 1)));
}

void FloorPencil::PutDown() {
    from_ = at_;
}

world::World FloorPencil::LiftUp(const world::World& world) {
    const world::Point from = from_.value_or(at_);
    from_.reset();
    if (tool_ == WorldTool::Ruler) ruler_ = {from, at_};
    return Drawn(world, tool_, from, at_);
}

std::shared_ptr<const world::WorldMap> FloorPencil::Preview(const world::World& world) const {
    if (!from_) return nullptr;
    return std::make_shared<const world::WorldMap>(
        world::MakeMap(Drawn(world, tool_, *from_, at_)));
}

/// Where it lies, or would if the pencil were lifted up now.
std::optional<world::Segment> FloorPencil::Ruler() const {
    if (tool_ == WorldTool::Ruler && from_) return world::Segment{*from_, at_};
    return ruler_;
}

void FloorPencil::PaintRuler(QPainter& painter, const FloorView& view,
                             const QPalette& palette) const {
    constexpr double kAway = 12;
    const std::optional<world::Segment> ruler = Ruler();
    if (!ruler) return;
    const QPointF from = view.ToPixels(ruler->from);
    const QPointF to = view.ToPixels(ruler->to);
    painter.setPen(QPen(palette.color(QPalette::Highlight), 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(from, to);
    const QString text = RulerWords(*ruler);
    QRectF room(painter.fontMetrics().boundingRect(text));
    room.adjust(-4, -2, 4, 2);
    room.moveCenter((from + to) / 2 + QPointF(0, -kAway - room.height() / 2));
    painter.fillRect(room, palette.color(QPalette::ToolTipBase));
    painter.setPen(palette.color(QPalette::ToolTipText));
    painter.drawText(room, Qt::AlignCenter, text);
}

/// What would be taken, or is.
void FloorPencil::PaintTaken(QPainter& painter, const FloorView& view, const QPalette& palette,
                             const world::World& world) const {
    constexpr double kAround = 5;  // pixels
    if (tool_ != WorldTool::Move) return;
    const std::optional<Thing> thing = MovableAt(world, at_);
    if (!thing) return;
    const Bounds room = BoundsOf(world, *thing);
    const QRectF frame = QRectF(view.ToPixels(room.least), view.ToPixels(room.most)).normalized();
    painter.setBrush(Qt::NoBrush);
    for (const auto& [colour, style] :
         {std::pair(palette.color(QPalette::Base), Qt::SolidLine),
          std::pair(palette.color(QPalette::Highlight), Qt::DashLine)}) {
        painter.setPen(QPen(colour, 2, style));
        painter.drawRect(frame.adjusted(-kAround, -kAround, kAround, kAround));
    }
}

void FloorPencil::Paint(QPainter& painter, const FloorView& view, const QPalette& palette,
                        const world::World& world) const {
    constexpr double kArm = 8;
    PaintTaken(painter, view, palette, world);
    PaintRuler(painter, view, palette);
    const QPointF at = view.ToPixels(at_);
    for (const auto& [colour, width] :
         {std::pair(palette.color(QPalette::Base), 4), std::pair(QColor(0xC2, 0x18, 0x5B), 2)}) {
        painter.setPen(QPen(colour, width));
        painter.drawLine(at - QPointF(kArm, 0), at + QPointF(kArm, 0));
        painter.drawLine(at - QPointF(0, kArm), at + QPointF(0, kArm));
    }
}

QString FloorPencil::Words(const world::World& world) const {
    const std::optional<Thing> thing =
        tool_ == WorldTool::Move ? MovableAt(world, at_) : ThingAt(world, at_);
    const QString what = thing ? ThingWords(thing->kind) : tr("nothing");
    if (const std::optional<world::Segment> ruler = Ruler())
        return tr("The ruler shows %1").arg(RulerWords(*ruler));
    const QString tool = ToolWords(tool_);
    const QString x = QString::number(std::lround(at_.x));
    const QString y = QString::number(std::lround(at_.y));
    if (!from_) return tr("%1 at %2 and %3 cm; there is %4").arg(tool, x, y, what);
    return tr("%1 from %2 and %3 cm to %4 and %5 cm; there is %6")
        .arg(tool, QString::number(std::lround(from_->x)), QString::number(std::lround(from_->y)),
             x, y, what);
}

}  // namespace zentro
