#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zentro {

/// Before the loader is started the board gets this long to end its program and say so.
inline constexpr std::chrono::milliseconds kLoaderDelay{250};

/// The board's loader stores a line while the next one is on its way; this pause after each line,
/// a character long, lets it catch its breath. Twice that would cost a program of ordinary, short
/// lines a quarter of its time.
inline constexpr std::chrono::milliseconds kLineGap{1};

/// How long a line with its line end is on the wire at kBaud, 10 bits to a character.
std::chrono::microseconds TimeOnTheWire(std::size_t characters);

/// What a download asks of its terminal.
struct DownloadTerminal {
    /// Writes to the port. False when the line is lost; the terminal has told its listeners then.
    std::function<bool(std::string_view)> write;
    /// Shows text on the terminal's screen.
    std::function<void(std::string_view)> writeToScreen;
    /// Tells the user.
    std::function<void(const std::string&)> showMessage;
};

/// Sends a program file to the board line by line. The caller lets time pass: each call of Step
/// does the next thing and says how long to wait before the one after it. The file is read whole at
/// the start, so that it may change or go meanwhile.
class Download {
  public:
    Download(const std::string& path, DownloadTerminal terminal);

    /// Does the next thing. Returns the time until the next call; nothing more happens when IsOver.
    std::chrono::microseconds Step();

    /// Ends the load on the board and is over.
    void Cancel();

    bool IsOver() const { return state_ == State::Over; }
    /// Whether it came to its end with the whole file sent.
    bool IsComplete() const { return complete_; }
    std::size_t LinesSent() const { return linesSent_; }
    double Fraction() const;  ///< 0 to 1, of the file's characters

  private:
    enum class State : std::uint8_t { Beginning, StartingLoader, SendingLines, Over };

    std::chrono::microseconds Begin();
    std::chrono::microseconds StartLoader();
    std::chrono::microseconds SendLine();
    void Complete();
    std::string_view TakeLine();

    std::string path_;
    DownloadTerminal terminal_;
    std::string text_;
    std::size_t position_ = 0;
    std::size_t linesSent_ = 0;
    State state_ = State::Beginning;
    bool complete_ = false;
};

}  // namespace zentro
