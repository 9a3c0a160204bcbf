#pragma once

#include <QProcess>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace zentro {

/// Runs the event loop until the condition holds. Returns whether it came to hold in time.
bool WaitUntil(const std::function<bool()>& condition,
               std::chrono::milliseconds limit = std::chrono::seconds(10));

/// The real zentro-board, serving on a pseudo-terminal. It ends with this object.
class ServedBoard {
  public:
    /// Options of "zentro-board serve". Fails the test when the board does not start.
    explicit ServedBoard(const QStringList& options = {});
    ~ServedBoard() { Kill(); }
    ServedBoard(const ServedBoard&) = delete;
    ServedBoard& operator=(const ServedBoard&) = delete;

    const std::string& PortName() const { return portName_; }
    /// The board is gone and its line hung up, as when the cable is pulled.
    void Kill();

  private:
    QProcess process_;
    std::string portName_;
};

/// A test with a board. None runs until StartBoard.
class BoardFixture : public ::testing::Test {
  protected:
    void StartBoard(const QStringList& options = {}) {
        board_ = std::make_unique<ServedBoard>(options);
    }
    const std::string& PortName() const { return board_->PortName(); }
    void ClosePort() { board_->Kill(); }

  private:
    std::unique_ptr<ServedBoard> board_;
};

/// A pseudo-terminal whose board is the test: it says what it likes when it likes. What it sends
/// leaves at once if there is room; answers and what found no room leave while the event loop runs.
class ScriptedBoard {
  public:
    ScriptedBoard();
    ~ScriptedBoard() { HangUp(); }
    ScriptedBoard(const ScriptedBoard&) = delete;
    ScriptedBoard& operator=(const ScriptedBoard&) = delete;

    const std::string& PortName() const { return portName_; }

    /// Called with what arrives while the event loop runs; what it returns is sent. Nothing set:
    /// the board never answers.
    std::function<std::string(const std::string& received)> answer;

    void Send(std::string_view bytes);
    /// The same, one byte each time the interval is over.
    void SendSlowly(std::string_view bytes, std::chrono::milliseconds interval);
    /// All that has arrived since the board was made.
    const std::string& Received();
    void HangUp();

  private:
    void TakeArrived();
    void SendWaiting(std::size_t limit);

    int descriptor_ = -1;
    std::string portName_;
    std::string received_;
    std::string waiting_;
    bool slow_ = false;
    QTimer timer_;
};

}  // namespace zentro
