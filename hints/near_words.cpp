#include "hints/near_words.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

#include "config/text.h"

namespace zentro {

namespace {

/// Longer names are not compared.
constexpr std::size_t kLongest = 40;

/// In short words one letter makes another word too easily.
std::size_t ForgivenMistakes(std::size_t length) {
    constexpr std::size_t kShort = 4;
    constexpr std::size_t kLong = 8;
    if (length < kShort) return 0;
    return length < kLong ? 1 : 2;
}

bool HaveSameDigits(std::string_view a, std::string_view b) {
    const auto next = [](std::string_view text, std::size_t& i) {
        while (i < text.size() && !IsDigit(text[i]))
            ++i;
        return i < text.size() ? text[i++] : '\0';
    };
    std::size_t i = 0;
    std::size_t j = 0;
    for (;;) {
        const char one = next(a, i);
        if (one != next(b, j)) return false;
        if (one == '\0') return true;
    }
}

/// The letters of a word, a bit each: words that differ in many are not near.
std::uint32_t LettersOf(std::string_view word) {
    std::uint32_t letters = 0;
    for (const char c : word) {
        if (IsLetter(c)) letters |= std::uint32_t{1} << static_cast<unsigned>(FoldCase(c) - 'A');
    }
    return letters;
}

/// The distance of optimal string alignment, row by row.
std::size_t AlignmentDistance(std::string_view a, std::string_view b) {
    std::array<std::array<std::size_t, kLongest + 1>, 3> rows{};
    const auto row = [&](std::size_t i) -> auto& {
        return rows[i % rows.size()];
    };
    for (std::size_t j = 0; j <= b.size(); ++j)
        row(0)[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row(i)[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool isSame = FoldCase(a[i - 1]) == FoldCase(b[j - 1]);
            std::size_t least = std::min(row(i - 1)[j], row(i)[j - 1]) + 1;
            least = std::min(least, row(i - 1)[j - 1] + (isSame ? 0 : 1));
            const bool isSwapped = i > 1 && j > 1 && FoldCase(a[i - 1]) == FoldCase(b[j - 2]) &&
                                   FoldCase(a[i - 2]) == FoldCase(b[j - 1]);
            if (isSwapped) least = std::min(least, row(i - 2)[j - 2] + 1);
            row(i)[j] = least;
        }
    }
    return row(a.size())[b.size()];
}

}  // namespace

std::optional<std::size_t> SpellingDistance(std::string_view typed, std::string_view meant) {
    return SpellingDistance(typed, meant, ForgivenMistakes(std::max(typed.size(), meant.size())));
}

std::optional<std::size_t> SpellingDistance(std::string_view typed, std::string_view meant,
                                            std::size_t forgiven) {
    const std::size_t shorter = std::min(typed.size(), meant.size());
    const std::size_t longer = std::max(typed.size(), meant.size());
    if (longer > kLongest || longer - shorter > forgiven) return std::nullopt;
    const int differing = std::popcount(LettersOf(typed) ^ LettersOf(meant));
    if (static_cast<std::size_t>(differing) > 2 * forgiven) return std::nullopt;
    if (!HaveSameDigits(typed, meant)) return std::nullopt;
    const std::size_t distance = AlignmentDistance(typed, meant);
    return distance <= forgiven ? std::optional(distance) : std::nullopt;
}

void NearestWord::Offer(std::string_view word) {
    const std::optional<std::size_t> distance = SpellingDistance(typed_, word);
    if (!distance || *distance == 0) return;
    const bool isNearer = distance_ == 0 || *distance < distance_;
    if (isNearer) {
        nearest_ = word;
        distance_ = *distance;
        isOnly_ = true;
    } else if (*distance == distance_ && !EqualsIgnoreCase(word, nearest_)) {
        isOnly_ = false;
    }
}

std::optional<std::string_view> NearestWord::Found() const {
    if (distance_ == 0 || !isOnly_) return std::nullopt;
    return nearest_;
}

}  // namespace zentro
