#pragma once

#include <QAccessible>
#include <QTimer>
#include <Qsci/qsciscintilla.h>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "config/configuration.h"
#include "desktop/line_moves.h"
#include "ui/editor/editor_marks.h"
#include "ui/editor/fold_keeper.h"
#include "ui/editor/respeller.h"
#include "ui/editor/soft_marks.h"
#include "ui/editor/source_lexer.h"
#include "ui/editor/source_text_format.h"
#include "ui/editor/typing_help.h"
#include "ui/support/help_topic.h"

namespace zentro {

/// The text of one source file, coloured, with marks, folds and help for who types. Lines end in LF
/// inside.
class SourceEditor : public QsciScintilla, private QAccessible::ActivationObserver {
    Q_OBJECT

  public:
    /// The configuration outlives the editor.
    SourceEditor(const InstructionConfiguration& configuration, QWidget* parent);

    const CommandCatalogue& Commands() const { return commands_; }
    ~SourceEditor() override;

    /// A new text, UTF-8, which counts as saved. What stood there before cannot be brought back.
    /// `isLastLineEnded`: a line end stands after the text in its file, which completes its last
    /// word.
    void LoadText(std::string text, bool isLastLineEnded);
    /// A new text as an edit, which can be undone.
    void ReplaceText(std::string text, bool isLastLineEnded);
    std::string TextBytes();

    /// Off: keywords are neither coloured nor re-spelt.
    void SetColouring(bool on);
    void SetColours(const QColor& text, const QColor& page);
    void SetSourceFont(const QFont& font);

    /// The word as the editor spells it: with keywords in it as in the keyword list.
    std::string Spelled(std::string word) const;

    /// What the mouse over a word of a line, from 1, tells first; empty: nothing.
    void SetValueSource(std::function<QString(int line, const QString& word)> valueOf) {
        valueOf_ = std::move(valueOf);
    }

    /// An edit in several steps that does to the lines, all in all, what the move says.
    void EditLines(const LineMove& move, const std::function<void()>& edit);

    EditorMarks& Marks() { return marks_; }
    SoftMarks& Soft() { return soft_; }
    TypingHelp& Typing() { return typing_; }
    FoldKeeper& Folds() { return folds_; }

    /// Selects the text between two positions (bytes) and unfolds and shows it.
    void SelectRange(long begin, long end);
    HelpTopic TopicAtCaret();  ///< for the handbook
    int CaretLine();           ///< from 1
    int CaretColumn();         ///< from 0, in characters
    bool IsCaretInWord();      ///< or right before or behind one

  signals:
    /// A new text stands there, which is no edit.
    void Loaded();
    /// The text or the caret's place has changed.
    void StatsChanged();
    /// An edit has put lines in or taken lines out.
    void LinesMoved(const zentro::LineMove& move);
    /// The margin for breakpoints beside a line, from 1, was clicked, or with the right button.
    void BreakpointClicked(int line);
    void ConditionClicked(int line);
    /// The lamp beside a line, from 1, was clicked.
    void LampClicked(int line);
    /// Lines are about to be taken out of the text. Comes before EditBegins.
    void LinesGoing();
    /// The text is about to be edited, or an edit undone.
    void EditBegins();
    /// Edits were undone or redone. Comes when their lines have moved.
    void Undone();
    /// The text was edited, or an edit was undone. Comes soon after the edit.
    void Edited();
    void FilesDropped(const QStringList& paths);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    std::vector<TextRun> Prepare(std::string& text, bool isLastLineEnded) const;
    void SetUpMargins();
    void SetUpTyping();
    bool IsForBreakpoints(int margin, int line) const;
    void ConnectSignals();
    void SetChromeColours(const QColor& text, const QColor& page);
    void FitNumberMargin();
    int WidthOfMargins() const;
    void accessibilityActiveChanged(bool active) override;
    void TellEditsToListeners(bool active);
    void SkipAccessibility();
    void BeforeEdit(int position, int type, int length);
    void TellUndone();
    void TellEdit();
    void OnCharacterAdded(int character);
    void EndLineEnd();
    void Settle();
    void TellMovedLines(const QString& before);
    QString HoverText(const QPoint& point);
    std::string WordAt(const QPoint& point);

    const CommandCatalogue& commands_;
    KeywordList keywords_;
    SourceLexer* lexer_;
    Respeller respeller_;
    FoldKeeper folds_;
    EditorMarks marks_;
    SoftMarks soft_;
    TypingHelp typing_;
    QTimer settle_;
    bool isColouring_ = true;
    bool isLoading_ = false;
    bool wasEdited_ = false;
    bool endsLine_ = false;        ///< the undo step of a line end is open
    int editedLine_ = -1;          ///< of an edit that is not told yet; -1: there is none
    int linesBefore_ = 0;          ///< that edit
    bool editBeginsLine_ = false;  ///< only blanks stand before it
    bool isReplacing_ = false;     ///< the whole text
    std::function<QString(int line, const QString& word)> valueOf_;
    bool isUndoOrRedo_ = false;
    bool wasUndone_ = false;  ///< which is not told yet
    int digits_ = 0;
};

}  // namespace zentro
