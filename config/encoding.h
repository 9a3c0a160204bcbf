#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zentro {

/// A character that Windows-1252 lacks.
struct ReplacedCharacter {
    std::size_t position = 0;  ///< of the "?" in its place
    char32_t character = 0;
};

/// Reads the bytes of a text file into the program's own character set, Windows-1252, in which
/// every character is one byte. UTF-8 is recognised, a byte-order mark dropped; bytes that are not
/// valid UTF-8 are Windows-1252 already. A character that Windows-1252 lacks becomes "?", and is
/// told in `replaced`, in the order of their places, if there is somebody to tell.
std::string DecodeText(std::string bytes, std::vector<ReplacedCharacter>* replaced = nullptr);

/// True when the bytes are those of ASCII.
bool IsAscii(std::string_view bytes);

/// True when the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);

/// The number of a character of the program's own character set in Unicode.
char32_t UnicodeOf(char c);

/// A character of Unicode as UTF-8.
std::string Utf8Of(char32_t character);

/// Writes a text of the program's own character set as UTF-8.
std::string ToUtf8(std::string_view text);

}  // namespace zentro
