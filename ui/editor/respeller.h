#pragma once

#include <Qsci/qsciscintilla.h>

#include "ui/editor/source_lexer.h"
#include "ui/editor/touched_lines.h"

namespace zentro {

/// Gives the keywords that the user types the spelling of the keyword list, as soon as they are
/// complete: when something else follows, or when the caret leaves them. What undo and redo bring
/// back stays as it is, so that the spelling can be undone too.
class Respeller {
  public:
    /// All outlive the object.
    Respeller(QsciScintilla& editor, SourceLexer& lexer, const KeywordList& keywords)
        : editor_(editor), lexer_(lexer), keywords_(keywords) {}

    void SetOn(bool on) { isOn_ = on; }

    /// The text was replaced by one that is as it should be.
    void Forget();

    /// An edit happened. It may not be answered at once, but by the next Settle.
    void Edited(int line, int linesAdded, bool isUndoOrRedo);

    /// Re-spells what is complete. Called after each edit and each move of the caret.
    void Settle();

  private:
    void Respell(long openWord);

    QsciScintilla& editor_;
    SourceLexer& lexer_;
    const KeywordList& keywords_;
    TouchedLines touched_;
    long caretAfterEdit_ = -1;
    bool edited_ = false;
    bool isOn_ = true;
};

}  // namespace zentro
