#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zentro {

/// The session log: a file that receives the conversation with the board as it leaves the screen.
/// Every write reaches the system at once, so a crash of this program costs at most what is still
/// on the screen.
class SessionLog {
  public:
    /// `tellFailure` gets a message for the user when the file cannot be written, once until a
    /// write succeeds again. What could not be written is kept and written first then.
    explicit SessionLog(std::function<void(const std::string&)> tellFailure);
    ~SessionLog();
    SessionLog(const SessionLog&) = delete;
    SessionLog& operator=(const SessionLog&) = delete;

    /// Creates the file, replacing an old one, and writes "Log Started " with the date. Returns the
    /// message for the user when it cannot be created; then no log is open.
    [[nodiscard]] std::string Start(const std::string& path, std::string_view longDate);

    /// Adds a text as it is; without an open log nothing happens.
    void Write(std::string_view text);

    /// Adds the screen and a line end, and closes the file. Returns the message for the user when
    /// something could not be written.
    [[nodiscard]] std::string End(std::string_view screenText);

    bool IsOpen() const { return !path_.empty(); }
    const std::string& LogFilePath() const { return path_; }

  private:
    std::function<void(const std::string&)> tellFailure_;
    std::string path_;
    std::string unwritten_;
    int descriptor_ = -1;
    bool failureTold_ = false;
};

/// "KineTronLog20240131.Log"
std::string SessionLogFileName(int year, int month, int day);

}  // namespace zentro
