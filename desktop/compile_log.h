#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "compiler/file_headings.h"
#include "model/environment.h"

namespace zentro {

/// Neighbouring pieces of the log that have one colour.
struct LogRun {
    QString text;
    LogColour colour = LogColour::Black;
};

/// The log of a run: what is still to be shown, and which of its lines are messages about a source
/// line. Lines count from 0.
class CompileLog {
  public:
    /// The file that is compiled, whose messages need no heading. The name, UTF-8, may be empty.
    explicit CompileLog(std::string mainFileName = {}) : headings_(std::move(mainFileName)) {}

    /// Before a message about another file than the one before comes a line that names the file.
    void Write(std::string_view text, LogColour colour, const PostedMessage* message);

    /// What was written since the last call.
    std::vector<LogRun> TakePending();

    /// The colour of each line.
    const std::vector<LogColour>& LineColours() const { return lineColours_; }

    /// The messages about a source line, in the order of the log.
    const std::vector<PostedMessage>& Messages() const { return messages_; }
    /// The message in a line of the log; nothing when there is none about a source line.
    const PostedMessage* MessageInLine(int line) const;
    /// The next line behind the line, or before it, that has such a message; round the end of the
    /// log. Nothing when no line has one.
    std::optional<int> NextMessage(int line) const;
    std::optional<int> PreviousMessage(int line) const;

    /// The line of the first error, whether or not it is about a source line; nothing without one.
    std::optional<int> FirstErrorLine() const { return firstErrorLine_; }

    int ErrorCount() const { return errorCount_; }
    int WarningCount() const { return warningCount_; }

  private:
    void Append(std::string_view text, LogColour colour);

    FileHeadings headings_;
    std::vector<LogRun> pending_;
    std::vector<LogColour> lineColours_;
    int line_ = 0;  ///< the one that the next piece goes to
    std::vector<PostedMessage> messages_;
    std::vector<int> messageLines_;  ///< the line of each message
    std::optional<int> firstErrorLine_;
    int errorCount_ = 0;
    int warningCount_ = 0;
};

/// "2 errors, 1 warning".
QString CountsText(int errors, int warnings);

}  // namespace zentro
