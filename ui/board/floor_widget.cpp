#include "ui/board/floor_widget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>
#include <cmath>

#include "ui/board/world_painter.h"
#include "world/arithmetic.h"

namespace zentro {

namespace {

constexpr double kMargin = 6;       // pixels
constexpr double kHandleAway = 7;   // centimetres from the robot's edge
constexpr double kHandleReach = 9;  // pixels
constexpr double kStep = 1;         // centimetres of an arrow key
constexpr double kTurn = 5 * world::kPi / 180;
constexpr double kZoomStep = 1.25;
constexpr double kPanStep = 40;  // pixels
const QColor kHandle(0x2F, 0x8F, 0xE8);

double AngleOf(const world::Point& way) {
    return std::atan2(way.y, way.x);
}

}  // namespace

FloorWidget::FloorWidget(VirtualBoardHost& host, QWidget* parent) : QWidget(parent), host_(host) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setObjectName("Floor");
    setAccessibleName(tr("Robot on the floor"));
    setToolTip(tr(
        "Motor 1 is the left wheel, motor 2 the right one. Take the robot with the mouse to move "
        "it, or its blue handle to turn it; the wheel of the mouse makes the floor larger."));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    Refresh();
}

void FloorWidget::Refresh() {
    const Scene& scene = host_.World();
    // The motors go on pulling: what a hand holds it holds in its place.
    if (held_ && scene.state.robot != placed_) Hold(*held_);
    const Seen now{scene.map, scene.state.robot, scene.board.outputs.leds, host_.Trail().Changes()};
    if (now == seen_) return;
    if (now.map != seen_.map) {
        preview_.reset();
        const world::Floor& floor = now.map->world.floor;
        view_.SetFloor({floor.width, floor.height});
        background_ = {};
    }
    seen_ = now;
    SayPlace();
    update();
}

void FloorWidget::SayPlace() {
    if (editing_) return setAccessibleDescription(pencil_.Words(Shown().world));
    const world::Pose& robot = seen_.robot;
    setAccessibleDescription(
        tr("%1: %2 cm to the right and %3 cm to the front of the corner, turned by %4 degrees")
            .arg(QString::fromStdString(seen_.map->world.name))
            .arg(std::lround(robot.place.x))
            .arg(std::lround(robot.place.y))
            .arg(std::lround(world::Degrees(robot.heading))));
}

void FloorWidget::ShowSight(bool shows) {
    showsSight_ = shows;
    update();
}

void FloorWidget::SetEditing(bool editing) {
    if (editing == editing_) return;
    editing_ = editing;
    pencil_.Cancel();
    preview_.reset();
    setAccessibleName(editing ? tr("Pencil on the floor") : tr("Robot on the floor"));
    if (editing) pencil_.MoveTo(seen_.map->world, seen_.robot.place);
    SayPlace();
    ChangeView();
}

void FloorWidget::ChooseTool(WorldTool tool) {
    pencil_.Choose(tool);
    preview_.reset();
    SayPlace();
    ChangeView();
}

void FloorWidget::SetSnaps(bool snaps) {
    pencil_.SetSnaps(snaps);
    ChangeView();
}

void FloorWidget::MovePencil(const world::Point& place) {
    pencil_.MoveTo(seen_.map->world, place);
    preview_ = pencil_.Preview(seen_.map->world);
    SayPlace();
    ChangeView();
}

void FloorWidget::LiftPencil() {
    const world::World drawn = pencil_.LiftUp(seen_.map->world);
    preview_.reset();
    ChangeView();
    if (pencil_.Tool() != WorldTool::Ruler) emit Drawn(drawn);
    SayPlace();
}

void FloorWidget::ChangeView() {
    background_ = {};
    update();
}

void FloorWidget::ZoomBy(double factor) {
    view_.ZoomBy(factor, rect().center());
    ChangeView();
}

void FloorWidget::ShowAll() {
    view_.ShowAll();
    ChangeView();
}

QPointF FloorWidget::RobotInPicture() const {
    return view_.ToPixels(seen_.robot.place);
}

