#include "faults/program_words.h"

#include <algorithm>
#include <iterator>

namespace zentro {

const InstructionWords* ProgramWords::InstructionAt(std::uint32_t address) const {
    const auto found = instructions.find(address);
    return found == instructions.end() ? nullptr : &found->second;
}

const StatementWords* ProgramWords::StatementBefore(std::uint32_t address) const {
    const auto behind = instructions.lower_bound(address);
    if (behind == instructions.begin()) return nullptr;
    const auto& [begin, instruction] = *std::prev(behind);
    return begin + instruction.bytes.size() == address ? &statements[instruction.statement]
                                                       : nullptr;
}

const VariableWords* ProgramWords::VariableAt(std::uint32_t address) const {
    const auto found = std::ranges::find(variables, address, &VariableWords::address);
    return found == variables.end() ? nullptr : &*found;
}

}  // namespace zentro
