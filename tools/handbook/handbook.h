#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "tools/handbook/manuscript.h"

namespace zentro {

/// The handbook as one HTML page, in the part of HTML that simple viewers show.
struct Handbook {
    std::string html;
    std::vector<std::string> problems;  ///< of the manuscript, each with its place
};

/// Puts the handbook together: the texts and programs of the manuscript, and the words, arguments,
/// values and messages as the compiler has them.
Handbook MakeHandbook(const InstructionConfiguration& language, const Manuscript& manuscript);

/// The words that the editor colours, each of which has a place in the handbook.
std::vector<std::string> KeywordsOf(const CommandCatalogue& commands);

}  // namespace zentro
