#include "desktop/program_stops.h"

#include <utility>

namespace zentro {

namespace {

constexpr std::size_t kAddresses = 0x10000;

/// The handler of the event whose turn it is.
std::optional<std::uint16_t> HandlerThatIsDue(const Events& events) {
    if (!EventIsDue(events)) return std::nullopt;
    for (std::size_t i = 0; i < events.waitingCount; ++i) {
        const std::uint16_t handler = events.handlers[events.waiting[i]];
        if (handler != kNoHandler) return handler;
    }
    return std::nullopt;
}

/// Where the instruction stands that has begun the wait.
std::uint32_t WaitingAt(const Board& board) {
    const Processor& processor = board.processor;
    const Opcode opcode =
        processor.wait.kind == Wait::Kind::Time ? Opcode::WaitForTime : Opcode::Sleep;
    const auto size = static_cast<std::uint32_t>(InstructionFor(opcode).Size());
    if (processor.address < size || processor.address > kMemorySize) return processor.address;
    const std::uint32_t address = processor.address - size;
    const bool isThere = board.memory.Byte(address) == static_cast<std::uint8_t>(opcode);
    return isThere ? address : processor.address;
}

bool IsWithin(const NextInstruction& next, const NextInstruction& level) {
    return next.depth > level.depth || (next.inHandler && !level.inHandler);
}

}  // namespace

NextInstruction NextOf(const Board& board) {
    const Processor& processor = board.processor;
    if (const auto handler = HandlerThatIsDue(board.events))
        return {*handler, processor.returnDepth, true};
    return {processor.address, processor.returnDepth, board.events.inHandler};
}

std::uint32_t WhereItStands(const Board& board) {
    const Wait& wait = board.processor.wait;
    const bool waits = wait.kind == Wait::Kind::Event ||
                       (wait.kind == Wait::Kind::Time && board.clock < wait.until);
    if (waits && !HandlerThatIsDue(board.events)) return WaitingAt(board);
    return NextOf(board).address;
}

bool ProgramStops::IsLineStart(std::uint32_t address) const {
    return lines_ != nullptr && address < lines_->size() && (*lines_)[address];
}

void ProgramStops::SetBreakpoints(std::map<std::uint16_t, Condition> breakpoints) {
    breakpoints_ = std::move(breakpoints);
    isBreakpoint_.assign(breakpoints_.empty() ? 0 : kAddresses, false);
    for (const auto& [address, condition] : breakpoints_)
        isBreakpoint_[address] = true;
}

void ProgramStops::LeaveFrom(const Board& board) {
    left_ = board.processor.steps;
}

void ProgramStops::StepLine(LineStep step, const Board& board) {
    target_.reset();
    step_ = Step{step, NextOf(board)};
}

void ProgramStops::EndGoal() {
    step_.reset();
    target_.reset();
}

bool ProgramStops::IsAtLevelOfStep(const Board& board) const {
    return step_ && !IsWithin(NextOf(board), step_->from);
}

bool ProgramStops::EndsStep(const NextInstruction& next) const {
    if (!step_ || !IsLineStart(next.address)) return false;
    return step_->kind == LineStep::Into || !IsWithin(next, step_->from);
}

bool ProgramStops::HoldsBefore(const Board& board) const {
    if (left_ == board.processor.steps) return false;
    const NextInstruction next = NextOf(board);
    if (target_ == next.address || EndsStep(next)) return true;
    if (next.address >= isBreakpoint_.size() || !isBreakpoint_[next.address]) return false;
    const Condition& holds = breakpoints_.at(static_cast<std::uint16_t>(next.address));
    return !holds || holds(board);
}

std::function<bool(const Board&)> ProgramStops::LineBefore(const Board& now) const {
    // What has ended is nowhere any more, so any line comes before it.
    const bool isAnywhere = !now.processor.running;
    return [this, isAnywhere, level = NextOf(now)](const Board& board) {
        const NextInstruction next = NextOf(board);
        return IsLineStart(next.address) && (isAnywhere || !IsWithin(next, level));
    };
}

}  // namespace zentro
