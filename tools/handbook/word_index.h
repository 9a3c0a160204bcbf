#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "config/command_catalogue.h"

namespace zentro {

/// Where a single word of the language is explained.
struct WordPlace {
    std::string word;
    std::vector<const Command*>
        entries;  ///< all whose words contain it: the word itself, then by letters
    const Command* page = nullptr;  ///< the one that it leads to; nothing when none stands out
};

/// A row for each word that the editor colours, in the order of that list.
std::vector<WordPlace> WordPlaces(const CommandCatalogue& commands);

}  // namespace zentro
