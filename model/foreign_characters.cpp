#include "model/foreign_characters.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "config/encoding.h"

namespace zentro {

namespace {

constexpr char32_t kNoBreakSpace = 0xA0;

/// What the file holds at a place where the text has a "?"; 0 when it is one.
char32_t ReplacedAt(const SourceFile& file, std::size_t position) {
    const auto found =
        std::ranges::lower_bound(file.replaced, position, {}, &ReplacedCharacter::position);
    return found == file.replaced.end() || found->position != position ? 0 : found->character;
}

/// Controls, blanks, joiners and the like.
bool CanBeSeen(char32_t character) {
    struct Range {
        char32_t first;
        char32_t last;
    };
    constexpr std::array kUnseen{
        Range{0, 0x20},          Range{0x7F, kNoBreakSpace}, Range{0xAD, 0xAD},
        Range{0x300, 0x36F},     Range{0x2000, 0x200F},      Range{0x2028, 0x202F},
        Range{0x205F, 0x206F},   Range{0x3000, 0x3000},      Range{0xE000, 0xF8FF},
        Range{0xFE00, 0xFE0F},   Range{0xFEFF, 0xFEFF},      Range{0xFFF0, 0xFFFF},
        Range{0xE0000, 0x10FFFF}};
    return std::ranges::none_of(kUnseen, [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

}  // namespace

bool ForeignCharacter::IsIgnored() const {
    return !inQuotes && !isReplaced && character != kNoBreakSpace;
}

std::vector<ForeignCharacter> ForeignCharactersIn(const SourceLine& line) {
    std::vector<ForeignCharacter> found;
    if (!line.mayBeForeign) return found;
    const std::string_view statement = line.text.substr(0, FindComment(line.text));
    const auto start = static_cast<std::size_t>(line.text.data() - line.file->text.data());
    constexpr unsigned char kFirstBeyondAscii = 0x80;
    bool inQuotes = false;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const char c = statement[i];
        if (c == '"') inQuotes = !inQuotes;
        if (static_cast<unsigned char>(c) >= kFirstBeyondAscii) {
            found.push_back({UnicodeOf(c), inQuotes, false});
        } else if (const char32_t replaced = c == '?' ? ReplacedAt(*line.file, start + i) : 0) {
            found.push_back({replaced, inQuotes, true});
        }
    }
    return found;
}

std::string LineOfFile(const SourceLine& line) {
    if (!line.mayBeForeign) return ToUtf8(line.text);
    const auto start = static_cast<std::size_t>(line.text.data() - line.file->text.data());
    std::string text;
    for (std::size_t i = 0; i < line.text.size(); ++i) {
        const char c = line.text[i];
        const char32_t replaced = c == '?' ? ReplacedAt(*line.file, start + i) : 0;
        text += Utf8Of(replaced == 0 ? UnicodeOf(c) : replaced);
    }
    return text;
}

std::string ShownCharacter(char32_t character) {
    if (CanBeSeen(character)) return Utf8Of(character);
    std::array<char, 16> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "U+%04X", static_cast<unsigned>(character));
    return {text.data(), static_cast<std::size_t>(length)};
}

TypographicSign TypographicSignOf(char32_t character) {
    constexpr std::array<char32_t, 15> kQuotes{0xAB,   0xBB,   0x2018, 0x2019, 0x201A,
                                               0x201B, 0x201C, 0x201D, 0x201E, 0x201F,
                                               0x2032, 0x2033, 0x2039, 0x203A, 0xFF02};
    constexpr std::array<char32_t, 9> kDashes{0x2010, 0x2011, 0x2012, 0x2013, 0x2014,
                                              0x2015, 0x2212, 0xFE63, 0xFF0D};
    if (std::ranges::find(kQuotes, character) != kQuotes.end()) return TypographicSign::Quote;
    const bool isDash = std::ranges::find(kDashes, character) != kDashes.end();
    return isDash ? TypographicSign::Dash : TypographicSign::None;
}

}  // namespace zentro
