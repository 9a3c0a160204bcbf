#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>

#include "comms/port_list.h"
#include "comms/serial_link.h"
#include "comms/terminal_session.h"
#include "ui/support/workbench.h"

class QWidget;

namespace zentro {

struct Compilation;
class TerminalWindow;
class VariablesWindow;
class VirtualBoardHost;
class VirtualBoardWindow;

/// Everything of the main window that has to do with a board: the terminal with its connection, the
/// downloads, the variables window and the virtual board. At most one window of each kind is open.
class BoardConnection : public QObject {
    Q_OBJECT

  public:
    /// What the main window does for it.
    struct Surroundings {
        std::function<void(QWidget*)> addChild;      ///< puts a window into the frame
        std::function<void(QWidget*)> bringToFront;  ///< a child window
        std::function<const Compilation*()> lastCompilation;
        std::function<QString()> objectFile;  ///< of the main file; empty: none is chosen
        std::function<bool()> objectWindowOpen;
        PortLister listPorts;
    };

    BoardConnection(Workbench& workbench, Surroundings surroundings, QObject* parent);
    ~BoardConnection() override;

    /// Opens the terminal and its connection, or brings the terminal to the front.
    void OpenComms();
    /// Shows the virtual board and connects the terminal to it.
    void OpenVirtualBoard();
    void DownloadCurrent();
    void DownloadSaved();
    void CancelDownload();
    void OpenVariables();
    /// A program was compiled: open windows show its variables.
    void UseCompilation(const Compilation* compilation);
    /// Colours and fonts were changed.
    void ApplySettings();
    /// Closes terminal and board windows in order.
    void CloseAll();

    VirtualBoardHost& Host();
    bool IsConnected() const { return session_ != nullptr && session_->IsConnected(); }

  signals:
    void DownloadsEnabled(bool enabled);
    void DownloadRunning(bool running);
    void DownloadProgress(double fraction, int linesSent);
    void ConnectionChanged(const QString& text);
    void SyncToCodeLine(const QString& address);
    void FaultHappened(const QString& address, const QString& text);
    /// A program is held, or stepped in debug mode, before the instruction at this address.
    void HeldAt(const QString& address);
    /// It runs again.
    void ProgramStarted();

  private:
    void MakeTerminal(const QString& portName);
    void ConnectSession();
    void FollowDebugging();
    void ForgetTerminal();
    Link& LinkFor(const QString& portName);
    bool UsesVirtualBoard() const;
    void Download(const QString& path);
    void FinishDownload(const DownloadResult& result);
    void NameAddresses(const Compilation* compilation);

    Workbench& workbench_;
    Surroundings surroundings_;
    SerialLink serialLink_;
    std::unique_ptr<VirtualBoardHost> host_;
    std::unique_ptr<TerminalSession> session_;
    QPointer<TerminalWindow> terminal_;
    QPointer<VariablesWindow> variables_;
    QPointer<VirtualBoardWindow> board_;
    QString portName_;
    std::string debugAddress_;  ///< in debug mode: that of the instruction shown last
    bool runAfterDownload_ = false;
};

}  // namespace zentro
