// The loop's instructions that work on bytes and words in memory.
#include "board/loop.h"

namespace zentro::loop {

namespace {

// A store that meets code is a function of its own: a call in the middle of an instruction would
// have all of them save registers, which takes longer than the store.

[[gnu::cold, gnu::noinline]] void StoreByteInCode(Board& board, LoopState& loop, Position now,
                                                  std::uint32_t address, unsigned value) {
    board.memory.StoreByte(address, value);
    GoOn(board, loop, now);
}

[[gnu::cold, gnu::noinline]] void StoreWordInCode(Board& board, LoopState& loop, Position now,
                                                  std::uint32_t address, unsigned value) {
    board.memory.StoreWord(address, value);
    GoOn(board, loop, now);
}

void StoreByte(Board& board, LoopState& loop, Position now, std::uint32_t address, unsigned value) {
    if (address < board.memory.Decoded().End()) [[unlikely]]
        return StoreByteInCode(board, loop, now, address, value);
    board.memory.StoreByteBehindCode(address, value);
    GoOn(board, loop, now);
}

void StoreWord(Board& board, LoopState& loop, Position now, std::uint32_t address, unsigned value) {
    if (address < board.memory.Decoded().End()) [[unlikely]]
        return StoreWordInCode(board, loop, now, address, value);
    board.memory.StoreWordBehindCode(address, value);
    GoOn(board, loop, now);
}

}  // namespace

void Nop(Board& board, LoopState& loop, Position now) {
    return GoOn(board, loop, now);
}

void MoveByte(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->b, ByteAt(board, now.at->a));
}

void MoveWord(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->b, WordAt(board, now.at->a));
}

void ConvertByte(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->b, ByteAt(board, now.at->a));
}

void ConvertWord(Board& board, LoopState& loop, Position now) {
    const unsigned value = WordAt(board, now.at->a);
    board.memory.StoreByte(now.at->b, value);
    return StoreByte(board, loop, now, now.at->c, value >> 8);
}

void ClearByte(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->a, 0);
}

void ClearWord(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->a, 0);
}

void SetFlagTrue(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->a, kTrue);
}

void SetDataPointer(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->a, now.at->b);
}

void ReadDataByte(Board& board, LoopState& loop, Position now) {
    const std::uint32_t address = WordAt(board, now.at->a);
    if (address >= kMemorySize) [[unlikely]]
        return Fails(board, loop, now, Fault::AddressOutsideMemory);
    return StoreByte(board, loop, now, now.at->b, board.memory.Byte(address));
}

void ReadDataWord(Board& board, LoopState& loop, Position now) {
    const std::uint32_t address = WordAt(board, now.at->a);
    if (address + 1 >= kMemorySize) [[unlikely]]
        return Fails(board, loop, now, Fault::AddressOutsideMemory);
    return StoreWord(board, loop, now, now.at->b, board.memory.Word(address));
}

void WriteDataByte(Board& board, LoopState& loop, Position now) {
    const std::uint32_t address = WordAt(board, now.at->a);
    if (address >= kMemorySize) [[unlikely]]
        return Fails(board, loop, now, Fault::AddressOutsideMemory);
    return StoreByte(board, loop, now, address, ByteAt(board, now.at->b));
}

void WriteDataWord(Board& board, LoopState& loop, Position now) {
    const std::uint32_t address = WordAt(board, now.at->a);
    if (address + 1 >= kMemorySize) [[unlikely]]
        return Fails(board, loop, now, Fault::AddressOutsideMemory);
    return StoreWord(board, loop, now, address, WordAt(board, now.at->b));
}

void AddByte(Board& board, LoopState& loop, Position now) {
    const unsigned sum = ByteAt(board, now.at->a) + ByteAt(board, now.at->b);
    return StoreByte(board, loop, now, now.at->c, sum);
}

void AddWord(Board& board, LoopState& loop, Position now) {
    const unsigned sum = WordAt(board, now.at->a) + WordAt(board, now.at->b);
    return StoreWord(board, loop, now, now.at->c, sum);
}

void SubtractByte(Board& board, LoopState& loop, Position now) {
    const unsigned difference = ByteAt(board, now.at->a) - ByteAt(board, now.at->b);
    return StoreByte(board, loop, now, now.at->c, difference);
}

void SubtractWord(Board& board, LoopState& loop, Position now) {
    const unsigned difference = WordAt(board, now.at->a) - WordAt(board, now.at->b);
    return StoreWord(board, loop, now, now.at->c, difference);
}

void MultiplyByte(Board& board, LoopState& loop, Position now) {
    const unsigned product = ByteAt(board, now.at->a) * ByteAt(board, now.at->b);
    return StoreWord(board, loop, now, now.at->c, product);
}

void DivideByte(Board& board, LoopState& loop, Position now) {
    const unsigned dividend = ByteAt(board, now.at->a);
    const unsigned divisor = ByteAt(board, now.at->b);
    if (divisor == 0) [[unlikely]]
        return Fails(board, loop, now, Fault::DivisionByZero);
    board.memory.StoreByte(now.at->a, dividend / divisor);
    return StoreByte(board, loop, now, now.at->b, dividend % divisor);
}

void DivideWord(Board& board, LoopState& loop, Position now) {
    const unsigned dividend = WordAt(board, now.at->a);
    const unsigned divisor = WordAt(board, now.at->b);
    if (divisor == 0) [[unlikely]]
        return Fails(board, loop, now, Fault::DivisionByZero);
    board.memory.StoreWord(now.at->a, dividend / divisor);
    return StoreWord(board, loop, now, now.at->b, dividend % divisor);
}

void IncrementByte(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->a, ByteAt(board, now.at->a) + 1);
}

void IncrementWord(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->a, WordAt(board, now.at->a) + 1);
}

void DecrementByte(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->a, ByteAt(board, now.at->a) - 1);
}

void DecrementWord(Board& board, LoopState& loop, Position now) {
    return StoreWord(board, loop, now, now.at->a, WordAt(board, now.at->a) - 1);
}

void ComplimentByte(Board& board, LoopState& loop, Position now) {
    return StoreByte(board, loop, now, now.at->a, ~ByteAt(board, now.at->a));
}

void LogicalAnd(Board& board, LoopState& loop, Position now) {
    const unsigned both = ByteAt(board, now.at->a) & ByteAt(board, now.at->b);
    return StoreByte(board, loop, now, now.at->c, both);
}

void LogicalOr(Board& board, LoopState& loop, Position now) {
    const unsigned either = ByteAt(board, now.at->a) | ByteAt(board, now.at->b);
    return StoreByte(board, loop, now, now.at->c, either);
}

}  // namespace zentro::loop
