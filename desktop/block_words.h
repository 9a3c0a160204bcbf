#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/command_catalogue.h"
#include "model/statement.h"

namespace zentro {

/// The statement with which a line of source text begins, if it stands at the edge of a block;
/// nothing for other lines.
const Statement* FindBlockWord(const CommandCatalogue& commands, std::string_view line);

/// How many steps of indentation such a line stands right of the one that opened its block.
int StepsOf(const BlockEdge& edge);

/// True when the line holds the words of the block statement and nothing else.
bool IsBlockWordAlone(const CommandCatalogue& commands, const Statement& word,
                      std::string_view line);

/// The place of a line in the tree of blocks.
struct LineFold {
    int depth = 0;          ///< how many blocks the line is inside of
    bool isHeader = false;  ///< the line opens a block that can be folded
    int nextDepth = 0;      ///< the depth at which the next line begins
};

/// The fold of a line before which so many blocks are open. `word` may be null.
LineFold FoldOf(const Statement* word, int depth);

/// The text of a line's beginning with single blanks between its words, as the catalogue has its
/// words. Long lines are cut.
std::string CollapsedStart(std::string_view line);

}  // namespace zentro
