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

/// A conversation with the board on a serial port, one thing after the other. Needs an application
/// object.
class BoardLine {
  public:
    BoardLine();
    ~BoardLine();
    BoardLine(const BoardLine&) = delete;
    BoardLine& operator=(const BoardLine&) = delete;

    /// Opens the port and greets the board. False when it cannot be opened, which has been told.
    bool Open(const std::string& port);

    /// The connection was lost after it had been opened.
    bool IsLost() const { return lost_; }

    /// Lets time pass until the condition holds. False when the limit comes first or the
    /// connection is lost.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);

    /// What the board says from now on until it has been quiet for a moment; nothing when it says
    /// nothing at all.
    std::optional<std::string> Listen();

    /// Sends a command and listens to the answer.
    std::optional<std::string> Ask(std::string_view command);

    /// What has been received since the last call of Listen, Ask or Forget.
    const std::string& Received() const { return received_; }
    void Forget() { received_.clear(); }

    TerminalSession& Session() { return session_; }
    /// Receives each piece of what the board sends, beside everything else.
    TappedLink::Listener onReceived;

  private:
    SerialLink serial_;
    TappedLink tap_{serial_};
    TerminalSession session_;
    QTimer wake_;  ///< so that a wait ends in time
    std::string received_;
    bool opened_ = false;
    bool lost_ = false;
};

}  // namespace zentro
