#include "desktop/fault_report.h"

#include <array>
#include <optional>

#include "board/board.h"
#include "board/operations.h"
#include "board/text.h"

namespace zentro {

namespace {

/// The instruction that failed, as its bytes stand in memory.
struct FailedInstruction {
    const Board& board;
    const NameOfAddress& nameOf;
    std::uint32_t address;
    const Instruction* instruction = nullptr;  ///< null when the byte is no instruction
    std::array<std::uint32_t, kMaxArguments> operands{};

    std::string Name() const {
        return instruction == nullptr ? "" : std::string(instruction->name);
    }

    /// "Count", or "[0010]" when it has no name.
    std::string Place(std::uint32_t place) const {
        const std::string name = nameOf ? nameOf(place) : std::string();
        return name.empty() ? FormatAddress(place) : name;
    }
};

bool IsInMemory(std::uint32_t address, std::uint32_t size) {
    return address + size <= kMemorySize;
}

std::uint8_t ByteAt(const Board& board, std::uint32_t address) {
    return IsInMemory(address, 1) ? board.memory.Byte(address) : kNothingThere;
}

FailedInstruction FindInstruction(const Board& board, const NameOfAddress& nameOf) {
    FailedInstruction failed{board, nameOf, board.processor.instruction};
    if (!IsInMemory(failed.address, 1)) return failed;
    const std::uint8_t opcode = board.memory.Byte(failed.address);
    if (opcode >= kInstructionCount) return failed;
    failed.instruction = &InstructionFor(Opcode{opcode});
    std::uint32_t at = failed.address + 1;
    for (std::size_t slot = 0; slot < failed.operands.size(); ++slot) {
        const int size = ArgumentSize(failed.instruction->arguments[slot]);
        for (int byte = 0; byte < size; ++byte)
            failed.operands[slot] = failed.operands[slot] << 8 | ByteAt(board, at++);
    }
    return failed;
}

std::string EndOfMemory() {
    return "memory ends at " + FormatAddress(kMemorySize - 1);
}

std::string DescribeUnknownOpcode(const FailedInstruction& failed) {
    return "the byte there is " + std::to_string(ByteAt(failed.board, failed.address)) +
           ", and instructions have the numbers 0 to " + std::to_string(kInstructionCount - 1);
}

/// The operand that does not lie in memory with all that is used there.
std::optional<std::uint32_t> OperandOutside(const FailedInstruction& failed) {
    const Operation& operation = OperationFor(failed.instruction->opcode);
    for (std::size_t slot = 0; slot < failed.operands.size(); ++slot) {
        if (!IsInMemory(failed.operands[slot], BytesUsed(operation.roles[slot])))
            return failed.operands[slot];
    }
    return std::nullopt;
}

std::string DescribeAddress(const FailedInstruction& failed) {
    if (failed.instruction == nullptr) return "the program ran on there, but " + EndOfMemory();
    if (!IsInMemory(failed.address, static_cast<std::uint32_t>(failed.instruction->Size())))
        return failed.Name() + " does not fit there, because " + EndOfMemory();
    if (const auto outside = OperandOutside(failed))
        return failed.Name() + " uses the address " + FormatAddress(*outside) + ", but " +
               EndOfMemory();
    const std::uint32_t pointer = failed.operands[0];
    return failed.Name() + " follows the pointer " + failed.Place(pointer) + ", which leads to " +
           FormatAddress(failed.board.memory.Word(pointer)) + ", but " + EndOfMemory();
}

std::string BytesOnStack(const Board& board) {
    const std::uint32_t count = kMemorySize - board.processor.stackTop;
    return std::to_string(count) + (count == 1 ? " byte lies" : " bytes lie") + " on the stack";
}

std::string DescribeFullStack(const FailedInstruction& failed) {
    return failed.Name() + " finds no room for " + failed.Place(failed.operands[0]) + ", because " +
           BytesOnStack(failed.board) + ", down to the program, which ends before " +
           FormatAddress(failed.board.processor.programSize);
}

std::string DescribeEmptyStack(const FailedInstruction& failed) {
    return failed.Name() + " wants a value for " + failed.Place(failed.operands[0]) + ", but " +
           BytesOnStack(failed.board);
}

std::string DescribeDivision(const FailedInstruction& failed) {
    return failed.Name() + " by " + failed.Place(failed.operands[1]) + ", which holds 0";
}

std::string DescribeCalls(const FailedInstruction& failed) {
    return std::to_string(kReturnStackSize) + " calls inside each other are the most, and " +
           failed.Name() + " " + failed.Place(failed.operands[0]) +
           " would be one more. Perhaps a routine calls itself without end";
}

std::string DescribeReturn(const FailedInstruction&) {
    return "RETURN without a CALL before it has nowhere to go";
}

std::string DescribeComplete(const FailedInstruction&) {
    return "COMPLETE EVENT ends the handler of an event, and none is running";
}

struct FaultWords {
    Fault fault;
    const char* title;
    std::string (*describe)(const FailedInstruction&);
};

constexpr std::array kFaultWords{
    FaultWords{Fault::UnknownOpcode, "Unknown instruction", DescribeUnknownOpcode},
    FaultWords{Fault::AddressOutsideMemory, "Address outside memory", DescribeAddress},
    FaultWords{Fault::DataStackOverflow, "Data stack full", DescribeFullStack},
    FaultWords{Fault::DataStackUnderflow, "Data stack empty", DescribeEmptyStack},
    FaultWords{Fault::ReturnStackOverflow, "Too many calls", DescribeCalls},
    FaultWords{Fault::ReturnStackUnderflow, "Return without a call", DescribeReturn},
    FaultWords{Fault::DivisionByZero, "Division by zero", DescribeDivision},
    FaultWords{Fault::NoEventToComplete, "No event to complete", DescribeComplete},
};

}  // namespace

FaultReport DescribeFault(const Board& board, const NameOfAddress& nameOf) {
    const FailedInstruction failed = FindInstruction(board, nameOf);
    FaultReport report{board.processor.fault, failed.address, ByteAt(board, failed.address), {}};
    for (const FaultWords& words : kFaultWords) {
        if (words.fault == report.fault)
            report.text = std::string(words.title) + " at " + FormatAddress(failed.address) + ": " +
                          words.describe(failed);
    }
    return report;
}

}  // namespace zentro
