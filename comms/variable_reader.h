#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "comms/debug_variables.h"
#include "comms/terminal_session.h"

namespace zentro {

/// What the board's every prompt ends with: an ESC sequence takes the blank off the screen again.
inline constexpr std::string_view kReplyEndMarker = "-> \x1b[D";

/// A board that does not answer a memory read is given up after this time.
inline constexpr std::chrono::milliseconds kReplyTimeLimit{3000};

/// Reads the values of a program's variables from the board's memory, one after the other, through
/// the terminal while the board is in debug mode.
class VariableReader : public QObject {
    Q_OBJECT

  public:
    using MessageSink = std::function<void(const std::string& message)>;

    explicit VariableReader(MessageSink showMessage,
                            std::chrono::milliseconds replyTimeLimit = kReplyTimeLimit);
    ~VariableReader() override;

    /// The terminal to talk through; null: none. It is forgotten when its link is lost or it
    /// closes, which ends a read.
    void SetTerminal(TerminalSession* terminal);

    /// The variables to read. Tells the user and returns false when there are none.
    bool LoadVariableList(std::vector<DebugVariable> variables);

    /// Starts to read all of them, or tells the user why not.
    void RefreshVariables();

    bool IsReading() const { return currentVariableIndex_ != 0; }
    const std::vector<DebugVariable>& Variables() const { return variables_; }
    /// What the window lists.
    std::vector<std::string> ShowVariableList() const { return VariableLines(variables_); }

  signals:
    void ReadingStarted();
    /// Reading is over: `complete` tells whether every value was read.
    void ReadingFinished(bool complete);

  private:
    void RequestCurrent();
    void TakeReply(const std::string& text);
    std::optional<std::string> TakeReplyOf(std::uint32_t address);
    void Finish(bool complete);
    void GiveUp();

    MessageSink showMessage_;
    QPointer<TerminalSession> terminal_;
    std::vector<DebugVariable> variables_;
    std::size_t currentVariableIndex_ = 0;
    std::string replyBuffer_;
    QTimer timeLimit_;
};

}  // namespace zentro
