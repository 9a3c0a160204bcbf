// The loop that carries out instructions. What each of them does stands in loop_*.cpp.
#include <algorithm>

#include "board/instruction_actions.h"
#include "board/loop.h"

namespace zentro {

namespace loop {

namespace {

/// Shows the board where it stands while an instruction runs, or fails, as if there were no loop.
void ShowBoard(Board& board, Position now) {
    Processor& processor = board.processor;
    processor.instruction = now.at->address;
    processor.address = now.at[1].start;
    processor.stackTop = static_cast<std::uint32_t>(now.stackTop);
}

void End(LoopState& loop, Position now) {
    loop.mustEnd = true;
    Stop(loop, now);
}

/// Goes on where the board stands after something else than the loop has moved it.
void GoOnWhereTheBoardIs(Board& board, LoopState& loop, Position now) {
    now.stackTop = board.processor.stackTop;
    if (!MustPause(board)) return MoveTo(board, loop, now, board.processor.address);
    loop.elsewhere = board.processor.address;
    return End(loop, {loop.instructions, now.stackTop});
}

std::uint32_t StackFloor(const Board& board) {
    return std::max(board.processor.programSize, board.memory.Decoded().End());
}

}  // namespace

void Outside(Board& board, LoopState& loop, Position now) {
    ShowBoard(board, now);
    HandlerFor(now.at->opcode)(board, *now.at);
    return GoOnWhereTheBoardIs(board, loop, now);
}

void Fails(Board& board, LoopState& loop, Position now, Fault fault) {
    if (!EndsBlock(*now.at)) loop.left += now.at[1].steps;
    ShowBoard(board, now);
    Fail(board, fault);
    return GoOnWhereTheBoardIs(board, loop, now);
}

void TakeApart(Board& board, LoopState& loop, Position now) {
    board.memory.Decoded().TakeApart(now.at);
    return CarryOn(board, loop, now);
}

void Leave(Board&, LoopState& loop, Position now) {
    loop.left += now.at->steps;
    return End(loop, now);
}

void Link(Board& board, LoopState& loop, Position now) {
    return JumpTo(board, loop, now);
}

void Place(Board& board, LoopState& loop, Position now) {
    DecodedProgram& decoded = board.memory.Decoded();
    const DecodedInstruction* next = decoded.GoOn(board.memory, now.at);
    if (next == nullptr) return End(loop, now);
    loop.instructions = decoded.Instructions();
    loop.stackFloor = StackFloor(board);
    return Enter(board, loop, {next, now.stackTop});
}

}  // namespace loop

namespace {

// Where a compiler makes real calls of what goes on with the next instruction, as without
// optimisation, this bounds their depth.
constexpr std::uint64_t kMostAtOnce = 4096;
constexpr std::uint64_t kWorthDecoding = 16;  // fewer instructions are decoded one by one

/// Carries out instructions until fewer are left than the next block has, or the next one is not
/// decoded and cannot be, or the board must pause. Returns how many.
std::int32_t Run(Board& board, const DecodedInstruction* instructions, const std::uint16_t* indexes,
                 const DecodedInstruction* first, std::int32_t budget) {
    LoopState loop{instructions, indexes, loop::StackFloor(board),
                   budget,       0,       {first, board.processor.stackTop}};
    do {
        loop::Enter(board, loop, loop.now);
    } while (!loop.mustEnd && loop.now.at->steps <= loop.left);
    const Position now = loop.now;
    Processor& processor = board.processor;
    processor.address = now.at == loop.instructions ? loop.elsewhere : now.at->start;
    processor.stackTop = static_cast<std::uint32_t>(now.stackTop);
    return budget - loop.left;
}

/// One instruction by itself, without anything decoded before.
void CarryOutOne(Board& board) {
    static constexpr std::array<std::uint16_t, DecodedProgram::kAddresses> kNothingDecoded{};
    Processor& processor = board.processor;
    const DecodedInstruction instruction = DecodeInstruction(board.memory, processor.address);
    if (instruction.fault != Fault::None) {
        processor.instruction = processor.address;
        processor.address = AddressBehind(instruction);
        Fail(board, instruction.fault);
        return;
    }
    std::array<DecodedInstruction, 4> code{};
    code[1] = instruction;
    code[2].start = static_cast<std::uint16_t>(AddressBehind(instruction));
    code[3].start = JumpTargetOf(instruction);
    if (HasJumpTarget(instruction)) code[1].c = 3;
    Run(board, code.data(), kNothingDecoded.data(), &code[1], 1);
}

/// At most so many instructions, fewer where they have to be carried out one by one.
std::int32_t CarryOutMany(Board& board, std::uint64_t most) {
    const Processor& processor = board.processor;
    DecodedProgram& decoded = board.memory.Decoded();
    const DecodedInstruction* at = decoded.Find(board.memory, processor.address);
    return Run(board, decoded.Instructions(), decoded.Indexes(), at,
               static_cast<std::int32_t>(std::min(most, kMostAtOnce)));
}

}  // namespace

std::uint64_t ExecuteInstructions(Board& board, std::uint64_t budget) {
    std::uint64_t done = 0;
    std::uint64_t oneByOne = 0;  // how many to carry out so
    do {
        const std::uint64_t left = budget - done;
        if (oneByOne == 0) {
            const std::int32_t carriedOut = left < kWorthDecoding ? 0 : CarryOutMany(board, left);
            done += static_cast<std::uint64_t>(carriedOut);
            // What is left is less than a block, or the next instruction cannot be decoded.
            oneByOne = carriedOut == 0 ? kWorthDecoding : 0;
        } else {
            CarryOutOne(board);
            ++done;
            --oneByOne;
        }
    } while (done < budget && !MustPause(board));
    board.processor.steps += done;
    return done;
}

}  // namespace zentro
