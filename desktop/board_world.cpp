#include "desktop/board_world.h"

namespace zentro {

namespace {

void LookAtFloor(BoardWorld& world) {
    if (!world.robotSees) return;
    const auto eyes = EyesOf(world.robot);
    Inputs inputs = world.board.inputs;
    inputs.analog[0] = BrightnessAt(eyes[0]);
    inputs.analog[1] = BrightnessAt(eyes[1]);
    if (inputs != world.board.inputs) SetInputs(world.board, inputs);
}

}  // namespace

std::unique_ptr<BoardWorld> MakeBoardWorld() {
    auto world = std::make_unique<BoardWorld>();
    LookAtFloor(*world);
    return world;
}

void PutRobotAtStart(BoardWorld& world) {
    world.robot = {};
    LookAtFloor(world);
}

void LetRobotSee(BoardWorld& world, bool sees) {
    world.robotSees = sees;
    LookAtFloor(world);
}

void PassTick(BoardWorld& world) {
    AdvanceTick(world.board);
    DriveRobot(world.robot, world.board.outputs.motors[0], world.board.outputs.motors[1]);
    LookAtFloor(world);
}

}  // namespace zentro
