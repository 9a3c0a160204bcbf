#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/command_catalogue.h"
#include "desktop/program_names.h"

namespace zentro {

/// What could stand in place of the beginning of a word.
struct Completion {
    std::size_t typed = 0;           ///< how many characters before the caret they would replace
    std::vector<std::string> items;  ///< in the order of the alphabet
};

/// The completions of what stands before the caret in its line: whole statements where a line
/// begins, functions, constants and other words elsewhere, and the program's own names. None inside
/// comments and texts in quotes.
Completion CompletionsOf(const CommandCatalogue& commands, const std::vector<ProgramName>& names,
                         std::string_view beforeCaret);

/// Whether a position at the end of the text would be inside a comment or a text in quotes.
bool EndsInCommentOrString(std::string_view line);

/// Names hold digits too.
bool IsNameCharacter(char c);

}  // namespace zentro
