#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "desktop/line_message.h"
#include "desktop/program_names.h"
#include "ui/editor/source_search.h"
#include "desktop/file_text.h"
#include "ui/support/workbench.h"

namespace zentro {

class SourceEditor;

enum class SaveResult : std::uint8_t { Saved, Cancelled, Failed };

/// The window of one source file.
class SourceWindow : public QWidget {
    Q_OBJECT

  public:
    /// The workbench outlives the window.
    explicit SourceWindow(Workbench& workbench, QWidget* parent = nullptr);

    /// An empty text named "NewFile" and the number, which is saved under another name.
    void NewFile(int number);
    /// Shows the file. False when it cannot be read: the user is told, and the text stays.
    bool LoadFile(const QString& folder, const QString& fileName);
    /// Takes the file over as it is on disk now; that can be undone. False as with LoadFile.
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
    /// Puts the caret into a line and gives the text the focus, without selecting anything.
    void ShowLine(int line);

    /// Take the settings as they are now.
    void SetFormColours();
    void SetFont();
    void SetColouring();
    void PositionForm();

    QString PathName() const { return folder_; }  ///< the file's folder; empty for a new file
    QString FileName() const { return fileName_; }
    QString FileTitle() const { return fileName_; }  ///< what the caption names
    QString Text() const;
    bool SourceChanged() const;
    bool IsNewFile() const;
    QString DocStats() const;  ///< "Line 3/40"
    QString WordAtCursor() const;
    SourceEditor* Editor() const { return editor_; }

    /// Replaces the whole text as an edit, which can be undone and counts as a change.
    void SetText(const QString& text);

    /// Marks the lines of the messages in place of those marked before.
    void ShowMessages(const std::vector<LineMessage>& messages);
    void ClearMessages();
    /// Marks the line (from 1) at which a program stands, and shows it.
    void MarkLine(int line, const QString& text);
    void ClearMark();
    /// What the marks of the caret's line say; empty without marks.
    QString MessageAtCursor() const;

    /// The names that are offered while typing, in the order of the alphabet.
    void SetProgramNames(std::vector<ProgramName> names);

  signals:
    void DocStatsChanged(const QString& stats);
    /// The window is being closed; it goes when the event is done.
    void FormClosing();
    void SourceChangedChanged(bool changed);
    /// The text was edited, or undone.
    void TextEdited();
    void TitleChanged();
    void FilesDropped(const QStringList& paths);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void ShowTitle();
    QString ChooseName();
    std::optional<FileText> ReadSource(const QString& folder, const QString& fileName);
    SaveResult WriteTo(const QString& folder, const QString& fileName);
    QWidget& Frame();

    Workbench& workbench_;
    SourceEditor* editor_;
    QString folder_;
    QString fileName_;
    std::string lineEnd_;
};

}  // namespace zentro
