#include "ui/editor/source_text_format.h"

#include <algorithm>
#include <array>

#include "config/text.h"

namespace zentro {

namespace {

constexpr std::array<bool, 256> MakeWordCharacters() {
    std::array<bool, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c)
        table[c] = c == '_' || (c < 128 && IsLetter(static_cast<char>(c)));
    return table;
}
constexpr std::array<bool, 256> kWordCharacters = MakeWordCharacters();

/// The position of the first of the characters at or after `from`, or the end of the text.
std::size_t FindEnd(std::string_view text, std::string_view wanted, std::size_t from) {
    return std::min(text.find_first_of(wanted, from), text.size());
}

std::size_t LineEnd(std::string_view text, std::size_t from) {
    const std::size_t lineFeed = std::min(text.find('\n', from), text.size());
    return std::min(text.substr(0, lineFeed).find('\r', from), lineFeed);
}

}  // namespace

bool IsWordCharacter(char c) {
    return kWordCharacters[static_cast<unsigned char>(c)];
}

std::vector<TextRun> FormatSourceText(const KeywordList& keywords, std::string_view text) {
    std::vector<TextRun> runs;
    runs.reserve(text.size() / 12);
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t begin = i;
        const char c = text[i++];
        if (IsWordCharacter(c)) {
            while (i < text.size() && IsWordCharacter(text[i]))
                ++i;
            if (i == text.size()) break;
            const std::string_view spelling = keywords.Find(text.substr(begin, i - begin));
            if (!spelling.empty()) runs.push_back({begin, i - begin, TextKind::Keyword, spelling});
        } else if (c == '"') {
            i = std::min(FindEnd(text, "\"", i) + 1, text.size());
            runs.push_back({begin, i - begin, TextKind::String, {}});
        } else if (c == ';') {
            i = LineEnd(text, i);
            runs.push_back({begin, i - begin, TextKind::Comment, {}});
        }
    }
    return runs;
}

std::size_t LastWordBegin(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && IsWordCharacter(text[begin - 1]))
        --begin;
    return begin;
}

void RespellKeywords(std::string& text, const std::vector<TextRun>& runs) {
    for (const TextRun& run : runs)
        text.replace(run.begin, run.spelling.size(), run.spelling);
}

KeywordList::KeywordList(std::string_view dottedWords) {
    std::size_t dot = dottedWords.find('.');
    while (dot != std::string_view::npos) {
        const std::size_t next = dottedWords.find('.', dot + 1);
        if (next == std::string_view::npos) return;
        const std::string_view word = dottedWords.substr(dot + 1, next - dot - 1);
        dot = next;
        if (word.empty() || !Find(word).empty()) continue;
        index_.Add(NameKey::HashOf(word), static_cast<std::uint32_t>(words_.size()));
        words_.emplace_back(word);
        longest_ = std::max(longest_, word.size());
    }
}

std::string_view KeywordList::Find(std::string_view word) const {
    if (word.size() > longest_) return {};
    const std::uint32_t place = index_.Find(NameKey::HashOf(word), [&](std::uint32_t candidate) {
        return EqualsIgnoreCase(words_[candidate], word);
    });
    return place == NameIndex::kNone ? std::string_view{} : words_[place];
}

}  // namespace zentro
