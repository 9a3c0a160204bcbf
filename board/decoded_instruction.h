#pragma once

#include <array>
#include <cstdint>

#include "model/instruction.h"

namespace zentro {

/// The board's memory in bytes; addresses run from 0 to one less.
inline constexpr std::uint32_t kMemorySize = 32768;

/// The longest instruction in bytes: an opcode and addresses.
inline constexpr std::uint32_t kMaxInstructionSize =
    1 + kMaxArguments * ArgumentSize(ArgumentType::Address);

/// Why a program was stopped by the board.
enum class Fault : std::uint8_t {
    None,
    UnknownOpcode,
    AddressOutsideMemory,
    DataStackOverflow,
    DataStackUnderflow,
    ReturnStackOverflow,
    ReturnStackUnderflow,
    DivisionByZero,
    NoEventToComplete,
};

struct Board;
struct LoopState;
struct DecodedInstruction;

/// Where the loop stands; instructions hand it on in registers.
struct Position {
    const DecodedInstruction* at;
    std::size_t stackTop;  ///< of the data stack
};

/// What the loop does at a decoded instruction.
using LoopAction = void (*)(Board& board, LoopState& loop, Position now);

namespace loop {
void Leave(Board& board, LoopState& loop, Position now);
}

/// An instruction ready to run: its arguments are taken apart, and every address among them was
/// found to lie in memory with all the bytes that the instruction uses there.
struct DecodedInstruction {
    LoopAction action =
        loop::Leave;  ///< leaves the loop if there is no instruction, or it cannot run
    /// How many steps are carried out from here to the next instruction that need not be followed
    /// by the one behind it. An instruction is 1, and 1 for each NOP and JUMP that leads to it.
    std::int32_t steps = 0;
    std::uint16_t a = 0;
    std::uint16_t b = 0;  ///< of a pair that pops or clears: the lowest address that it stores at
    std::uint16_t c = 0;  ///< of a DecodedProgram's jump: the index of its target
    std::uint16_t start = 0;  ///< the address of the first step
    std::uint16_t address = 0;
    Opcode opcode = Opcode::Nop;
    Fault fault = Fault::None;  ///< why it can never be carried out

    bool operator==(const DecodedInstruction&) const = default;
};

class Memory;

/// Decodes the instruction at an address, by itself. Running on from the last byte of memory leads
/// at most kMaxInstructionSize bytes further.
DecodedInstruction DecodeInstruction(const Memory& memory, std::uint32_t address);

/// Where the program goes on behind an instruction that does not jump, or fails to be one.
std::uint32_t AddressBehind(const DecodedInstruction& instruction);

/// Whether the program may go on otherwise than with what stands behind it, even without a fault.
bool EndsBlock(const DecodedInstruction& instruction);

/// Whether it is a jump, a call or a condition, and where that leads.
bool HasJumpTarget(const DecodedInstruction& instruction);
std::uint16_t JumpTargetOf(const DecodedInstruction& instruction);

}  // namespace zentro
