#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "config/text.h"

namespace zentro {

struct ProgramLook {
    std::string_view ground;  ///< a colour of HTML
    int underlined = 0;       ///< the line to underline, from 1; 0: none
};

/// The words that the editor colours; letter case makes no difference.
class Keywords {
  public:
    explicit Keywords(const std::vector<std::string>& words);
    bool Contains(std::string_view word) const;

  private:
    std::set<std::string, std::less<>> words_;  ///< in capitals
};

/// A program with its words and comments coloured.
std::string ProgramHtml(const std::vector<std::string>& lines, const Keywords& keywords,
                        const ProgramLook& look);

/// A text as it stands, on a ground of its own.
std::string BoxHtml(std::string_view textHtml, std::string_view ground);

}  // namespace zentro
