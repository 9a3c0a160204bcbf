#pragma once

#include "board/board.h"
#include "desktop/robot_model.h"

namespace zentro {

/// The board and the robot that it drives. A copy is a snapshot of both.
struct BoardWorld {
    Board board;
    RobotModel robot;
    bool robotSees = false;  ///< analogue inputs 1 and 2 are the robot's left and right eye

    bool operator==(const BoardWorld&) const = default;
};

/// Lets 1/100 second pass for the board and the robot.
void PassTick(BoardWorld& world);

}  // namespace zentro
