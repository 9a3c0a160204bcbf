#include "ui/shell/board_connection.h"

#include <map>

#include "comms/debug_address.h"
#include "comms/debug_variables.h"
#include "comms/virtual_board_link.h"
#include "desktop/virtual_board_host.h"
#include "ui/board/virtual_board_window.h"
#include "ui/support/dialogs.h"
#include "ui/terminal/terminal_window.h"
#include "ui/terminal/variables_window.h"

namespace zentro {

namespace {

constexpr const char* kNoConnection =
    "Please open a connection to the kinetron before attempting a download.";

}  // namespace

BoardConnection::BoardConnection(Workbench& workbench, Surroundings surroundings, QObject* parent)
    : QObject(parent), workbench_(workbench), surroundings_(std::move(surroundings)) {}

BoardConnection::~BoardConnection() = default;

bool BoardConnection::UsesVirtualBoard() const {
    return portName_.compare(kVirtualBoardPort, Qt::CaseInsensitive) == 0;
}

VirtualBoardHost& BoardConnection::Host() {
    if (host_ == nullptr) {
        host_ = std::make_unique<VirtualBoardHost>();
        NameAddresses(surroundings_.lastCompilation());
    }
    return *host_;
}

Link& BoardConnection::LinkFor(const QString& portName) {
    portName_ = portName;
    if (UsesVirtualBoard()) return Host().Link();
    return serialLink_;
}

void BoardConnection::OpenComms() {
    if (terminal_ == nullptr) {
        MakeTerminal(QString::fromStdString(
            AsText(workbench_.settings.GetSetting(SettingNumber::SerialPort))));
    }
    if (terminal_ != nullptr) surroundings_.bringToFront(terminal_);
}

void BoardConnection::MakeTerminal(const QString& portName) {
    const auto showMessage = [this](const std::string& message) {
        workbench_.dialogs.ShowMessage(terminal_, QString::fromStdString(message));
    };
    const auto listPorts = [this] {
        std::vector<PortDescription> ports = surroundings_.listPorts();
        if (UsesVirtualBoard()) ports.push_back({kVirtualBoardPort, "Virtual board", {}});
        return ports;
    };
    session_ = std::make_unique<TerminalSession>(LinkFor(portName), showMessage, listPorts);
    terminal_ = new TerminalWindow(workbench_, *session_);
    surroundings_.addChild(terminal_);
    terminal_->PositionForm();
    ConnectSession();
    terminal_->OpenConnection(portName);
}

void BoardConnection::ConnectSession() {
    TerminalSession* session = session_.get();
    connect(session, &TerminalSession::ConnectionInitOK, this, [this] {
        emit DownloadsEnabled(true);
        emit ConnectionChanged("Connected to " + portName_);
    });
    connect(session, &TerminalSession::ConnectionLost, this, [this] {
        emit DownloadsEnabled(false);
        emit ConnectionChanged("Connection to " + portName_ + " lost");
    });
    connect(session, &TerminalSession::SyncToCodeLine, this, [this](const std::string& address) {
        emit SyncToCodeLine(QString::fromStdString(address));
    });
    connect(session, &TerminalSession::ScreenChanged, this, &BoardConnection::FollowDebugging);
    connect(session, &TerminalSession::DownloadProgress, this, &BoardConnection::DownloadProgress);
    connect(session, &TerminalSession::DownloadFinished, this, &BoardConnection::FinishDownload);
    // The session is in the middle of its own work when it tells this.
    connect(session, &TerminalSession::FormClosing, this, &BoardConnection::ForgetTerminal,
            Qt::QueuedConnection);
    connect(terminal_, &TerminalWindow::FormClosing, this, &BoardConnection::ForgetTerminal,
            Qt::QueuedConnection);
    if (variables_ != nullptr) variables_->SetTerminal(session);
}

/// While the board is stepped, the listing and the source follow it.
void BoardConnection::FollowDebugging() {
    const std::string address =
        session_->IsDebugging() ? DebugAddressOn(session_->Screen().Text()) : std::string();
    if (address == debugAddress_) return;
    debugAddress_ = address;
    if (address.empty()) {
        emit ProgramStarted();
    } else {
        emit HeldAt(QString::fromStdString(address));
    }
}

void BoardConnection::ForgetTerminal() {
    if (session_ == nullptr) return;
    if (variables_ != nullptr) variables_->SetTerminal(nullptr);
    TerminalWindow* window = terminal_;
    terminal_ = nullptr;
    // The window works with the session to its end.
    if (window != nullptr) {
        disconnect(window, nullptr, this, nullptr);
        QWidget* frame = window->parentWidget();
        window->close();
        delete window;
        if (frame != nullptr) frame->deleteLater();
    }
    session_->disconnect(this);
    session_.reset();
    emit DownloadRunning(false);
    emit DownloadsEnabled(false);
    emit ConnectionChanged("Not connected");
}

void BoardConnection::OpenVirtualBoard() {
    if (board_ == nullptr) {
        board_ = new VirtualBoardWindow(Host());
        surroundings_.addChild(board_);
        connect(board_, &VirtualBoardWindow::FaultHappened, this,
                [this](const std::string& address, const QString& text) {
                    emit FaultHappened(QString::fromStdString(address), text);
                });
        connect(board_, &VirtualBoardWindow::HeldAt, this, [this](const std::string& address) {
            emit HeldAt(QString::fromStdString(address));
        });
    }
    if (terminal_ != nullptr && !UsesVirtualBoard()) ForgetTerminal();
    if (terminal_ == nullptr) MakeTerminal(kVirtualBoardPort);
    surroundings_.bringToFront(board_);
}

void BoardConnection::DownloadCurrent() {
    const QString path = surroundings_.objectFile();
    const auto refuse = [this](const char* text) {
        workbench_.dialogs.ShowMessage(terminal_, text);
    };
    if (path.isEmpty()) return refuse("Nothing Compiled to Download!");
    if (!IsConnected()) return refuse(kNoConnection);
    if (!surroundings_.objectWindowOpen())
        return refuse(
            "Please use the download saved when you have no source file open and compiled");
    // Nobody need press RUN on a board that is on the screen.
    runAfterDownload_ = UsesVirtualBoard();
    Download(path);
}

void BoardConnection::DownloadSaved() {
    FileChoice choice;
    choice.title = "Download Saved Program";
    choice.folder =
        QString::fromStdString(AsText(workbench_.settings.GetSetting(SettingNumber::ObjectFolder)));
    choice.filters = "ZentroCompiler Code Files (*.obj)|*.obj|Ordino Files (*.odn)|*.odn";
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(terminal_, choice);
    if (!path || path->isEmpty()) return;
    if (!IsConnected()) return workbench_.dialogs.ShowMessage(terminal_, kNoConnection);
    runAfterDownload_ = false;
    Download(*path);
}

void BoardConnection::Download(const QString& path) {
    if (!UsesVirtualBoard()) surroundings_.bringToFront(terminal_);
    emit DownloadRunning(true);
    terminal_->DownloadSource(path);
}

void BoardConnection::CancelDownload() {
    runAfterDownload_ = false;
    if (session_ != nullptr) session_->CancelDownload();
}

void BoardConnection::FinishDownload(const DownloadResult& result) {
    emit DownloadRunning(false);
    if (!std::exchange(runAfterDownload_, false) || !result.IsWhole() || !IsConnected()) return;
    session_->SendCmd("G\r");
    if (board_ != nullptr) surroundings_.bringToFront(board_);
    emit ProgramStarted();
}

void BoardConnection::OpenVariables() {
    if (variables_ == nullptr) {
        variables_ = new VariablesWindow(workbench_);
        surroundings_.addChild(variables_);
        variables_->SetTerminal(session_.get());
        if (host_ != nullptr && UsesVirtualBoard()) {
            variables_->SetLiveMemory([this](std::uint32_t address, std::size_t count) {
                return Host().ReadMemory(address, count);
            });
        }
        variables_->LoadVariables(surroundings_.lastCompilation());
    }
    surroundings_.bringToFront(variables_);
}

void BoardConnection::UseCompilation(const Compilation* compilation) {
    if (host_ != nullptr) NameAddresses(compilation);
    if (variables_ != nullptr) variables_->ListVariables(compilation);
}

/// What faults call the addresses of the program's variables.
void BoardConnection::NameAddresses(const Compilation* compilation) {
    std::map<std::uint32_t, std::string> names;
    if (compilation != nullptr) {
        for (const DebugVariable& variable : VariablesOf(*compilation)) {
            names.emplace(variable.address, variable.resolvedName);
        }
    }
    host_->SetNames([names = std::move(names)](std::uint32_t address) {
        const auto found = names.find(address);
        return found == names.end() ? std::string() : found->second;
    });
}

void BoardConnection::ApplySettings() {
    if (terminal_ != nullptr) terminal_->SetFormColours();
}

void BoardConnection::CloseAll() {
    ForgetTerminal();
    delete variables_;
    delete board_;
}

}  // namespace zentro
