#pragma once

#include <Qsci/qsciscintilla.h>
#include <string>

namespace zentro {

/// Positions are bytes of the UTF-8 text, lines count from 0.

/// One message to the editing component with what it takes as numbers.
inline long Send(QsciScintillaBase& editor, unsigned message, long first = 0, long second = 0) {
    return editor.SendScintilla(message, static_cast<unsigned long>(first), second);
}

std::string TextBetween(QsciScintillaBase& editor, long begin, long end);

/// The text of a line without its line end.
std::string LineText(QsciScintillaBase& editor, int line);

long TextLength(QsciScintillaBase& editor);
long CaretPosition(QsciScintillaBase& editor);
int LineCount(QsciScintillaBase& editor);
int LineOf(QsciScintillaBase& editor, long position);
long LineBegin(QsciScintillaBase& editor, int line);
/// The end of the line before its line end.
long LineEnd(QsciScintillaBase& editor, int line);
/// Where the line after it begins; the text's end for the last line.
long NextLineBegin(QsciScintillaBase& editor, int line);

}  // namespace zentro
