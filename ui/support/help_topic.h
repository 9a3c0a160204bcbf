#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace zentro {

/// A line of the user's own program with what its message says of it.
struct OwnCase {
    int line = 0;  ///< from 1
    QString text;  ///< of the line
    QString hint;
    QString mended;  ///< the line with the fix; empty: none is known

    bool operator==(const OwnCase&) const = default;
};

/// What a user who asks for help points at. Texts are UTF-8.
struct HelpTopic {
    std::string word;                  ///< as it is written; empty: nothing that could be looked up
    std::vector<std::string> pages;    ///< places of the handbook that explain it, the best first
    std::optional<OwnCase> ownCase{};  ///< with which the page begins
};

}  // namespace zentro
