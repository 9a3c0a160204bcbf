#include "board/decoded_program.h"

#include <algorithm>

#include "board/instruction_actions.h"
#include "board/loop.h"

namespace zentro {

namespace {

constexpr std::size_t kLongestRun = 64;           // instructions that are decoded in one go
constexpr std::size_t kShortRun = 2;              // the same right after instructions changed
constexpr int kShortRuns = 64;                    // how many runs count as right after
constexpr std::size_t kMostRepeated = 16;         // of them, how many may stand elsewhere already
constexpr std::int32_t kMostSteps = 16;           // of one instruction with what leads to it
constexpr std::size_t kMostInstructions = 60000;  // indexes have 16 bits

/// Whether the program can go on with the instruction behind this one.
bool CanGoOn(const DecodedInstruction& instruction) {
    switch (instruction.opcode) {
        case Opcode::EmergencyStop:
        case Opcode::PowerOff:
        case Opcode::Escape:
        case Opcode::End:
        case Opcode::Reset:
        case Opcode::Return:
        case Opcode::Jump:
        case Opcode::CompleteEvent: return false;
        default: return instruction.fault == Fault::None;
    }
}

bool LeadsOn(const DecodedInstruction& instruction) {
    return instruction.fault == Fault::None &&
           (instruction.opcode == Opcode::Nop || instruction.opcode == Opcode::Jump);
}

bool Stores(Opcode opcode) {
    return InstructionFor(opcode).roles[0] == ArgumentRole::ByteWritten ||
           InstructionFor(opcode).roles[0] == ArgumentRole::WordWritten;
}

/// An instruction without a step of its own.
DecodedInstruction Link(std::uint16_t start, std::uint16_t target) {
    DecodedInstruction link{.c = target, .start = start};
    link.address = start;
    link.action = loop::Link;
    return link;
}

}  // namespace

DecodedProgram& DecodedProgram::operator=(const DecodedProgram&) {
    Clear();
    return *this;
}

void DecodedProgram::Clear() {
    tables_.reset();
    end_ = 0;
}

const DecodedInstruction* DecodedProgram::Find(const Memory& memory, std::uint32_t address) {
    if (!tables_) tables_ = std::make_unique<Tables>();
    if (IsFull()) ForgetAll();
    StartAgainIfForgotten();
    const std::uint16_t known = tables_->indexes[address];
    const std::uint16_t index = known != 0 ? known : Decode(memory, address);
    return Instructions() + index;
}

const DecodedInstruction* DecodedProgram::GoOn(const Memory& memory,
                                               const DecodedInstruction* place) {
    if (tables_->isForgotten || IsFull()) return nullptr;
    // From now on the jump leads there itself, and what runs on to here needs not look again.
    const std::size_t jump = place->a;
    const auto index = static_cast<std::size_t>(place - Instructions());
    const auto target = static_cast<std::uint16_t>(Find(memory, place->start) - Instructions());
    if (jump != 0) tables_->instructions[jump].c = target;
    tables_->instructions[index] = Link(tables_->instructions[index].start, target);
    return Instructions() + target;
}

bool DecodedProgram::IsFull() const {
    return tables_->instructions.size() > kMostInstructions;
}

void DecodedProgram::ByteWasWritten(std::size_t address) {
    if (!tables_->isCode[address]) return;
    tables_->isWritten[address] = true;
    tables_->shortRuns = kShortRuns;
    ForgetAll();
}

void DecodedProgram::ForgetAll() {
    for (DecodedInstruction& instruction : tables_->instructions) {
        instruction.action = loop::Leave;
    }
    tables_->isForgotten = true;
    tables_->isCode.reset();
    end_ = 0;
}

void DecodedProgram::StartAgainIfForgotten() {
    if (!tables_->isForgotten) return;
    tables_->isForgotten = false;
    for (const DecodedInstruction& instruction : tables_->instructions) {
        tables_->indexes[instruction.start] = 0;
    }
    tables_->instructions.resize(1);
}

/// Decodes a run of instructions and returns the index of the first.
std::uint16_t DecodedProgram::Decode(const Memory& memory, std::uint32_t address) {
    auto& instructions = tables_->instructions;
    const std::size_t first = instructions.size();
    const std::uint32_t behind = DecodeRun(memory, address);
    const std::size_t end = instructions.size();
    CountBlocks(first);
    FindPairs(first);
    if (tables_->shortRuns > 0) --tables_->shortRuns;
    AppendPlace(behind, 0);
    for (std::size_t index = first; index < end; ++index) {
        if (HasJumpTarget(instructions[index])) ConnectJump(index);
    }
    return static_cast<std::uint16_t>(first);
}

/// Appends the instructions of a run and returns the address behind the last.
std::uint32_t DecodedProgram::DecodeRun(const Memory& memory, std::uint32_t address) {
    auto& instructions = tables_->instructions;
    std::uint32_t next = address;
    std::size_t repeated = 0;
    const std::size_t longest = tables_->shortRuns > 0 ? kShortRun : kLongestRun;
    for (std::size_t length = 0; length < longest; ++length) {
        const DecodedInstruction instruction = DecodeWithWay(memory, next);
        if (length > 0 && IsWritten(instruction)) break;
        std::uint16_t& index = tables_->indexes[next];
        if (index == 0) {
            index = static_cast<std::uint16_t>(instructions.size());
        } else if (++repeated > kMostRepeated) {
            break;
        }
        MarkAsCode(instruction);
        instructions.push_back(instruction);
        next = AddressBehind(instruction);
        if (!CanGoOn(instruction)) break;
    }
    return next;
}

/// The instruction to which the NOPs and JUMPs at `start` lead, if there are any.
DecodedInstruction DecodedProgram::DecodeWithWay(const Memory& memory, std::uint32_t start) {
    DecodedInstruction instruction = DecodeInstruction(memory, start);
    std::int32_t steps = 1;
    const std::int32_t most = tables_->shortRuns > 0 ? 1 : kMostSteps;
    while (LeadsOn(instruction) && steps < most) {
        const bool jumps = instruction.opcode == Opcode::Jump;
        const DecodedInstruction ahead =
            DecodeInstruction(memory, jumps ? instruction.a : AddressBehind(instruction));
        if (ahead.fault != Fault::None || IsWritten(ahead)) break;
        MarkAsCode(instruction);
        instruction = ahead;
        ++steps;
    }
    instruction.start = static_cast<std::uint16_t>(start);
    if (instruction.fault == Fault::None) instruction.steps = steps;
    return instruction;
}

/// Adds to the steps of each instruction of a run those of what follows it in its block.
void DecodedProgram::CountBlocks(std::size_t first) {
    auto& instructions = tables_->instructions;
    for (std::size_t index = instructions.size() - 1; index-- > first;) {
        DecodedInstruction& instruction = instructions[index];
        if (EndsBlock(instruction)) continue;
        instruction.steps += (&instruction)[1].steps;
    }
}

void DecodedProgram::FindPairs(std::size_t first) {
    auto& instructions = tables_->instructions;
    for (std::size_t index = first; index + 1 < instructions.size(); ++index) {
        DecodedInstruction& one = instructions[index];
        const DecodedInstruction& two = instructions[index + 1];
        if (one.fault != Fault::None || two.fault != Fault::None) continue;
        const LoopAction pair = loop::ActionOfPair(one.opcode, two.opcode);
        if (pair == nullptr) continue;
        one.action = pair;
        if (Stores(one.opcode)) one.b = std::min(one.a, two.a);
    }
}

void DecodedProgram::TakeApart(const DecodedInstruction* pair) {
    const auto index = static_cast<std::size_t>(pair - Instructions());
    tables_->instructions[index].action = ActionFor(pair->opcode);
}

void DecodedProgram::ConnectJump(std::size_t jump) {
    auto& instructions = tables_->instructions;
    const std::uint16_t target = JumpTargetOf(instructions[jump]);
    const std::uint16_t known = tables_->indexes[target];
    instructions[jump].c = known != 0 ? known : static_cast<std::uint16_t>(instructions.size());
    if (known == 0) AppendPlace(target, jump);
}

/// Appends what leads to an address: at once if that is decoded, else through GoOn, which connects
/// the jump, if there is one, as well.
void DecodedProgram::AppendPlace(std::uint32_t address, std::size_t jump) {
    const auto start = static_cast<std::uint16_t>(address);
    const std::uint16_t known = tables_->indexes[address];
    DecodedInstruction place{.a = static_cast<std::uint16_t>(jump), .start = start};
    place.address = start;
    place.action = loop::Place;
    tables_->instructions.push_back(known != 0 ? Link(start, known) : place);
}

void DecodedProgram::MarkAsCode(const DecodedInstruction& instruction) {
    const std::uint32_t end = AddressBehind(instruction);
    for (std::uint32_t address = instruction.address; address < end; ++address) {
        tables_->isCode[address] = true;
    }
    end_ = std::max(end_, end);
}

bool DecodedProgram::IsWritten(const DecodedInstruction& instruction) const {
    const std::uint32_t end = AddressBehind(instruction);
    for (std::uint32_t address = instruction.address; address < end; ++address) {
        if (tables_->isWritten[address]) return true;
    }
    return false;
}

}  // namespace zentro
