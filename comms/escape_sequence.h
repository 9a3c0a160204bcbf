#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zentro {

inline constexpr char kEscape = '\x1b';

/// The four sequences that a board sends.
enum class EscapeKind : std::uint8_t {
    ClearScreen,       ///< ESC "c"
    OneCharacterBack,  ///< ESC "[D"
    LinesUp,           ///< ESC "[" digit "A"
    EraseToEnd,        ///< ESC "[0J"
};

struct EscapeSequence {
    EscapeKind kind;
    std::size_t length;  ///< of all its characters
    int lines = 0;       ///< of LinesUp, 0 to 9
};

/// The sequence with which a text begins, its letters in either case. Nothing: it begins with none
/// of the four, or with a part of one.
std::optional<EscapeSequence> ReadEscapeSequence(std::string_view text);

/// Whether a text that begins with no whole sequence may do so when more has arrived.
bool MayBecomeEscapeSequence(std::string_view text);

}  // namespace zentro
