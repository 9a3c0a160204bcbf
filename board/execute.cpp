// The loop that carries out instructions. Its switch is the table that says what each of them does:
// what works on memory and the two stacks stands there, the rest names its function.
#include <algorithm>

#include "board/board.h"
#include "board/handlers.h"

namespace zentro {

namespace {

constexpr std::uint64_t kMostAtOnce = 1'000'000'000;  // a std::int32_t holds it
constexpr std::uint64_t kWorthDecoding = 16;          // fewer instructions are decoded one by one

/// Decoded instructions; jumps lead to one by its index.
struct Code {
    const DecodedInstruction* instructions;
    const std::uint16_t* indexes;  ///< by address, null if none can be found
};

/// For the cases of one switch.
constexpr int Number(Opcode opcode) {
    return static_cast<int>(opcode);
}
constexpr int Number(LoopAction action) {
    return static_cast<int>(action);
}

/// Carries out instructions until fewer are left than the next block has, or the next one is not
/// decoded and cannot be, or the board must pause. Returns how many.
std::int32_t Run(Board& board, const Code& code, const DecodedInstruction* first,
                 std::int32_t budget) {
    Memory& memory = board.memory;
    Processor& processor = board.processor;
    // Each a variable of its own: only so do compilers keep them out of memory.
    const DecodedInstruction* at = first;
    const DecodedInstruction* instructions = code.instructions;
    const std::uint16_t* indexes = code.indexes;
    std::uint32_t elsewhere = 0;
    std::int32_t left = budget;
    std::uint32_t stackTop = processor.stackTop;
    std::uint32_t returnDepth = processor.returnDepth;
    std::uint32_t stackFloor = 0;  // down to here a pair may push
    Fault fault = Fault::None;

    const auto byte = [&memory](std::uint32_t address) -> unsigned { return memory.Byte(address); };
    const auto word = [&memory](std::uint32_t address) -> unsigned { return memory.Word(address); };
    const auto storeByte = [&](std::uint32_t address, unsigned value) {
        memory.StoreByte(address, value);
        ++at;
    };
    const auto storeWord = [&](std::uint32_t address, unsigned value) {
        memory.StoreWord(address, value);
        ++at;
    };
    const auto moveTo = [&](std::uint32_t address) {
        elsewhere = address;
        at = instructions + (indexes != nullptr ? indexes[address] : 0);
    };
    const auto jump = [&] { at = instructions + at->c; };
    const auto jumpIf = [&](bool condition) {
        if (condition) {
            jump();
        } else {
            ++at;
        }
    };
    const auto grow = [&](std::uint32_t size) {
        if (stackTop < processor.programSize + size) return false;
        stackTop -= size;
        return true;
    };
    const auto shrink = [&](std::uint32_t size) {
        if (stackTop + size > kMemorySize) return false;
        stackTop += size;
        return true;
    };
    const auto mayCall = [&] { return returnDepth < kReturnStackSize; };
    const auto call = [&] {
        processor.returnStack[returnDepth++] = at[1].start;
        jump();
    };
    const auto mayReturn = [&] { return returnDepth > 0; };
    const auto goBack = [&] { moveTo(processor.returnStack[--returnDepth]); };

    // Of two instructions that are carried out at once: what could go wrong is looked at before.
    const auto mayPush = [&](std::uint32_t size) { return stackTop >= stackFloor + size; };
    const auto mayStore = [&] { return at->b >= memory.Decoded().End(); };
    const auto mayPop = [&](std::uint32_t size) {
        return stackTop + size <= kMemorySize && mayStore();
    };
    const auto pushByte = [&](const DecodedInstruction& instruction) {
        const unsigned value = byte(instruction.a);
        memory.StoreByteBehindCode(--stackTop, value);
    };
    const auto pushWord = [&](const DecodedInstruction& instruction) {
        const unsigned value = word(instruction.a);
        memory.StoreWordBehindCode(stackTop -= 2, value);
    };
    const auto popByte = [&](const DecodedInstruction& instruction) {
        memory.StoreByteBehindCode(instruction.a, byte(stackTop++));
    };
    const auto popWord = [&](const DecodedInstruction& instruction) {
        memory.StoreWordBehindCode(instruction.a, word(stackTop));
        stackTop += 2;
    };
    const auto clearByte = [&](const DecodedInstruction& instruction) {
        memory.StoreByteBehindCode(instruction.a, 0);
    };
    const auto clearWord = [&](const DecodedInstruction& instruction) {
        memory.StoreWordBehindCode(instruction.a, 0);
    };
    const auto pair = [&](bool mayBe, const auto& first, const auto& second) {
        if (!mayBe) [[unlikely]] {
            memory.Decoded().TakeApart(at);
            return;
        }
        first(at[0]);
        second(at[1]);
        at += 2;
    };

    const auto findStackFloor = [&] {
        stackFloor = std::max(processor.programSize, memory.Decoded().End());
    };
    findStackFloor();

    const auto stopLooping = [&] {
        processor.address = at == instructions ? elsewhere : at->start;
        processor.stackTop = stackTop;
        processor.returnDepth = static_cast<std::uint16_t>(returnDepth);
        return budget - left;
    };
    // Where the board carries out an instruction, or fails to, as if there were no loop.
    const auto showBoard = [&] {
        processor.instruction = at->address;
        processor.address = at[1].start;
        processor.stackTop = stackTop;
        processor.returnDepth = static_cast<std::uint16_t>(returnDepth);
    };
    const auto goOnWhereTheBoardIs = [&] {
        stackTop = processor.stackTop;
        returnDepth = processor.returnDepth;
        moveTo(processor.address);
    };

    while (true) {
        // The steps of a block are counted when it begins. What is left of it when it is left
        // early is given back.
        if (left < at->steps) [[unlikely]]
            return stopLooping();
        left -= at->steps;
        while (true) {
            switch (Number(at->action)) {
                case Number(Opcode::Nop):
                case Number(Opcode::Reserved10):
                case Number(Opcode::Reserved92):
                case Number(Opcode::Reserved93):
                case Number(Opcode::Reserved94):
                case Number(Opcode::Reserved97):
                case Number(Opcode::Reserved98):
                case Number(Opcode::Reserved99): ++at; continue;

                case Number(Opcode::MoveByte): storeByte(at->b, byte(at->a)); continue;
                case Number(Opcode::MoveWord): storeWord(at->b, word(at->a)); continue;
                case Number(Opcode::ConvertByte): storeWord(at->b, byte(at->a)); continue;
                case Number(Opcode::ConvertWord): {
                    const unsigned value = word(at->a);
                    memory.StoreByte(at->b, value);
                    storeByte(at->c, value >> 8);
                    continue;
                }
                case Number(Opcode::ClearByte):
                case Number(Opcode::SetFlagFalse): storeByte(at->a, kFalse); continue;
                case Number(Opcode::SetFlagTrue): storeByte(at->a, kTrue); continue;
                case Number(Opcode::ClearWord): storeWord(at->a, 0); continue;

                case Number(Opcode::AddByte): storeByte(at->c, byte(at->a) + byte(at->b)); continue;
                case Number(Opcode::SubtractByte):
                    storeByte(at->c, byte(at->a) - byte(at->b));
                    continue;
                case Number(Opcode::MultiplyByte):
                    storeWord(at->c, byte(at->a) * byte(at->b));
                    continue;
                case Number(Opcode::LogicalAnd):
                    storeByte(at->c, byte(at->a) & byte(at->b));
                    continue;
                case Number(Opcode::LogicalOr):
                    storeByte(at->c, byte(at->a) | byte(at->b));
                    continue;
                case Number(Opcode::IncrementByte): storeByte(at->a, byte(at->a) + 1); continue;
                case Number(Opcode::DecrementByte): storeByte(at->a, byte(at->a) - 1); continue;
                case Number(Opcode::ComplimentByte): storeByte(at->a, ~byte(at->a)); continue;
                case Number(Opcode::AddWord): storeWord(at->c, word(at->a) + word(at->b)); continue;
                case Number(Opcode::SubtractWord):
                    storeWord(at->c, word(at->a) - word(at->b));
                    continue;
                case Number(Opcode::IncrementWord): storeWord(at->a, word(at->a) + 1); continue;
                case Number(Opcode::DecrementWord): storeWord(at->a, word(at->a) - 1); continue;
                case Number(Opcode::DivideByte): {
                    const unsigned dividend = byte(at->a);
                    const unsigned divisor = byte(at->b);
                    if (divisor == 0) {
                        fault = Fault::DivisionByZero;
                        break;
                    }
                    memory.StoreByte(at->a, dividend / divisor);
                    storeByte(at->b, dividend % divisor);
                    continue;
                }
                case Number(Opcode::DivideWord): {
                    const unsigned dividend = word(at->a);
                    const unsigned divisor = word(at->b);
                    if (divisor == 0) {
                        fault = Fault::DivisionByZero;
                        break;
                    }
                    memory.StoreWord(at->a, dividend / divisor);
                    storeWord(at->b, dividend % divisor);
                    continue;
                }

                case Number(Opcode::SetDataPointer): storeWord(at->a, at->b); continue;
                case Number(Opcode::ReadDataByte): {
                    const unsigned address = word(at->a);
                    if (address >= kMemorySize) {
                        fault = Fault::AddressOutsideMemory;
                        break;
                    }
                    storeByte(at->b, byte(address));
                    continue;
                }
                case Number(Opcode::ReadDataWord): {
                    const unsigned address = word(at->a);
                    if (address + 1 >= kMemorySize) {
                        fault = Fault::AddressOutsideMemory;
                        break;
                    }
                    storeWord(at->b, word(address));
                    continue;
                }
                case Number(Opcode::WriteDataByte): {
                    const unsigned address = word(at->a);
                    if (address >= kMemorySize) {
                        fault = Fault::AddressOutsideMemory;
                        break;
                    }
                    storeByte(address, byte(at->b));
                    continue;
                }
                case Number(Opcode::WriteDataWord): {
                    const unsigned address = word(at->a);
                    if (address + 1 >= kMemorySize) {
                        fault = Fault::AddressOutsideMemory;
                        break;
                    }
                    storeWord(address, word(at->b));
                    continue;
                }

                // What is pushed is read first and what is popped is stored last: its place may be
                // the stack's own.
                case Number(Opcode::PushByte): {
                    const unsigned value = byte(at->a);
                    if (!grow(1)) {
                        fault = Fault::DataStackOverflow;
                        break;
                    }
                    storeByte(stackTop, value);
                    continue;
                }
                case Number(Opcode::PushWord): {
                    const unsigned value = word(at->a);
                    if (!grow(2)) {
                        fault = Fault::DataStackOverflow;
                        break;
                    }
                    storeWord(stackTop, value);
                    continue;
                }
                case Number(Opcode::PopByte):
                    if (!shrink(1)) {
                        fault = Fault::DataStackUnderflow;
                        break;
                    }
                    storeByte(at->a, byte(stackTop - 1));
                    continue;
                case Number(Opcode::PopWord):
                    if (!shrink(2)) {
                        fault = Fault::DataStackUnderflow;
                        break;
                    }
                    storeWord(at->a, word(stackTop - 2));
                    continue;

                case Number(Opcode::Jump): jump(); break;
                case Number(Opcode::LoopUntilZero):
                    memory.StoreByte(at->a, byte(at->a) - 1);
                    jumpIf(byte(at->a) != 0);
                    break;
                case Number(Opcode::Call):
                    if (!mayCall()) {
                        fault = Fault::ReturnStackOverflow;
                        break;
                    }
                    call();
                    break;
                case Number(Opcode::Return):
                    if (!mayReturn()) {
                        fault = Fault::ReturnStackUnderflow;
                        break;
                    }
                    goBack();
                    break;
                case Number(Opcode::IfFlagTrue): jumpIf(byte(at->a) != kFalse); break;
                case Number(Opcode::IfFlagFalse): jumpIf(byte(at->a) == kFalse); break;
                case Number(Opcode::IfByteEqual): jumpIf(byte(at->a) == byte(at->b)); break;
                case Number(Opcode::IfByteNotEqual): jumpIf(byte(at->a) != byte(at->b)); break;
                case Number(Opcode::IfByteLessThan): jumpIf(byte(at->a) < byte(at->b)); break;
                case Number(Opcode::IfByteGreaterThan): jumpIf(byte(at->a) > byte(at->b)); break;
                case Number(Opcode::IfByteLessThanOrEqual):
                    jumpIf(byte(at->a) <= byte(at->b));
                    break;
                case Number(Opcode::IfByteGreaterThanOrEqual):
                    jumpIf(byte(at->a) >= byte(at->b));
                    break;
                case Number(Opcode::IfWordEqual): jumpIf(word(at->a) == word(at->b)); break;
                case Number(Opcode::IfWordNotEqual): jumpIf(word(at->a) != word(at->b)); break;
                case Number(Opcode::IfWordLessThan): jumpIf(word(at->a) < word(at->b)); break;
                case Number(Opcode::IfWordGreaterThan): jumpIf(word(at->a) > word(at->b)); break;
                case Number(Opcode::IfWordLessThanOrEqual):
                    jumpIf(word(at->a) <= word(at->b));
                    break;
                case Number(Opcode::IfWordGreaterThanOrEqual):
                    jumpIf(word(at->a) >= word(at->b));
                    break;

                case Number(LoopAction::PushBytes): pair(mayPush(2), pushByte, pushByte); continue;
                case Number(LoopAction::PushByteAndWord):
                    pair(mayPush(3), pushByte, pushWord);
                    continue;
                case Number(LoopAction::PushWordAndByte):
                    pair(mayPush(3), pushWord, pushByte);
                    continue;
                case Number(LoopAction::PushWords): pair(mayPush(4), pushWord, pushWord); continue;
                case Number(LoopAction::PopBytes): pair(mayPop(2), popByte, popByte); continue;
                case Number(LoopAction::PopByteAndWord):
                    pair(mayPop(3), popByte, popWord);
                    continue;
                case Number(LoopAction::PopWordAndByte):
                    pair(mayPop(3), popWord, popByte);
                    continue;
                case Number(LoopAction::PopWords): pair(mayPop(4), popWord, popWord); continue;
                case Number(LoopAction::PopByteAndClearByte):
                    pair(mayPop(1), popByte, clearByte);
                    continue;
                case Number(LoopAction::PopByteAndClearWord):
                    pair(mayPop(1), popByte, clearWord);
                    continue;
                case Number(LoopAction::PopWordAndClearByte):
                    pair(mayPop(2), popWord, clearByte);
                    continue;
                case Number(LoopAction::PopWordAndClearWord):
                    pair(mayPop(2), popWord, clearWord);
                    continue;
                case Number(LoopAction::ClearBytes):
                    pair(mayStore(), clearByte, clearByte);
                    continue;
                case Number(LoopAction::ClearByteAndWord):
                    pair(mayStore(), clearByte, clearWord);
                    continue;
                case Number(LoopAction::ClearWordAndByte):
                    pair(mayStore(), clearWord, clearByte);
                    continue;
                case Number(LoopAction::ClearWords):
                    pair(mayStore(), clearWord, clearWord);
                    continue;
                case Number(LoopAction::PushByteAndCall):
                    if (!mayPush(1) || !mayCall()) [[unlikely]] {
                        memory.Decoded().TakeApart(at);
                        continue;
                    }
                    pushByte(*at++);
                    call();
                    break;
                case Number(LoopAction::PushWordAndCall):
                    if (!mayPush(2) || !mayCall()) [[unlikely]] {
                        memory.Decoded().TakeApart(at);
                        continue;
                    }
                    pushWord(*at++);
                    call();
                    break;
                case Number(LoopAction::PushByteAndReturn):
                    if (!mayPush(1) || !mayReturn()) [[unlikely]] {
                        memory.Decoded().TakeApart(at);
                        continue;
                    }
                    pushByte(*at++);
                    goBack();
                    break;
                case Number(LoopAction::PushWordAndReturn):
                    if (!mayPush(2) || !mayReturn()) [[unlikely]] {
                        memory.Decoded().TakeApart(at);
                        continue;
                    }
                    pushWord(*at++);
                    goBack();
                    break;

                case Number(LoopAction::Outside):
                    showBoard();
                    handle::HandlerFor(at->opcode)(board, *at);
                    goOnWhereTheBoardIs();
                    if (MustPause(board)) return stopLooping();
                    break;
                case Number(LoopAction::Link): jump(); break;
                case Number(LoopAction::Place): {
                    const DecodedInstruction* next =
                        left > 0 ? memory.Decoded().GoOn(memory, at) : nullptr;
                    if (next == nullptr) return stopLooping();
                    at = next;
                    instructions = memory.Decoded().Instructions();
                    findStackFloor();
                    break;
                }
                case Number(LoopAction::Leave): left += at->steps; return stopLooping();

                // Nothing else is ever decoded, and the compiler need not look for it.
                default: __builtin_unreachable();
            }
            break;
        }
        if (fault != Fault::None) [[unlikely]] {
            if (!EndsBlock(*at)) left += at[1].steps;
            showBoard();
            Fail(board, fault);
            fault = Fault::None;
            goOnWhereTheBoardIs();
            if (MustPause(board)) return stopLooping();
        }
    }
}

/// One instruction by itself, without anything decoded before.
void CarryOutOne(Board& board) {
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
    Run(board, {code.data(), nullptr}, &code[1], 1);
}

/// At most so many instructions, fewer where they have to be carried out one by one.
std::int32_t CarryOutMany(Board& board, std::uint64_t most) {
    const Processor& processor = board.processor;
    DecodedProgram& decoded = board.memory.Decoded();
    const DecodedInstruction* at = decoded.Find(board.memory, processor.address);
    return Run(board, {decoded.Instructions(), decoded.Indexes()}, at,
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
