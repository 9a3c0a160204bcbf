#include "board/trace.h"

#include <array>

#include "board/board.h"
#include "board/text.h"

namespace zentro {

namespace {

std::string ByteEffect(const Board& board, std::uint32_t address) {
    return FormatAddress(address) + " = " + std::to_string(board.memory.Byte(address));
}

std::string WordEffect(const Board& board, std::uint32_t address) {
    return FormatAddress(address) + " = " + std::to_string(board.memory.Word(address));
}

/// What stands now where the instruction wrote.
std::string OperandEffect(const Board& board, ArgumentRole role, std::uint32_t address) {
    switch (role) {
        case ArgumentRole::ByteWritten:
        case ArgumentRole::ByteChanged: return ByteEffect(board, address);
        case ArgumentRole::WordWritten:
        case ArgumentRole::WordChanged: return WordEffect(board, address);
        case ArgumentRole::None:
        case ArgumentRole::Number:
        case ArgumentRole::JumpTarget:
        case ArgumentRole::Place:
        case ArgumentRole::ByteRead:
        case ArgumentRole::WordRead: break;
    }
    return {};
}

/// The same for what a WRITE instruction stored where its pointer, which it may have overwritten,
/// led.
std::string PointerEffect(const Board& board, Opcode opcode, std::uint32_t target) {
    if (opcode == Opcode::WriteDataByte && target < kMemorySize) return ByteEffect(board, target);
    if (opcode == Opcode::WriteDataWord && target + 1 < kMemorySize)
        return WordEffect(board, target);
    return {};
}

std::string StackEffect(const Board& board, std::uint32_t topBefore) {
    if (board.processor.stackTop == topBefore) return {};
    return "stack " + std::to_string(kMemorySize - board.processor.stackTop) + " bytes";
}

std::string JumpEffect(const Board& board, std::uint32_t next) {
    if (!board.processor.running || board.processor.address == next) return {};
    return "to " + FormatAddress(board.processor.address);
}

void Append(std::string& effects, const std::string& effect) {
    if (effect.empty()) return;
    effects += effects.empty() ? " : " : "; ";
    effects += effect;
}

}  // namespace

std::optional<std::string> StepWithTrace(Board& board) {
    if (!ReadyForInstruction(board)) return std::nullopt;
    const std::uint32_t address = board.processor.address;
    const std::uint32_t topBefore = board.processor.stackTop;
    const std::string text = FormatInstruction(board.memory, address);
    const DecodedInstruction instruction = DecodeInstruction(board.memory, address);
    const bool faulty = instruction.fault != Fault::None;
    const std::uint32_t target = faulty ? 0 : board.memory.Word(instruction.a);
    RunInstructions(board, 1);
    if (faulty) return text;

    std::string effects;
    const Instruction& row = InstructionFor(instruction.opcode);
    const std::array operands{instruction.a, instruction.b, instruction.c};
    for (std::size_t slot = 0; slot < operands.size(); ++slot) {
        Append(effects, OperandEffect(board, row.roles[slot], operands[slot]));
    }
    Append(effects, PointerEffect(board, instruction.opcode, target));
    Append(effects, StackEffect(board, topBefore));
    Append(effects, JumpEffect(board, AddressBehind(instruction)));
    return text + effects;
}

}  // namespace zentro
