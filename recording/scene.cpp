#include "recording/scene.h"

#include <utility>

#include "board/commands.h"
#include "world/robot.h"

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

void PutRobotAtStart(Scene& scene) {
    if (scene.map) PutAtStart(*scene.map, scene.state);
    FeedInputs(scene);
}

void PlaceRobot(Scene& scene, const world::Pose& pose) {
    if (scene.map) scene.state.robot = Placed(*scene.map, scene.state.robot, pose);
    FeedInputs(scene);
}

void CarryOut(Scene& scene, const Action& action) {
    switch (action.kind) {
        case ActionKind::SetInput: return HoldAt(scene, action.input, action.value);
        case ActionKind::LetGo: return LetGo(scene, action.input);
        case ActionKind::Receive: {
            const auto character = static_cast<char>(action.value);
            return ReceiveCharacters(scene.board, {&character, 1});
        }
        case ActionKind::StopProgram: return EndProgram(scene.board, EndReason::Stopped);
        case ActionKind::StopAll: StopEverything(scene.board); return PutRobotAtStart(scene);
        case ActionKind::RobotToStart: return PutRobotAtStart(scene);
        case ActionKind::PlaceRobot: return PlaceRobot(scene, action.robot);
        case ActionKind::Pace:
        case ActionKind::Step: break;
    }
}

}  // namespace zentro
