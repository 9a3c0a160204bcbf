#pragma once

#include <memory>

#include "recording/scene.h"

namespace zentro {

/// The world that is there before anybody chooses one.
std::shared_ptr<const world::WorldMap> FirstMap();

/// A bare floor, for a board that stood alone: its robot hits, sees and feeds nothing.
std::shared_ptr<const world::WorldMap> BareMap();

/// A board at rest whose robot stands at its start; the sensors feed their inputs.
std::unique_ptr<Scene> MakeScene(std::shared_ptr<const world::WorldMap> map = FirstMap());

// What happens to a scene beside its ticks. There is a world in it.

/// Another world: the robot stands at its start, no input is held by hand.
void MoveToWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map);
/// The world has changed round the robot, which stays where it is if it has room there.
void ChangeWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map);

/// A hand changes inputs, and holds those from then on that the world feeds.
void ChangeInputs(Scene& scene, const Inputs& inputs);
/// An input that the world feeds is held by a hand, or let go.
void HoldInput(Scene& scene, const world::InputId& input, bool held);

}  // namespace zentro
