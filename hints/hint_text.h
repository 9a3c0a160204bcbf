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

/// The line's text without the blanks around it and its comment, as it stands in the file.
std::string_view StatementOf(const SourceLine& line);

/// Says that the hint is about another line than the one that its message stands at.
void LeadTo(Hint& hint, const SourceLine& line);

/// The statement as another line's hint shows it.
std::string ShownStatement(const SourceLine& line);

/// Where a piece of the line's text stands in it, from 0.
std::size_t PlaceInLine(const SourceLine& line, std::string_view piece);

/// "Write ... instead of ...", with a fix that does it; the piece is one of the line's text.
Hint RewritePiece(const HintQuestion& question, std::string_view piece, const std::string& instead);
Hint RewriteStatement(const HintQuestion& question, const std::string& instead);

/// The line up to its comment, with blanks in place of what stands in quotes: every character keeps
/// its place.
std::string WithoutQuotes(const SourceLine& line);

}  // namespace zentro
