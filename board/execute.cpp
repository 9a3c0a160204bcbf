// The loop that carries out instructions: fast because each was decoded and its addresses checked
// once. What works on memory alone stands here; the rest has its handlers.
#include "board/board.h"
#include "board/operations.h"

namespace zentro {

namespace {

// The sizes of instructions by their arguments. A constant lets the next instruction be fetched
// before this one's operands have arrived.
constexpr std::uint32_t kNoArguments = 1;
constexpr std::uint32_t kOneAddress = 3;
constexpr std::uint32_t kTwoAddresses = 5;
constexpr std::uint32_t kThreeAddresses = 7;

/// An instruction that the loop does not know itself.
void CarryOut(Board& board, std::uint32_t address) {
    const DecodedInstruction instruction = board.memory.DecodedAt(address);
    Processor& processor = board.processor;
    processor.instruction = address;
    if (instruction.opcode == kFaulty) {
        processor.address = address + instruction.b;
        Fail(board, Fault{static_cast<std::uint8_t>(instruction.a)});
        return;
    }
    processor.address =
        address + static_cast<std::uint32_t>(InstructionFor(instruction.opcode).Size());
    const InstructionHandler handler = OperationFor(instruction.opcode).handler;
    if (handler != nullptr) handler(board, instruction);
}

}  // namespace

std::uint64_t ExecuteInstructions(Board& board, std::uint64_t budget) {
    Memory& memory = board.memory;
    std::uint32_t at = board.processor.address;
    std::uint64_t left = budget;

    const auto byte = [&memory](std::uint32_t address) -> unsigned { return memory.Byte(address); };
    const auto word = [&memory](std::uint32_t address) -> unsigned { return memory.Word(address); };
    // A guessed jump is far faster than one that waits for its operands. The empty statement, which
    // the compiler must not move, keeps it from making one computation out of the two ways on.
    const auto jumpIf = [&at](bool condition, std::uint32_t target, std::uint32_t size) {
        if (condition) {
            at = target;
            asm volatile("");
        } else {
            at += size;
        }
    };

    while (left > 0) {
        // Taken apart here: the instruction may overwrite itself.
        const DecodedInstruction& decoded = memory.DecodedAt(at);
        const Opcode opcode = decoded.opcode;
        const std::uint16_t a = decoded.a;
        const std::uint16_t b = decoded.b;
        const std::uint16_t c = decoded.c;
        --left;
        switch (opcode) {
            case Opcode::Nop: at += kNoArguments; break;
            case Opcode::MoveByte:
                memory.StoreByte(b, byte(a));
                at += kTwoAddresses;
                break;
            case Opcode::MoveWord:
                memory.StoreWord(b, word(a));
                at += kTwoAddresses;
                break;
            case Opcode::SetDataPointer:
                memory.StoreWord(a, b);
                at += kTwoAddresses;
                break;
            case Opcode::ConvertByte:
                memory.StoreWord(b, byte(a));
                at += kTwoAddresses;
                break;
            case Opcode::ConvertWord: {
                const unsigned value = word(a);
                memory.StoreByte(b, value);
                memory.StoreByte(c, value >> 8);
                at += kThreeAddresses;
                break;
            }
            case Opcode::Jump: at = a; break;
            case Opcode::LoopUntilZero:
                memory.StoreByte(a, byte(a) - 1U);
                jumpIf(byte(a) != 0, b, kTwoAddresses);
                break;
            case Opcode::AddByte:
                memory.StoreByte(c, byte(a) + byte(b));
                at += kThreeAddresses;
                break;
            case Opcode::SubtractByte:
                memory.StoreByte(c, byte(a) - byte(b));
                at += kThreeAddresses;
                break;
            case Opcode::MultiplyByte:
                memory.StoreWord(c, byte(a) * byte(b));
                at += kThreeAddresses;
                break;
            case Opcode::LogicalAnd:
                memory.StoreByte(c, byte(a) & byte(b));
                at += kThreeAddresses;
                break;
            case Opcode::LogicalOr:
                memory.StoreByte(c, byte(a) | byte(b));
                at += kThreeAddresses;
                break;
            case Opcode::IncrementByte:
                memory.StoreByte(a, byte(a) + 1U);
                at += kOneAddress;
                break;
            case Opcode::DecrementByte:
                memory.StoreByte(a, byte(a) - 1U);
                at += kOneAddress;
                break;
            case Opcode::ComplimentByte:
                memory.StoreByte(a, ~byte(a));
                at += kOneAddress;
                break;
            case Opcode::ClearByte:
            case Opcode::SetFlagFalse:
                memory.StoreByte(a, kFalse);
                at += kOneAddress;
                break;
            case Opcode::SetFlagTrue:
                memory.StoreByte(a, kTrue);
                at += kOneAddress;
                break;
            case Opcode::AddWord:
                memory.StoreWord(c, word(a) + word(b));
                at += kThreeAddresses;
                break;
            case Opcode::SubtractWord:
                memory.StoreWord(c, word(a) - word(b));
                at += kThreeAddresses;
                break;
            case Opcode::IncrementWord:
                memory.StoreWord(a, word(a) + 1U);
                at += kOneAddress;
                break;
            case Opcode::DecrementWord:
                memory.StoreWord(a, word(a) - 1U);
                at += kOneAddress;
                break;
            case Opcode::ClearWord:
                memory.StoreWord(a, 0);
                at += kOneAddress;
                break;
            case Opcode::IfFlagTrue: jumpIf(byte(a) != kFalse, b, kTwoAddresses); break;
            case Opcode::IfFlagFalse: jumpIf(byte(a) == kFalse, b, kTwoAddresses); break;
            case Opcode::IfByteEqual: jumpIf(byte(a) == byte(b), c, kThreeAddresses); break;
            case Opcode::IfByteNotEqual: jumpIf(byte(a) != byte(b), c, kThreeAddresses); break;
            case Opcode::IfByteLessThan: jumpIf(byte(a) < byte(b), c, kThreeAddresses); break;
            case Opcode::IfByteGreaterThan: jumpIf(byte(a) > byte(b), c, kThreeAddresses); break;
            case Opcode::IfByteLessThanOrEqual:
                jumpIf(byte(a) <= byte(b), c, kThreeAddresses);
                break;
            case Opcode::IfByteGreaterThanOrEqual:
                jumpIf(byte(a) >= byte(b), c, kThreeAddresses);
                break;
            case Opcode::IfWordEqual: jumpIf(word(a) == word(b), c, kThreeAddresses); break;
            case Opcode::IfWordNotEqual: jumpIf(word(a) != word(b), c, kThreeAddresses); break;
            case Opcode::IfWordLessThan: jumpIf(word(a) < word(b), c, kThreeAddresses); break;
            case Opcode::IfWordGreaterThan: jumpIf(word(a) > word(b), c, kThreeAddresses); break;
            case Opcode::IfWordLessThanOrEqual:
                jumpIf(word(a) <= word(b), c, kThreeAddresses);
                break;
            case Opcode::IfWordGreaterThanOrEqual:
                jumpIf(word(a) >= word(b), c, kThreeAddresses);
                break;
            default:
                if (opcode == kNotDecoded) {
                    memory.Decode(at);
                    ++left;
                    break;
                }
                CarryOut(board, at);
                at = board.processor.address;
                if (MustPause(board)) {
                    board.processor.steps += budget - left;
                    return budget - left;
                }
                break;
        }
    }
    board.processor.address = at;
    board.processor.steps += budget;
    return budget;
}

}  // namespace zentro
