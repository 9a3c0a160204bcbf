#pragma once

#include <QPixmap>
#include <QWidget>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "desktop/virtual_board_host.h"
#include "ui/board/floor_pencil.h"
#include "ui/board/floor_view.h"

namespace zentro {

/// The floor seen from above, with all that is on it, the robot and the way that it has come. The
/// robot can be taken by the mouse or moved by keys while it drives.
class FloorWidget : public QWidget {
    Q_OBJECT

  public:
    /// The host outlives the widget.
    FloorWidget(VirtualBoardHost& host, QWidget* parent);

    void Refresh();

    /// Whether it is drawn what each sensor sees.
    void ShowSight(bool shows);
    /// Whether mouse and keys draw the world instead of moving the robot.
    void SetEditing(bool editing);
    bool IsEditing() const { return editing_; }
    void ChooseTool(WorldTool tool);
    void SetSnaps(bool snaps);
    void ZoomBy(double factor);
    void ShowAll();

    /// Where the robot is seen, and the handle by which it is turned.
    QPointF RobotInPicture() const;
    QPointF HandleInPicture() const;
    QPointF InPicture(const world::Point& place) const { return view_.ToPixels(place); }

    QSize sizeHint() const override { return {480, 300}; }
    QSize minimumSizeHint() const override { return {200, 110}; }

  signals:
    /// Something was drawn: the world shall be like this.
    void Drawn(const zentro::world::World& world);
    void UndoWanted();
    void RedoWanted();

  protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum class Grip : std::uint8_t { None, Robot, Handle, Floor, Pencil };

    /// What is drawn of the scene.
    struct Seen {
        std::shared_ptr<const world::WorldMap> map;
        world::Pose robot;
        std::array<bool, 2> leds{};
        std::size_t trail = 0;

        bool operator==(const Seen&) const = default;
    };

    Grip GripAt(const QPointF& at) const;
    void ShowCursor(const QPointF& at);
    void Hold(const world::Pose& pose);
    void Nudge(const world::Point& way, double turn);
    bool ZoomByKey(int key);
    void MoveByKey(QKeyEvent* event, const world::Point& way);
    bool DrawByKey(QKeyEvent* event);
    void MovePencil(const world::Point& place);
    void LiftPencil();
    void SayPlace();
    const world::WorldMap& Shown() const { return preview_ ? *preview_ : *seen_.map; }
    void ChangeView();
    const QPixmap& Background();
    void PaintHandle(QPainter& painter) const;

    VirtualBoardHost& host_;
    FloorView view_;
    Seen seen_;
    QPixmap background_;  ///< null: to be drawn again
    bool showsSight_ = false;
    bool editing_ = false;
    FloorPencil pencil_;
    std::shared_ptr<const world::WorldMap> preview_;  ///< while something is drawn
    Grip grip_ = Grip::None;
    QPointF gripAt_;                   ///< where the floor was taken
    world::Point offset_;              ///< of the robot's middle from where it was taken
    std::optional<world::Pose> held_;  ///< where a hand holds it
    world::Pose placed_;               ///< how far it came there
};

}  // namespace zentro
