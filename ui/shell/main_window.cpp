#include "ui/shell/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "comms/virtual_board_link.h"
#include "ui/dialogs/find_dialog.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_connection.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/desk.h"
#include "ui/shell/notice_bar.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/source_checks.h"
#include "ui/shell/source_files.h"
#include "ui/shell/tool_bar_layout.h"
#include "ui/support/child_windows.h"
#include "ui/support/icons.h"
#include "ui/support/message_bar.h"

namespace zentro {

MainWindow::MainWindow(Workbench& workbench, PortLister listPorts)
    : workbench_(workbench), listPorts_(std::move(listPorts)) {
    setObjectName("frmMain");
    setWindowTitle(kProgramTitle);
    setAcceptDrops(true);
    MakeActions();
    MakeMenus();
    MakeToolBars();
    MakeCentre();
    MakeStatusBar();
    MakeParts();
    RestoreToolBarLayout(*this, workbench_.settings);
    RestoreMainWindowPlace(*this, workbench_.settings);
    UpdateFront();
}

MainWindow::~MainWindow() {
    // What is left of the windows must not tell a frame that is half gone.
    area_->disconnect(this);
}

void MainWindow::MakeActions() {
    BindFileCommands();
    BindViewCommands();
    BindEditCommands();
    BindCompileCommands();
    BindKinetronCommands();
    BindWindowsCommands();
    BindHelpCommands();
    for (const CommandRow& row : Commands()) {
        auto* action = new QAction(ThemedIcon(row.icon), row.caption, this);
        action->setObjectName(row.name);
        action->setShortcut(QKeySequence(row.shortcut));
        action->setStatusTip(row.help);
        action->setToolTip(QString(row.caption).remove('&').trimmed());
        connect(action, &QAction::triggered, this, [this, id = row.id] { handlers_.at(id)(); });
        addAction(action);
        actions_[row.id] = action;
    }
    Action(CommandId::CheckWhileTyping)->setCheckable(true);
    for (CommandId id :
         {CommandId::DownloadCurrent, CommandId::DownloadSaved, CommandId::CancelDownload}) {
        Action(id)->setEnabled(false);
    }
}

void MainWindow::MakeMenus() {
    for (const MenuRow& menuRow : Menus()) {
        QMenu* menu = menuBar()->addMenu(menuRow.caption);
        for (const CommandRow& row : Commands()) {
            if (row.menu != menuRow.id) continue;
            if (row.separatorBefore) menu->addSeparator();
            menu->addAction(Action(row.id));
        }
        if (menuRow.id == MenuId::Windows) windowsMenu_ = menu;
    }
    connect(windowsMenu_, &QMenu::aboutToShow, this, &MainWindow::FillWindowsMenu);
}

void MainWindow::MakeToolBars() {
    for (const ToolBarRow& barRow : ToolBars()) {
        QToolBar* bar = addToolBar(barRow.caption);
        bar->setObjectName(barRow.name);
        bar->setIconSize({20, 20});
        for (const CommandRow& row : Commands()) {
            if (row.toolBar != barRow.id) continue;
            bar->addAction(Action(row.id));
            QWidget* button = bar->widgetForAction(Action(row.id));
            button->setObjectName(row.toolBarKey);
            button->setAccessibleName(Action(row.id)->toolTip());
        }
    }
}

void MainWindow::MakeCentre() {
    auto* centre = new QWidget(this);
    tabs_ = new QTabBar(centre);
    tabs_->setObjectName("TabStripFiles");
    tabs_->setAccessibleName("Open source files");
    tabs_->setTabsClosable(true);
    tabs_->setExpanding(false);
    tabs_->setDocumentMode(true);
    notices_ = new NoticeBar(centre);
    area_ = new Desk(centre);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(notices_);
    layout->addWidget(tabs_);
    layout->addWidget(area_, 1);
    setCentralWidget(centre);
    connect(area_, &QMdiArea::subWindowActivated, this, &MainWindow::UpdateFront);
}

void MainWindow::MakeStatusBar() {
    setStatusBar(new MessageBar(this));
    linePanel_ = new QLabel(this);
    linePanel_->setObjectName("panelLine");
    changedPanel_ = new QLabel(this);
    changedPanel_->setObjectName("panelChanged");
    connectionPanel_ = new QLabel("Not connected", this);
    connectionPanel_->setObjectName("panelConnection");
    progress_ = new QProgressBar(this);
    progress_->setObjectName("panelProgress");
    progress_->setAccessibleName("Download");
    progress_->setMaximumWidth(180);
    progress_->hide();
    for (QWidget* panel :
         {static_cast<QWidget*>(progress_), static_cast<QWidget*>(linePanel_),
          static_cast<QWidget*>(changedPanel_), static_cast<QWidget*>(connectionPanel_)}) {
        statusBar()->addPermanentWidget(panel);
    }
}

void MainWindow::MakeParts() {
    const auto addChild = [this](QWidget* window) { AddChild(window); };
    const auto bringToFront = [this](QWidget* window) { BringToFront(window); };
    files_ = new SourceFiles(workbench_, *tabs_,
                             {addChild, bringToFront, [this] { return Front(); }}, this);
    compiler_ = new CompileCommands(workbench_, *files_, {addChild, bringToFront, this}, this);
    boards_ =
        new BoardConnection(workbench_,
                            {addChild, bringToFront, [this] { return compiler_->Last(); },
                             [this] { return compiler_->ObjectFile(); },
                             [this] { return compiler_->ObjectCode() != nullptr; }, listPorts_},
                            this);
    recovery_ = new RecoveryKeeper(workbench_, *files_, this);
    checks_ = new SourceChecks(workbench_, *files_, this);
    search_ = std::make_unique<SourceSearch>(*files_);
    ConnectFiles();
    ConnectCompiler();
    ConnectBoards();
}

void MainWindow::ConnectFiles() {
    connect(files_, &SourceFiles::StatsChanged, this, [this](const QString& stats) {
        linePanel_->setText(stats);
        // What is wrong with the caret's line can be read without a mouse.
        if (files_->Current() != nullptr)
            statusBar()->showMessage(files_->Current()->MessageAtCursor());
    });
    connect(files_, &SourceFiles::FilesChanged, this, &MainWindow::UpdateFront);
    connect(files_, &SourceFiles::FileDropped, this, &MainWindow::OpenPath);
    Action(CommandId::CheckWhileTyping)->setChecked(checks_->IsOn());
}

void MainWindow::ConnectCompiler() {
    connect(compiler_, &CompileCommands::CompileFinished, this, [this](bool succeeded) {
        statusBar()->showMessage(succeeded ? "No errors were found." : "There are errors.", 10'000);
        boards_->UseCompilation(compiler_->Last());
    });
}

void MainWindow::ConnectBoards() {
    connect(boards_, &BoardConnection::DownloadsEnabled, this, [this](bool enabled) {
        Action(CommandId::DownloadCurrent)->setEnabled(enabled);
        Action(CommandId::DownloadSaved)->setEnabled(enabled);
    });
    connect(boards_, &BoardConnection::DownloadRunning, this, [this](bool running) {
        Action(CommandId::CancelDownload)->setEnabled(running);
        progress_->setVisible(running);
    });
    connect(boards_, &BoardConnection::DownloadProgress, this, [this](double fraction, int) {
        progress_->setValue(static_cast<int>(fraction * progress_->maximum()));
    });
    connect(boards_, &BoardConnection::ConnectionChanged, connectionPanel_, &QLabel::setText);
    connect(boards_, &BoardConnection::SyncToCodeLine, compiler_, &CompileCommands::ShowAddress);
    connect(boards_, &BoardConnection::FaultHappened, compiler_, &CompileCommands::ShowFault);
    connect(boards_, &BoardConnection::HeldAt, compiler_, [this](const QString& address) {
        compiler_->MarkAddress(address, "The program is held here.");
    });
    connect(boards_, &BoardConnection::ProgramStarted, compiler_, &CompileCommands::ClearMark);
}

void MainWindow::AddChild(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    QMdiSubWindow* frame = area_->addSubWindow(window);
    frame->setWindowIcon(window->windowIcon());
    // The frame's own shortcuts would stand in the way of those of the menus.
    for (QAction* action : frame->systemMenu()->actions()) {
        action->setShortcut({});
    }
    frame->show();
}

void MainWindow::BringToFront(QWidget* window) {
    auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    if (frame == nullptr) return;
    if (frame->isMinimized()) frame->showNormal();
    area_->setActiveSubWindow(frame);
    FocusInto(*window);
}

QWidget* MainWindow::Front() const {
    const QMdiSubWindow* frame = area_->activeSubWindow();
    return frame == nullptr ? nullptr : frame->widget();
}

/// The window in front decides what the tabs and the status bar show.
void MainWindow::UpdateFront() {
    if (files_ == nullptr) return;
    SourceWindow* source = files_->Front();
    if (source != nullptr) files_->ShowTab(source);
    const SourceWindow* shown = files_->Current();
    changedPanel_->setText(shown == nullptr ? "" : shown->SourceChanged() ? "Changed" : "Saved");
    if (shown == nullptr) linePanel_->clear();
}

void MainWindow::FillWindowsMenu() {
    for (QAction* action : windowsMenu_->actions()) {
        if (action->property("window").toBool()) windowsMenu_->removeAction(action);
    }
    QAction* line = windowsMenu_->addSeparator();
    line->setProperty("window", true);
    int number = 0;
    for (QMdiSubWindow* frame : area_->subWindowList()) {
        const QString title = frame->windowTitle().remove("[*]");
        QAction* action = windowsMenu_->addAction(
            ++number < 10 ? QString("&%1 %2").arg(number).arg(title) : title);
        action->setProperty("window", true);
        action->setCheckable(true);
        action->setChecked(frame == area_->activeSubWindow());
        connect(action, &QAction::triggered, frame,
                [this, frame] { BringToFront(frame->widget()); });
    }
}

void MainWindow::Begin(bool firstStart) {
    recovery_->OfferUnsaved(this);
    if (files_->Windows().isEmpty() &&
        AsBoolean(workbench_.settings.GetSetting(SettingNumber::ReopenLastSource)) &&
        !Setting(SettingNumber::LastSourceName).isEmpty()) {
        files_->OpenFile(Setting(SettingNumber::LastSourceFolder),
                         Setting(SettingNumber::LastSourceName));
    }
    const auto isAdapter = [](const PortDescription& port) { return port.usb.has_value(); };
    if (firstStart && std::ranges::none_of(listPorts_(), isAdapter)) OfferVirtualBoard();
}

void MainWindow::OfferVirtualBoard() {
    notices_->Offer(
        "No board was found on this computer's USB ports. You can do everything with a board on "
        "the "
        "screen instead.",
        "Open &Virtual Board", [this] {
            workbench_.settings.SaveSetting(SettingNumber::SerialPort, kVirtualBoardPort);
            Action(CommandId::OpenVirtualBoard)->trigger();
        });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!files_->MayClose()) return event->ignore();
    SaveToolBarLayout(*this, workbench_.settings);
    SaveMainWindowPlace(*this, workbench_.settings);
    workbench_.settings.SaveSetting(
        SettingNumber::ObjectFolder,
        AsText(workbench_.settings.GetSetting(SettingNumber::ObjectFolder)));
    boards_->CloseAll();
    recovery_->EndSession();
    files_->CloseAll();
    area_->closeAllSubWindows();
    if (findDialog_ != nullptr) findDialog_->close();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) OpenPath(url.toLocalFile());
    }
}

QString MainWindow::Setting(SettingNumber number) const {
    return QString::fromStdString(AsText(workbench_.settings.GetSetting(number)));
}

}  // namespace zentro
