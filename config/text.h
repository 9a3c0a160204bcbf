#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentro {

/// Letter case never matters in words, names and keys. Only A to Z have a case here: names cannot
/// hold other letters.
constexpr char FoldCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Inline, because they are called for every word of a program.
inline bool StartsWithIgnoreCase(std::string_view text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (text[i] != prefix[i] && FoldCase(text[i]) != FoldCase(prefix[i])) return false;
    }
    return true;
}
inline bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (a == b || StartsWithIgnoreCase(a, b));
}
/// The part must not be empty.
bool ContainsIgnoreCase(std::string_view text, std::string_view part);

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool IsLetter(char c) {
    return FoldCase(c) >= 'A' && FoldCase(c) <= 'Z';
}

/// The text without the blanks around it.
inline std::string_view Trim(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

/// Everything that separates words and is no visible character of the language: blanks, tabs,
/// control characters and characters beyond ASCII.
constexpr bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ' || static_cast<unsigned char>(c) >= 127;
}

/// The text without such characters around it.
std::string_view TrimBlanks(std::string_view text);

/// True for an optional sign and decimal digits, and nothing else.
bool IsNumeric(std::string_view text);

/// The value of a numeric text; nothing when the text is not numeric or exceeds 32 bits.
std::optional<std::int32_t> ParseNumber(std::string_view text);

/// A name or value as a message shows it: cut short with "..." when it is very long.
std::string Shorten(std::string_view text);

/// Hash and equality of texts that differ in letter case only, for keyed tables.
struct FoldedHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const;
};
struct FoldedEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return EqualsIgnoreCase(a, b); }
};

}  // namespace zentro
