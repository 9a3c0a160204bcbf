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
#include <QShortcut>
#include <QStatusBar>
#include <QTabBar>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "comms/virtual_board_link.h"
#include "desktop/board_state.h"
#include "desktop/live_check.h"
#include "ui/dialogs/find_dialog.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/command_states.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/desk.h"
#include "ui/shell/notice_bar.h"
#include "ui/shell/program_marks.h"
#include "ui/shell/recovery_keeper.h"
#include "ui/shell/source_files.h"
#include "ui/shell/tool_bar_layout.h"
#include "ui/support/child_windows.h"
#include "ui/support/dialogs.h"
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
    ShowFront();
    ShowBoard();
}

MainWindow::~MainWindow() {
    // What is left of the windows must not tell a frame that is half gone.
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
        connect(action, &QAction::triggered, this, [this, id = row.id] { handlers_.at(id)(); });
        addAction(action);
        actions_[row.id] = action;
    }
    ShowWebCommands();
    Action(CommandId::CheckWhileTyping)->setCheckable(true);
    downloadKey_ = new QShortcut(Action(CommandId::DownloadCurrent)->shortcut(), this);
    connect(downloadKey_, &QShortcut::activated, this, &MainWindow::TellWhyNoDownload);
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
    connect(area_, &QMdiArea::subWindowActivated, this, [this] {
        if (files_ != nullptr) files_->NoteFront(Front());
    });
}

void MainWindow::MakeStatusBar() {
    setStatusBar(new MessageBar(this));
    linePanel_ = new QLabel(this);
    linePanel_->setObjectName("panelLine");
    changedPanel_ = new QLabel(this);
    changedPanel_->setObjectName("panelChanged");
    connectionPanel_ = new QLabel(this);
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
    const auto showMessage = [this](const std::string& message) {
        workbench_.dialogs.ShowMessage(this, QString::fromStdString(message));
    };
    programs_ = new Programs(this);
    board_ = new BoardState(showMessage, listPorts_, this);
    files_ = new SourceFiles(workbench_, *programs_, *tabs_, {addChild, bringToFront}, this);
    compiler_ =
        new CompileCommands(workbench_, *programs_, *files_, {addChild, bringToFront, this}, this);
    boards_ = new BoardWindows(workbench_, *programs_, *board_,
                               {addChild, bringToFront, [this] { return compiler_->ObjectFile(); },
                                [this] { return compiler_->ObjectCode() != nullptr; }},
                               this);
    recovery_ = new RecoveryKeeper(workbench_, *programs_, *files_, this);
    checks_ = new LiveCheck(workbench_.configuration, workbench_.settings, *programs_, this);
    new ProgramMarks(*programs_, *board_, *files_, *compiler_, this);
    search_ = std::make_unique<SourceSearch>(*files_);
    connect(programs_, &Programs::Changed, this, &MainWindow::ShowFront);
    connect(notices_, &NoticeBar::FocusLeft, this, [this] {
        if (QWidget* source = files_->Front()) BringToFront(source);
    });
    connect(files_, &SourceFiles::StatsChanged, this, &MainWindow::ShowCaret);
    connect(files_, &SourceFiles::FileDropped, this, &MainWindow::OpenPath);
    Action(CommandId::CheckWhileTyping)->setChecked(checks_->IsOn());
    ConnectCompiler();
    ConnectBoard();
    states_ = std::make_unique<CommandStates>(
        *programs_, *files_,
        CommandStates::Surroundings{[this](CommandId id) { return Action(id); },
                                    [this] { return Front(); }, this});
    connect(area_, &QMdiArea::subWindowActivated, states_.get(), &CommandStates::Update);
}

