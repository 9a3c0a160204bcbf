#pragma once

#include <string>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// Makes the line's parsed text and comment from its source text: operators stand between blanks,
/// runs of blanks and of other characters outside the language become one blank, and what follows a
/// ";" is the comment. Texts in quotes stay as they are; one that is not closed is closed and
/// reported.
void PrepareLine(Compilation& compilation, SourceLine& line);

/// What PrepareLine makes of a text: words that it changes can never be found in a line.
std::string NormalizedText(const CommandCatalogue& commands, std::string_view text);

}  // namespace zentro
