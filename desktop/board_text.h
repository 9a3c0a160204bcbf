#pragma once

#include <string>

#include "board/devices.h"
#include "desktop/virtual_board_host.h"
#include "faults/fault_report.h"

namespace zentro {

// What the virtual board's window says, UTF-8.

/// "running", "waiting, 1.5 seconds left", "stopped: End at [0010]", a fault in plain words.
std::string DescribeState(const Board& board, bool paused, const ProgramWords& words);

/// "45 % forward", "at rest"
std::string DescribeMotor(const Drive& motor);

/// "30° forward", "centre"
std::string DescribeServo(const Drive& servo);

/// "42", "2A hexadecimal", "dark"
std::string DescribeDisplay(const Display& display);

/// The pitch of a note, 60 being the C in the middle of a piano: "C4", "F♯5"; "silence" for 0.
std::string DescribeNote(std::uint8_t note);

/// "3 instructions a second", "real time"
std::string DescribeSpeed(const BoardSpeed& speed);

}  // namespace zentro