void MainWindow::ConnectCompiler() {
    connect(compiler_, &CompileCommands::Finished, this, [this](FileId file, bool succeeded) {
        statusBar()->showMessage(succeeded ? tr("No errors were found.") : tr("There are errors."),
                                 10'000);
        OfferFrontFile(file);
        if (succeeded) OfferToSend(file);
    });
}

/// The board goes on with what it holds until it is sent something else.
void MainWindow::OfferToSend(FileId compiled) {
    const OpenFile* file = programs_->File(compiled);
    const auto program = file == nullptr ? nullptr : programs_->CompiledFrom(file->key);
    const auto isNews = [this, program] {
        const auto onBoard = board_->Program().compiled;
        const bool isSame = onBoard != nullptr && onBoard->objectText == program->objectText;
        return board_->Connection() == ConnectionState::Connected && !isSame &&
               programs_->LastCompiled() == program;
    };
    const HeldProgram& held = board_->Program();
    if (program == nullptr || held.name.isEmpty() || !isNews()) return;
    const QString text =
        held.extent == HeldProgram::Extent::Half
            ? tr("The board holds only a part of %1. %2 has been compiled and can be sent.")
            : tr("The board holds %1 as it was sent before. %2, as it was compiled now, is not on "
                 "it yet.");
    notices_->Offer({"another program", text.arg(held.name, program->name), tr("&Send (F7)"),
                     [this] { Download(); }, isNews});
}

/// The file to compile need not be the one that is looked at.
void MainWindow::OfferFrontFile(FileId compiled) {
    const OpenFile* front = programs_->Front();
    const OpenFile* file = programs_->File(compiled);
    if (front == nullptr || file == nullptr || programs_->RootOf(*front) == file->key)
        return notices_->Withdraw("main file");
    const FileId id = front->id;
    notices_->Offer({"main file",
                     tr("%1 was compiled, the file with the key. %2, which is in front, does not "
                        "belong to it.")
                         .arg(file->name, front->name),
                     tr("&Compile %1").arg(front->name),
                     [this, id] {
                         if (programs_->File(id) == nullptr) return;
                         programs_->SetMain(id);
                         compiler_->CompileSource();
                     },
                     [this, compiled, id] {
                         const OpenFile* main = programs_->Main();
                         return main != nullptr && main->id == compiled &&
                                programs_->File(id) != nullptr;
                     }});
}

void MainWindow::ConnectBoard() {
    connect(board_, &BoardState::Changed, this, &MainWindow::ShowBoard);
    connect(board_, &BoardState::SendingProgress, this, [this](double fraction, int) {
        progress_->setValue(static_cast<int>(fraction * progress_->maximum()));
    });
    connect(board_, &BoardState::AddressChosen, this, [this](std::uint16_t address) {
        compiler_->ShowAddress(boards_->NamedProgram().get(), address);
    });
}

/// What the state of the board means for commands and status bar.
void MainWindow::ShowBoard() {
    const ConnectionState connection = board_->Connection();
    const bool isConnected = connection == ConnectionState::Connected;
    Action(CommandId::DownloadCurrent)->setEnabled(isConnected);
    Action(CommandId::DownloadSaved)->setEnabled(isConnected);
    downloadKey_->setEnabled(!isConnected);
    Action(CommandId::CancelDownload)->setEnabled(board_->IsSending());
    progress_->setVisible(board_->IsSending());
    const QString port = board_->PortName();
    connectionPanel_->setText(connection == ConnectionState::None ? tr("Not connected")
                              : isConnected                       ? tr("Connected to %1").arg(port)
                                            : tr("Connection to %1 lost").arg(port));
    notices_->Refresh();
}

/// F7 without a board: nothing happens without a word.
void MainWindow::TellWhyNoDownload() {
    notices_->Offer({"no board",
                     tr("No board is connected that the program could be sent to. F6 opens the "
                        "connection to a board."),
                     tr("Open &Virtual Board"),
                     [this] { Action(CommandId::OpenVirtualBoard)->trigger(); },
                     [this] { return board_->Connection() != ConnectionState::Connected; }});
}

/// Without object code there is nothing to send.
void MainWindow::OfferToCompile(const OpenFile& file) {
    const FileId id = file.id;
    notices_->Offer({"old object code",
                     tr("Nothing was sent: %1 has not been compiled without errors. Mend what is "
                        "marked, and compile it.")
                         .arg(file.name),
                     tr("&Compile %1").arg(file.name),
                     [this, id] {
                         if (programs_->File(id) == nullptr) return;
                         programs_->SetMain(id);
                         compiler_->CompileSource();
                     },
                     [this, id] {
                         return programs_->File(id) != nullptr &&
                                compiler_->ObjectCode() == nullptr;
                     }});
}

/// Sends the program as it was compiled, and says when it has been changed since.
void MainWindow::Download() {
    const auto compiled =
        programs_->Main() == nullptr ? nullptr : programs_->CompiledFrom(programs_->Main()->key);
    const OpenFile* toSend = programs_->Main();
    if (toSend != nullptr && compiler_->ObjectCode() == nullptr) OfferToCompile(*toSend);
    if (!boards_->DownloadCurrent()) return;
    if (compiled != nullptr && programs_->IsUpToDate(*compiled))
        return notices_->Withdraw("old object code");
    const QString name = programs_->Main()->name;
    const FileId main = programs_->Main()->id;
    notices_->Offer({"old object code",
                     compiled == nullptr
                         ? tr("The board got what was compiled of %1 at an earlier time.").arg(name)
                         : tr("The board got %1 as it was compiled last. The text has been changed "
                              "since.")
                               .arg(name),
                     tr("&Compile and Send"),
                     [this, main] {
                         if (programs_->File(main) == nullptr) return;
                         programs_->SetMain(main);
                         compiler_->CompileSource();
                         const auto now = programs_->CompiledFrom(programs_->Main()->key);
                         if (now != nullptr && programs_->IsUpToDate(*now)) Download();
                     },
                     [this, main] { return programs_->File(main) != nullptr; }});
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

/// What the file in front means for the status bar.
void MainWindow::ShowFront() {
    const OpenFile* front = programs_->Front();
    changedPanel_->setText(front == nullptr                 ? QString()
                           : front->disk == DiskState::Gone ? tr("Not on the disk")
                           : front->IsChanged()             ? tr("Changed")
                                                            : tr("Saved"));
    ShowCaret();
    notices_->Refresh();
}

/// Where the caret of the file in front is; what is wrong with its line can be read without a
/// mouse.
void MainWindow::ShowCaret() {
    const SourceWindow* source = files_ == nullptr ? nullptr : files_->Front();
    linePanel_->setText(source == nullptr ? QString() : source->DocStats());
    const QString message = source == nullptr ? QString() : source->MessageAtCursor();
    if (message == caretMessage_) return;
    caretMessage_ = message;
    statusBar()->showMessage(message);
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
                     [this] { return board_->Connection() == ConnectionState::None; }});
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
