#include "board/board.h"
#include "board/handlers.h"

namespace zentro::handle {

namespace {

/// Inside a handler the change waits until the handler is complete.
void SetMode(Events& events, EventMode mode) {
    (events.inHandler ? events.modeAfterHandler : events.mode) = mode;
}

}  // namespace

void DisableEvents(Board& board, const DecodedInstruction&) {
    SetMode(board.events, EventMode::Disabled);
}

void EnableEvents(Board& board, const DecodedInstruction&) {
    SetMode(board.events, EventMode::Enabled);
}

void DeferEvents(Board& board, const DecodedInstruction&) {
    SetMode(board.events, EventMode::Deferred);
}

void SetEventWatch(Board& board, const DecodedInstruction& instruction) {
    board.events.handlers[instruction.a] = instruction.b;
}

void RemoveEventWatch(Board& board, const DecodedInstruction& instruction) {
    board.events.handlers[board.memory.Byte(instruction.a)] = kNoHandler;
}

void RaiseEvent(Board& board, const DecodedInstruction& instruction) {
    HappenEvent(board, static_cast<std::uint8_t>(instruction.a));
}

void CompleteEvent(Board& board, const DecodedInstruction&) {
    Events& events = board.events;
    if (!events.inHandler) {
        Fail(board, Fault::NoEventToComplete);
        return;
    }
    events.inHandler = false;
    events.mode = events.modeAfterHandler;
    board.processor.address = events.interruptedAddress;
    board.processor.wait = events.interruptedWait;
}

}  // namespace zentro::handle
