#pragma once

#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "comms/link.h"
#include "comms/serial_link.h"
#include "comms/terminal_session.h"

namespace zentro {

/// A link whose every received byte is shown to a listener as well.
class TappedLink : public Link {
  public:
    using Listener = std::function<void(std::string_view bytes)>;

    /// The link outlives this object.
    explicit TappedLink(Link& link) : link_(link) {}

    Listener listener;

    LinkOpening Open(const std::string& portName) override { return link_.Open(portName); }
    LineSetup ConfigureLine() override { return link_.ConfigureLine(); }
    bool SaveTimeouts() override { return link_.SaveTimeouts(); }
    bool MakeReadsReturnAtOnce() override { return link_.MakeReadsReturnAtOnce(); }
    bool RestoreTimeouts() override { return link_.RestoreTimeouts(); }
    std::optional<std::string> Read(std::size_t limit) override;
    std::size_t Write(std::string_view bytes) override { return link_.Write(bytes); }
    void Flush() override { link_.Flush(); }
    bool Close() override { return link_.Close(); }

  private:
    Link& link_;
};

/// So long a board may take for an answer in all.
inline constexpr std::chrono::milliseconds kAnswerLimit{3000};

/// A conversation with the board on a serial port, one thing after the other. Needs an application
/// object.
class BoardLine {
  public:
    BoardLine();
    ~BoardLine();
    BoardLine(const BoardLine&) = delete;
    BoardLine& operator=(const BoardLine&) = delete;

    /// Opens the port and greets the board, so that a load that somebody broke off leaves no
    /// program, and without a step in debug mode. False when it cannot be opened, which has been
    /// told.
    bool Open(const std::string& port);

    /// The connection was lost after it had been opened.
    bool IsLost() const { return lost_; }

    /// Lets time pass until the condition holds. False when the limit comes first or the
    /// connection is lost.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);

    /// Waits for the end of an answer, which the condition looks for in what was received. A board
    /// that is still busy sending when the limit comes may have a queue before the answer; it gets
    /// the time that the queue takes.
    bool WaitForAnswer(const std::function<bool()>& hasEnded);

    /// Waits until the board has been quiet for so long, or the limit comes.
    void WaitForQuiet(std::chrono::milliseconds quiet, std::chrono::milliseconds limit);

    /// Sends a command. What is received from now on may belong to its answer.
    void Send(std::string_view command);

    /// What has been received since the last call of Open, Send or Forget.
    const std::string& Received() const { return received_; }
    void Forget();

    /// How many characters have not left yet, as far as the system tells.
    std::size_t Unsent() const { return serial_.Unsent(); }

    TerminalSession& Session() { return session_; }
    /// Receives each piece of what the board sends, beside everything else.
    TappedLink::Listener onReceived;

  private:
    SerialLink serial_;
    TappedLink tap_{serial_};
    TerminalSession session_;
    QTimer wake_;  ///< so that a wait ends in time
    std::string received_;
    std::chrono::steady_clock::time_point heardLast_;
    bool opened_ = false;
    bool lost_ = false;
};

}  // namespace zentro
