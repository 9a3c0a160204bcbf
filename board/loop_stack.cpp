// The loop's instructions that push and pop, and two at once of those that the compiler writes
// around each call of a routine.
#include <algorithm>

#include "board/loop.h"

namespace zentro::loop {

namespace {

bool MayPush(const LoopState& loop, Position now, std::size_t size) {
    return now.stackTop >= loop.stackFloor + size;
}

bool MayPop(Position now, std::size_t size) {
    return now.stackTop + size <= kMemorySize;
}

bool MayStore(const Board& board, Position now) {
    return now.at->b >= board.memory.Decoded().End();
}

template <std::size_t kSize>
Position PushVariable(Board& board, Position now) {
    now.stackTop -= kSize;
    board.memory.CopyBehindCode<kSize>(now.stackTop, now.at->a);
    return {now.at + 1, now.stackTop};
}

template <std::size_t kSize>
Position PopVariable(Board& board, Position now) {
    board.memory.CopyBehindCode<kSize>(now.at->a, now.stackTop);
    return {now.at + 1, now.stackTop + kSize};
}

template <std::size_t kSize>
Position ClearVariable(Board& board, Position now) {
    board.memory.ClearBehindCode<kSize>(now.at->a);
    return {now.at + 1, now.stackTop};
}

/// Here, where the program or its code may be met, it is looked at closely.
template <std::size_t kSize>
[[gnu::cold]] void PushNearProgram(Board& board, LoopState& loop, Position now) {
    if (now.stackTop < board.processor.programSize + kSize)
        return Fails(board, loop, now, Fault::DataStackOverflow);
    // What is pushed is read first: its place may be the stack's own.
    const unsigned value = kSize == 1 ? board.memory.Byte(now.at->a) : board.memory.Word(now.at->a);
    now.stackTop -= kSize;
    if (kSize == 1) {
        board.memory.StoreByte(now.stackTop, value);
    } else {
        board.memory.StoreWord(now.stackTop, value);
    }
    return GoOn(board, loop, now);
}

template <std::size_t kSize>
void Push(Board& board, LoopState& loop, Position now) {
    if (!MayPush(loop, now, kSize)) [[unlikely]]
        return PushNearProgram<kSize>(board, loop, now);
    return CarryOn(board, loop, PushVariable<kSize>(board, now));
}

// Of two instructions at once, what could go wrong is looked at before.

template <std::size_t kFirst, std::size_t kSecond>
void PushTwo(Board& board, LoopState& loop, Position now) {
    if (!MayPush(loop, now, kFirst + kSecond)) [[unlikely]]
        return TakeApart(board, loop, now);
    now = PushVariable<kFirst>(board, now);
    return CarryOn(board, loop, PushVariable<kSecond>(board, now));
}

template <std::size_t kFirst, std::size_t kSecond>
void PopTwo(Board& board, LoopState& loop, Position now) {
    if (!MayPop(now, kFirst + kSecond) || !MayStore(board, now)) [[unlikely]]
        return TakeApart(board, loop, now);
    now = PopVariable<kFirst>(board, now);
    return CarryOn(board, loop, PopVariable<kSecond>(board, now));
}

template <std::size_t kFirst, std::size_t kSecond>
void PopAndClear(Board& board, LoopState& loop, Position now) {
    if (!MayPop(now, kFirst) || !MayStore(board, now)) [[unlikely]]
        return TakeApart(board, loop, now);
    now = PopVariable<kFirst>(board, now);
    return CarryOn(board, loop, ClearVariable<kSecond>(board, now));
}

template <std::size_t kFirst, std::size_t kSecond>
void ClearTwo(Board& board, LoopState& loop, Position now) {
    if (!MayStore(board, now)) [[unlikely]]
        return TakeApart(board, loop, now);
    now = ClearVariable<kFirst>(board, now);
    return CarryOn(board, loop, ClearVariable<kSecond>(board, now));
}

template <std::size_t kSize>
void PushAndCall(Board& board, LoopState& loop, Position now) {
    if (!MayPush(loop, now, kSize) || !MayCall(board)) [[unlikely]]
        return TakeApart(board, loop, now);
    return EnterRoutine(board, loop, PushVariable<kSize>(board, now));
}

template <std::size_t kSize>
void PushAndReturn(Board& board, LoopState& loop, Position now) {
    if (!MayPush(loop, now, kSize) || !MayReturn(board)) [[unlikely]]
        return TakeApart(board, loop, now);
    return LeaveRoutine(board, loop, PushVariable<kSize>(board, now));
}

constexpr std::size_t kByte = BytesUsed(ArgumentRole::ByteRead);
constexpr std::size_t kWord = BytesUsed(ArgumentRole::WordRead);

struct Pair {
    Opcode first;
    Opcode second;
    LoopAction action;
};

constexpr Pair kPairs[] = {
    {Opcode::PushByte, Opcode::PushByte, PushTwo<kByte, kByte>},
    {Opcode::PushByte, Opcode::PushWord, PushTwo<kByte, kWord>},
    {Opcode::PushWord, Opcode::PushByte, PushTwo<kWord, kByte>},
    {Opcode::PushWord, Opcode::PushWord, PushTwo<kWord, kWord>},
    {Opcode::PushByte, Opcode::Call, PushAndCall<kByte>},
    {Opcode::PushWord, Opcode::Call, PushAndCall<kWord>},
    {Opcode::PushByte, Opcode::Return, PushAndReturn<kByte>},
    {Opcode::PushWord, Opcode::Return, PushAndReturn<kWord>},
    {Opcode::PopByte, Opcode::PopByte, PopTwo<kByte, kByte>},
    {Opcode::PopByte, Opcode::PopWord, PopTwo<kByte, kWord>},
    {Opcode::PopWord, Opcode::PopByte, PopTwo<kWord, kByte>},
    {Opcode::PopWord, Opcode::PopWord, PopTwo<kWord, kWord>},
    {Opcode::PopByte, Opcode::ClearByte, PopAndClear<kByte, kByte>},
    {Opcode::PopByte, Opcode::ClearWord, PopAndClear<kByte, kWord>},
    {Opcode::PopWord, Opcode::ClearByte, PopAndClear<kWord, kByte>},
    {Opcode::PopWord, Opcode::ClearWord, PopAndClear<kWord, kWord>},
    {Opcode::ClearByte, Opcode::ClearByte, ClearTwo<kByte, kByte>},
    {Opcode::ClearByte, Opcode::ClearWord, ClearTwo<kByte, kWord>},
    {Opcode::ClearWord, Opcode::ClearByte, ClearTwo<kWord, kByte>},
    {Opcode::ClearWord, Opcode::ClearWord, ClearTwo<kWord, kWord>},
};

}  // namespace

void PushByte(Board& board, LoopState& loop, Position now) {
    return Push<kByte>(board, loop, now);
}

void PushWord(Board& board, LoopState& loop, Position now) {
    return Push<kWord>(board, loop, now);
}

// What is popped is stored last: its place may be the stack's own.
void PopByte(Board& board, LoopState& loop, Position now) {
    if (!MayPop(now, kByte)) [[unlikely]]
        return Fails(board, loop, now, Fault::DataStackUnderflow);
    board.memory.StoreByte(now.at->a, board.memory.Byte(now.stackTop));
    now.stackTop += kByte;
    return GoOn(board, loop, now);
}

void PopWord(Board& board, LoopState& loop, Position now) {
    if (!MayPop(now, kWord)) [[unlikely]]
        return Fails(board, loop, now, Fault::DataStackUnderflow);
    board.memory.StoreWord(now.at->a, board.memory.Word(now.stackTop));
    now.stackTop += kWord;
    return GoOn(board, loop, now);
}

LoopAction ActionOfPair(Opcode first, Opcode second) {
    const auto* row = std::ranges::find_if(
        kPairs, [&](const Pair& pair) { return pair.first == first && pair.second == second; });
    return row == std::end(kPairs) ? nullptr : row->action;
}

}  // namespace zentro::loop
