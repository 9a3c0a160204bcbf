#include "ui/editor/scintilla_text.h"

namespace zentro {

using Sci = QsciScintillaBase;

std::string TextBetween(QsciScintillaBase& editor, long begin, long end) {
    if (end <= begin) return {};
    std::string text(static_cast<std::size_t>(end - begin), '\0');
    // The component ends the text with a 0, for which a string has its place.
    editor.SendScintilla(Sci::SCI_GETTEXTRANGE, begin, end, text.data());
    return text;
}

std::string LineText(QsciScintillaBase& editor, int line) {
    return TextBetween(editor, LineBegin(editor, line), LineEnd(editor, line));
}

long TextLength(QsciScintillaBase& editor) {
    return Send(editor, Sci::SCI_GETLENGTH);
}

long CaretPosition(QsciScintillaBase& editor) {
    return Send(editor, Sci::SCI_GETCURRENTPOS);
}

int LineCount(QsciScintillaBase& editor) {
    return static_cast<int>(Send(editor, Sci::SCI_GETLINECOUNT));
}

int LineOf(QsciScintillaBase& editor, long position) {
    return static_cast<int>(Send(editor, Sci::SCI_LINEFROMPOSITION, position));
}

long LineBegin(QsciScintillaBase& editor, int line) {
    return Send(editor, Sci::SCI_POSITIONFROMLINE, line);
}

long LineEnd(QsciScintillaBase& editor, int line) {
    return Send(editor, Sci::SCI_GETLINEENDPOSITION, line);
}

long NextLineBegin(QsciScintillaBase& editor, int line) {
    return line + 1 < LineCount(editor) ? LineBegin(editor, line + 1) : TextLength(editor);
}

}  // namespace zentro
