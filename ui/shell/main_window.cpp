#include "ui/shell/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QStatusTipEvent>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "comms/virtual_board_link.h"
#include "desktop/board_state.h"
#include "desktop/live_check.h"
#include "desktop/recent_files.h"
#include "ui/dialogs/find_dialog.h"
#include "ui/editor/line_edits.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/command_states.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/desk.h"
#include "ui/shell/editor_commands.h"
#include "ui/shell/follow_commands.h"
#include "ui/shell/notice_bar.h"
#include "ui/shell/program_marks.h"
#include "ui/shell/recording_commands.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/send_commands.h"
#include "ui/shell/source_files.h"
#include "ui/shell/start_page.h"
#include "ui/shell/status_line.h"
#include "ui/shell/tool_bar_layout.h"
#include "ui/support/child_windows.h"
#include "ui/support/dialogs.h"
#include "ui/support/icons.h"

namespace zentro {

MainWindow::MainWindow(Workbench& workbench, PortLister listPorts)
    : workbench_(workbench), listPorts_(std::move(listPorts)) {
    setObjectName("frmMain");
    setWindowTitle(kProgramTitle);
    setAcceptDrops(true);
    workbench_.disk->SetWaiter([this](const QString& path, const std::function<bool()>& isDone) {
        workbench_.dialogs.WaitFor(this, path, isDone);
    });
    MakeActions();
    MakeMenus();
    MakeToolBars();
    MakeCentre();
    status_ = new StatusLine(this);
    setStatusBar(status_);
    MakeParts();
    RestoreToolBarLayout(*this, workbench_.settings);
    RestoreMainWindowPlace(*this, workbench_.settings);
    ShowFront();
    ShowBoard();
}

MainWindow::~MainWindow() {
    // What is left of the windows must not tell a frame that is half gone.
    workbench_.disk->SetWaiter({});
    area_->disconnect(this);
    programs_->disconnect();
    board_->disconnect();
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
        // A row without a handler shows at the first start.
        connect(action, &QAction::triggered, this, [run = handlers_.at(row.id)] { run(); });
        addAction(action);
        actions_[row.id] = action;
    }
    ShowWebCommands();
    Action(CommandId::CheckWhileTyping)->setCheckable(true);
    downloadKey_ = new QShortcut(Action(CommandId::DownloadCurrent)->shortcut(), this);
    connect(downloadKey_, &QShortcut::activated, this, [this] { sending_->TellWhyNoDownload(); });
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
        if (barRow.hasWords) bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
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
    area_ = new Desk(workbench_.settings, MakeStartPage(), centre);
    auto* layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(notices_);
    layout->addWidget(tabs_);
    layout->addWidget(area_, 1);
    setCentralWidget(centre);
    connect(area_, &QMdiArea::subWindowActivated, this, [this] {
        if (files_ != nullptr) files_->NoteFront(Front());
    });
}

QWidget* MainWindow::MakeStartPage() {
    const auto trigger = [this](CommandId id) { return [this, id] { Action(id)->trigger(); }; };
    return new StartPage(
        {trigger(CommandId::NewSource), trigger(CommandId::OpenSource),
         trigger(CommandId::FirstLesson), trigger(CommandId::OpenVirtualBoard),
         [this](const QString& path) { OpenPath(path); },
         [this](const QStringList& paths) {
             for (const QString& path : paths)
                 OpenPath(path);
         }},
        workbench_.ExamplesFolder(),
        [this] { return PresentFiles(*workbench_.disk, RecentFiles(workbench_.settings).Paths()); },
        [this] {
            return PresentFiles(*workbench_.disk, SessionFiles(workbench_.settings).Paths());
        });
}

