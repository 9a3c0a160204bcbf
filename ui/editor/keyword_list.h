#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/name_index.h"

namespace zentro {

/// The words that the editor colours, from the text ".AND.BEGIN.BYTE." in which every word stands
/// between dots.
class KeywordList {
  public:
    explicit KeywordList(std::string_view dottedWords);

    /// The list's own spelling of the word, whose letter case does not matter; empty when it is no
    /// keyword. Valid as long as the list.
    std::string_view Find(std::string_view word) const;

  private:
    std::vector<std::string> words_;
    NameIndex index_;
    std::size_t longest_ = 0;
};

}  // namespace zentro
