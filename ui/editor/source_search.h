#pragma once

#include <QString>
#include <vector>

#include "desktop/find_options.h"
#include "ui/editor/soft_marks.h"

namespace zentro {

class SourceEditor;

/// Finds the text from the start of the selection on, or from the start of the text. A match
/// becomes the selection. A selection that is the text already, whatever its letter case, is not
/// found again. The position of the match in characters, from 0, or -1.
int FindInSource(SourceEditor& editor, const QString& text, bool continueFromSelection,
                 FindOptions options);

/// All matches in the text, or the first so many; none of an empty text.
std::vector<TextRange> FindAllInSource(SourceEditor& editor, const QString& text,
                                       FindOptions options, std::size_t most);

/// Replaces the selection when it is the text, whatever its letter case, and puts the caret after
/// what it inserts. False when nothing was replaced.
bool ReplaceSelection(SourceEditor& editor, const QString& text, const QString& replacement);

/// Selects a line (from 1) up to its line end. A number that no line has stands for the nearest.
void SelectLine(SourceEditor& editor, int line);

/// Brings a line into view and puts the caret before its first word, so that the next key only adds
/// to it.
void PutCaretInLine(SourceEditor& editor, int line);

}  // namespace zentro
