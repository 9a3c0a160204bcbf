#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "recording/scene.h"

namespace zentro {

/// How many instructions the board carries out in 1/100 second: a million a second.
inline constexpr std::uint32_t kStepsPerTick = 10'000;

/// Does to a board what a list of actions says, in the order of their ticks.
class Player {
  public:
    /// Sorted by ticks.
    explicit Player(std::vector<Action> actions) : actions_(std::move(actions)) {}

    /// Carries out at most so many instructions.
    using Run = std::function<void(std::uint64_t budget)>;

    /// What is done in the present tick, before its instructions. In the first one it comes before
    /// the program starts, up to the first step.
    void BeginTick(Scene& scene, const Run& run);

    /// The most instructions in the present tick, beside its steps.
    std::uint64_t Pace() const { return pace_; }
    std::size_t Done() const { return done_; }
    bool IsDone() const { return done_ == actions_.size(); }

  private:
    void Start(Scene& scene);

    std::vector<Action> actions_;
    std::size_t done_ = 0;
    std::uint64_t pace_ = kStepsPerTick;
    bool started_ = false;
};

}  // namespace zentro
