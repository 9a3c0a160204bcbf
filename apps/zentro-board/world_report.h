#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "recording/scene.h"

namespace zentro {

/// What becomes of a robot in its world during a run. Prints it on standard output.
class WorldReport {
  public:
    /// `showPlaces`: print where the robot is. The scene has a map, and outlives the report.
    WorldReport(Scene& scene, bool showPlaces);

    /// A tick has passed.
    void Look();

    /// Whether nothing can come any more: the goals are decided, or the program has ended and the
    /// robot stands.
    bool IsOver() const;
    /// Whether a program that sleeps must be left to: the robot drives, or goals are open.
    bool GoesOn() const;
    /// Decides the goals that are still open.
    void End();
    void PrintVerdict() const;
    bool HasMetItsGoals() const;
    /// Where the robot was, now and then.
    const std::vector<world::Pose>& Way() const { return way_; }

  private:
    void ShowPlace();
    void ShowGoals();

    Scene& scene_;
    bool showPlaces_;
    std::vector<world::Pose> way_;
    std::vector<bool> shown_;  ///< the goals whose outcome has been printed
    world::Pose last_;
    std::uint64_t standing_ = 0;
};

}  // namespace zentro
