#pragma once

#include <string>
#include <vector>

namespace zentro {

/// What a user who asks for help points at. Texts are UTF-8.
struct HelpTopic {
    std::string word;                ///< as it is written; empty: nothing that could be looked up
    std::vector<std::string> pages;  ///< places of the handbook that explain it, the best first
};

}  // namespace zentro
