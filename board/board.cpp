#include "board/board.h"

#include <utility>

#include "board/input_report.h"

namespace zentro {

namespace {

struct TimeEvent {
    std::uint64_t ticks;
    EventNumber number;
};

constexpr std::array<TimeEvent, 3> kTimeEvents{{
    {kTicksPerSecond, EventNumber::OneSecond},
    {10 * kTicksPerSecond, EventNumber::TenSeconds},
    {60 * kTicksPerSecond, EventNumber::OneMinute},
}};

}  // namespace

void AdvanceTick(Board& board) {
    ++board.clock;
    AdvanceDevices(board);
    for (const TimeEvent& event : kTimeEvents) {
        if (board.clock % event.ticks == 0)
            HappenEvent(board, static_cast<std::uint8_t>(event.number));
    }
    AdvanceReport(board);
}

void RunTicks(Board& board, std::uint64_t ticks, std::uint64_t stepsPerTick) {
    for (std::uint64_t tick = 0; tick < ticks; ++tick) {
        RunInstructions(board, stepsPerTick);
        AdvanceTick(board);
    }
}

std::string TakeOutput(Board& board) {
    return std::exchange(board.output, {});
}

std::vector<OutputChange> TakeChanges(Board& board) {
    return std::exchange(board.changes, {});
}

}  // namespace zentro
