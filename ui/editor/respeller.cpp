#include "ui/editor/respeller.h"

#include <algorithm>

#include "ui/editor/scintilla_text.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

/// Keeps the selection where it is while words before it are exchanged for others as long.
class SelectionKeeper {
  public:
    explicit SelectionKeeper(QsciScintilla& editor)
        : editor_(editor),
          anchor_(Send(editor, Sci::SCI_GETANCHOR)),
          caret_(CaretPosition(editor)) {}
    ~SelectionKeeper() {
        Send(editor_, Sci::SCI_SETANCHOR, anchor_);
        Send(editor_, Sci::SCI_SETCURRENTPOS, caret_);
    }
    SelectionKeeper(const SelectionKeeper&) = delete;
    SelectionKeeper& operator=(const SelectionKeeper&) = delete;

  private:
    QsciScintilla& editor_;
    long anchor_;
    long caret_;
};

void Replace(QsciScintilla& editor, long begin, std::string_view word) {
    Send(editor, Sci::SCI_SETTARGETSTART, begin);
    Send(editor, Sci::SCI_SETTARGETEND, begin + static_cast<long>(word.size()));
    editor.SendScintilla(Sci::SCI_REPLACETARGET, static_cast<unsigned long>(word.size()),
                         word.data());
}

}  // namespace

void Respeller::Forget() {
    touched_.Clear();
    caretAfterEdit_ = -1;
    edited_ = false;
    lexer_.SetOpenWord(-1);
}

void Respeller::Edited(int line, int linesAdded, bool isUndoOrRedo) {
    if (isUndoOrRedo) return Forget();
    touched_.Edit(line, linesAdded);
    edited_ = true;
}

void Respeller::Settle() {
    if (touched_.IsEmpty()) return;
    const long caret = CaretPosition(editor_);
    if (edited_) caretAfterEdit_ = caret;
    const bool isOpen =
        caret == caretAfterEdit_ && caret > 0 &&
        IsWordCharacter(static_cast<char>(Send(editor_, Sci::SCI_GETCHARAT, caret - 1)));
    if (isOpen && !edited_) return;  // nothing new since the last time
    edited_ = false;
    const long openWord = isOpen ? caret : -1;
    lexer_.SetOpenWord(openWord);
    if (isOn_) Respell(openWord);
    const TouchedLines seen = touched_;
    touched_.Clear();
    const int line = LineOf(editor_, caret);
    if (isOpen) {
        touched_.Add(line, line);
    } else if (isOn_) {
        // The word that was open is complete now, whether or not its spelling changed.
        lexer_.Restyle(seen.first, std::min(seen.last, LineCount(editor_) - 1));
    }
}

void Respeller::Respell(long openWord) {
    const int last = std::min(touched_.last, LineCount(editor_) - 1);
    const long begin = LineBegin(editor_, std::min(touched_.first, last));
    const std::string text = TextBetween(editor_, begin, NextLineBegin(editor_, last));
    std::vector<TextRun> runs = FormatSourceText(keywords_, text);
    std::erase_if(runs, [&](const TextRun& run) {
        const long runBegin = begin + static_cast<long>(run.begin);
        const bool isOpen =
            openWord > runBegin && openWord <= runBegin + static_cast<long>(run.length);
        return run.kind != TextKind::Keyword || isOpen ||
               std::string_view(text).substr(run.begin, run.length) == run.spelling;
    });
    if (runs.empty()) return;
    const SelectionKeeper selection(editor_);
    Send(editor_, Sci::SCI_BEGINUNDOACTION);
    for (const TextRun& run : runs)
        Replace(editor_, begin + static_cast<long>(run.begin), run.spelling);
    Send(editor_, Sci::SCI_ENDUNDOACTION);
}

}  // namespace zentro
