#include "board/memory.h"

#include <algorithm>

#include "board/operations.h"

namespace zentro {

namespace {

DecodedInstruction Faulty(Fault fault, int size) {
    return {static_cast<std::uint16_t>(fault), static_cast<std::uint16_t>(size), 0, kFaulty};
}

/// Whether the bytes that an operand stands for lie in memory.
bool LiesInMemory(OperandRole role, std::uint32_t address) {
    return address + BytesUsed(role) <= kMemorySize;
}

}  // namespace

void Memory::Clear() {
    bytes_.fill(0);
    isCode_.fill(0);
    decoded_.fill({});
}

void Memory::Decode(std::uint32_t address) {
    DecodedInstruction& entry = decoded_[address];
    if (address >= kMemorySize) {
        entry = Faulty(Fault::AddressOutsideMemory, 0);
        return;
    }
    isCode_[address] = 1;
    if (bytes_[address] >= kInstructionCount) {
        entry = Faulty(Fault::UnknownOpcode, 1);
        return;
    }
    const Operation& operation = OperationFor(Opcode{bytes_[address]});
    const Instruction& instruction = InstructionFor(operation.opcode);
    const std::uint32_t end = address + static_cast<std::uint32_t>(instruction.Size());
    std::fill(isCode_.begin() + address, isCode_.begin() + std::min(end, kMemorySize),
              std::uint8_t{1});
    entry = Faulty(Fault::AddressOutsideMemory, instruction.Size());
    if (end > kMemorySize) return;

    std::array<std::uint16_t, kMaxArguments> operands{};
    std::uint32_t at = address + 1;
    for (std::size_t slot = 0; slot < operands.size(); ++slot) {
        const int size = ArgumentSize(instruction.arguments[slot]);
        if (size == 1) operands[slot] = Byte(at);
        if (size == 2) operands[slot] = Word(at);
        if (!LiesInMemory(operation.roles[slot], operands[slot])) return;
        at += static_cast<std::uint32_t>(size);
    }
    entry = {operands[0], operands[1], operands[2], operation.opcode};
}

void Memory::ForgetInstructionsOver(std::uint32_t address) {
    const std::uint32_t first =
        address < kMaxInstructionSize ? 0 : address - (kMaxInstructionSize - 1);
    for (std::uint32_t start = first; start <= address; ++start) {
        decoded_[start] = {};
    }
    isCode_[address] = 0;
}

}  // namespace zentro
