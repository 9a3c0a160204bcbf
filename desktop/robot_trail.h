#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "world/world_state.h"

namespace zentro {

/// The way that the robot has come. It goes back with the robot when steps are taken back, and
/// begins anew at the start; where a hand has lifted the robot there is a gap.
class RobotTrail {
  public:
    void Follow(const world::WorldState& state);
    void Clear();

    /// Grows whenever the way has changed.
    std::size_t Changes() const { return changes_; }

    /// Pieces without a gap.
    std::vector<std::vector<world::Point>> Pieces() const;

  private:
    struct Place {
        world::Point point;
        std::uint64_t tick = 0;
        bool afterGap = false;
    };

    void GoBack(std::uint64_t tick);

    std::deque<Place> places_;
    std::size_t changes_ = 0;
};

}  // namespace zentro
