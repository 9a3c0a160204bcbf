#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/devices.h"
#include "board/events.h"
#include "board/memory.h"
#include "board/processor.h"
#include "board/serial_line.h"

namespace zentro {

inline constexpr unsigned kFalse = 0;
inline constexpr unsigned kTrue = 255;
inline constexpr std::uint64_t kTicksPerSecond = 100;
inline constexpr std::size_t kEepromSize = 256;
inline constexpr std::uint32_t kFirstRandom = 1;  ///< each program's random numbers start here

/// The whole virtual board. A copy is a snapshot that can be run on and compared. It has no clock,
/// no thread and no file of its own: its host lets time pass, feeds it characters and inputs, and
/// takes away what it has to say.
///
/// A host sets inputs with SetInputs, sends characters with ReceiveCharacters, and for each 1/100
/// second calls RunInstructions, then AdvanceTick. Outputs are read at any time; what became of
/// them and of the serial line is taken with TakeChanges and TakeOutput, at the latest after each
/// tick.
struct Board {
    Memory memory;
    Processor processor;
    Events events;
    Inputs inputs;  ///< as SetInputs left them
    Outputs outputs;
    Devices devices;
    SerialLine serial;
    std::array<std::uint8_t, kEepromSize> eeprom = ErasedEeprom();
    std::uint64_t clock = 0;  ///< ticks of 1/100 second since the board was made
    /// State of the generator of RANDOMIZE BYTE: a host may seed it once a program is loaded.
    std::uint32_t random = kFirstRandom;
    std::uint32_t droppedEvents = 0;    ///< since the start of the program, because too many waited
    std::string output;                 ///< characters not yet taken by the host
    std::vector<OutputChange> changes;  ///< the same of changes, the oldest first

    bool operator==(const Board&) const = default;

    static constexpr std::array<std::uint8_t, kEepromSize> ErasedEeprom() {
        std::array<std::uint8_t, kEepromSize> cells{};
        cells.fill(0xFF);
        return cells;
    }
};

/// Lets 1/100 second pass: the clock moves on, its events happen, notes end.
void AdvanceTick(Board& board);

/// Runs the program through `ticks` ticks with at most `stepsPerTick` instructions in each.
void RunTicks(Board& board, std::uint64_t ticks, std::uint64_t stepsPerTick);

/// The characters that the board has sent since the last call.
std::string TakeOutput(Board& board);

/// The output changes since the last call.
std::vector<OutputChange> TakeChanges(Board& board);

}  // namespace zentro
