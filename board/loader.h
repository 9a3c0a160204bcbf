#pragma once

#include <string>
#include <string_view>

namespace zentro {

struct Board;

/// From here on the characters of the serial line are a program, up to "]".
void StartLoader(Board& board);

/// Takes one character of the serial line while the loader is active.
void LoadCharacter(Board& board, char character);

/// Loads the text of a whole object file, without the serial line. Returns what is wrong with it,
/// with its line; nothing is left to run then. Empty: it was loaded.
std::string LoadObjectText(Board& board, std::string_view text);

}  // namespace zentro
