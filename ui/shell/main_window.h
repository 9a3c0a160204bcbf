#pragma once

#include <QMainWindow>
#include <QPointer>
#include <functional>
#include <map>

#include "comms/port_list.h"
#include "desktop/programs.h"
#include "desktop/source_search.h"
#include "ui/shell/commands.h"
#include "ui/shell/last_moment.h"
#include "ui/support/help_topic.h"
#include "ui/support/workbench.h"

class QShortcut;
class QTabBar;

namespace zentro {

class BoardState;
class BoardWindows;
class Calculator;
class CommandStates;
class CompileCommands;
class Desk;
class EditorCommands;
class FindDialog;
class FollowCommands;
class HelpBrowser;
class LiveCheck;
class NoticeBar;
class ProgramMarks;
class RecordingCommands;
class RecoveryKeeper;
class SendCommands;
class SourceFiles;
class SourceWindow;
class StatusLine;

/// The frame of the program: menus, tool bars, file tabs, the child windows and the status bar. It
/// hands each command to the class that knows what to do.
class MainWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// The workbench outlives the window.
    explicit MainWindow(Workbench& workbench, PortLister listPorts = ListPorts);
    ~MainWindow() override;

    /// What follows once the window is seen: text that a crash left is offered again, the last file
    /// opened, on a first start without a port the virtual board offered.
    void Begin(bool firstStart);

    /// Keeps a copy of every text that is not saved, on the disk when it returns; an ending that is
    /// certain is the last that the copies see. Returns the message for the user when that failed.
    QString KeepUnsaved(Ending ending);

    QAction* Action(CommandId id) const { return actions_.at(id); }
    Programs& OpenPrograms() { return *programs_; }
    BoardState& Board() { return *board_; }
    BoardWindows& Boards() { return *boards_; }
    SourceFiles& Files() { return *files_; }
    CompileCommands& Compiler() { return *compiler_; }

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void MakeActions();
    void MakeMenus();
    void MakeToolBars();
    void MakeCentre();
    void MakeParts();
    std::shared_ptr<const CompiledProgram> CompileClosed(const QString& path);
    void MakeFollowing();
    void ConnectCompiler();
    void ConnectBoard();

    void BindFileCommands();
    void BindViewCommands();
    void BindEditCommands();
    void BindCompileCommands();
    void BindKinetronCommands();
    void BindWindowsCommands();
    void BindHelpCommands();
    void BindToSource(CommandId id, void (SourceWindow::*run)());

    void OpenSource();
    void OpenPath(const QString& path);
    void OpenExample();
    QWidget* MakeStartPage();
    void RememberFiles();
    void ShowFirstLesson();
    void Print();
    void EditFocused(const char* slot, void (SourceWindow::*run)());
    void Copy();
    void ShowFindDialog(bool replaces);
    void TellSearchResult(SearchResult result);
    void GotoLine();
    void ShowOptions();
    QString HelpFile();
    HelpTopic TopicInFront() const;
    void ShowHelp(const QString& address, const HelpTopic& topic);
    void ShowWebCommands();
    void ApplySettings();
    void OfferVirtualBoard();

    void ShowFront();
    void ShowCaret();
    void ShowBoard();
    void FillWindowsMenu();
    void BringToFront(QWidget* window);
    void BackToSource();
    void ShowStatus(const QString& text);
    QWidget* Front() const;
    QString Setting(SettingNumber number) const;

    Workbench& workbench_;
    PortLister listPorts_;
    std::map<CommandId, QAction*> actions_;
    std::map<CommandId, std::function<void()>> handlers_;
    QTabBar* tabs_ = nullptr;
    Desk* area_ = nullptr;
    NoticeBar* notices_ = nullptr;
    QMenu* windowsMenu_ = nullptr;
    StatusLine* status_ = nullptr;
    QString newestFile_;  ///< of the recent files

    Programs* programs_ = nullptr;
    BoardState* board_ = nullptr;
    SourceFiles* files_ = nullptr;
    CompileCommands* compiler_ = nullptr;
    BoardWindows* boards_ = nullptr;
    SendCommands* sending_ = nullptr;
    FollowCommands* following_ = nullptr;
    RecordingCommands* recordings_ = nullptr;
    RecoveryKeeper* recovery_ = nullptr;
    LiveCheck* checks_ = nullptr;
    EditorCommands* editing_ = nullptr;
    QShortcut* downloadKey_ = nullptr;  ///< of the download command while that is disabled
    std::unique_ptr<SourceSearch> search_;
    QPointer<FindDialog> findDialog_;
    QPointer<Calculator> calculator_;
    QPointer<HelpBrowser> browser_;
    std::unique_ptr<CommandStates> states_;
};

}  // namespace zentro
