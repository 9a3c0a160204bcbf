#pragma once

#include <string>
#include <vector>

namespace zentro {

class SourceEditor;

/// Each of these edits is undone in one step. The lines are those of the selection, or the caret's;
/// a line in which a selection only ends, before its first character, is none of them.

/// Puts "; " before the lines, below each other at their common indentation, or takes it away when
/// all of them have one. Blank lines stay blank unless all are. What was selected stays selected.
void ToggleComment(SourceEditor& editor);

/// Repeats the selection behind itself, or the caret's line below itself.
void Duplicate(SourceEditor& editor);

/// Exchanges the lines with the one above or below. The selection goes with them. What comes into a
/// block or out of it is indented as it is to be there.
void MoveLinesUp(SourceEditor& editor);
void MoveLinesDown(SourceEditor& editor);

/// A piece of a line, in characters. Lines count from 1.
struct LinePiece {
    int line = 0;
    int column = 0;
    int length = 0;
};

/// A piece of a line and what comes in its place, UTF-8.
struct PieceChange {
    LinePiece piece;
    std::string text;
};

/// Puts the text in place of all the pieces, which must not overlap. The caret keeps its place.
void ReplacePieces(SourceEditor& editor, const std::vector<LinePiece>& pieces,
                   const std::string& text);
/// The same with a text for each piece.
void ReplacePieces(SourceEditor& editor, std::vector<PieceChange> changes);

/// Lets the program name the world for which it is written, in a comment at its head.
void NameWorld(SourceEditor& editor, const std::string& world);

}  // namespace zentro
