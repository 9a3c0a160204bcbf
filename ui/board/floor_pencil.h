#pragma once

#include <QCoreApplication>
#include <QString>
#include <memory>
#include <optional>

#include "desktop/world_drawing.h"
#include "ui/board/floor_view.h"
#include "world/world_map.h"

class QPainter;
class QPalette;

namespace zentro {

/// The pencil with which a world is drawn: which tool it is, where it is, and where it was put
/// down. The mouse and the keys lead it alike.
class FloorPencil {
    Q_DECLARE_TR_FUNCTIONS(zentro::FloorPencil)

  public:
    void Choose(WorldTool tool);
    WorldTool Tool() const { return tool_; }
    void SetSnaps(bool snaps) { snaps_ = snaps; }

    void MoveTo(const world::World& world, const world::Point& wanted);
    /// By steps of its grid.
    void MoveBy(const world::World& world, const world::Point& steps);
    /// To the next thing of the world for 1, to the one before for -1.
    void MoveToThing(const world::World& world, int step);
    void PutDown();
    bool IsDown() const { return from_.has_value(); }
    /// The world with what was drawn.
    world::World LiftUp(const world::World& world);
    /// The world without the thing that is there.
    world::World Erased(const world::World& world) const {
        return zentro::Drawn(world, WorldTool::Erase, at_, at_);
    }
    void Cancel() { from_.reset(); }

    /// What the world would be if it were lifted up now; null: nothing is being drawn.
    std::shared_ptr<const world::WorldMap> Preview(const world::World& world) const;
    /// Over the world that is shown.
    void Paint(QPainter& painter, const FloorView& view, const QPalette& palette,
               const world::World& world) const;
    /// Where it is and what is there, for those who do not see it.
    QString Words(const world::World& world) const;

  private:
    std::optional<world::Segment> Ruler() const;
    void PaintTaken(QPainter& painter, const FloorView& view, const QPalette& palette,
                    const world::World& world) const;
    void PaintRuler(QPainter& painter, const FloorView& view, const QPalette& palette) const;

    WorldTool tool_ = WorldTool::Line;
    bool snaps_ = true;
    world::Point at_;
    int thing_ = -1;  ///< the one that it was moved to last; below 0: none yet
    std::optional<world::Point> from_;
    std::optional<world::Segment> ruler_;  ///< where it was laid last
};

/// "Wall"
QString ToolWords(WorldTool tool);
/// What one does with it.
QString ToolHelp(WorldTool tool);

}  // namespace zentro
