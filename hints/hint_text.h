#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "hints/hint_finders.h"

namespace zentro {

/// The hint with the text of the code, in which %1 is the first of the words, %2 the second and so
/// on. The words are UTF-8. Empty when the language has no such text.
Hint MakeHint(const HintQuestion& question, MessageCode text,
              std::initializer_list<std::string_view> words);

/// Replaces a piece of the line, whose place is counted from 0 in the line's text.
Fix FixOf(const SourceLine& line, std::size_t begin, std::size_t length, std::string_view text);

/// The line up to its comment, with blanks in place of what stands in quotes: every character keeps
/// its place.
std::string WithoutQuotes(const SourceLine& line);

}  // namespace zentro
