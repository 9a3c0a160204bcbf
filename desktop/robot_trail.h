#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "world/world_state.h"

namespace zentro {

/// The pens with which the robot can draw its way.
enum class Pen : std::uint8_t { None, Orange, Blue, Green, Red };

/// A piece of its way without a gap, drawn with one pen.
struct TrailPiece {
    Pen pen = Pen::Orange;
    std::vector<world::Point> points;
};

/// The way that the robot has come. It goes back with the robot when steps are taken back, and
/// begins anew at the start; where a hand has lifted the robot there is a gap.
class RobotTrail {
  public:
    void Follow(const world::WorldState& state);
    void Clear();
    /// From here on.
    void TakePen(Pen pen) { pen_ = pen; }
    Pen TakenPen() const { return pen_; }

    /// Grows whenever the way has changed.
    std::size_t Changes() const { return changes_; }

    /// What was drawn.
    std::vector<TrailPiece> Pieces() const;

  private:
    struct Place {
        world::Point point;
        std::uint64_t tick = 0;
        bool afterGap = false;
        Pen pen = Pen::Orange;  ///< with which it came here
    };

    void GoBack(std::uint64_t tick);

    std::deque<Place> places_;
    Pen pen_ = Pen::Orange;
    std::size_t changes_ = 0;
};

}  // namespace zentro
