#include "ui/editor/source_editor.h"
#include "ui/support/colours.h"

namespace zentro {

namespace {

const QColor kKeywordColour(0, 0, 255);
const QColor kCommentColour(0, 127, 0);
const QColor kBraceColour(200, 0, 0);

/// So much of one colour in the other, in hundredths.
QColor Mix(const QColor& colour, const QColor& other, int share) {
    const auto part = [&](int a, int b) { return (a * share + b * (100 - share)) / 100; };
    return {part(colour.red(), other.red()), part(colour.green(), other.green()),
            part(colour.blue(), other.blue())};
}

}  // namespace

void SourceEditor::SetColours(const QColor& text, const QColor& page) {
    const QColor readable = ReadableOn(text, page);
    lexer_->SetColours(
        {readable, page, ReadableOn(kKeywordColour, page), ReadableOn(kCommentColour, page)});
    SetChromeColours(readable, page);
    marks_.Redraw(page);
}

/// Everything around the text is a shade between the text's colour and the page's.
void SourceEditor::SetChromeColours(const QColor& text, const QColor& page) {
    const QColor margin = Mix(text, page, 5);
    setMarginsBackgroundColor(margin);
    setMarginsForegroundColor(ReadableOn(Mix(text, page, 60), margin));
    setFoldMarginColors(page, page);
    const QColor fold = Mix(text, page, 60);
    for (int marker = SC_MARKNUM_FOLDEREND; marker <= int{SC_MARKNUM_FOLDEROPEN}; ++marker) {
        // The editor's own functions leave markers alone that it has not given out itself.
        SendScintilla(SCI_MARKERSETFORE, static_cast<unsigned long>(marker), page);
        SendScintilla(SCI_MARKERSETBACK, static_cast<unsigned long>(marker), fold);
    }
    setCaretForegroundColor(text);
    setCaretLineBackgroundColor(Mix(text, page, 6));
    setSelectionBackgroundColor(palette().color(QPalette::Active, QPalette::Highlight));
    setSelectionForegroundColor(palette().color(QPalette::Active, QPalette::HighlightedText));
    setMatchedBraceBackgroundColor(Mix(text, page, 20));
    setMatchedBraceForegroundColor(text);
    setUnmatchedBraceBackgroundColor(page);
    setUnmatchedBraceForegroundColor(ReadableOn(kBraceColour, page));
    const QColor tip = palette().color(QPalette::ToolTipBase);
    setCallTipsBackgroundColor(tip);
    setCallTipsForegroundColor(ReadableOn(palette().color(QPalette::ToolTipText), tip));
    setCallTipsHighlightColor(ReadableOn(kKeywordColour, tip));
}

}  // namespace zentro
