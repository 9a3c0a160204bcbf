#pragma once

#include <string>
#include <vector>

#include "model/source_line.h"

namespace zentro {

/// A character beyond ASCII in the statement of a line.
struct ForeignCharacter {
    char32_t character = 0;  ///< as it stands in the file
    bool inQuotes = false;
    bool isReplaced = false;  ///< the board does not have it: a "?" has its place

    /// Whether nothing is left of it: outside quotes it counts as a blank. A blank that looks like
    /// one is not meant.
    bool IsIgnored() const;
};

/// Those of a line, in their order, up to its comment.
std::vector<ForeignCharacter> ForeignCharactersIn(const SourceLine& line);

/// The line as it stands in its file, UTF-8.
std::string LineOfFile(const SourceLine& line);

/// A character as a message shows it, UTF-8; one that cannot be seen as "U+200B".
std::string ShownCharacter(char32_t character);

enum class TypographicSign { None, Quote, Dash };

/// Whether a word processor makes the character of a quote or a minus sign.
TypographicSign TypographicSignOf(char32_t character);

}  // namespace zentro
