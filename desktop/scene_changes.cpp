#include "desktop/scene_changes.h"

#include <utility>

#include "world/first_world.h"
#include "world/robot.h"

namespace zentro {

namespace {

/// Whether two states of the inputs differ in this one.
bool Differs(const Inputs& a, const Inputs& b, const world::InputId& input) {
    switch (input.kind) {
        case world::InputKind::Digital: return a.digital[input.index] != b.digital[input.index];
        case world::InputKind::Button: return a.buttons[input.index] != b.buttons[input.index];
        case world::InputKind::Analog: return a.analog[input.index] != b.analog[input.index];
        case world::InputKind::Pulses: break;
    }
    return a.pulses[input.index] != b.pulses[input.index];
}

/// What a sensor says is gone with it. Pulses have been counted, whatever comes later.
void PutToRest(Inputs& inputs, const world::InputId& input) {
    const Inputs rest;
    switch (input.kind) {
        case world::InputKind::Digital:
            inputs.digital[input.index] = rest.digital[input.index];
            break;
        case world::InputKind::Button:
            inputs.buttons[input.index] = rest.buttons[input.index];
            break;
        case world::InputKind::Analog: inputs.analog[input.index] = rest.analog[input.index]; break;
        case world::InputKind::Pulses: break;
    }
}

}  // namespace

std::shared_ptr<const world::WorldMap> FirstMap() {
    static const auto map =
        std::make_shared<const world::WorldMap>(world::MakeMap(world::FirstWorld()));
    return map;
}

std::shared_ptr<const world::WorldMap> BareMap() {
    world::World bare;
    bare.name = "No World";
    return std::make_shared<const world::WorldMap>(world::MakeMap(std::move(bare)));
}

std::unique_ptr<Scene> MakeScene(std::shared_ptr<const world::WorldMap> map) {
    auto scene = std::make_unique<Scene>();
    EnterWorld(*scene, std::move(map), 0);
    return scene;
}

void MoveToWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map) {
    Inputs inputs = scene.board.inputs;
    for (const world::Sensor& sensor : scene.map->world.sensors)
        PutToRest(inputs, sensor.input);
    SetInputs(scene.board, inputs);
    EnterWorld(scene, std::move(map), scene.state.noise);
}

void ChangeWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map) {
    const std::shared_ptr<const world::WorldMap> formerMap = std::move(scene.map);
    scene.map = std::move(map);
    const world::WorldState former = std::exchange(scene.state, StartState(*scene.map));
    world::WorldState& state = scene.state;
    state.robot = Placed(*scene.map, state.robot, former.robot);
    state.tick = former.tick;
    state.wheelsTurned = former.wheelsTurned;
    state.takenOver = former.takenOver;
    state.noise = former.noise;
    // What was reached counts as long as the same is asked for.
    if (scene.map->world.goals == formerMap->world.goals &&
        scene.map->passages == formerMap->passages)
        state.goals = former.goals;
    FeedInputs(scene);
}

void ChangeInputs(Scene& scene, const Inputs& inputs) {
    for (const world::Sensor& sensor : scene.map->world.sensors) {
        if (Differs(inputs, scene.board.inputs, sensor.input)) TakeOver(scene.state, sensor.input);
    }
    SetInputs(scene.board, inputs);
}

void HoldInput(Scene& scene, const world::InputId& input, bool held) {
    if (!IsFed(*scene.map, input)) return;
    if (held) return TakeOver(scene.state, input);
    LetGo(scene.state, input);
    FeedInputs(scene);
}

}  // namespace zentro
