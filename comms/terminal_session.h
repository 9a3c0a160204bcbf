#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "comms/download.h"
#include "comms/kinetron_comms.h"
#include "comms/link.h"
#include "comms/port_list.h"
#include "comms/session_log.h"
#include "comms/terminal_screen.h"

namespace zentro {

/// The board's debug-mode prompt.
inline constexpr std::string_view kDebugPrompt =
    "*Debug Mode*  Go,eXit,Mem,Reset,Alter,Jump or <CR> to Step ->";

/// What a board is sent first: ends a load, asks for the board's name. In debug mode the last CR
/// carries out an instruction.
inline constexpr std::string_view kAttention = "]\rW\r\r";

/// How often the port is asked for what has arrived.
inline constexpr std::chrono::milliseconds kPollInterval{10};

/// So long a board may take to say what it holds, after the last line of a download.
inline constexpr std::chrono::milliseconds kVerdictLimit{5000};

/// The conversation with the board: the port, the screen, the log and the download, without a
/// window. Runs on the event loop of its thread and never waits. Characters are bytes.
class TerminalSession : public QObject {
    Q_OBJECT

  public:
    using MessageSink = std::function<void(const std::string& message)>;

    /// The link outlives the session. `listPorts` tells which ports are present.
    TerminalSession(Link& link, MessageSink showMessage, PortLister listPorts = ListPorts,
                    std::chrono::milliseconds verdictLimit = kVerdictLimit);
    ~TerminalSession() override;

    /// Opens and prepares the port, greets the board and raises ConnectionInitOK, or FormClosing
    /// when that failed. Of a port name that stands for a device see DevicePath.
    void OpenConnection(const std::string& portName, std::string_view greeting = kAttention);

    /// Ends a download, closes the port, and gives up a lost one. The log gets the screen and is
    /// closed.
    void CloseConnection();

    /// After a lost link: whether that very port is present again. Looked at once a second, when
    /// PortIsBack is raised.
    bool CanReopen() const { return reopenDevice_.has_value(); }
    /// Opens it again and raises ConnectionInitOK; on failure the link stays lost.
    void Reopen();

    /// Looks at once for what has arrived, so that it is not taken for the answer to what is sent
    /// next.
    void HearArrived();

    bool IsConnected() const { return commHandle_ >= 1 && !linkFailed_; }
    bool LinkFailed() const { return linkFailed_; }

    /// While it is off, what the board sends is not shown but raised as CharsReceived.
    bool ScreenOff() const { return screenOff_; }
    void SetScreenOff(bool off) { screenOff_ = off; }

    /// Whether the screen ends with the debug prompt.
    bool IsDebugging() const;

    /// Writes a command to the port, as it is. False when the line is lost.
    bool SendCmd(std::string_view command);
    /// The same for a command that drives hardware; in debug mode it is refused with a message,
    /// and the board is not told.
    bool ChkForDebugB4SendCmd(std::string_view command);
    /// Sends one character.
    void SendKeyStroke(char key);
    /// A key was pressed on the screen: Enter takes the prompt line off, and every key is sent.
    /// During a download keys are ignored.
    void PressKey(char key);

    void WriteToScreen(std::string_view text);
    TerminalScreen& Screen() { return screen_; }
    const TerminalScreen& Screen() const { return screen_; }

    /// Sends a program file to the board. DownloadProgress is raised as it goes on, the last time
    /// when all is sent, and DownloadFinished when the board has said what it holds, or something
    /// else has ended it. One at a time; a second call is refused while the first one is sent.
    /// `text` is the content of the file when that is known already, or was never written.
    void DownloadSource(const std::string& path, std::optional<std::string> text = std::nullopt);
    /// Whether a file is being sent.
    bool IsDownloading() const { return download_ != nullptr && download_->IsSending(); }
    void CancelDownload();
    /// What became of the last download that has finished on this connection; kept until the next
    /// one begins.
    const DownloadResult& LastDownload() const { return lastDownload_; }

    /// The screen was double-clicked at this position of its text: raises SyncToCodeLine with the
    /// address in brackets that begins there or stands around it.
    void DoubleClickAt(std::size_t position);

    /// Starts the session log; returns the message for the user when that failed.
    [[nodiscard]] std::string StartLog(const std::string& path, std::string_view longDate);
    /// Writes the screen to the log and closes it.
    void EndLog();
    bool IsLogging() const { return log_.IsOpen(); }

  signals:
    void FormClosing();
    void SyncToCodeLine(std::uint16_t address);
    void CharsReceived(const std::string& text);
    void ConnectionInitOK();
    void ConnectionLost();
    void PortIsBack();
    void ScreenChanged();
    /// The board was sent the end of a line, by whoever: what it was sent since the line before, in
    /// capitals and with what was taken back left out.
    void LineSent(const std::string& line);
    void DownloadProgress(double fraction, int linesSent);
    void DownloadFinished(const zentro::DownloadResult& result);
    /// The board said what a load that was broken off has left: one that was cancelled, or one
    /// that somebody began before this connection. LastDownload is of that load.
    void BrokenLoadEnded(const zentro::DownloadResult& result);

  private:
    bool OpenPort(const std::string& device);
    void GreetBoard(std::string_view greeting);
    void ClosePort();
    void LoseLink();
    void Poll();
    void HearBrokenLoad(std::string_view text);
    void LookForPort();
    std::optional<std::string> PresentPort() const;
    bool WriteToPort(std::string_view text);
    void TellLinesSent(std::string_view text);
    void StepDownload();
    void SendWhatIsDue(Download& download);
    void GiveUpDownload();
    void WorkOnDownload(const std::function<void(Download&)>& work);

    Link& link_;
    MessageSink showMessage_;
    PortLister listPorts_;
    KineTronComms comms_;
    SessionLog log_;
    TerminalScreen screen_;
    std::unique_ptr<Download> download_;
    DownloadResult lastDownload_;
    std::string lineBeingSent_;
    /// Of what the board says of a load that was broken off; nothing: it is not listened for.
    std::optional<std::string> brokenLoadLine_;
    std::chrono::steady_clock::time_point downloadDue_;
    QTimer readTimer_;
    QTimer downloadTimer_;
    QTimer verdictTimer_;
    QTimer reopenTimer_;
    PortIdentity portIdentity_;
    std::optional<std::string> reopenDevice_;
    std::int32_t commHandle_ = -1;
    bool linkFailed_ = false;
    bool screenOff_ = false;
    bool isWorkingOnDownload_ = false;
    bool cancelWanted_ = false;
};

}  // namespace zentro
