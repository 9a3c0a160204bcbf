#include "faults/fault_report.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "board/board.h"
#include "board/text.h"
#include "faults/value_text.h"

namespace zentro {

namespace {

/// The instruction that failed, as its bytes stand in memory.
struct FailedInstruction {
    const Board& board;
    const ProgramWords& words;
    std::uint32_t address;
    const Instruction* instruction = nullptr;  ///< null when the byte is no instruction
    std::array<std::uint32_t, kMaxArguments> operands{};
    const InstructionWords* compiled = nullptr;  ///< as the compiler made it, if it still is so
    bool isOverwritten = false;                  ///< the compiler had made another one

    std::string Name() const {
        return instruction == nullptr ? "" : std::string(instruction->name);
    }

    /// "Count", or "[0010]" when the user has not named it.
    std::string Operand(std::size_t slot) const {
        const bool isNamed = compiled != nullptr && !compiled->operands[slot].empty();
        return isNamed ? compiled->operands[slot] : FormatAddress(operands[slot]);
    }
};

bool IsInMemory(std::uint32_t address, std::uint32_t size) {
    return address + size <= kMemorySize;
}

std::uint8_t ByteAt(const Board& board, std::uint32_t address) {
    return IsInMemory(address, 1) ? board.memory.Byte(address) : kNothingThere;
}

bool IsAsCompiled(const Board& board, std::uint32_t address, const InstructionWords& words) {
    for (std::size_t i = 0; i < words.bytes.size(); ++i) {
        if (ByteAt(board, address + static_cast<std::uint32_t>(i)) != words.bytes[i]) return false;
    }
    return true;
}

FailedInstruction FindInstruction(const Board& board, const ProgramWords& words) {
    FailedInstruction failed{board, words, board.processor.instruction};
    if (const InstructionWords* known = words.InstructionAt(failed.address)) {
        failed.isOverwritten = !IsAsCompiled(board, failed.address, *known);
        if (!failed.isOverwritten) failed.compiled = known;
    }
    if (!IsInMemory(failed.address, 1)) return failed;
    const std::uint8_t opcode = board.memory.Byte(failed.address);
    if (opcode >= kInstructionCount) return failed;
    failed.instruction = &InstructionFor(Opcode{opcode});
    std::uint32_t at = failed.address + 1;
    for (std::size_t slot = 0; slot < failed.operands.size(); ++slot) {
        const int size = ArgumentSize(failed.instruction->Argument(slot));
        for (int byte = 0; byte < size; ++byte)
            failed.operands[slot] = failed.operands[slot] << 8 | ByteAt(board, at++);
    }
    return failed;
}

std::string EndOfMemory() {
    return "memory ends at " + FormatAddress(kMemorySize - 1);
}

std::string DescribeUnknownOpcode(const FailedInstruction& failed) {
    const std::string byte = std::to_string(ByteAt(failed.board, failed.address));
    if (const VariableWords* variable = failed.words.VariableAt(failed.address))
        return "the program ran on into the variable " + variable->name + ", and its value " +
               byte + " is no instruction";
    return "the byte there is " + byte + ", and instructions have the numbers 0 to " +
           std::to_string(kInstructionCount - 1);
}

/// The operand that does not lie in memory with all that is used there.
std::optional<std::uint32_t> OperandOutside(const FailedInstruction& failed) {
    for (std::size_t slot = 0; slot < failed.operands.size(); ++slot) {
        if (!IsInMemory(failed.operands[slot], BytesUsed(failed.instruction->roles[slot])))
            return failed.operands[slot];
    }
    return std::nullopt;
}

/// The user reads a pointer's value in the variables window, in decimal.
std::string DescribePointer(const FailedInstruction& failed) {
    const std::uint16_t target = failed.board.memory.Word(failed.operands[0]);
    if (failed.compiled == nullptr)
        return failed.Name() + " follows the pointer " + failed.Operand(0) + ", which leads to " +
               FormatAddress(target) + ", but " + EndOfMemory();
    const std::string leads = failed.Operand(0) + " points to " + std::to_string(target);
    const std::string last = std::to_string(kMemorySize - 1);
    if (IsInMemory(target, 1)) return leads + ", and a word takes two bytes, but memory ends there";
    return leads + ", but memory ends at " + last;
}

std::string DescribeAddress(const FailedInstruction& failed) {
    if (failed.instruction == nullptr) return "the program ran on there, but " + EndOfMemory();
    if (!IsInMemory(failed.address, static_cast<std::uint32_t>(failed.instruction->Size())))
        return failed.Name() + " does not fit there, because " + EndOfMemory();
    if (const auto outside = OperandOutside(failed))
        return failed.Name() + " uses the address " + FormatAddress(*outside) + ", but " +
               EndOfMemory();
    return DescribePointer(failed);
}

std::string BytesOnStack(const Board& board) {
    const std::uint32_t count = kMemorySize - board.processor.stackTop;
    return std::to_string(count) + (count == 1 ? " byte lies" : " bytes lie") + " on the stack";
}

std::string DescribeFullStack(const FailedInstruction& failed) {
    const std::string bytes = BytesOnStack(failed.board);
    if (failed.compiled == nullptr)
        return failed.Name() + " finds no room for " + failed.Operand(0) + ", because " + bytes +
               ", down to the program, which ends before " +
               FormatAddress(failed.board.processor.programSize);
    const std::string text = "there is no room for " + failed.Operand(0) + ", because " + bytes +
                             " and the program takes the rest of the memory";
    return failed.compiled->preparesCall ? text + ". Perhaps a routine calls itself without end"
                                         : text;
}

std::string DescribeEmptyStack(const FailedInstruction& failed) {
    if (failed.compiled == nullptr)
        return failed.Name() + " wants a value for " + failed.Operand(0) + ", but " +
               BytesOnStack(failed.board);
    const bool isWord = failed.instruction->opcode == Opcode::PopWord;
    return failed.Operand(0) + " is to get " + (isWord ? "a word" : "a byte") +
           " from the stack, but " + BytesOnStack(failed.board);
}

std::string DescribeDivision(const FailedInstruction& failed) {
    if (failed.compiled == nullptr)
        return failed.Name() + " divides by " + failed.Operand(1) + ", which holds 0";
    return failed.Operand(1) + " is 0 when " + failed.Operand(0) + " is divided by it";
}

std::string DescribeCalls(const FailedInstruction& failed) {
    const std::string most =
        std::to_string(kReturnStackSize) + " calls inside each other are the most, and ";
    if (failed.compiled == nullptr)
        return most + failed.Name() + " " + failed.Operand(0) +
               " would be one more. Perhaps a routine calls itself without end";
    return most + "this would be one more. Perhaps " + failed.Operand(0) +
           " calls itself without end";
}

std::string DescribeReturn(const FailedInstruction& failed) {
    if (failed.compiled == nullptr) return "RETURN without a CALL before it has nowhere to go";
    return "the routine was not called, so there is nowhere to go back to";
}

std::string DescribeComplete(const FailedInstruction& failed) {
    if (failed.compiled == nullptr)
        return "COMPLETE EVENT ends the handler of an event, and none is running";
    return "this ends the handler of an event, and none is running";
}

/// In which statement, or at which address.
std::string PlaceOf(const FailedInstruction& failed) {
    const InstructionWords* known = failed.words.InstructionAt(failed.address);
    if (known == nullptr) return " at " + FormatAddress(failed.address);
    const StatementWords& statement = failed.words.statements[known->statement];
    return " in " + statement.place + ", " + statement.text;
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

/// "one, two".
std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string ValuesIn(const Board& board, const ProgramWords& words,
                     const StatementWords& statement) {
    std::vector<std::string> values;
    for (const std::size_t place : statement.variables) {
        const VariableWords& variable = words.variables[place];
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = 0; i < std::min(variable.size, kMostBytesShown); ++i)
            bytes.push_back(ByteAt(board, variable.address + static_cast<std::uint32_t>(i)));
        values.push_back(variable.name + " = " +
                         ValueText(bytes, variable.type, variable.size, words.flagWords));
    }
    return Joined(values);
}

/// From the routine of the statement back to the program. Of very many calls the last and the first
/// are told.
std::string CallsBefore(const Board& board, const ProgramWords& words,
                        const StatementWords& statement) {
    constexpr std::size_t kMostToldCalls = 5;
    const Processor& processor = board.processor;
    std::vector<std::string> calls;
    std::string routine = statement.routine;
    int leftOut = 0;
    for (int depth = processor.returnDepth; depth > 0 && !routine.empty(); --depth) {
        const StatementWords* caller =
            words.StatementBefore(processor.returnStack[static_cast<std::size_t>(depth) - 1]);
        if (caller == nullptr) break;
        if (calls.empty()) {
            calls.push_back(routine + " was called in " + caller->place);
        } else if (calls.size() < kMostToldCalls || depth == 1) {
            if (leftOut > 0) calls.push_back(std::to_string(leftOut) + " more calls");
            calls.push_back(routine + " in " + caller->place);
        } else {
            ++leftOut;
        }
        routine = caller->routine;
    }
    return Joined(calls);
}

}  // namespace

std::string FaultReport::WholeText() const {
    std::string whole = text;
    for (const std::string& part : {values, calls})
        if (!part.empty()) whole += ". " + part;
    return whole;
}

FaultReport DescribeFault(const Board& board, const ProgramWords& words) {
    const FailedInstruction failed = FindInstruction(board, words);
    FaultReport report{board.processor.fault, failed.address, ByteAt(board, failed.address), {}};
    for (const FaultWords& row : kFaultWords) {
        if (row.fault != report.fault) continue;
        report.text = row.title + PlaceOf(failed) + ": ";
        if (failed.isOverwritten)
            report.text += "the program has written over this line at " +
                           FormatAddress(failed.address) + ", and now ";
        report.text += row.describe(failed);
    }
    if (const InstructionWords* known = words.InstructionAt(failed.address)) {
        const StatementWords& statement = words.statements[known->statement];
        report.values = ValuesIn(board, words, statement);
        report.calls = CallsBefore(board, words, statement);
    }
    return report;
}

}  // namespace zentro
