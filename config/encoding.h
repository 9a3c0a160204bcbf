#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// Reads the bytes of a text file into the program's own character set, Windows-1252, in which
/// every character is one byte. UTF-8 is recognised, a byte-order mark dropped; bytes that are not
/// valid UTF-8 are Windows-1252 already. A character that Windows-1252 lacks becomes "?".
std::string DecodeText(std::string bytes);

/// True when the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view bytes);

/// Writes a text of the program's own character set as UTF-8.
std::string ToUtf8(std::string_view text);

}  // namespace zentro
