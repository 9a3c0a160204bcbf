#pragma once

#include <cstdint>
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

/// How a piece of source text is coloured.
enum class TextKind : std::uint8_t {
    Other = 0,
    Keyword = 1,
    Comment = 2,
    String = 3,
};

/// A piece of text that is more than Other.
struct TextRun {
    std::size_t begin = 0;
    std::size_t length = 0;
    TextKind kind = TextKind::Other;
    std::string_view spelling;  ///< a keyword as its list spells it; otherwise empty

    std::size_t End() const { return begin + length; }
};

/// Words are made of letters and "_" alone, so that digits end a word as blanks do.
bool IsWordCharacter(char c);

/// The keywords, comments and strings of the text in their order. A comment goes from ";" to the
/// end of its line, a string from a double quote to the next one, or to the end of the text, and is
/// no place for keywords or comments. A word at the very end of the text is not complete yet.
std::vector<TextRun> FormatSourceText(const KeywordList& keywords, std::string_view text);

/// Where the word begins that ends the text; the text's length when no word does.
std::size_t LastWordBegin(std::string_view text);

/// Writes every keyword of the text as its list spells it. The text keeps its length.
void RespellKeywords(std::string& text, const std::vector<TextRun>& runs);

}  // namespace zentro
