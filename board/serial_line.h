#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zentro {

struct Board;

/// The most characters of a command; further ones are not taken. No command is as long.
inline constexpr std::size_t kMaxLine = 32;

/// While so many characters wait to be taken by the host, TRANSMIT waits and no report is made.
inline constexpr std::size_t kOutputLimit = 4096;

/// What the loader has understood so far.
struct Loader {
    bool active = false;
    bool atLineStart = true;
    bool inNumber = false;
    unsigned number = 0;        ///< its digits so far; at most 256, which stands for too large
    std::uint32_t size = 0;     ///< bytes stored
    std::uint32_t line = 1;     ///< of the text that is being loaded
    std::uint32_t badLine = 0;  ///< the first line that could not be understood; 0: none
    bool tooLong = false;       ///< more bytes than there is memory

    bool operator==(const Loader&) const = default;
};

/// The board's end of the serial line.
struct SerialLine {
    bool off = false;           ///< after POWER OFF: nothing is answered until "W"
    std::string line;           ///< the command typed so far
    std::uint8_t received = 0;  ///< the last character, for RECEIVE; 0: none since
    Loader loader;
    bool reporting = false;        ///< the inputs are reported
    bool reportOnScreen = false;   ///< nothing was written below the last report
    std::uint64_t nextReport = 0;  ///< the tick of the next report

    bool operator==(const SerialLine&) const = default;
};

/// Characters arrive on the serial line. But for single steps of the debug mode they only change
/// what the board is about to do: programs run in RunInstructions.
void ReceiveCharacters(Board& board, std::string_view characters);

/// POWER OFF: forgets the command that was being typed and ends the report.
void SwitchSerialLineOff(Board& board);

/// Sends characters as they are.
void Print(Board& board, std::string_view text);

/// Sends a line of text, ended by CR LF.
void PrintLine(Board& board, std::string_view text);

}  // namespace zentro
