#include "desktop/button_presses.h"

#include <algorithm>
#include <span>

namespace zentro {

namespace {

/// A board without a program tells of its inputs in a report, so many ticks apart.
constexpr std::uint64_t kShortestWithoutProgram = 12;

// A program that has not looked by then does not look at this button. Ticks count at the board's
// own pace; in slow motion they hardly pass, and instructions count.
constexpr std::uint64_t kMostTicks = 200;
constexpr std::uint64_t kMostStepsInTick = 1000;

/// Whether the press was an event that the program has dealt with.
bool IsEventOver(const Board& board, std::size_t button) {
    const Events& events = board.events;
    const auto event =
        static_cast<std::uint8_t>(static_cast<std::size_t>(EventNumber::Button1) + button);
    const auto waiting = std::span(events.waiting).first(events.waitingCount);
    return events.handlers[event] != kNoHandler && !events.inHandler &&
           std::ranges::find(waiting, event) == waiting.end();
}

}  // namespace

void ButtonPresses::Begin(const Board& board, std::size_t button) {
    presses_[button] = {Phase::Held, board.clock, board.processor.steps};
}

void ButtonPresses::End(std::size_t button) {
    if (presses_[button].phase == Phase::Held) presses_[button].phase = Phase::LetGo;
}

bool ButtonPresses::HasLasted(const Press& press, std::size_t button, const Board& board,
                              bool timePasses) {
    const std::uint64_t ticks = board.clock - press.tick;
    if (!board.processor.running) return !timePasses || ticks >= kShortestWithoutProgram;
    const std::uint64_t steps = board.processor.steps - press.steps;
    if (board.devices.buttonsSeen[button] || IsEventOver(board, button))
        return ticks >= 1 || steps >= 1;
    return ticks >= kMostTicks || (ticks == 0 && steps >= kMostStepsInTick);
}

std::array<bool, ButtonPresses::kButtons> ButtonPresses::TakeThoseThatComeUp(const Board& board,
                                                                             bool timePasses) {
    std::array<bool, kButtons> comingUp{};
    for (std::size_t button = 0; button < kButtons; ++button) {
        Press& press = presses_[button];
        comingUp[button] =
            press.phase == Phase::LetGo && HasLasted(press, button, board, timePasses);
        if (comingUp[button]) press = {};
    }
    return comingUp;
}

}  // namespace zentro
