#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"

namespace zentro {

/// Where a single word of the language is explained.
struct WordPlace {
    std::string word;
    std::vector<const Command*>
        entries;  ///< all whose words contain it: the word itself, then by letters
    const Command* page = nullptr;  ///< the one that it leads to; nothing when none stands out
    bool isOtherWord = false;       ///< it leads to its row among other languages' words
};

/// A word of other languages, and what the handbook says about it.
struct OtherWord {
    std::string word;
    std::string text;    ///< with the references of the manuscript's texts
    bool isOwn = false;  ///< it is a word of this language as well, which has a page
};

/// The words of other languages that the configuration knows. What is wrong with them is appended
/// to the problems.
std::vector<OtherWord> OtherWords(const InstructionConfiguration& language,
                                  std::vector<std::string>& problems);

/// A row for each word that the editor colours, in the order of that list.
std::vector<WordPlace> WordPlaces(const CommandCatalogue& commands,
                                  const std::vector<OtherWord>& otherWords);

}  // namespace zentro
