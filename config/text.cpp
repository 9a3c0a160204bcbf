#include "config/text.h"

#include <algorithm>
#include <charconv>

namespace zentro {

bool ContainsIgnoreCase(std::string_view text, std::string_view part) {
    const auto sameLetter = [](char a, char b) { return FoldCase(a) == FoldCase(b); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), sameLetter) !=
           text.end();
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool IsNumeric(std::string_view text) {
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

std::optional<std::int32_t> ParseNumber(std::string_view text) {
    if (!IsNumeric(text)) return std::nullopt;
    if (text.front() == '+') text.remove_prefix(1);
    std::int32_t value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc{}) {
        return std::nullopt;
    }
    return value;
}

std::string Shorten(std::string_view text) {
    constexpr std::size_t kShown = 40;
    if (text.size() <= kShown) return std::string(text);
    return std::string(text.substr(0, kShown)) + "...";
}

std::size_t FoldedHash::operator()(std::string_view text) const {
    std::uint64_t hash = 14695981039346656037ULL;
    for (char c : text) {
        hash = (hash ^ static_cast<unsigned char>(FoldCase(c))) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32));
}

}  // namespace zentro
