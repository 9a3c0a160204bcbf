#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sound/tone_generator.h"

namespace zentro {

// What the desktop program and zentro-sound say to each other: lines of text.

/// To zentro-sound: "tick NOTE END" for each tick of the board, "volume PERCENT".
struct SoundMessage {
    enum class Kind : std::uint8_t { Tick, Volume };

    Kind kind = Kind::Tick;
    SoundTick tick;
    unsigned volume = 0;  ///< 0 to 100

    bool operator==(const SoundMessage&) const = default;
};

/// Without the end of the line.
std::string FormatSoundMessage(const SoundMessage& message);
/// Nothing: it is none.
std::optional<SoundMessage> ReadSoundMessage(std::string_view line);

/// What zentro-sound answers: the word of one of these, a line for each.
enum class SoundAnswer : std::uint8_t {
    Playing,   ///< once it does, and again after each second of ticks that it has played
    NoDevice,  ///< and ends
    Refused,   ///< the device cannot be opened; and ends
    Lost,      ///< the device does not play any more; and ends
};

std::string_view WordOf(SoundAnswer answer);
std::optional<SoundAnswer> ReadSoundAnswer(std::string_view line);

/// So many ticks are played between two answers.
inline constexpr std::size_t kTicksPerAnswer = 100;

}  // namespace zentro
