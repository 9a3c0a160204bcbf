#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

#include "desktop/programs.h"
#include "desktop/source_search.h"
#include "ui/support/workbench.h"

class QTabBar;

namespace zentro {

class SourceWindow;
enum class SaveResult : std::uint8_t;

/// The windows of the open files and their tabs. What is known of the files, the programs know.
class SourceFiles : public QObject, public SearchTargets {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;
        std::function<void(QWidget*)> bringToFront;
    };

    /// The tab bar and the programs outlive this object.
    SourceFiles(Workbench& workbench, Programs& programs, QTabBar& tabs, Surroundings surroundings,
                QObject* parent);
    ~SourceFiles() override;

    SourceWindow* NewFile();
    /// Opens a file, or brings the window to the front that has it open. Null when it cannot be
    /// read, which has been told then.
    SourceWindow* OpenFile(const QString& folder, const QString& name);
    SourceWindow* Open(const QString& path);
    /// The window of the file; null when it is not open.
    SourceWindow* Find(const QString& path) const;
    SourceWindow* WindowOf(FileId id) const;
    /// The source window whose tab is selected; null when no file is open.
    SourceWindow* Front() const;
    /// In the order of the tabs.
    QList<SourceWindow*> Windows() const;
    void BringToFront(FileId id);
    /// A child window has come to the front; when it is a source window its tab is selected.
    void NoteFront(QWidget* window);

    void SaveFront();
    void SaveFrontAs();
    /// False when it was not saved, which has been told then.
    bool Save(FileId id);
    /// False when one of them was not saved.
    bool SaveAll();
    /// Asks once for all changed files. False when the program must stay open.
    bool MayClose();
    void CloseAll();

    // The search.
    int TabCount() const override;
    int FrontTab() const override;
    void BringToFront(int tab) override;
    int Find(const QString& text, bool continueSearch, FindOptions options) override;
    bool ReplaceIfSelected(const QString& text, const QString& replacement) override;
    void BeginUndoGroup() override;
    void EndUndoGroup() override;

  signals:
    /// A source window was opened.
    void Opened(zentro::SourceWindow* window);
    /// The caret of a source window has moved, or the marks have changed.
    void StatsChanged();
    void FileDropped(const QString& path);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Add(SourceWindow* window);
    void ShowTabs();
    void ShowTab(int index, const zentro::OpenFile& file);
    void MarkTabAt(const QPoint& position);
    bool MayCloseWindow(SourceWindow& window);
    void RememberFile(const SourceWindow& window);
    void SaveFrontBy(SaveResult (SourceWindow::*save)(), const QString& cancelled);

    Workbench& workbench_;
    Programs& programs_;
    QTabBar& tabs_;
    Surroundings surroundings_;
    QList<SourceWindow*> windows_;  ///< in the order of their opening
    int lastNewFile_ = 0;
};

}  // namespace zentro
