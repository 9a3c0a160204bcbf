#pragma once

#include <memory>

#include "board/board.h"
#include "desktop/robot_model.h"

namespace zentro {

/// The board and the robot that it drives. A copy is a snapshot of both.
struct BoardWorld {
    Board board;
    RobotModel robot;
    bool robotSees = true;  ///< analogue inputs 1 and 2 are the robot's left and right eye

    bool operator==(const BoardWorld&) const = default;
};

/// A board at rest whose robot stands at its start and sees the line.
std::unique_ptr<BoardWorld> MakeBoardWorld();

void PutRobotAtStart(BoardWorld& world);
void LetRobotSee(BoardWorld& world, bool sees);

/// Lets 1/100 second pass for the board and the robot.
void PassTick(BoardWorld& world);

}  // namespace zentro
