#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "config/command_catalogue.h"

namespace zentro {

/// Text cut in two. A text literal in quotes is never cut: it is one word for every splitter here.
struct SplitText {
    std::string_view first;
    std::string_view rest;
};

/// Cuts at the first blank, parenthesis or comma, which is dropped; a double quote begins the rest.
/// Both parts are trimmed. With `keepLeadingDelimiter`, a delimiter in the first position does not
/// count.
SplitText SplitFirstWord(std::string_view text, bool keepLeadingDelimiter = false);

/// The items between the commas, trimmed; an empty text has none.
std::vector<std::string_view> SplitCommaList(std::string_view text);

/// A word of a source line as it was typed, by its place.
struct PlacedWord {
    std::size_t begin = 0;
    std::size_t length = 0;

    std::size_t End() const { return begin + length; }
    std::string_view In(std::string_view line) const { return line.substr(begin, length); }
};

/// The words of a line that is not normalised, up to its comment and without its text literals: cut
/// where normalising the line and SplitFirstWord would cut them.
std::vector<PlacedWord> WordsInLine(const CommandCatalogue& commands, std::string_view line);

/// The text without a double quote at either end.
std::string_view StripQuotes(std::string_view text);

/// True for a text in double quotes.
bool IsQuoted(std::string_view text);

/// The position of the character outside quotes, from `start` on; npos when there is none.
std::size_t FindOutsideQuotes(std::string_view text, char wanted, std::size_t start = 0);

/// True when the text calls something: it has a "(" with no double quote before it.
bool HasCallParenthesis(std::string_view text);

/// The position of the ")" that closes the "(" at `open`, or of the last ")" when none does; npos
/// when there is no ")" outside quotes after it.
std::size_t FindClosingParenthesis(std::string_view text, std::size_t open);

}  // namespace zentro
