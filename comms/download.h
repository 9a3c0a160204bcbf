#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
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

/// What became of a download.
enum class DownloadOutcome : std::uint8_t {
    None,            ///< there was none
    Whole,           ///< the board says that it holds every byte of the file
    WrongCount,      ///< it says that it holds another number of bytes
    Refused,         ///< it says that it could not load the file, and holds no program
    NoVerdict,       ///< all was sent, but the board has not said what it holds
    Cancelled,       ///< by the user
    LineLost,        ///< before the board said that it holds the program
    FileUnreadable,  ///< nothing was sent
};

struct DownloadResult {
    DownloadOutcome outcome = DownloadOutcome::None;
    std::string path;                        ///< of the file
    std::optional<std::size_t> bytesInFile;  ///< nothing when it is not made of numbers alone
    std::optional<std::size_t> bytesLoaded;  ///< as the board says; nothing when it does not
    std::string verdict;                     ///< the line in which it says so, "Loaded 230 bytes"
    bool replacedProgram = false;  ///< the loader was started: what the board held before is gone
    bool holdsNothing = false;     ///< the board said so when the load was broken off

    bool IsWhole() const { return outcome == DownloadOutcome::Whole; }
    /// Whether the board may hold a part of the program, which it would run.
    bool MayLeavePart() const {
        return replacedProgram && !holdsNothing &&
               (outcome == DownloadOutcome::WrongCount || outcome == DownloadOutcome::Cancelled ||
                outcome == DownloadOutcome::LineLost);
    }
};

/// What a load is broken off with: no program has the character, so the board says "Not loaded" and
/// holds no program instead of a part of one. Outside a load a board ignores it.
inline constexpr char kCancelCharacter = 0x18;

/// The line in which a loader says what it holds: "Loaded 230 bytes", or "Not loaded" and why.
bool IsVerdict(std::string_view line);
/// Whether a verdict says that the board holds no program.
bool HoldsNothing(std::string_view verdict);

/// The bytes that a board's loader stores of this object code: the numbers in it. Nothing when it
/// holds something else, which only the board can judge.
std::optional<std::size_t> CountBytes(std::string_view objectCode);

/// What a download asks of its terminal.
struct DownloadTerminal {
    /// Writes to the port. False when the line is lost; the terminal has told its listeners then.
    std::function<bool(std::string_view)> write;
    /// Shows text on the terminal's screen.
    std::function<void(std::string_view)> writeToScreen;
    /// Tells the user.
    std::function<void(const std::string&)> showMessage;
    /// Hands over to Hear what has arrived and has not been looked at. None: nothing ever waits.
    std::function<void()> hearArrived = {};
};

/// Sends a program file to the board line by line, and hears what the board makes of it. The caller
/// lets time pass: each call of Step does the next thing and says how long to wait before the one
/// after it. The file is read whole at the start, so that it may change or go meanwhile.
class Download {
  public:
    /// `text` is the content of the file when that is known already, or was never written.
    Download(const std::string& path, std::optional<std::string> text, DownloadTerminal terminal);

    /// Does the next thing. Returns the time until the next call; nothing more happens when
    /// everything is sent.
    std::chrono::microseconds Step();

    /// What the board says. Its verdict counts when it comes after the last line and after the echo
    /// of the command that started the loader: another one is that of an earlier load, come late.
    /// Of a board that did not echo, the last verdict counts when nobody waits any longer.
    void Hear(std::string_view received);
    /// Nothing more can be sent or heard.
    void LoseLine();
    /// Ends the load so that the board holds no program, or waits no longer for its verdict, and is
    /// over.
    void Cancel();

    bool IsSending() const { return state_ < State::AwaitingVerdict; }
    bool IsOver() const { return state_ == State::Over; }
    /// What became of it, once it is over.
    const DownloadResult& Result() const { return result_; }
    std::size_t LinesSent() const { return linesSent_; }
    double Fraction() const;  ///< 0 to 1, of the file's characters

  private:
    enum class State : std::uint8_t {
        Beginning,
        StartingLoader,
        SendingLines,
        AwaitingVerdict,
        Over
    };

    std::chrono::microseconds Begin();
    bool ReadText();
    std::chrono::microseconds StartLoader();
    std::chrono::microseconds SendLine();
    bool Write(std::string_view text);
    void Complete();
    void LookForEcho(std::string_view received);
    void LookForVerdict();
    void Judge();
    void End(DownloadOutcome outcome);
    std::string_view TakeLine();

    DownloadTerminal terminal_;
    DownloadResult result_;
    std::optional<std::string> given_;
    std::string text_;
    std::string heard_;      ///< since the load may have ended, and not yet looked at
    std::string echoBegin_;  ///< what the echo may begin with, of that heard last
    std::size_t position_ = 0;
    std::size_t linesSent_ = 0;
    State state_ = State::Beginning;
    bool lineLost_ = false;
    bool loadEnded_ = false;      ///< by a line of the file
    bool loaderStarted_ = false;  ///< the board has echoed the command for it
    bool hasVerdict_ = false;  ///< on this load, which may have come before the last line is sent
};

}  // namespace zentro
