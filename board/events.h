#pragma once

#include <array>
#include <cstdint>

#include "board/processor.h"

namespace zentro {

/// The numbers of the events that the board itself makes happen. Input n of a kind has the kind's
/// first number plus n - 1.
enum class EventNumber : std::uint8_t {
    DigitalInput1 = 3,
    Button1 = 9,
    AnalogInput1 = 15,
    PulseInput1 = 21,
    OneSecond = 25,
    TenSeconds = 26,
    OneMinute = 27,
};

/// What becomes of a watched event that happens.
enum class EventMode : std::uint8_t {
    Disabled,  ///< it is lost
    Deferred,  ///< it waits
    Enabled,   ///< it waits and is taken before the next instruction
};

inline constexpr std::uint16_t kNoHandler = 0xFFFF;
inline constexpr std::uint8_t kMaxWaitingEvents = 32;

struct Events {
    Events() { handlers.fill(kNoHandler); }

    EventMode mode = EventMode::Disabled;
    EventMode modeAfterHandler = EventMode::Disabled;  ///< counts only inside a handler
    bool inHandler = false;
    std::uint32_t interruptedAddress = 0;  ///< where the program goes on after the handler
    Wait interruptedWait;
    std::uint8_t waitingCount = 0;
    std::array<std::uint8_t, kMaxWaitingEvents> waiting{};  ///< event numbers, the oldest first
    std::array<std::uint16_t, 256> handlers;                ///< by event number

    bool operator==(const Events&) const = default;
};

/// Whether a waiting event comes before the next instruction.
inline bool EventIsDue(const Events& events) {
    return events.waitingCount > 0 && events.mode == EventMode::Enabled && !events.inHandler;
}

/// Makes an event happen. Only a watched event of a running program has an effect.
void HappenEvent(Board& board, std::uint8_t number);

/// Enters the handler of the event whose turn it is, if one is due.
void StartWaitingEvent(Board& board);

}  // namespace zentro
