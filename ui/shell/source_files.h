#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "desktop/source_search.h"
#include "ui/output/compile_flow.h"
#include "ui/support/workbench.h"

class QTabBar;

namespace zentro {

class SourceWindow;
enum class SaveResult : std::uint8_t;

/// The open source windows with their file tabs, in the order of the tabs, and which of them is the
/// main file to compile.
class SourceFiles : public QObject, public OpenFiles, public SearchTargets {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;
        std::function<void(QWidget*)> bringToFront;
        std::function<QWidget*()> front;  ///< the child window in front; null: none
    };

    /// The tab bar outlives this object.
    SourceFiles(Workbench& workbench, QTabBar& tabs, Surroundings surroundings, QObject* parent);
    ~SourceFiles() override;

    SourceWindow* NewFile();
    /// Opens a file, or brings the window to the front that has it open. Null when it cannot be
    /// read, which has been told then.
    SourceWindow* OpenFile(const QString& folder, const QString& name);
    /// The window of the file; null when it is not open.
    SourceWindow* Find(const QString& path) const;
    /// The source window in front; null when there is none, or another window is.
    SourceWindow* Front() const;
    /// The window whose tab is selected: the last source window that was in front.
    SourceWindow* Current() const;
    const QList<SourceWindow*>& Windows() const { return windows_; }
    /// Selects the tab of the window.
    void ShowTab(SourceWindow* window);
    QList<SourceWindow*> Changed() const;

    void SaveFront();
    void SaveFrontAs();
    /// False when one of them was not saved, which has been told then.
    bool SaveAll();
    /// Asks once for all changed files. False when the program must stay open.
    bool MayClose();
    void CloseAll();

    SourceWindow* Main() const;
    void ResetMainFile();

    // The choice of the file to compile.
    QList<OpenFileName> Names() const override;
    std::optional<int> FrontFile() const override;
    std::optional<int> MainFile() const override;
    void SetMainFile(int file) override;
    std::optional<int> OpenFromDisk(const QString& folder, const QString& name) override;
    bool HasChanged(int file) const override;
    bool WasNeverSaved(int file) const override;
    bool Save(int file) override;

    // The search.
    int TabCount() const override;
    int FrontTab() const override;
    void BringToFront(int tab) override;
    int Find(const QString& text, bool continueSearch, FindOptions options) override;
    bool ReplaceIfSelected(const QString& text, const QString& replacement) override;
    void BeginUndoGroup() override;
    void EndUndoGroup() override;

  signals:
    void StatsChanged(const QString& text);
    void FilesChanged();  ///< opened, closed, renamed, or changed for the first time
    void Added(SourceWindow* window);
    void Closed(SourceWindow* window);
    void Saved(SourceWindow* window);
    void FileDropped(const QString& path);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Add(SourceWindow* window);
    void Remove(SourceWindow* window);
    void UpdateTab(SourceWindow* window);
    void UpdateKeys();
    void MarkTabAt(const QPoint& position);
    void RememberFile(const SourceWindow& window);
    void NoteSaved(SourceWindow& window);
    bool SaveWindow(SourceWindow& window);
    /// Asks about a changed file. False when its window must stay open.
    bool MayCloseWindow(SourceWindow& window);
    void SaveFrontBy(SaveResult (SourceWindow::*save)(), const char* cancelled);
    int IndexOf(const SourceWindow* window) const;

    Workbench& workbench_;
    QTabBar& tabs_;
    Surroundings surroundings_;
    QList<SourceWindow*> windows_;
    QPointer<SourceWindow> main_;
    int lastNewFile_ = 0;
};

}  // namespace zentro
