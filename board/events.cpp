#include "board/events.h"

#include <algorithm>

#include "board/board.h"

namespace zentro {

namespace {

std::uint8_t TakeOldest(Events& events) {
    const std::uint8_t number = events.waiting[0];
    std::shift_left(events.waiting.begin(), events.waiting.end(), 1);
    events.waiting.back() = 0;
    --events.waitingCount;
    return number;
}

}  // namespace

void HappenEvent(Board& board, std::uint8_t number) {
    Events& events = board.events;
    if (!board.processor.running || events.handlers[number] == kNoHandler) return;
    if (board.processor.wait.kind == Wait::Kind::Event) board.processor.wait = {};
    if (events.mode == EventMode::Disabled) return;
    if (events.waitingCount == kMaxWaitingEvents) {
        ++board.droppedEvents;
        return;
    }
    events.waiting[events.waitingCount++] = number;
}

void StartWaitingEvent(Board& board) {
    Events& events = board.events;
    while (EventIsDue(events)) {
        const std::uint16_t handler = events.handlers[TakeOldest(events)];
        if (handler == kNoHandler) continue;
        events.inHandler = true;
        events.modeAfterHandler = events.mode;
        events.interruptedAddress = board.processor.address;
        events.interruptedWait = board.processor.wait;
        board.processor.address = handler;
        board.processor.wait = {};
    }
}

}  // namespace zentro
