#pragma once

#include <string_view>

namespace zentro {

struct Board;

// Lines typed to the board, in capitals and without their CR. An empty line is possible.

/// A command of the board at rest or with a program running.
void CarryOutCommand(Board& board, std::string_view line);

/// A command of the debug mode.
void CarryOutDebugCommand(Board& board, std::string_view line);

/// "M1F045", "S1B05", "A11": drives an output by hand. Returns whether the line is such a command.
bool DriveOutputByHand(Board& board, std::string_view line);

/// "Z": ends the program and the report and puts the outputs to rest.
void StopEverything(Board& board);

/// "W": the board says who it is.
void TellName(Board& board);

/// The answer to a line that is no command.
void RefuseLine(Board& board);

}  // namespace zentro
