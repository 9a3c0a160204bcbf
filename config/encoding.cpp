#include "config/encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace zentro {

namespace {

/// What the bytes 80 to 9F stand for in Windows-1252; the five that it leaves open keep their
/// number.
constexpr std::array<char32_t, 32> kWindows1252High{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Nothing for a character that is not in it.
std::optional<char> ToWindows1252(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
        return static_cast<char>(character);
    }
    const auto* found = std::find(kWindows1252High.begin(), kWindows1252High.end(), character);
    if (found == kWindows1252High.end()) return std::nullopt;
    return static_cast<char>(0x80 + (found - kWindows1252High.begin()));
}

struct Utf8Character {
    char32_t value;
    std::size_t length;
};

/// The character at the start of the bytes; nothing when they are not well-formed UTF-8.
std::optional<Utf8Character> ReadUtf8(std::string_view bytes) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char first = byteAt(0);
    if (first < 0x80) return Utf8Character{first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length) return std::nullopt;
    char32_t value = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) return std::nullopt;
        value = (value << 6) | (byteAt(i) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < kSmallest[length] || value > 0x10FFFF || isSurrogate) return std::nullopt;
    return Utf8Character{value, length};
}

}  // namespace

bool IsAscii(std::string_view bytes) {
    unsigned char all = 0;
    for (char c : bytes)
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    return all < 0x80;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::optional<Utf8Character> character = ReadUtf8(bytes);
        if (!character) return false;
        bytes.remove_prefix(character->length);
    }
    return true;
}

std::string DecodeText(std::string bytes, std::vector<ReplacedCharacter>* replaced) {
    if (IsAscii(bytes)) return bytes;
    std::string_view rest = bytes;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
    std::string text;
    text.reserve(rest.size());
    while (!rest.empty()) {
        const std::optional<Utf8Character> character = ReadUtf8(rest);
        if (!character) {
            if (replaced != nullptr) replaced->clear();
            return bytes;
        }
        const std::optional<char> own = ToWindows1252(character->value);
        if (!own && replaced != nullptr) replaced->push_back({text.size(), character->value});
        text += own.value_or('?');
        rest.remove_prefix(character->length);
    }
    return text;
}

char32_t UnicodeOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xA0 ? kWindows1252High[byte - 0x80U] : byte;
}

namespace {

void AppendUtf8(char32_t character, std::string& bytes) {
    const auto append = [&](char32_t byte) { bytes += static_cast<char>(byte); };
    const auto appendRest = [&](unsigned shift) { append(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) return append(character);
    if (character < 0x800) {
        append(0xC0U | (character >> 6));
    } else if (character < 0x10000) {
        append(0xE0U | (character >> 12));
        appendRest(6);
    } else {
        append(0xF0U | (character >> 18));
        appendRest(12);
        appendRest(6);
    }
    appendRest(0);
}

}  // namespace

std::string Utf8Of(char32_t character) {
    std::string bytes;
    AppendUtf8(character, bytes);
    return bytes;
}

std::string ToUtf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char c : text)
        AppendUtf8(UnicodeOf(c), bytes);
    return bytes;
}

}  // namespace zentro
