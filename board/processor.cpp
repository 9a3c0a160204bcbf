#include "board/processor.h"

#include "board/board.h"
#include "board/text.h"

namespace zentro {

namespace {

/// How an end is told on the serial line; the board that is off tells nothing.
std::string_view EndText(EndReason reason) {
    switch (reason) {
        case EndReason::End: return "End";
        case EndReason::EmergencyStop: return "Emergency stop";
        case EndReason::Escape: return "Escape";
        case EndReason::Stopped: return "Stopped";
        case EndReason::None:
        case EndReason::PowerOff:
        case EndReason::Fault: break;
    }
    return {};
}

void TellEnd(Board& board) {
    const Processor& processor = board.processor;
    const std::uint32_t address =
        processor.end == EndReason::Stopped ? processor.address : processor.instruction;
    if (processor.end == EndReason::Fault) {
        PrintLine(board, FaultLine(processor.fault, address));
    } else if (processor.end != EndReason::PowerOff) {
        PrintLine(board, std::string(EndText(processor.end)) + " at " + FormatAddress(address));
    }
}

void ShowNextInstruction(Board& board) {
    PrintLine(board, FormatInstruction(board.memory, board.processor.address));
    Print(board, kPromptAsSent);
    board.processor.debug = DebugState::AtPrompt;
}

/// How many instructions may run before the next look at debug mode.
std::uint64_t AllowedSteps(Board& board, std::uint64_t budget) {
    switch (board.processor.debug) {
        case DebugState::Off: return budget;
        case DebugState::BeforePrompt: ShowNextInstruction(board); return 0;
        case DebugState::AtPrompt: return 0;
        case DebugState::Stepping: board.processor.debug = DebugState::BeforePrompt; return 1;
    }
    return 0;
}

}  // namespace

void RestartProgram(Board& board) {
    Processor& processor = board.processor;
    processor.address = 0;
    processor.wait = {};
    processor.stackTop = kMemorySize;
    processor.returnDepth = 0;
    processor.errorRoutine.reset();
    board.events = {};
}

void StartProgram(Board& board, DebugState debug) {
    Processor& processor = board.processor;
    if (processor.programSize == 0) {
        PrintLine(board, "No program");
        return;
    }
    RestartProgram(board);
    processor.running = true;
    processor.debug = debug;
    processor.end = EndReason::None;
    processor.fault = Fault::None;
    processor.steps = 0;
    board.droppedEvents = 0;
    board.serial.received = 0;
    ForgetInputHistory(board);
}

void EndProgram(Board& board, EndReason reason) {
    Processor& processor = board.processor;
    if (!processor.running) return;
    processor.running = false;
    processor.debug = DebugState::Off;
    processor.wait = {};
    processor.end = reason;
    board.events = {};
    TellEnd(board);
}

void Fail(Board& board, Fault fault) {
    Processor& processor = board.processor;
    processor.fault = fault;
    if (!processor.errorRoutine || processor.returnDepth == kReturnStackSize) {
        EndProgram(board, EndReason::Fault);
        return;
    }
    processor.returnStack[processor.returnDepth++] = static_cast<std::uint16_t>(processor.address);
    processor.address = *processor.errorRoutine;
    processor.errorRoutine.reset();
}

bool MustPause(const Board& board) {
    return !board.processor.running || board.processor.wait.kind != Wait::Kind::None ||
           EventIsDue(board.events);
}

bool ReadyForInstruction(Board& board) {
    Wait& wait = board.processor.wait;
    if (wait.kind == Wait::Kind::Time && board.clock >= wait.until) wait = {};
    StartWaitingEvent(board);
    return board.processor.running && wait.kind == Wait::Kind::None;
}

std::uint64_t RunInstructions(Board& board, std::uint64_t budget) {
    std::uint64_t done = 0;
    while (done < budget && ReadyForInstruction(board)) {
        const std::uint64_t allowed = AllowedSteps(board, budget - done);
        if (allowed == 0) break;
        done += ExecuteInstructions(board, allowed);
    }
    return done;
}

}  // namespace zentro