void MainWindow::MakeParts() {
    const auto addChild = [this](QWidget* window) { area_->Add(window); };
    const auto bringToFront = [this](QWidget* window) { BringToFront(window); };
    const auto showMessage = [this](const std::string& message) {
        workbench_.dialogs.ShowMessage(this, QString::fromStdString(message));
    };
    programs_ = new Programs(*workbench_.disk, this);
    board_ = new BoardState(showMessage, listPorts_, this);
    files_ = new SourceFiles(workbench_, *programs_, *tabs_, {addChild, bringToFront}, this);
    compiler_ =
        new CompileCommands(workbench_, *programs_, *files_, {addChild, bringToFront, this}, this);
    boards_ = new BoardWindows(
        workbench_, *programs_, *board_,
        {addChild, bringToFront, [this](QWidget* window) { area_->Uncover(*window); },
         [this] { return compiler_->ObjectFile(); },
         [this] { return compiler_->ObjectCode() != nullptr; },
         [this](const QString& world) {
             if (SourceWindow* source = files_->Front())
                 NameWorld(*source->Editor(), world.toStdString());
         }},
        this);
    recordings_ = new RecordingCommands(
        workbench_, board_->VirtualBoard(),
        {this, [this] { return boards_->ProgramFolder(); },
         [this] {
             const HeldProgram& held = board_->VirtualProgram();
             return held.compiled == nullptr ? held.name : programs_->NameNow(*held.compiled);
         },
         [this] {
             const auto program = board_->VirtualProgram().compiled;
             return program == nullptr ? QString() : program->name;
         },
         [this](const QString& text) { ShowStatus(text); },
         [this](const QString& path) { return CompileClosed(path); },
         [this](const auto&... recorded) { return boards_->ReplayRecording(recorded...); },
         [this](Notice notice) { notices_->Offer(std::move(notice)); }},
        this);
    recovery_ = new RecoveryKeeper(workbench_, *programs_, *files_, this);
    checks_ = new LiveCheck(workbench_.configuration, workbench_.settings, *programs_, this);
    search_ = std::make_unique<SourceSearch>(*files_);
    editing_ = new EditorCommands(
        workbench_, *programs_, *files_, *checks_, *search_,
        {[this](const QString& text) { ShowStatus(text); }, [this] { return compiler_->Output(); },
         [this](FileId file, int line) { compiler_->SelectMessage(file, line); }},
        this);
    connect(compiler_, &CompileCommands::FixWanted, editing_,
            [this](SourceWindow* source, const Fix& fix) { editing_->FixAsTold(*source, fix); });
    connect(programs_, &Programs::Changed, this, &MainWindow::ShowFront);
    connect(programs_, &Programs::Changed, this, &MainWindow::RememberFiles);
    connect(notices_, &NoticeBar::FocusLeft, this, &MainWindow::BackToSource);
    connect(files_, &SourceFiles::StatsChanged, this, &MainWindow::ShowCaret);
    connect(files_, &SourceFiles::FileDropped, this, &MainWindow::OpenPath);
    Action(CommandId::CheckWhileTyping)->setChecked(checks_->IsOn());
    sending_ = new SendCommands(
        *programs_, *board_, *compiler_, *boards_, *notices_,
        {[this] { boards_->OpenVirtualBoard(); }, [this](const QString& text) { ShowStatus(text); },
         [this] { BackToSource(); }},
        this);
    MakeFollowing();
    ConnectCompiler();
    ConnectBoard();
    states_ = std::make_unique<CommandStates>(
        *programs_, *files_,
        CommandStates::Surroundings{[this](CommandId id) { return Action(id); },
                                    [this] { return Front(); }, this,
                                    [this](CommandNeed need) { return following_->IsMet(need); }});
    connect(following_, &FollowCommands::NeedsChanged, states_.get(), &CommandStates::Update);
    connect(area_, &QMdiArea::subWindowActivated, states_.get(), &CommandStates::Update);
}

/// Opens a source file and compiles it, with nothing told about it. Null: it cannot be compiled.
std::shared_ptr<const CompiledProgram> MainWindow::CompileClosed(const QString& path) {
    if (files_->Open(path) == nullptr) return nullptr;
    const OpenFile* file = programs_->Find(path);
    return file == nullptr ? nullptr : compiler_->CompileQuietly(*file);
}

void MainWindow::MakeFollowing() {
    auto* breakpoints = new Breakpoints(*programs_, this);
    auto* lines =
        new LineFollower(*programs_, *board_, *breakpoints, workbench_.configuration, this);
    new ProgramMarks(*programs_, *board_, *lines, *files_, *compiler_, this);
    following_ = new FollowCommands(workbench_, *programs_, *board_, *lines, *breakpoints, *files_,
                                    *sending_,
                                    {[this](const QString& text) { ShowStatus(text); },
                                     [this](QWidget* window) { area_->Uncover(*window); }, this},
                                    this);
}

