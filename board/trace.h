#pragma once

#include <optional>
#include <string>

namespace zentro {

struct Board;

/// Carries out one instruction and tells it with its effect on memory, stack and order of
/// execution:
/// "[0014] ADD BYTE [0020], [0021], [0022] : [0022] = 7". Nothing if the program waits or has
/// ended.
std::optional<std::string> StepWithTrace(Board& board);

}  // namespace zentro
