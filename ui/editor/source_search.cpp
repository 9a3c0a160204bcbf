#include "ui/editor/source_search.h"

#include <algorithm>

#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

// The options have the numbers that the editing component gives them.
static_assert(static_cast<int>(FindOption::WholeWord) == Sci::SCFIND_WHOLEWORD);
static_assert(static_cast<int>(FindOption::MatchCase) == Sci::SCFIND_MATCHCASE);

bool IsSelected(SourceEditor& editor, const QString& text) {
    return !text.isEmpty() && editor.selectedText().compare(text, Qt::CaseInsensitive) == 0;
}

/// The first match from the position on; empty at -1 without one.
TextRange FindFrom(SourceEditor& editor, const std::string& wanted, long start,
                   FindOptions options) {
    Send(editor, Sci::SCI_SETSEARCHFLAGS, static_cast<int>(options));
    Send(editor, Sci::SCI_SETTARGETSTART, start);
    Send(editor, Sci::SCI_SETTARGETEND, TextLength(editor));
    const long found = editor.SendScintilla(
        Sci::SCI_SEARCHINTARGET, static_cast<unsigned long>(wanted.size()), wanted.data());
    if (found < 0) return {-1, -1};
    return {found, Send(editor, Sci::SCI_GETTARGETEND)};
}

/// From 0, of the nearest line that there is.
int IndexOf(SourceEditor& editor, int line) {
    return std::clamp(line, 1, LineCount(editor)) - 1;
}

}  // namespace

int FindInSource(SourceEditor& editor, const QString& text, bool continueFromSelection,
                 FindOptions options) {
    if (text.isEmpty()) return -1;
    long start = 0;
    if (continueFromSelection) {
        start = Send(editor, Sci::SCI_GETSELECTIONSTART);
        if (IsSelected(editor, text)) start = Send(editor, Sci::SCI_POSITIONAFTER, start);
    }
    const TextRange found = FindFrom(editor, text.toStdString(), start, options);
    if (found.begin < 0) return -1;
    editor.SelectRange(found.begin, found.end);
    return static_cast<int>(Send(editor, Sci::SCI_COUNTCHARACTERS, 0, found.begin));
}

std::vector<TextRange> FindAllInSource(SourceEditor& editor, const QString& text,
                                       FindOptions options, std::size_t most) {
    std::vector<TextRange> matches;
    const std::string wanted = text.toStdString();
    if (wanted.empty()) return matches;
    TextRange match = FindFrom(editor, wanted, 0, options);
    while (match.begin >= 0 && matches.size() < most) {
        matches.push_back(match);
        match = FindFrom(editor, wanted, match.end, options);
    }
    return matches;
}

bool ReplaceSelection(SourceEditor& editor, const QString& text, const QString& replacement) {
    if (!IsSelected(editor, text)) return false;
    editor.replaceSelectedText(replacement);
    return true;
}

void SelectLine(SourceEditor& editor, int line) {
    const int index = IndexOf(editor, line);
    editor.setFocus();
    editor.SelectRange(LineBegin(editor, index), LineEnd(editor, index));
}

void PutCaretInLine(SourceEditor& editor, int line) {
    const long place = Send(editor, Sci::SCI_GETLINEINDENTPOSITION, IndexOf(editor, line));
    editor.setFocus();
    editor.SelectRange(place, place);
}

}  // namespace zentro