QPointF FloorWidget::HandleInPicture() const {
    const double away = seen_.map->world.robot.radius + kHandleAway;
    return view_.ToPixels(
        Plus(seen_.robot.place, Times(world::Direction(seen_.robot.heading), away)));
}

void FloorWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    view_.SetRoom(QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin));
    ChangeView();
}

void FloorWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) ChangeView();
}

/// The world without the robot, which changes much less often.
const QPixmap& FloorWidget::Background() {
    if (!background_.isNull() && background_.devicePixelRatio() == devicePixelRatioF())
        return background_;
    background_ = QPixmap(size() * devicePixelRatioF());
    background_.setDevicePixelRatio(devicePixelRatioF());
    background_.fill(palette().color(QPalette::Window));
    QPainter painter(&background_);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(view_.ToPixels(), true);
    const FloorLook look;
    PaintWorld(painter, Shown(), palette(), {.pattern = editing_ ? kPencilGrid : look.pattern});
    PaintStart(painter, Shown());
    return background_;
}

void FloorWidget::PaintHandle(QPainter& painter) const {
    constexpr double kRadius = 5;
    painter.setPen(QPen(palette().color(QPalette::Base), 1.5));
    painter.setBrush(kHandle);
    painter.drawEllipse(HandleInPicture(), kRadius, kRadius);
}

void FloorWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, Background());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.setTransform(view_.ToPixels(), true);
    PaintTrail(painter, host_.Trail().Pieces());
    if (showsSight_) PaintSight(painter, *seen_.map, seen_.robot);
    PaintRobot(painter, *seen_.map, seen_.robot, seen_.leds);
    painter.restore();
    if (editing_)
        pencil_.Paint(painter, view_, palette(), Shown().world);
    else
        PaintHandle(painter);
    if (!hasFocus()) return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

FloorWidget::Grip FloorWidget::GripAt(const QPointF& at) const {
    if (editing_) return Grip::Pencil;
    if (QLineF(at, HandleInPicture()).length() <= kHandleReach) return Grip::Handle;
    const double away = Length(Minus(view_.ToFloor(at), seen_.robot.place));
    if (away <= seen_.map->world.robot.radius) return Grip::Robot;
    return Grip::Floor;
}

void FloorWidget::ShowCursor(const QPointF& at) {
    const bool isTaken = grip_ != Grip::None;
    switch (isTaken ? grip_ : GripAt(at)) {
        case Grip::Robot:
        case Grip::Handle: setCursor(isTaken ? Qt::ClosedHandCursor : Qt::OpenHandCursor); break;
        case Grip::Floor:
            if (view_.ShowsAll())
                unsetCursor();
            else
                setCursor(Qt::SizeAllCursor);
            break;
        case Grip::Pencil: setCursor(Qt::CrossCursor); break;
        case Grip::None: break;
    }
}

/// As near as the robot comes; Refresh holds it there.
void FloorWidget::Hold(const world::Pose& pose) {
    held_ = pose;
    host_.PlaceRobot(pose);
    placed_ = host_.World().state.robot;
}

void FloorWidget::mousePressEvent(QMouseEvent* event) {
    if (grip_ != Grip::None) return;
    const QPointF at = event->position();
    if (event->button() == Qt::MiddleButton) {
        grip_ = Grip::Floor;
    } else if (event->button() == Qt::LeftButton) {
        grip_ = GripAt(at);
    } else {
        return QWidget::mousePressEvent(event);
    }
    gripAt_ = at;
    offset_ = Minus(seen_.robot.place, view_.ToFloor(at));
    if (grip_ == Grip::Pencil) {
        pencil_.MoveTo(seen_.map->world, view_.ToFloor(at));
        pencil_.PutDown();
        MovePencil(view_.ToFloor(at));
    } else if (grip_ != Grip::Floor) {
        Hold(host_.World().state.robot);
    }
    ShowCursor(at);
}

