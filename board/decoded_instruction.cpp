#include "board/decoded_instruction.h"

#include <algorithm>

#include "board/instruction_actions.h"
#include "board/memory.h"

namespace zentro {

std::uint32_t AddressBehind(const DecodedInstruction& instruction) {
    const std::uint32_t address = instruction.address;
    if (address >= kMemorySize) return address;
    if (instruction.fault == Fault::UnknownOpcode) return address + 1;
    return address + static_cast<std::uint32_t>(InstructionFor(instruction.opcode).Size());
}

bool HasJumpTarget(const DecodedInstruction& instruction) {
    const auto& roles = InstructionFor(instruction.opcode).roles;
    return instruction.fault == Fault::None &&
           std::ranges::find(roles, ArgumentRole::JumpTarget) != roles.end();
}

bool EndsBlock(const DecodedInstruction& instruction) {
    return instruction.fault != Fault::None || HandlerFor(instruction.opcode) != nullptr ||
           instruction.opcode == Opcode::Return || HasJumpTarget(instruction);
}

std::uint16_t JumpTargetOf(const DecodedInstruction& instruction) {
    const std::array operands{instruction.a, instruction.b, instruction.c};
    const Instruction& row = InstructionFor(instruction.opcode);
    for (std::size_t slot = 0; slot < operands.size(); ++slot) {
        if (row.roles[slot] == ArgumentRole::JumpTarget) return operands[slot];
    }
    return 0;
}

DecodedInstruction DecodeInstruction(const Memory& memory, std::uint32_t address) {
    DecodedInstruction decoded;
    decoded.address = decoded.start = static_cast<std::uint16_t>(address);
    decoded.fault = Fault::AddressOutsideMemory;
    if (address >= kMemorySize) return decoded;
    if (memory.Byte(address) >= kInstructionCount) {
        decoded.fault = Fault::UnknownOpcode;
        return decoded;
    }
    decoded.opcode = Opcode{memory.Byte(address)};
    if (AddressBehind(decoded) > kMemorySize) return decoded;

    const Instruction& row = InstructionFor(decoded.opcode);
    const std::array operands{&decoded.a, &decoded.b, &decoded.c};
    std::uint32_t at = address + 1;
    for (std::size_t slot = 0; slot < operands.size(); ++slot) {
        const int size = ArgumentSize(row.Argument(slot));
        if (size == 1) *operands[slot] = memory.Byte(at);
        if (size == 2) *operands[slot] = memory.Word(at);
        if (*operands[slot] + BytesUsed(row.roles[slot]) > kMemorySize) return decoded;
        at += static_cast<std::uint32_t>(size);
    }
    decoded.fault = Fault::None;
    decoded.action = ActionFor(decoded.opcode);
    decoded.steps = 1;
    return decoded;
}

}  // namespace zentro
