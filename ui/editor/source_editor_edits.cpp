// What becomes of the text: it is loaded, replaced and edited, and whoever keeps something by its
// lines is told.
#include <QScopedValueRollback>
#include <algorithm>

#include "desktop/text_difference.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"

namespace zentro {

namespace {

using Sci = QsciScintillaBase;

}  // namespace

void SourceEditor::LoadText(std::string text, bool isLastLineEnded) {
    const std::vector<TextRun> runs = Prepare(text, isLastLineEnded);
    isLoading_ = true;
    Send(*this, Sci::SCI_SETUNDOCOLLECTION, 0);
    Send(*this, Sci::SCI_CLEARALL);
    SendScintilla(Sci::SCI_ADDTEXT, static_cast<unsigned long>(text.size()), text.data());
    Send(*this, Sci::SCI_SETUNDOCOLLECTION, 1);
    Send(*this, Sci::SCI_EMPTYUNDOBUFFER);
    Send(*this, Sci::SCI_SETSAVEPOINT);
    Send(*this, Sci::SCI_GOTOPOS, 0);
    isLoading_ = false;
    lexer_->StyleAll(runs);
    respeller_.Forget();
    folds_.Edited(0, LineCount(*this) - 1);
    settle_.start(0);
    emit Loaded();
}

void SourceEditor::ReplaceText(std::string text, bool isLastLineEnded) {
    Prepare(text, isLastLineEnded);
    TellEdit();
    const QString before = this->text();
    const QScopedValueRollback replacing(isReplacing_, true);
    int line = 0;
    int column = 0;
    getCursorPosition(&line, &column);
    const int firstVisible = firstVisibleLine();
    const long scrolled = Send(*this, Sci::SCI_GETXOFFSET);
    Send(*this, Sci::SCI_BEGINUNDOACTION);
    Send(*this, Sci::SCI_SETTARGETSTART, 0);
    Send(*this, Sci::SCI_SETTARGETEND, TextLength(*this));
    SendScintilla(Sci::SCI_REPLACETARGET, static_cast<unsigned long>(text.size()), text.data());
    Send(*this, Sci::SCI_ENDUNDOACTION);
    TellEdit();
    TellMovedLines(before);
    respeller_.Forget();
    lexer_->SetEndComplete();
    line = std::min(line, lines() - 1);
    setCursorPosition(
        line,
        std::min(column, static_cast<int>(QString::fromStdString(LineText(*this, line)).size())));
    setFirstVisibleLine(firstVisible);
    Send(*this, Sci::SCI_SETXOFFSET, scrolled);
}

void SourceEditor::BeforeEdit(int position, int type, int length) {
    if (isLoading_ || (type & (SC_MOD_BEFOREINSERT | SC_MOD_BEFOREDELETE)) == 0) return;
    TellEdit();
    isUndoOrRedo_ = (type & (SC_PERFORMED_UNDO | SC_PERFORMED_REDO)) != 0;
    if (!isUndoOrRedo_) TellUndone();
    const bool takesLines = (type & SC_MOD_BEFOREDELETE) != 0 &&
                            LineOf(*this, position) != LineOf(*this, position + length);
    if (takesLines) emit LinesGoing();
    emit EditBegins();
    editedLine_ = LineOf(*this, position);
    const std::string before = TextBetween(*this, LineBegin(*this, editedLine_), position);
    editBeginsLine_ = before.find_first_not_of(" \t") == std::string::npos;
    linesBefore_ = LineCount(*this);
    wasEdited_ = true;
    settle_.start(0);
}

/// How many lines an edit added shows when it is done.
void SourceEditor::TellEdit() {
    if (editedLine_ < 0) return;
    const int linesAdded = LineCount(*this) - linesBefore_;
    lexer_->Touch(editedLine_, linesAdded);
    folds_.Edited(editedLine_, linesAdded);
    respeller_.Edited(editedLine_, linesAdded, isUndoOrRedo_);
    if (isUndoOrRedo_) lexer_->SetEndComplete();
    wasUndone_ = wasUndone_ || isUndoOrRedo_;
    // What stands behind the beginning of a line goes down and up with it.
    const int first = editBeginsLine_ ? editedLine_ + 1 : editedLine_ + 2;
    editedLine_ = -1;
    if (linesAdded == 0 || isReplacing_) return;
    emit LinesMoved({first, std::max(-linesAdded, 0), std::max(linesAdded, 0)});
}

/// It takes the whole text to see what is back, so several steps are told at once.
void SourceEditor::TellUndone() {
    if (!wasUndone_) return;
    wasUndone_ = false;
    emit Undone();
}

void SourceEditor::EditLines(const LineMove& move, const std::function<void()>& edit) {
    TellEdit();
    {
        const QScopedValueRollback replacing(isReplacing_, true);
        edit();
        TellEdit();
    }
    emit LinesMoved(move);
}

/// Of a text that was replaced as a whole, the lines that are still there have only moved.
void SourceEditor::TellMovedLines(const QString& before) {
    int line = 1;
    LineMove move;
    const auto tell = [&] {
        // As many lines as were both taken out and put in count as changed.
        const int changed = std::min(move.removed, move.added);
        const LineMove moved{line + changed, move.removed - changed, move.added - changed};
        if (moved.removed + moved.added > 0) emit LinesMoved(moved);
        line += move.added;
        move = {};
    };
    for (const DifferenceLine& difference : DifferenceOf(before, text())) {
        if (difference.change == LineChange::Removed) ++move.removed;
        if (difference.change == LineChange::Added) ++move.added;
        if (difference.change != LineChange::Same) continue;
        tell();
        ++line;
    }
    tell();
}

void SourceEditor::OnCharacterAdded(int character) {
    TellEdit();
    if (character != '\n') respeller_.Settle();
    typing_.CharacterAdded(character);
    if (character != '\n') return;
    EndLineEnd();
    TellEdit();
    respeller_.Settle();
}

void SourceEditor::Settle() {
    TellEdit();
    TellUndone();
    respeller_.Settle();
    typing_.CaretMoved();
    FitNumberMargin();
    SkipAccessibility();
    if (wasEdited_) {
        wasEdited_ = false;
        emit Edited();
    }
    emit StatsChanged();
}

}  // namespace zentro
