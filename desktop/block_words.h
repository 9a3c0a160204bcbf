#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/command_catalogue.h"

namespace zentro {

/// What a line does to the blocks around it.
enum class BlockRole : std::uint8_t {
    Opens,
    Continues,  ///< ELSE, CASE
    Ends,
};

/// A statement that stands at the edge of a block.
struct BlockWord {
    Token token;
    BlockRole role;
    bool isOutermost;  ///< a table, routine, event or the program: whatever is open ends with it
    int steps;         ///< how many steps of indentation the line stands right of its opener
};

/// The block statement with which a line of source text begins; nothing for other lines.
const BlockWord* FindBlockWord(const CommandCatalogue& commands, std::string_view line);

/// True when the line holds the words of the block statement and nothing else.
bool IsBlockWordAlone(const CommandCatalogue& commands, const BlockWord& word,
                      std::string_view line);

/// The place of a line in the tree of blocks.
struct LineFold {
    int depth = 0;          ///< how many blocks the line is inside of
    bool isHeader = false;  ///< the line opens a block that can be folded
    int nextDepth = 0;      ///< the depth at which the next line begins
};

/// The fold of a line before which so many blocks are open. `word` may be null.
LineFold FoldOf(const BlockWord* word, int depth);

/// The text of a line's beginning with single blanks between its words, as the catalogue has its
/// words. Long lines are cut.
std::string CollapsedStart(std::string_view line);

}  // namespace zentro
