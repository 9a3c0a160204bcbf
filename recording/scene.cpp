#include "recording/scene.h"

#include <utility>

namespace zentro {

namespace {

void LetGo(Scene& scene, const InputPlace& place) {
    const std::optional<world::InputId> input = FedInput(place);
    if (!scene.map || !input) return;
    LetGo(scene.state, *input);
    FeedInputs(scene);
}

void HoldAt(Scene& scene, const InputPlace& place, std::uint32_t value) {
    const std::optional<world::InputId> input = FedInput(place);
    if (scene.map && input) TakeOver(scene.state, *input);
    Inputs inputs = scene.board.inputs;
    SetInput(inputs, place, value);
    SetInputs(scene.board, inputs);
}

}  // namespace

void FeedInputs(Scene& scene) {
    if (!scene.map) return;
    Inputs inputs = scene.board.inputs;
    FeedInputs(*scene.map, scene.state, inputs);
    if (inputs != scene.board.inputs) SetInputs(scene.board, inputs);
}

void EnterWorld(Scene& scene, std::shared_ptr<const world::WorldMap> map, std::uint32_t noise) {
    scene.map = std::move(map);
    if (scene.map) scene.state = StartState(*scene.map, noise);
    FeedInputs(scene);
}

void PassTick(Scene& scene) {
    AdvanceTick(scene.board);
    if (scene.map) PassTick(*scene.map, scene.state, scene.board.outputs);
    FeedInputs(scene);
}

void CarryOut(Scene& scene, const Action& action) {
    if (action.kind == ActionKind::SetInput) HoldAt(scene, action.input, action.value);
    if (action.kind == ActionKind::LetGo) LetGo(scene, action.input);
}

}  // namespace zentro
