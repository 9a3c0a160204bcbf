#include "comms/board_text.h"

#include <array>
#include <utility>

#include "comms/escape_sequence.h"
#include "config/encoding.h"

namespace zentro {

namespace {

/// As the board means it, whichever letter case it sent.
std::string Written(const EscapeSequence& sequence) {
    switch (sequence.kind) {
        case EscapeKind::ClearScreen: return std::string(1, kEscape) + "c";
        case EscapeKind::OneCharacterBack: return std::string(1, kEscape) + "[D";
        case EscapeKind::LinesUp:
            return std::string(1, kEscape) + "[" + std::to_string(sequence.lines) + "A";
        case EscapeKind::EraseToEnd: return std::string(1, kEscape) + "[0J";
    }
    return {};
}

/// The bytes from 128 on that are no character of Windows-1252 would be control characters.
bool IsText(char character) {
    constexpr std::string_view kUndefined = "\x81\x8d\x8f\x90\x9d";
    const auto code = static_cast<unsigned char>(character);
    if (code < ' ') return character == '\r' || character == '\n' || character == '\t';
    return code != 127 && kUndefined.find(character) == std::string_view::npos;
}

}  // namespace

std::string BoardText::Take(std::string_view bytes) {
    const std::string joined = std::exchange(held_, {}).append(bytes);
    std::string_view rest = joined;
    std::string text;
    while (!rest.empty()) {
        const auto sequence = ReadEscapeSequence(rest);
        if (!sequence && MayBecomeEscapeSequence(rest)) {
            held_ = rest;
            break;
        }
        if (sequence) {
            text += Written(*sequence);
        } else if (IsText(rest.front())) {
            text += rest.front();
        }
        rest.remove_prefix(sequence ? sequence->length : 1);
    }
    return ToUtf8(text);
}

}  // namespace zentro
