#include "board/board.h"
#include "board/handlers.h"

namespace zentro::handle {

namespace {

/// The address in the pointer at `pointer`, if `size` bytes from it on lie in memory.
std::optional<std::uint32_t> Follow(Board& board, std::uint32_t pointer, std::uint32_t size) {
    const std::uint32_t address = board.memory.Word(pointer);
    if (address + size <= kMemorySize) return address;
    Fail(board, Fault::AddressOutsideMemory);
    return std::nullopt;
}

/// Makes room for `size` bytes on the data stack.
bool Grow(Board& board, std::uint32_t size) {
    Processor& processor = board.processor;
    if (processor.stackTop < processor.programSize + size) {
        Fail(board, Fault::DataStackOverflow);
        return false;
    }
    processor.stackTop -= size;
    return true;
}

bool Shrink(Board& board, std::uint32_t size) {
    Processor& processor = board.processor;
    if (processor.stackTop + size > kMemorySize) {
        Fail(board, Fault::DataStackUnderflow);
        return false;
    }
    processor.stackTop += size;
    return true;
}

}  // namespace

void ReadDataByte(Board& board, const DecodedInstruction& instruction) {
    if (const auto address = Follow(board, instruction.a, 1))
        board.memory.StoreByte(instruction.b, board.memory.Byte(*address));
}

void WriteDataByte(Board& board, const DecodedInstruction& instruction) {
    if (const auto address = Follow(board, instruction.a, 1))
        board.memory.StoreByte(*address, board.memory.Byte(instruction.b));
}

void ReadDataWord(Board& board, const DecodedInstruction& instruction) {
    if (const auto address = Follow(board, instruction.a, 2))
        board.memory.StoreWord(instruction.b, board.memory.Word(*address));
}

void WriteDataWord(Board& board, const DecodedInstruction& instruction) {
    if (const auto address = Follow(board, instruction.a, 2))
        board.memory.StoreWord(*address, board.memory.Word(instruction.b));
}

// What is pushed is read first and what is popped is stored last: its place may be the stack's own.

void PushByte(Board& board, const DecodedInstruction& instruction) {
    const std::uint8_t value = board.memory.Byte(instruction.a);
    if (Grow(board, 1)) board.memory.StoreByte(board.processor.stackTop, value);
}

void PopByte(Board& board, const DecodedInstruction& instruction) {
    const std::uint32_t top = board.processor.stackTop;
    if (Shrink(board, 1)) board.memory.StoreByte(instruction.a, board.memory.Byte(top));
}

void PushWord(Board& board, const DecodedInstruction& instruction) {
    const std::uint16_t value = board.memory.Word(instruction.a);
    if (Grow(board, 2)) board.memory.StoreWord(board.processor.stackTop, value);
}

void PopWord(Board& board, const DecodedInstruction& instruction) {
    const std::uint32_t top = board.processor.stackTop;
    if (Shrink(board, 2)) board.memory.StoreWord(instruction.a, board.memory.Word(top));
}

void DivideByte(Board& board, const DecodedInstruction& instruction) {
    const unsigned dividend = board.memory.Byte(instruction.a);
    const unsigned divisor = board.memory.Byte(instruction.b);
    if (divisor == 0) {
        Fail(board, Fault::DivisionByZero);
        return;
    }
    board.memory.StoreByte(instruction.a, dividend / divisor);
    board.memory.StoreByte(instruction.b, dividend % divisor);
}

void DivideWord(Board& board, const DecodedInstruction& instruction) {
    const unsigned dividend = board.memory.Word(instruction.a);
    const unsigned divisor = board.memory.Word(instruction.b);
    if (divisor == 0) {
        Fail(board, Fault::DivisionByZero);
        return;
    }
    board.memory.StoreWord(instruction.a, dividend / divisor);
    board.memory.StoreWord(instruction.b, dividend % divisor);
}

void RandomizeByte(Board& board, const DecodedInstruction& instruction) {
    // A linear congruential generator with the customary constants; its top bits are the best ones.
    board.random = board.random * 1664525U + 1013904223U;
    board.memory.StoreByte(instruction.a, board.random >> 24);
}

void ReadEeprom(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.b, board.eeprom[board.memory.Byte(instruction.a)]);
}

void WriteEeprom(Board& board, const DecodedInstruction& instruction) {
    board.eeprom[board.memory.Byte(instruction.a)] = board.memory.Byte(instruction.b);
}

}  // namespace zentro::handle
