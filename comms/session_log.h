#pragma once

#include <QFile>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace zentro {

/// In bytes. So much is kept of what could not be written; of more the oldest is lost.
inline constexpr std::size_t kMaxUnwritten = std::size_t{1} << 20;

/// The session log: a file that receives the conversation with the board as it leaves the screen.
/// Every write reaches the system at once, so a crash of this program costs at most what is still
/// on the screen.
class SessionLog {
  public:
    /// `tellFailure` gets a message for the user when the file cannot be written, once until a
    /// write succeeds again. What could not be written is kept and written first then.
    explicit SessionLog(std::function<void(const std::string&)> tellFailure);

    /// Creates the file, replacing an old one, and writes "Log Started " with the date. Returns the
    /// message for the user when that cannot be done; then no log is open. The path is in the
    /// system's own encoding; the date, like all text, is Windows-1252.
    [[nodiscard]] std::string Start(const std::string& path, std::string_view longDate);

    /// Adds a text as it is; without an open log nothing happens.
    void Write(std::string_view text);

    /// Adds the screen and a line end, and closes the file. Returns the message for the user when
    /// something could not be written.
    [[nodiscard]] std::string End(std::string_view screenText);

    bool IsOpen() const { return !path_.empty(); }
    const std::string& LogFilePath() const { return path_; }

  private:
    bool WriteUnwritten();
    std::string FailureMessage() const;

    std::function<void(const std::string&)> tellFailure_;
    QFile file_;
    std::string path_;
    std::string unwritten_;
    std::size_t lostBytes_ = 0;
    bool failureTold_ = false;
};

/// "KineTronLog20240131.Log"
std::string SessionLogFileName(int year, int month, int day);

}  // namespace zentro
