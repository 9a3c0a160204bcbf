#include "ui/editor/keyword_list.h"

#include <algorithm>

#include "config/text.h"

namespace zentro {

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
