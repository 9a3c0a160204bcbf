#include "tools/handbook/word_index.h"

#include <algorithm>
#include <utility>

#include "config/text.h"
#include "hints/other_languages.h"
#include "tools/handbook/handbook.h"
#include "tools/handbook/manuscript.h"

namespace zentro {

namespace {

bool HasWord(const Command& entry, const std::string& word) {
    if (entry.id == Token::KeywordList) return false;
    return std::ranges::count(SplitTrimmed(entry.command, ' '), word) > 0;
}

/// The entry that is the word; the only one that ends with it; or the only one that has it.
const Command* PageOf(const WordPlace& place) {
    const Command* ending = nullptr;
    bool isOnlyEnding = true;
    for (const Command* entry : place.entries) {
        if (entry->command == place.word) return entry;
        if (!entry->command.ends_with(" " + place.word)) continue;
        isOnlyEnding = ending == nullptr;
        ending = entry;
    }
    if (place.entries.size() == 1) return place.entries.front();
    return isOnlyEnding ? ending : nullptr;
}

}  // namespace

std::vector<std::string> KeywordsOf(const CommandCatalogue& commands) {
    std::vector<std::string> words;
    for (std::string& word : SplitTrimmed(commands.GetCommandText(Token::KeywordList), '.')) {
        if (!word.empty()) words.push_back(std::move(word));
    }
    return words;
}

std::vector<OtherWord> OtherWords(const InstructionConfiguration& language,
                                  std::vector<std::string>& problems) {
    std::vector<OtherWord> words;
    for (OtherLanguageRow& row : OtherLanguageRows(language.messages)) {
        if (row.text.empty()) problems.push_back("nothing is said of the word " + row.word);
        OtherWord word{std::move(row.word), std::move(row.text), false};
        word.isOwn = std::ranges::any_of(language.commands.Entries(), [&](const Command& entry) {
            return EqualsIgnoreCase(entry.command, word.word);
        });
        words.push_back(std::move(word));
    }
    return words;
}

std::vector<WordPlace> WordPlaces(const CommandCatalogue& commands,
                                  const std::vector<OtherWord>& otherWords) {
    std::vector<WordPlace> places;
    for (std::string& word : KeywordsOf(commands)) {
        WordPlace place;
        place.word = std::move(word);
        for (const Command& entry : commands.Entries()) {
            if (HasWord(entry, place.word)) place.entries.push_back(&entry);
        }
        std::ranges::sort(place.entries, {}, [&](const Command* entry) {
            return std::pair(entry->command != place.word, entry->command);
        });
        place.isOtherWord = std::ranges::any_of(otherWords, [&](const OtherWord& other) {
            return !other.isOwn && EqualsIgnoreCase(other.word, place.word);
        });
        if (!place.isOtherWord) place.page = PageOf(place);
        places.push_back(std::move(place));
    }
    return places;
}

}  // namespace zentro
