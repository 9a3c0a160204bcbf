#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/zentro-board/input_script.h"
#include "board/board.h"
#include "world/world_state.h"

namespace zentro {

/// What the board drives in a world during a run. Prints on standard output what comes of it.
class WorldDrive {
  public:
    /// Nothing when the text is no world; `error` tells why. `showPlaces`: print where the robot
    /// is.
    static std::optional<WorldDrive> Load(std::string_view text, std::uint32_t noiseSeed,
                                          bool showPlaces, std::string& error);

    /// A line of the input script takes an input out of the world's hands or gives it back.
    void Hold(const InputChange& change);
    /// Gives the board what the sensors read.
    void Feed(Board& board);
    /// The robot drives for a tick. `board.clock` is already there.
    void PassTick(const Board& board);

    /// Whether nothing can come any more: the goals are decided, or the program has ended and the
    /// robot stands.
    bool IsOver(const Board& board) const;
    /// Whether a program that sleeps must be left to: the robot drives, or goals are open.
    bool GoesOn(const Board& board) const;
    /// Decides the goals that are still open.
    void End();
    void PrintVerdict() const;
    bool HasMetItsGoals() const;
    std::string Picture() const;

  private:
    explicit WorldDrive(world::WorldMap map, std::uint32_t noiseSeed, bool showPlaces);
    void ShowPlace();
    void ShowGoals();

    world::WorldMap map_;
    world::WorldState state_;
    bool showPlaces_;
    std::vector<world::Pose> way_;
    std::vector<bool> shown_;  ///< the goals whose outcome has been printed
    std::uint64_t standing_ = 0;
};

}  // namespace zentro
