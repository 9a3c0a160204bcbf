// The loop that carries out instructions. Its switch is the table that says what each of them does:
// what works on memory and the two stacks stands there, the rest names its function.
#include <algorithm>

#include "board/board.h"
#include "board/handlers.h"

// An opcode without a case does not build, although there is a default.
#pragma GCC diagnostic error "-Wswitch-enum"

namespace zentro {

namespace {

using InstructionHandler = void (*)(Board&, const DecodedInstruction&);

constexpr std::uint64_t kMostAtOnce = 1'000'000'000;  // fewer than kNever
constexpr std::uint64_t kWorthDecoding = 16;          // fewer instructions are decoded one by one

/// Decoded instructions; jumps lead to one by its index.
struct Code {
    const DecodedInstruction* instructions;
    const std::uint16_t* indexes;  ///< by address, null if none can be found
};

/// Carries out instructions until none may be any more, or the next one is not decoded and cannot
/// be, or the board must pause. Returns how many.
std::int32_t Run(Board& board, const Code& code, const DecodedInstruction* first,
                 std::int32_t budget) {
    Memory& memory = board.memory;
    Processor& processor = board.processor;
    // Each a variable of its own: only so do compilers keep them out of memory.
    const DecodedInstruction* at = first;
    const DecodedInstruction* instructions = code.instructions;
    std::uint32_t elsewhere = 0;
    std::int32_t left = budget;
    std::uint32_t stackTop = processor.stackTop;

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
        at = instructions + (code.indexes != nullptr ? code.indexes[address] : 0);
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

    while (true) {
        left -= at->steps;
        if (left < 0) [[unlikely]] {
            left += at->steps;
            if (left == 0 || at->steps != kNever) break;
            const DecodedInstruction* next = memory.Decoded().GoOn(memory, at);
            if (next == nullptr) break;
            at = next;
            instructions = memory.Decoded().Instructions();
            continue;
        }
        const unsigned a = at->a;
        const unsigned b = at->b;
        const unsigned c = at->c;
        InstructionHandler handler = nullptr;
        Fault fault = Fault::None;
        switch (at->opcode) {
            case Opcode::Nop:
            case Opcode::Reserved10:
            case Opcode::Reserved92:
            case Opcode::Reserved93:
            case Opcode::Reserved94:
            case Opcode::Reserved97:
            case Opcode::Reserved98:
            case Opcode::Reserved99: ++at; continue;

            case Opcode::MoveByte: storeByte(b, byte(a)); continue;
            case Opcode::MoveWord: storeWord(b, word(a)); continue;
            case Opcode::ConvertByte: storeWord(b, byte(a)); continue;
            case Opcode::ConvertWord: {
                const unsigned value = word(a);
                memory.StoreByte(b, value);
                storeByte(c, value >> 8);
                continue;
            }
            case Opcode::ClearByte:
            case Opcode::SetFlagFalse: storeByte(a, kFalse); continue;
            case Opcode::SetFlagTrue: storeByte(a, kTrue); continue;
            case Opcode::ClearWord: storeWord(a, 0); continue;

            case Opcode::AddByte: storeByte(c, byte(a) + byte(b)); continue;
            case Opcode::SubtractByte: storeByte(c, byte(a) - byte(b)); continue;
            case Opcode::MultiplyByte: storeWord(c, byte(a) * byte(b)); continue;
            case Opcode::LogicalAnd: storeByte(c, byte(a) & byte(b)); continue;
            case Opcode::LogicalOr: storeByte(c, byte(a) | byte(b)); continue;
            case Opcode::IncrementByte: storeByte(a, byte(a) + 1); continue;
            case Opcode::DecrementByte: storeByte(a, byte(a) - 1); continue;
            case Opcode::ComplimentByte: storeByte(a, ~byte(a)); continue;
            case Opcode::AddWord: storeWord(c, word(a) + word(b)); continue;
            case Opcode::SubtractWord: storeWord(c, word(a) - word(b)); continue;
            case Opcode::IncrementWord: storeWord(a, word(a) + 1); continue;
            case Opcode::DecrementWord: storeWord(a, word(a) - 1); continue;
            case Opcode::DivideByte: {
                const unsigned dividend = byte(a);
                const unsigned divisor = byte(b);
                if (divisor == 0) {
                    fault = Fault::DivisionByZero;
                    break;
                }
                memory.StoreByte(a, dividend / divisor);
                storeByte(b, dividend % divisor);
                continue;
            }
            case Opcode::DivideWord: {
                const unsigned dividend = word(a);
                const unsigned divisor = word(b);
                if (divisor == 0) {
                    fault = Fault::DivisionByZero;
                    break;
                }
                memory.StoreWord(a, dividend / divisor);
                storeWord(b, dividend % divisor);
                continue;
            }

            case Opcode::SetDataPointer: storeWord(a, b); continue;
            case Opcode::ReadDataByte: {
                const unsigned address = word(a);
                if (address >= kMemorySize) {
                    fault = Fault::AddressOutsideMemory;
                    break;
                }
                storeByte(b, byte(address));
                continue;
            }
            case Opcode::ReadDataWord: {
                const unsigned address = word(a);
                if (address + 1 >= kMemorySize) {
                    fault = Fault::AddressOutsideMemory;
                    break;
                }
                storeWord(b, word(address));
                continue;
            }
            case Opcode::WriteDataByte: {
                const unsigned address = word(a);
                if (address >= kMemorySize) {
                    fault = Fault::AddressOutsideMemory;
                    break;
                }
                storeByte(address, byte(b));
                continue;
            }
            case Opcode::WriteDataWord: {
                const unsigned address = word(a);
                if (address + 1 >= kMemorySize) {
                    fault = Fault::AddressOutsideMemory;
                    break;
                }
                storeWord(address, word(b));
                continue;
            }

            // What is pushed is read first and what is popped is stored last: its place may be the
            // stack's own.
            case Opcode::PushByte: {
                const unsigned value = byte(a);
                if (!grow(1)) {
                    fault = Fault::DataStackOverflow;
                    break;
                }
                storeByte(stackTop, value);
                continue;
            }
            case Opcode::PushWord: {
                const unsigned value = word(a);
                if (!grow(2)) {
                    fault = Fault::DataStackOverflow;
                    break;
                }
                storeWord(stackTop, value);
                continue;
            }
            case Opcode::PopByte:
                if (!shrink(1)) {
                    fault = Fault::DataStackUnderflow;
                    break;
                }
                storeByte(a, byte(stackTop - 1));
                continue;
            case Opcode::PopWord:
                if (!shrink(2)) {
                    fault = Fault::DataStackUnderflow;
                    break;
                }
                storeWord(a, word(stackTop - 2));
                continue;

            case Opcode::Jump: jump(); continue;
            case Opcode::LoopUntilZero:
                memory.StoreByte(a, byte(a) - 1);
                jumpIf(byte(a) != 0);
                continue;
            case Opcode::Call:
                if (processor.returnDepth == kReturnStackSize) {
                    fault = Fault::ReturnStackOverflow;
                    break;
                }
                processor.returnStack[processor.returnDepth++] = at[1].start;
                jump();
                continue;
            case Opcode::Return:
                if (processor.returnDepth == 0) {
                    fault = Fault::ReturnStackUnderflow;
                    break;
                }
                moveTo(processor.returnStack[--processor.returnDepth]);
                continue;
            case Opcode::IfFlagTrue: jumpIf(byte(a) != kFalse); continue;
            case Opcode::IfFlagFalse: jumpIf(byte(a) == kFalse); continue;
            case Opcode::IfByteEqual: jumpIf(byte(a) == byte(b)); continue;
            case Opcode::IfByteNotEqual: jumpIf(byte(a) != byte(b)); continue;
            case Opcode::IfByteLessThan: jumpIf(byte(a) < byte(b)); continue;
            case Opcode::IfByteGreaterThan: jumpIf(byte(a) > byte(b)); continue;
            case Opcode::IfByteLessThanOrEqual: jumpIf(byte(a) <= byte(b)); continue;
            case Opcode::IfByteGreaterThanOrEqual: jumpIf(byte(a) >= byte(b)); continue;
            case Opcode::IfWordEqual: jumpIf(word(a) == word(b)); continue;
            case Opcode::IfWordNotEqual: jumpIf(word(a) != word(b)); continue;
            case Opcode::IfWordLessThan: jumpIf(word(a) < word(b)); continue;
            case Opcode::IfWordGreaterThan: jumpIf(word(a) > word(b)); continue;
            case Opcode::IfWordLessThanOrEqual: jumpIf(word(a) <= word(b)); continue;
            case Opcode::IfWordGreaterThanOrEqual: jumpIf(word(a) >= word(b)); continue;

            case Opcode::EmergencyStop: handler = handle::EmergencyStop; break;
            case Opcode::PowerOff: handler = handle::PowerOff; break;
            case Opcode::Escape: handler = handle::Escape; break;
            case Opcode::Sleep: handler = handle::Sleep; break;
            case Opcode::End: handler = handle::End; break;
            case Opcode::DisableEvents: handler = handle::DisableEvents; break;
            case Opcode::EnableEvents: handler = handle::EnableEvents; break;
            case Opcode::Reset: handler = handle::Reset; break;
            case Opcode::ReadBattery: handler = handle::ReadBattery; break;
            case Opcode::Transmit: handler = handle::Transmit; break;
            case Opcode::Receive: handler = handle::Receive; break;
            case Opcode::StopMotors: handler = handle::StopMotors; break;
            case Opcode::SetMotor: handler = handle::SetMotor; break;
            case Opcode::DeferEvents: handler = handle::DeferEvents; break;
            case Opcode::ReadJoystickOne: handler = handle::ReadJoystickOne; break;
            case Opcode::ReadJoystickTwo: handler = handle::ReadJoystickTwo; break;
            case Opcode::CalibrateJoystick: handler = handle::CalibrateJoystick; break;
            case Opcode::SetActionPort: handler = handle::SetActionPort; break;
            case Opcode::ReadDigitalInput: handler = handle::ReadDigitalInput; break;
            case Opcode::ReadAnalogInput: handler = handle::ReadAnalogInput; break;
            case Opcode::ReadTimedInput: handler = handle::ReadTimedInput; break;
            case Opcode::GetProgramNumber: handler = handle::GetProgramNumber; break;
            case Opcode::ReadButton: handler = handle::ReadButton; break;
            case Opcode::ReadPulseCountDigital: handler = handle::ReadPulseCountDigital; break;
            case Opcode::ReadPulseCountTimed: handler = handle::ReadPulseCountTimed; break;
            case Opcode::DisplayHex: handler = handle::DisplayHex; break;
            case Opcode::DisplayNumber: handler = handle::DisplayNumber; break;
            case Opcode::SetServo: handler = handle::SetServo; break;
            case Opcode::SetServoPercent: handler = handle::SetServoPercent; break;
            case Opcode::SetLeftLed: handler = handle::SetLeftLed; break;
            case Opcode::SetRightLed: handler = handle::SetRightLed; break;
            case Opcode::PlaySound: handler = handle::PlaySound; break;
            case Opcode::PlayTune: handler = handle::PlayTune; break;
            case Opcode::RandomizeByte: handler = handle::RandomizeByte; break;
            case Opcode::GetClockTicks: handler = handle::GetClockTicks; break;
            case Opcode::ReadEeprom: handler = handle::ReadEeprom; break;
            case Opcode::WriteEeprom: handler = handle::WriteEeprom; break;
            case Opcode::WaitForTime: handler = handle::WaitForTime; break;
            case Opcode::OnErrorCall: handler = handle::OnErrorCall; break;
            case Opcode::SetEventWatch: handler = handle::SetEventWatch; break;
            case Opcode::RemoveEventWatch: handler = handle::RemoveEventWatch; break;
            case Opcode::RaiseEvent: handler = handle::RaiseEvent; break;
            case Opcode::CompleteEvent: handler = handle::CompleteEvent; break;
            case Opcode::SetMotorFromVars: handler = handle::SetMotorFromVars; break;

            // Nothing else is ever decoded, and the compiler need not look for it.
            case Opcode::Count:
            default: __builtin_unreachable();
        }

        // The board carries it out, or fails to, as if there were no loop.
        processor.instruction = at->address;
        processor.address = at[1].start;
        processor.stackTop = stackTop;
        if (handler != nullptr) {
            handler(board, *at);
        } else {
            Fail(board, fault);
        }
        stackTop = processor.stackTop;
        moveTo(processor.address);
        if (MustPause(board)) break;
    }
    processor.address = at == instructions ? elsewhere : at->start;
    processor.stackTop = stackTop;
    return budget - left;
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
    do {
        const std::uint64_t left = budget - done;
        const std::int32_t carriedOut = left < kWorthDecoding ? 0 : CarryOutMany(board, left);
        if (carriedOut == 0) CarryOutOne(board);
        done += static_cast<std::uint64_t>(std::max(carriedOut, 1));
    } while (done < budget && !MustPause(board));
    board.processor.steps += done;
    return done;
}

}  // namespace zentro
