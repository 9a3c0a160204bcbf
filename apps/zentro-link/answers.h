#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zentro {

// What a board's words mean. Each function is given all that the board has said since the command
// was sent, however little that is. A command is answered by its echo and what follows; what stands
// before the echo belongs to something earlier.

struct Answer {
    enum class State : std::uint8_t {
        Unfinished,  ///< more has to come
        Done,
        Refused,
    };

    State state = State::Unfinished;
    std::string words;  ///< what to show: of a refusal its line
};

/// Of "W", which ends a greeting: the board has said its name.
bool HasSaidItsName(std::string_view said);

/// The line with which a board ended a load that somebody had broken off, "Not loaded: ..." or
/// "Loaded 12 bytes"; empty: there was none.
std::string BrokenOffLoad(std::string_view said);

/// Of "G". A board that starts a program says nothing: only a program that ends at once makes that
/// Done. IsEchoed tells whether the board has taken the command at all.
Answer StartAnswer(std::string_view said);
bool IsStartEchoed(std::string_view said);

/// Of "X", "Z" and CR alone.
Answer StopAnswer(std::string_view said);

/// Of "D". Its words are the line of the first instruction.
Answer DebugAnswer(std::string_view said);

/// Of "M001A". Done when the prompt has come back; a program that waits shows memory without one.
Answer MemoryAnswer(std::string_view said, std::uint32_t address);
bool IsMemoryShown(std::string_view said, std::uint32_t address);

}  // namespace zentro
