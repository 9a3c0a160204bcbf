#pragma once

#include <memory>

#include "board/board.h"
#include "recording/action.h"
#include "world/world_state.h"

namespace zentro {

/// A board, and the world in which it drives a robot if there is one. A copy is a snapshot.
struct Scene {
    Board board;
    std::shared_ptr<const world::WorldMap> map;  ///< nothing: the board stands alone
    world::WorldState state;                     ///< only with a map

    bool operator==(const Scene&) const = default;
};

/// The robot stands at its start and its sensors feed the board. No map: it stands alone.
void EnterWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map, std::uint32_t noise);

/// The sensors feed the inputs that no hand holds. Every change of the scene ends with it, so that
/// instructions see the world as it is.
void FeedInputs(Scene& scene);

/// Lets 1/100 second pass for the board and the world. Instructions are carried out between ticks.
void PassTick(Scene& scene);

// By hand, where there is a world: the robot is put at its start, or somewhere; where something is
// in the way, beside it.
void PutRobotAtStart(Scene& scene);
void PlaceRobot(Scene& scene, const world::Pose& pose);

/// Does what the action says. Pace and steps are up to the Player.
void CarryOut(Scene& scene, const Action& action);

}  // namespace zentro
