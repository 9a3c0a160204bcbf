#pragma once

#include <cstddef>
#include <cstdint>

#include "board/board.h"
#include "board/decoded_instruction.h"

namespace zentro {

/// More steps than are ever left.
inline constexpr std::int32_t kNever = INT32_MAX;

/// What the loop in execute.cpp shares with the instructions that it carries out.
struct LoopState {
    const DecodedInstruction* instructions;  ///< jumps lead to one by its index
    const std::uint16_t* indexes;            ///< by address, 0 where none is decoded
    std::uint32_t stackFloor;                ///< down to here a push meets neither program nor code
    std::int32_t left;                       ///< steps that may still be carried out
    std::uint32_t elsewhere = 0;             ///< where a jump led that found nothing decoded
    Position now{};                          ///< where the loop stands while no instruction runs
    bool mustEnd = false;                    ///< whatever steps are left
};

/// The instructions of the loop, one function each. It does the work, then goes on with the next
/// instruction: a call at its very end, which costs a jump. So the loop's variables stay in
/// registers, and the machine learns for each instruction by itself what comes next. A function
/// returns only when the loop ends.
namespace loop {

// loop_data.cpp
void Nop(Board& board, LoopState& loop, Position now);
void MoveByte(Board& board, LoopState& loop, Position now);
void MoveWord(Board& board, LoopState& loop, Position now);
void ConvertByte(Board& board, LoopState& loop, Position now);
void ConvertWord(Board& board, LoopState& loop, Position now);
void ClearByte(Board& board, LoopState& loop, Position now);
void ClearWord(Board& board, LoopState& loop, Position now);
void SetFlagTrue(Board& board, LoopState& loop, Position now);
void SetDataPointer(Board& board, LoopState& loop, Position now);
void ReadDataByte(Board& board, LoopState& loop, Position now);
void ReadDataWord(Board& board, LoopState& loop, Position now);
void WriteDataByte(Board& board, LoopState& loop, Position now);
void WriteDataWord(Board& board, LoopState& loop, Position now);
void AddByte(Board& board, LoopState& loop, Position now);
void AddWord(Board& board, LoopState& loop, Position now);
void SubtractByte(Board& board, LoopState& loop, Position now);
void SubtractWord(Board& board, LoopState& loop, Position now);
void MultiplyByte(Board& board, LoopState& loop, Position now);
void DivideByte(Board& board, LoopState& loop, Position now);
void DivideWord(Board& board, LoopState& loop, Position now);
void IncrementByte(Board& board, LoopState& loop, Position now);
void IncrementWord(Board& board, LoopState& loop, Position now);
void DecrementByte(Board& board, LoopState& loop, Position now);
void DecrementWord(Board& board, LoopState& loop, Position now);
void ComplimentByte(Board& board, LoopState& loop, Position now);
void LogicalAnd(Board& board, LoopState& loop, Position now);
void LogicalOr(Board& board, LoopState& loop, Position now);

// loop_flow.cpp
void Jump(Board& board, LoopState& loop, Position now);
void LoopUntilZero(Board& board, LoopState& loop, Position now);
void Call(Board& board, LoopState& loop, Position now);
void Return(Board& board, LoopState& loop, Position now);
void IfFlagTrue(Board& board, LoopState& loop, Position now);
void IfFlagFalse(Board& board, LoopState& loop, Position now);
void IfByteEqual(Board& board, LoopState& loop, Position now);
void IfByteNotEqual(Board& board, LoopState& loop, Position now);
void IfByteLessThan(Board& board, LoopState& loop, Position now);
void IfByteGreaterThan(Board& board, LoopState& loop, Position now);
void IfByteLessThanOrEqual(Board& board, LoopState& loop, Position now);
void IfByteGreaterThanOrEqual(Board& board, LoopState& loop, Position now);
void IfWordEqual(Board& board, LoopState& loop, Position now);
void IfWordNotEqual(Board& board, LoopState& loop, Position now);
void IfWordLessThan(Board& board, LoopState& loop, Position now);
void IfWordGreaterThan(Board& board, LoopState& loop, Position now);
void IfWordLessThanOrEqual(Board& board, LoopState& loop, Position now);
void IfWordGreaterThanOrEqual(Board& board, LoopState& loop, Position now);

// loop_stack.cpp
void PushByte(Board& board, LoopState& loop, Position now);
void PushWord(Board& board, LoopState& loop, Position now);
void PopByte(Board& board, LoopState& loop, Position now);
void PopWord(Board& board, LoopState& loop, Position now);

// execute.cpp: what is no instruction of the loop
void Outside(Board& board, LoopState& loop, Position now);  ///< calls the handler
void Leave(Board& board, LoopState& loop, Position now);    ///< ends the loop
void Link(Board& board, LoopState& loop, Position now);     ///< leads where it is decoded
void Place(Board& board, LoopState& loop, Position now);    ///< decodes what stands there

/// What an instruction comes to that cannot be carried out.
[[gnu::cold]] void Fails(Board& board, LoopState& loop, Position now, Fault fault);

/// Carries out a pair's instructions one by one, from now on.
[[gnu::cold]] void TakeApart(Board& board, LoopState& loop, Position now);

/// The action of two instructions that are carried out at once, null if they are not. Of those that
/// pop or clear, the first one's operand b must be the lowest address that they store at.
LoopAction ActionOfPair(Opcode first, Opcode second);

/// Goes on with this instruction of the same block.
inline void CarryOn(Board& board, LoopState& loop, Position now) {
    return now.at->action(board, loop, now);
}
/// Goes on with the one behind it.
inline void GoOn(Board& board, LoopState& loop, Position now) {
    return CarryOn(board, loop, {now.at + 1, now.stackTop});
}

inline void Stop(LoopState& loop, Position now) {
    loop.now = now;
}

/// Begins another block: all its steps are counted.
inline void Enter(Board& board, LoopState& loop, Position now) {
    if (now.at->steps > loop.left) [[unlikely]]
        return Stop(loop, now);
    loop.left -= now.at->steps;
    return CarryOn(board, loop, now);
}

inline void JumpTo(Board& board, LoopState& loop, Position now) {
    return Enter(board, loop, {loop.instructions + now.at->c, now.stackTop});
}

/// Where an address was decoded; if it was not, the loop ends there.
inline void MoveTo(Board& board, LoopState& loop, Position now, std::uint32_t address) {
    loop.elsewhere = address;
    return Enter(board, loop, {loop.instructions + loop.indexes[address], now.stackTop});
}

inline bool MayCall(const Board& board) {
    return board.processor.returnDepth < kReturnStackSize;
}
inline void EnterRoutine(Board& board, LoopState& loop, Position now) {
    Processor& processor = board.processor;
    processor.returnStack[processor.returnDepth++] = now.at[1].start;
    return JumpTo(board, loop, now);
}

inline bool MayReturn(const Board& board) {
    return board.processor.returnDepth > 0;
}
inline void LeaveRoutine(Board& board, LoopState& loop, Position now) {
    Processor& processor = board.processor;
    return MoveTo(board, loop, now, processor.returnStack[--processor.returnDepth]);
}

/// What the address that is an instruction's operand leads to.
inline unsigned ByteAt(const Board& board, std::uint16_t operand) {
    return board.memory.Byte(operand);
}
inline unsigned WordAt(const Board& board, std::uint16_t operand) {
    return board.memory.Word(operand);
}

}  // namespace loop

}  // namespace zentro
