#pragma once

#include "board/decoded_instruction.h"
#include "board/handlers.h"

namespace zentro {

/// What the loop does at an instruction of this opcode that stands by itself.
LoopAction ActionFor(Opcode opcode);

/// The handler that such an instruction calls; null if it is one of the loop's own.
handle::InstructionHandler HandlerFor(Opcode opcode);

}  // namespace zentro
