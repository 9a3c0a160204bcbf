#include "sound/sound_message.h"

#include <array>
#include <charconv>
#include <utility>

namespace zentro {

namespace {

constexpr std::array kAnswers{
    std::pair{SoundAnswer::Playing, std::string_view{"playing"}},
    std::pair{SoundAnswer::NoDevice, std::string_view{"no-device"}},
    std::pair{SoundAnswer::Refused, std::string_view{"refused"}},
    std::pair{SoundAnswer::Lost, std::string_view{"lost"}},
};

/// The next number of a line, taken off with the space before it.
template <typename Number>
std::optional<Number> TakeNumber(std::string_view& line) {
    if (line.empty() || line.front() != ' ') return std::nullopt;
    Number number{};
    const auto [end, error] = std::from_chars(line.data() + 1, line.data() + line.size(), number);
    if (error != std::errc{}) return std::nullopt;
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    return number;
}

bool TakeWord(std::string_view& line, std::string_view word) {
    if (!line.starts_with(word)) return false;
    line.remove_prefix(word.size());
    return true;
}

}  // namespace

std::string FormatSoundMessage(const SoundMessage& message) {
    if (message.kind == SoundMessage::Kind::Volume)
        return "volume " + std::to_string(message.volume);
    return "tick " + std::to_string(message.tick.note) + ' ' + std::to_string(message.tick.end);
}

std::optional<SoundMessage> ReadSoundMessage(std::string_view line) {
    if (TakeWord(line, "volume")) {
        const auto volume = TakeNumber<unsigned>(line);
        if (!volume || *volume > 100 || !line.empty()) return std::nullopt;
        return SoundMessage{.kind = SoundMessage::Kind::Volume, .tick = {}, .volume = *volume};
    }
    if (!TakeWord(line, "tick")) return std::nullopt;
    const auto note = TakeNumber<std::uint8_t>(line);
    const auto end = TakeNumber<std::uint64_t>(line);
    if (!note || !end || !line.empty()) return std::nullopt;
    return SoundMessage{.kind = SoundMessage::Kind::Tick, .tick = {*note, *end}};
}

std::string_view WordOf(SoundAnswer answer) {
    return kAnswers[static_cast<std::size_t>(answer)].second;
}

std::optional<SoundAnswer> ReadSoundAnswer(std::string_view line) {
    for (const auto& [answer, word] : kAnswers) {
        if (line == word) return answer;
    }
    return std::nullopt;
}

}  // namespace zentro
