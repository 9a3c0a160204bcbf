// The loop that carries out instructions. What works on memory and the two stacks stands here; the
// rest has its handlers.
#include <algorithm>

#include "board/board.h"
#include "board/handlers.h"

namespace zentro {

namespace {

using InstructionHandler = void (*)(Board&, const DecodedInstruction&);

constexpr std::uint64_t kMostAtOnce = 1'000'000'000;  // fewer than kNever
constexpr std::uint64_t kWorthDecoding = 16;  // fewer instructions are decoded one by one

/// Decoded instructions; jumps lead to one by its index.
struct Code {
    const DecodedInstruction* instructions;
    const std::uint16_t* indexes;  ///< by address, null if none can be found
};

/// What the loop keeps of the processor at hand.
struct Registers {
    const DecodedInstruction* at;
    std::uint32_t elsewhere;  ///< the address if `at` is the first, which stands for all others
    std::uint32_t left;       ///< instructions that may still be carried out
    std::uint32_t stackTop;
    std::uint32_t returnDepth;
};

std::uint32_t AddressOf(const Code& code, const Registers& registers) {
    return registers.at == code.instructions ? registers.elsewhere : registers.at->start;
}

void MoveTo(const Code& code, Registers& registers, std::uint32_t address) {
    registers.elsewhere = address;
    registers.at = code.instructions + (code.indexes != nullptr ? code.indexes[address] : 0);
}

/// Hands the registers to the processor, which then stands behind the present instruction.
void GiveRegisters(Processor& processor, const Registers& registers) {
    processor.instruction = registers.at->address;
    processor.address = registers.at[1].start;
    processor.stackTop = registers.stackTop;
    processor.returnDepth = static_cast<std::uint16_t>(registers.returnDepth);
}

/// Takes them back. When the board must pause they lead out of the loop.
Registers TakeRegisters(const Board& board, const Code& code, Registers registers) {
    const Processor& processor = board.processor;
    registers.stackTop = processor.stackTop;
    registers.returnDepth = processor.returnDepth;
    MoveTo(code, registers, processor.address);
    if (MustPause(board)) registers.at = code.instructions;
    return registers;
}

Registers CarryOut(Board& board, const Code& code, const Registers& registers,
                   InstructionHandler handler) {
    GiveRegisters(board.processor, registers);
    handler(board, *registers.at);
    return TakeRegisters(board, code, registers);
}

Registers FailHere(Board& board, const Code& code, const Registers& registers, Fault fault) {
    GiveRegisters(board.processor, registers);
    Fail(board, fault);
    return TakeRegisters(board, code, registers);
}

/// Carries out instructions until none may be any more, or the next one is not decoded and cannot
/// be, or the board must pause. Returns how many.
std::uint32_t Run(Board& board, Code code, Registers registers) {
    Memory& memory = board.memory;
    Processor& processor = board.processor;
    Registers r = registers;

    const auto byte = [&memory](std::uint32_t address) -> unsigned { return memory.Byte(address); };
    const auto word = [&memory](std::uint32_t address) -> unsigned { return memory.Word(address); };
    const auto storeByte = [&](std::uint32_t address, unsigned value) {
        memory.StoreByte(address, value);
        ++r.at;
    };
    const auto storeWord = [&](std::uint32_t address, unsigned value) {
        memory.StoreWord(address, value);
        ++r.at;
    };
    const auto jump = [&] { r.at = code.instructions + r.at->c; };
    const auto jumpIf = [&](bool condition) {
        if (condition) {
            jump();
        } else {
            ++r.at;
        }
    };
    const auto outside = [&](InstructionHandler handler) {
        r = CarryOut(board, code, r, handler);
    };
    const auto fail = [&](Fault fault) { r = FailHere(board, code, r, fault); };
    const auto grow = [&](std::uint32_t size) {
        if (r.stackTop < processor.programSize + size) return false;
        r.stackTop -= size;
        return true;
    };
    const auto shrink = [&](std::uint32_t size) {
        if (r.stackTop + size > kMemorySize) return false;
        r.stackTop += size;
        return true;
    };

    while (true) {
        const DecodedInstruction* at = r.at;
        if (r.left < at->steps) [[unlikely]] {
            if (r.left == 0 || at->steps != kNever) break;
            const DecodedInstruction* next = memory.Decoded().GoOn(memory, at);
            if (next == nullptr) break;
            r.at = next;
            code.instructions = memory.Decoded().Instructions();
            continue;
        }
        r.left -= at->steps;
        const std::uint16_t a = at->a;
        const std::uint16_t b = at->b;
        const std::uint16_t c = at->c;
        switch (at->opcode) {
            case Opcode::Nop:
            case Opcode::Reserved10:
            case Opcode::Reserved92:
            case Opcode::Reserved93:
            case Opcode::Reserved94:
            case Opcode::Reserved97:
            case Opcode::Reserved98:
            case Opcode::Reserved99: ++r.at; break;

            case Opcode::MoveByte: storeByte(b, byte(a)); break;
            case Opcode::MoveWord: storeWord(b, word(a)); break;
            case Opcode::ConvertByte: storeWord(b, byte(a)); break;
            case Opcode::ConvertWord: {
                const unsigned value = word(a);
                memory.StoreByte(b, value);
                storeByte(c, value >> 8);
                break;
            }
            case Opcode::ClearByte:
            case Opcode::SetFlagFalse: storeByte(a, kFalse); break;
            case Opcode::SetFlagTrue: storeByte(a, kTrue); break;
            case Opcode::ClearWord: storeWord(a, 0); break;

            case Opcode::AddByte: storeByte(c, byte(a) + byte(b)); break;
            case Opcode::SubtractByte: storeByte(c, byte(a) - byte(b)); break;
            case Opcode::MultiplyByte: storeWord(c, byte(a) * byte(b)); break;
            case Opcode::LogicalAnd: storeByte(c, byte(a) & byte(b)); break;
            case Opcode::LogicalOr: storeByte(c, byte(a) | byte(b)); break;
            case Opcode::IncrementByte: storeByte(a, byte(a) + 1); break;
            case Opcode::DecrementByte: storeByte(a, byte(a) - 1); break;
            case Opcode::ComplimentByte: storeByte(a, ~byte(a)); break;
            case Opcode::AddWord: storeWord(c, word(a) + word(b)); break;
            case Opcode::SubtractWord: storeWord(c, word(a) - word(b)); break;
            case Opcode::IncrementWord: storeWord(a, word(a) + 1); break;
            case Opcode::DecrementWord: storeWord(a, word(a) - 1); break;
            case Opcode::DivideByte: {
                const unsigned dividend = byte(a);
                const unsigned divisor = byte(b);
                if (divisor == 0) {
                    fail(Fault::DivisionByZero);
                    break;
                }
                memory.StoreByte(a, dividend / divisor);
                storeByte(b, dividend % divisor);
                break;
            }
            case Opcode::DivideWord: {
                const unsigned dividend = word(a);
                const unsigned divisor = word(b);
                if (divisor == 0) {
                    fail(Fault::DivisionByZero);
                    break;
                }
                memory.StoreWord(a, dividend / divisor);
                storeWord(b, dividend % divisor);
                break;
            }

            case Opcode::SetDataPointer: storeWord(a, b); break;
            case Opcode::ReadDataByte: {
                const unsigned address = word(a);
                if (address < kMemorySize) {
                    storeByte(b, byte(address));
                } else {
                    fail(Fault::AddressOutsideMemory);
                }
                break;
            }
            case Opcode::ReadDataWord: {
                const unsigned address = word(a);
                if (address + 1 < kMemorySize) {
                    storeWord(b, word(address));
                } else {
                    fail(Fault::AddressOutsideMemory);
                }
                break;
            }
            case Opcode::WriteDataByte: {
                const unsigned address = word(a);
                if (address < kMemorySize) {
                    storeByte(address, byte(b));
                } else {
                    fail(Fault::AddressOutsideMemory);
                }
                break;
            }
            case Opcode::WriteDataWord: {
                const unsigned address = word(a);
                if (address + 1 < kMemorySize) {
                    storeWord(address, word(b));
                } else {
                    fail(Fault::AddressOutsideMemory);
                }
                break;
            }

            // What is pushed is read first and what is popped is stored last: its place may be the
            // stack's own.
            case Opcode::PushByte: {
                const unsigned value = byte(a);
                if (grow(1)) {
                    storeByte(r.stackTop, value);
                } else {
                    fail(Fault::DataStackOverflow);
                }
                break;
            }
            case Opcode::PushWord: {
                const unsigned value = word(a);
                if (grow(2)) {
                    storeWord(r.stackTop, value);
                } else {
                    fail(Fault::DataStackOverflow);
                }
                break;
            }
            case Opcode::PopByte:
                if (shrink(1)) {
                    storeByte(a, byte(r.stackTop - 1));
                } else {
                    fail(Fault::DataStackUnderflow);
                }
                break;
            case Opcode::PopWord:
                if (shrink(2)) {
                    storeWord(a, word(r.stackTop - 2));
                } else {
                    fail(Fault::DataStackUnderflow);
                }
                break;

            case Opcode::Jump: jump(); break;
            case Opcode::LoopUntilZero:
                memory.StoreByte(a, byte(a) - 1);
                jumpIf(byte(a) != 0);
                break;
            case Opcode::Call:
                if (r.returnDepth == kReturnStackSize) {
                    fail(Fault::ReturnStackOverflow);
                    break;
                }
                processor.returnStack[r.returnDepth++] = at[1].start;
                jump();
                break;
            case Opcode::Return:
                if (r.returnDepth == 0) {
                    fail(Fault::ReturnStackUnderflow);
                    break;
                }
                MoveTo(code, r, processor.returnStack[--r.returnDepth]);
                break;
            case Opcode::IfFlagTrue: jumpIf(byte(a) != kFalse); break;
            case Opcode::IfFlagFalse: jumpIf(byte(a) == kFalse); break;
            case Opcode::IfByteEqual: jumpIf(byte(a) == byte(b)); break;
            case Opcode::IfByteNotEqual: jumpIf(byte(a) != byte(b)); break;
            case Opcode::IfByteLessThan: jumpIf(byte(a) < byte(b)); break;
            case Opcode::IfByteGreaterThan: jumpIf(byte(a) > byte(b)); break;
            case Opcode::IfByteLessThanOrEqual: jumpIf(byte(a) <= byte(b)); break;
            case Opcode::IfByteGreaterThanOrEqual: jumpIf(byte(a) >= byte(b)); break;
            case Opcode::IfWordEqual: jumpIf(word(a) == word(b)); break;
            case Opcode::IfWordNotEqual: jumpIf(word(a) != word(b)); break;
            case Opcode::IfWordLessThan: jumpIf(word(a) < word(b)); break;
            case Opcode::IfWordGreaterThan: jumpIf(word(a) > word(b)); break;
            case Opcode::IfWordLessThanOrEqual: jumpIf(word(a) <= word(b)); break;
            case Opcode::IfWordGreaterThanOrEqual: jumpIf(word(a) >= word(b)); break;

            case Opcode::EmergencyStop: outside(handle::EmergencyStop); break;
            case Opcode::PowerOff: outside(handle::PowerOff); break;
            case Opcode::Escape: outside(handle::Escape); break;
            case Opcode::Sleep: outside(handle::Sleep); break;
            case Opcode::End: outside(handle::End); break;
            case Opcode::DisableEvents: outside(handle::DisableEvents); break;
            case Opcode::EnableEvents: outside(handle::EnableEvents); break;
            case Opcode::Reset: outside(handle::Reset); break;
            case Opcode::ReadBattery: outside(handle::ReadBattery); break;
            case Opcode::Transmit: outside(handle::Transmit); break;
            case Opcode::Receive: outside(handle::Receive); break;
            case Opcode::StopMotors: outside(handle::StopMotors); break;
            case Opcode::SetMotor: outside(handle::SetMotor); break;
            case Opcode::DeferEvents: outside(handle::DeferEvents); break;
            case Opcode::ReadJoystickOne: outside(handle::ReadJoystickOne); break;
            case Opcode::ReadJoystickTwo: outside(handle::ReadJoystickTwo); break;
            case Opcode::CalibrateJoystick: outside(handle::CalibrateJoystick); break;
            case Opcode::SetActionPort: outside(handle::SetActionPort); break;
            case Opcode::ReadDigitalInput: outside(handle::ReadDigitalInput); break;
            case Opcode::ReadAnalogInput: outside(handle::ReadAnalogInput); break;
            case Opcode::ReadTimedInput: outside(handle::ReadTimedInput); break;
            case Opcode::GetProgramNumber: outside(handle::GetProgramNumber); break;
            case Opcode::ReadButton: outside(handle::ReadButton); break;
            case Opcode::ReadPulseCountDigital: outside(handle::ReadPulseCountDigital); break;
            case Opcode::ReadPulseCountTimed: outside(handle::ReadPulseCountTimed); break;
            case Opcode::DisplayHex: outside(handle::DisplayHex); break;
            case Opcode::DisplayNumber: outside(handle::DisplayNumber); break;
            case Opcode::SetServo: outside(handle::SetServo); break;
            case Opcode::SetServoPercent: outside(handle::SetServoPercent); break;
            case Opcode::SetLeftLed: outside(handle::SetLeftLed); break;
            case Opcode::SetRightLed: outside(handle::SetRightLed); break;
            case Opcode::PlaySound: outside(handle::PlaySound); break;
            case Opcode::PlayTune: outside(handle::PlayTune); break;
            case Opcode::RandomizeByte: outside(handle::RandomizeByte); break;
            case Opcode::GetClockTicks: outside(handle::GetClockTicks); break;
            case Opcode::ReadEeprom: outside(handle::ReadEeprom); break;
            case Opcode::WriteEeprom: outside(handle::WriteEeprom); break;
            case Opcode::WaitForTime: outside(handle::WaitForTime); break;
            case Opcode::OnErrorCall: outside(handle::OnErrorCall); break;
            case Opcode::SetEventWatch: outside(handle::SetEventWatch); break;
            case Opcode::RemoveEventWatch: outside(handle::RemoveEventWatch); break;
            case Opcode::RaiseEvent: outside(handle::RaiseEvent); break;
            case Opcode::CompleteEvent: outside(handle::CompleteEvent); break;
            case Opcode::SetMotorFromVars: outside(handle::SetMotorFromVars); break;
        }
    }
    processor.address = AddressOf(code, r);
    processor.stackTop = r.stackTop;
    processor.returnDepth = static_cast<std::uint16_t>(r.returnDepth);
    return registers.left - r.left;
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
    Run(board, {code.data(), nullptr},
        {&code[1], 0, 1, processor.stackTop, processor.returnDepth});
}

/// At most so many instructions, fewer where they have to be carried out one by one.
std::uint64_t CarryOutMany(Board& board, std::uint64_t most) {
    const Processor& processor = board.processor;
    DecodedProgram& decoded = board.memory.Decoded();
    const DecodedInstruction* at = decoded.Find(board.memory, processor.address);
    return Run(board, {decoded.Instructions(), decoded.Indexes()},
               {at, 0, static_cast<std::uint32_t>(std::min(most, kMostAtOnce)), processor.stackTop,
                processor.returnDepth});
}

}  // namespace

std::uint64_t ExecuteInstructions(Board& board, std::uint64_t budget) {
    std::uint64_t done = 0;
    do {
        const std::uint64_t left = budget - done;
        const std::uint64_t carriedOut = left < kWorthDecoding ? 0 : CarryOutMany(board, left);
        if (carriedOut == 0) CarryOutOne(board);
        done += std::max<std::uint64_t>(carriedOut, 1);
    } while (done < budget && !MustPause(board));
    board.processor.steps += done;
    return done;
}

}  // namespace zentro
