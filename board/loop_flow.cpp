// The loop's instructions that lead elsewhere in the program: each ends a block.
#include "board/loop.h"

namespace zentro::loop {

namespace {

void JumpIf(bool condition, Board& board, LoopState& loop, Position now) {
    if (condition) return JumpTo(board, loop, now);
    return Enter(board, loop, {now.at + 1, now.stackTop});
}

}  // namespace

void Jump(Board& board, LoopState& loop, Position now) {
    return JumpTo(board, loop, now);
}

void LoopUntilZero(Board& board, LoopState& loop, Position now) {
    board.memory.StoreByte(now.at->a, ByteAt(board, now.at->a) - 1);
    return JumpIf(ByteAt(board, now.at->a) != 0, board, loop, now);
}

void Call(Board& board, LoopState& loop, Position now) {
    if (!MayCall(board)) [[unlikely]]
        return Fails(board, loop, now, Fault::ReturnStackOverflow);
    return EnterRoutine(board, loop, now);
}

void Return(Board& board, LoopState& loop, Position now) {
    if (!MayReturn(board)) [[unlikely]]
        return Fails(board, loop, now, Fault::ReturnStackUnderflow);
    return LeaveRoutine(board, loop, now);
}

void IfFlagTrue(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) != kFalse, board, loop, now);
}

void IfFlagFalse(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) == kFalse, board, loop, now);
}

void IfByteEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) == ByteAt(board, now.at->b), board, loop, now);
}

void IfByteNotEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) != ByteAt(board, now.at->b), board, loop, now);
}

void IfByteLessThan(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) < ByteAt(board, now.at->b), board, loop, now);
}

void IfByteGreaterThan(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) > ByteAt(board, now.at->b), board, loop, now);
}

void IfByteLessThanOrEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) <= ByteAt(board, now.at->b), board, loop, now);
}

void IfByteGreaterThanOrEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(ByteAt(board, now.at->a) >= ByteAt(board, now.at->b), board, loop, now);
}

void IfWordEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) == WordAt(board, now.at->b), board, loop, now);
}

void IfWordNotEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) != WordAt(board, now.at->b), board, loop, now);
}

void IfWordLessThan(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) < WordAt(board, now.at->b), board, loop, now);
}

void IfWordGreaterThan(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) > WordAt(board, now.at->b), board, loop, now);
}

void IfWordLessThanOrEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) <= WordAt(board, now.at->b), board, loop, now);
}

void IfWordGreaterThanOrEqual(Board& board, LoopState& loop, Position now) {
    return JumpIf(WordAt(board, now.at->a) >= WordAt(board, now.at->b), board, loop, now);
}

}  // namespace zentro::loop
