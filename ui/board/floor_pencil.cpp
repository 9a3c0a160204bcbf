#include "ui/board/floor_pencil.h"

#include <QPainter>
#include <QPalette>
#include <cmath>

namespace zentro {

namespace {

QString ThingWords(ThingKind kind) {
    switch (kind) {
        case ThingKind::Line: return FloorPencil::tr("a line");
        case ThingKind::Area: return FloorPencil::tr("an area");
        case ThingKind::Wall: return FloorPencil::tr("a wall");
        case ThingKind::Box: return FloorPencil::tr("a box");
        case ThingKind::Lamp: break;
    }
    return FloorPencil::tr("a lamp");
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
        case WorldTool::Erase: break;
    }
    return FloorPencil::tr("Take away what you press");
}

void FloorPencil::Choose(WorldTool tool) {
    tool_ = tool;
    from_.reset();
}

void FloorPencil::MoveTo(const world::World& world, const world::Point& wanted) {
    at_ = PencilPlace(world, wanted, snaps_);
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
    return Drawn(world, tool_, from, at_);
}

std::shared_ptr<const world::WorldMap> FloorPencil::Preview(const world::World& world) const {
    if (!from_) return nullptr;
    return std::make_shared<const world::WorldMap>(
        world::MakeMap(Drawn(world, tool_, *from_, at_)));
}

void FloorPencil::Paint(QPainter& painter, const FloorView& view, const QPalette& palette) const {
    constexpr double kArm = 8;
    const QPointF at = view.ToPixels(at_);
    for (const auto& [colour, width] :
         {std::pair(palette.color(QPalette::Base), 4), std::pair(QColor(0xC2, 0x18, 0x5B), 2)}) {
        painter.setPen(QPen(colour, width));
        painter.drawLine(at - QPointF(kArm, 0), at + QPointF(kArm, 0));
        painter.drawLine(at - QPointF(0, kArm), at + QPointF(0, kArm));
    }
}

QString FloorPencil::Words(const world::World& world) const {
    const std::optional<Thing> thing = ThingAt(world, at_);
    const QString what = thing ? ThingWords(thing->kind) : tr("nothing");
    const QString tool = ToolWords(tool_);
    const QString x = QString::number(std::lround(at_.x));
    const QString y = QString::number(std::lround(at_.y));
    if (!from_) return tr("%1 at %2 and %3 cm; there is %4").arg(tool, x, y, what);
    return tr("%1 from %2 and %3 cm to %4 and %5 cm; there is %6")
        .arg(tool, QString::number(std::lround(from_->x)), QString::number(std::lround(from_->y)),
             x, y, what);
}

}  // namespace zentro
