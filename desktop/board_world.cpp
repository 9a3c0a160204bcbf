#include "desktop/board_world.h"

namespace zentro {

namespace {

void LookAtFloor(BoardWorld& world) {
    const auto eyes = EyesOf(world.robot);
    Inputs inputs = world.board.inputs;
    inputs.analog[0] = BrightnessAt(eyes[0]);
    inputs.analog[1] = BrightnessAt(eyes[1]);
    if (inputs != world.board.inputs) SetInputs(world.board, inputs);
}

}  // namespace

void PassTick(BoardWorld& world) {
    AdvanceTick(world.board);
    DriveRobot(world.robot, world.board.outputs.motors[0], world.board.outputs.motors[1]);
    if (world.robotSees) LookAtFloor(world);
}

}  // namespace zentro
