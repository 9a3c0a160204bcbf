#pragma once

#include <array>
#include <cstdint>

#include "board/memory.h"
#include "model/instruction.h"

namespace zentro {

struct Board;

/// How an instruction uses one of its arguments.
enum class OperandRole : std::uint8_t {
    Unused,
    Number,    ///< a byte that is part of the instruction
    Place,     ///< an address as such: a line to go on at, a table
    ByteRead,  ///< the rest are addresses of a byte or word in memory
    ByteWritten,
    ByteChanged,  ///< read, then written
    WordRead,
    WordWritten,
    WordChanged,
};

/// How many bytes of memory an operand of this role stands for.
constexpr std::uint32_t BytesUsed(OperandRole role) {
    switch (role) {
        case OperandRole::Unused:
        case OperandRole::Number: return 0;
        case OperandRole::Place:
        case OperandRole::ByteRead:
        case OperandRole::ByteWritten:
        case OperandRole::ByteChanged: return 1;
        case OperandRole::WordRead:
        case OperandRole::WordWritten:
        case OperandRole::WordChanged: return 2;
    }
    return 0;
}

/// Carries out one decoded instruction. The processor already stands at the next one.
using InstructionHandler = void (*)(Board&, const DecodedInstruction&);

/// What the board does with an instruction.
struct Operation {
    Opcode opcode;
    std::array<OperandRole, kMaxArguments> roles{};
    /// Null for the instructions on memory alone, which the loop of the processor carries out
    /// itself.
    InstructionHandler handler = nullptr;
};

/// The row of an opcode.
const Operation& OperationFor(Opcode opcode);

}  // namespace zentro