void FloorWidget::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    const world::Point place = view_.ToFloor(at);
    if (grip_ == Grip::Floor) {
        view_.PanBy(at - gripAt_);
        gripAt_ = at;
        ChangeView();
    } else if (grip_ == Grip::Robot) {
        Hold({Plus(place, offset_), held_->heading});
    } else if (grip_ == Grip::Handle) {
        const world::Point way = Minus(place, placed_.place);
        if (Length(way) > 0) Hold({held_->place, AngleOf(way)});
    } else if (editing_) {
        MovePencil(place);
    }
    ShowCursor(at);
}

void FloorWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton) || event->buttons().testFlag(Qt::MiddleButton))
        return;
    if (grip_ == Grip::Pencil && pencil_.IsDown()) LiftPencil();
    grip_ = Grip::None;
    held_.reset();
    ShowCursor(event->position());
}

void FloorWidget::wheelEvent(QWheelEvent* event) {
    constexpr double kNotch = 120;
    view_.ZoomBy(std::pow(kZoomStep, event->angleDelta().y() / kNotch), event->position());
    ChangeView();
    event->accept();
}

void FloorWidget::Nudge(const world::Point& way, double turn) {
    const world::Pose& robot = host_.World().state.robot;
    host_.PlaceRobot({Plus(robot.place, way), robot.heading + turn});
}

bool FloorWidget::ZoomByKey(int key) {
    if (key == Qt::Key_Plus || key == Qt::Key_Equal) {
        ZoomBy(kZoomStep);
    } else if (key == Qt::Key_Minus) {
        ZoomBy(1 / kZoomStep);
    } else if (key == Qt::Key_0) {
        ShowAll();
    } else {
        return false;
    }
    return true;
}

/// Arrows move the robot or the pencil, with Shift the floor that is seen; with Ctrl they turn the
/// robot.
void FloorWidget::MoveByKey(QKeyEvent* event, const world::Point& way) {
    if (event->modifiers().testFlag(Qt::ShiftModifier)) {
        view_.PanBy({-way.x * kPanStep, way.y * kPanStep});
        ChangeView();
    } else if (editing_) {
        pencil_.MoveBy(seen_.map->world, way);
        preview_ = pencil_.Preview(seen_.map->world);
        SayPlace();
        ChangeView();
    } else if (event->modifiers().testFlag(Qt::ControlModifier)) {
        Nudge({}, (way.y - way.x) * kTurn);
    } else {
        Nudge(Times(way, kStep), 0);
    }
}

bool FloorWidget::DrawByKey(QKeyEvent* event) {
    const int key = event->key();
    if (event->matches(QKeySequence::Undo)) {
        emit UndoWanted();
    } else if (event->matches(QKeySequence::Redo)) {
        emit RedoWanted();
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        const bool isPoint =
            pencil_.Tool() == WorldTool::Lamp || pencil_.Tool() == WorldTool::Erase;
        if (pencil_.IsDown() || isPoint) {
            LiftPencil();
        } else {
            pencil_.PutDown();
            SayPlace();
            update();
        }
    } else if ((key == Qt::Key_PageDown || key == Qt::Key_PageUp) && !pencil_.IsDown()) {
        pencil_.MoveToThing(seen_.map->world, key == Qt::Key_PageDown ? 1 : -1);
        SayPlace();
        update();
    } else if (key == Qt::Key_Delete && !pencil_.IsDown()) {
        emit Drawn(pencil_.Erased(seen_.map->world));
        SayPlace();
    } else if (key == Qt::Key_Escape && pencil_.IsDown()) {
        pencil_.Cancel();
        preview_.reset();
        SayPlace();
        ChangeView();
    } else {
        return false;
    }
    return true;
}

void FloorWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left: return MoveByKey(event, {-1, 0});
        case Qt::Key_Right: return MoveByKey(event, {1, 0});
        case Qt::Key_Up: return MoveByKey(event, {0, 1});
        case Qt::Key_Down: return MoveByKey(event, {0, -1});
        default: break;
    }
    if (ZoomByKey(event->key()) || (editing_ && DrawByKey(event))) return;
    QWidget::keyPressEvent(event);
}

/// What is undone or deleted while the world is drawn is the drawing, not the program.
bool FloorWidget::event(QEvent* event) {
    if (editing_ && event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo) ||
            key->matches(QKeySequence::Delete)) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

}  // namespace zentro
