#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "desktop/file_text.h"
#include "desktop/programs.h"
#include "ui/editor/editor_marks.h"
#include "ui/editor/source_search.h"
#include "ui/support/help_topic.h"
#include "ui/support/workbench.h"

namespace zentro {

class FindBar;
class OutlineBox;
class SourceEditor;

enum class SaveResult : std::uint8_t { Saved, Cancelled, Failed };

/// The window of one source file: it shows and edits the text of an open file, and tells the
/// programs of every edit.
class SourceWindow : public QWidget {
    Q_OBJECT

  public:
    /// Both outlive the window.
    SourceWindow(Workbench& workbench, Programs& programs, QWidget* parent = nullptr);
    ~SourceWindow() override;

    /// Begins an empty text named "NewFile" and the number, which is saved under another name.
    void NewFile(int number);
    /// Opens the file. False when it cannot be read: the user is told, and nothing is opened.
    bool LoadFile(const QString& folder, const QString& fileName);
    /// Takes the file over as it is on disk now; that can be undone, and the caret stays in its
    /// line. False as with LoadFile.
    bool Reload();
    /// Writes the text to its file; a new file goes to SaveFileAs. A failure is told to the user.
    SaveResult SaveFile();
    /// Asks for a name and writes the text to it. The window keeps its old file on failure.
    SaveResult SaveFileAs();

    void CutSelectedText();
    void CopySelectedText();
    void PasteSelectedText();
    void SelectAllText();
    void Undo();
    void Redo();
    void ZoomIn();
    void ZoomOut();
    void ResetZoom();

    int Find(const QString& text, bool continueFromSelection, FindOptions options);
    bool ReplaceIfSelected(const QString& text, const QString& replacement);
    /// The edits between the two are undone in one step.
    void BeginUndoGroup();
    void EndUndoGroup();
    /// Selects a line (from 1) and gives the text the focus.
    void GotoLine(int line);
    /// The same with the caret before the line's first word, so that typing deletes nothing.
    void PutCaretAt(int line);

    /// Take the settings as they are now.
    void SetFormColours();
    void SetFont();
    void SetColouring();

    FileId Id() const { return id_; }
    const OpenFile& File() const;
    QString PathName() const { return File().folder; }  ///< empty for a new file
    QString FileName() const { return File().name; }
    QString FileTitle() const { return File().name; }  ///< what the caption names
    QString Text() const;
    bool SourceChanged() const { return File().IsChanged(); }
    bool IsNewFile() const;
    /// Whether a save asks for a name.
    bool AsksForName() const;
    QString DocStats() const;         ///< "Line 3/40"
    HelpTopic TopicAtCursor() const;  ///< for the handbook
    SourceEditor* Editor() const { return editor_; }
    FindBar* Bar() const { return findBar_; }
    OutlineBox* Outline() const { return outline_; }
    /// Whether commands on a text are for the source while this has the focus (null: nothing).
    bool TakesEdits(const QWidget* focus) const;

    /// Replaces the whole text as an edit, which can be undone and counts as a change.
    void SetText(const QString& text);

    /// Marks the line at which a program stands; nothing: none.
    void MarkLine(const std::optional<LineMark>& mark);
    /// Brings a line, from 1, into view; the caret stays where it is.
    void ShowLine(int line);
    void ShowBreakpoints(const std::vector<BreakpointMark>& breakpoints);
    int CaretLine() const;  ///< from 1
    /// Shows what the marks of the caret's line say below the line, until there are other messages.
    void ShowMessageBeside();
    /// Shows what the programs know of the file by now, without waiting to be told.
    void Refresh();
    /// What the marks of the caret's line say; empty without marks.
    QString MessageAtCursor() const;

  signals:
    void DocStatsChanged(const QString& stats);
    /// The window is being closed; it goes when the event is done.
    void FormClosing();
    void FilesDropped(const QStringList& paths);
    /// A breakpoint is wanted in a line, from 1, or not any more; or a condition of it.
    void BreakpointWanted(zentro::FileId id, int line);
    void ConditionWanted(zentro::FileId id, int line);
    /// A line, from 1, is to be fixed.
    void FixWanted(int line);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void Open(const QString& folder, const QString& name);
    void ShowTitle();
    void ShowReport();
    void NoteLinesMoved(const LineMove& move);
    QString ChooseName();
    std::optional<FileText> ReadSource(const QString& folder, const QString& fileName);
    SaveResult WriteTo(const QString& folder, const QString& fileName);

    Workbench& workbench_;
    Programs& programs_;
    SourceEditor* editor_;
    OutlineBox* outline_;
    FindBar* findBar_;
    FileId id_{};
    std::optional<LineMark> lineMark_;
    std::vector<BreakpointMark> breakpoints_;
    // No lines that may have borne these marks were taken out since they were set.
    bool areMessagesWhole_ = true;
    bool isLineMarkWhole_ = true;
    bool areBreakpointsWhole_ = true;
    std::uint64_t shownReport_ = 0;  ///< its serial number
    std::string lineEnd_;
};

}  // namespace zentro