void MainWindow::ConnectCompiler() {
    connect(compiler_, &CompileCommands::Finished, this, [this](FileId file, bool succeeded) {
        ShowStatus(succeeded ? tr("No errors were found.") : tr("There are errors."));
        sending_->FollowCompile(file, succeeded);
    });
}

void MainWindow::ConnectBoard() {
    connect(board_, &BoardState::Changed, this, &MainWindow::ShowBoard);
    connect(board_, &BoardState::SendingProgress, status_,
            [this](double fraction, int) { status_->ShowProgress(fraction); });
    connect(board_, &BoardState::AddressChosen, this, [this](std::uint16_t address) {
        compiler_->ShowAddress(boards_->NamedProgram().get(), address);
    });
}

/// What the state of the board means for commands and status bar.
void MainWindow::ShowBoard() {
    const bool isConnected = board_->Connection() == ConnectionState::Connected;
    Action(CommandId::DownloadCurrent)->setEnabled(isConnected);
    Action(CommandId::DownloadSaved)->setEnabled(isConnected);
    downloadKey_->setEnabled(!isConnected);
    Action(CommandId::CancelDownload)->setEnabled(board_->IsSending());
    Action(CommandId::Stop)->setEnabled(sending_->CanStop());
    status_->ShowBoard(*board_);
    notices_->Refresh();
}

void MainWindow::BringToFront(QWidget* window) {
    auto* frame = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    if (frame == nullptr) return;
    if (frame->isMinimized()) frame->showNormal();
    area_->setActiveSubWindow(frame);
    FocusInto(*window);
}

void MainWindow::ShowStatus(const QString& text) {
    status_->ShowNews(text);
}

void MainWindow::BackToSource() {
    if (QWidget* source = files_->Front()) BringToFront(source);
}

QWidget* MainWindow::Front() const {
    const QMdiSubWindow* frame = area_->activeSubWindow();
    return frame == nullptr ? nullptr : frame->widget();
}

void MainWindow::ShowFront() {
    status_->ShowFile(programs_->Front());
    ShowCaret();
    notices_->Refresh();
}

/// A file that comes to the front is the one that was used last.
void MainWindow::RememberFiles() {
    const OpenFile* front = programs_->Front();
    if (front == nullptr || front->NeverSaved() || front->Path() == newestFile_) return;
    newestFile_ = front->Path();
    RecentFiles(workbench_.settings).AddFirst(newestFile_);
}

void MainWindow::ShowCaret() {
    status_->ShowCaret(files_ == nullptr ? nullptr : files_->Front());
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

QString MainWindow::KeepUnsaved(Ending ending) {
    return ending == Ending::Certain ? recovery_->KeepLast() : recovery_->KeepNow();
}

void MainWindow::OfferVirtualBoard() {
    notices_->Offer({"virtual board",
                     tr("No board was found on this computer's USB ports. You can do everything "
                        "with a board on the screen instead."),
                     tr("Open &Virtual Board"),
                     [this] {
                         workbench_.settings.SaveSetting(SettingNumber::SerialPort,
                                                         kVirtualBoardPort);
                         Action(CommandId::OpenVirtualBoard)->trigger();
                     },
                     [this] { return board_->Kind() == BoardKind::None; }});
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!files_->MayClose() || !boards_->MayClose()) return event->ignore();
    SaveToolBarLayout(*this, workbench_.settings);
    SaveMainWindowPlace(*this, workbench_.settings);
    workbench_.settings.SaveSetting(
        SettingNumber::ObjectFolder,
        AsText(workbench_.settings.GetSetting(SettingNumber::ObjectFolder)));
    area_->SavePlaces();
    QStringList open;
    for (const OpenFile& file : programs_->Files()) {
        if (!file.NeverSaved()) open += file.Path();
    }
    SessionFiles(workbench_.settings).SetPaths(open);
    boards_->CloseAll();
    recovery_->EndSession();
    files_->CloseAll();
    area_->closeAllSubWindows();
    if (findDialog_ != nullptr) findDialog_->close();
    event->accept();
}

/// What an entry of a menu says of itself covers what the status line says, but does not end it.
bool MainWindow::event(QEvent* event) {
    if (event->type() != QEvent::StatusTip) return QMainWindow::event(event);
    status_->ShowHint(static_cast<QStatusTipEvent*>(event)->tip());
    return true;
}

/// Escape leads back to the text from whatever has no other use for it.
void MainWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        return BackToSource();
    QMainWindow::keyPressEvent(event);
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
