#include "settings/utf8_text.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace zentro {

namespace {

/// Windows-1252 from 0x80 to 0x9F; the five codes without a character stand for themselves.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// How many bytes the character at the front of `text` takes; 0 when it is no valid UTF-8.
std::size_t CharacterLength(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80) return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length) return 0;
    std::uint32_t code = first & (0x7FU >> length);
    for (const char next : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xC0U) != 0x80) return 0;
        code = code << 6U | (byte & 0x3FU);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace

std::string Utf8Text(std::string_view bytes) {
    if (IsUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        const unsigned code = byte >= 0x80 && byte <= 0x9F ? kWindows1252[byte - 0x80U] : byte;
        if (code < 0x80) {
            text += character;
            continue;
        }
        if (code < 0x800) {
            text += static_cast<char>(0xC0U | code >> 6U);
        } else {
            text += static_cast<char>(0xE0U | code >> 12U);
            text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
        }
        text += static_cast<char>(0x80U | (code & 0x3FU));
    }
    return text;
}

std::string PathText(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

}  // namespace zentro
