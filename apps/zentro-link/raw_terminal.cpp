#include "apps/zentro-link/raw_terminal.h"

#include <QSocketNotifier>
#include <QTimer>
#include <array>
#include <cerrno>
#include <cstdio>
#include <termios.h>
#include <unistd.h>

#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/console.h"
#include "apps/zentro-link/ending_signals.h"
#include "comms/board_text.h"
#include "comms/download.h"

namespace zentro {

namespace {

constexpr char kEndKey = 0x1D;  // Ctrl+]
constexpr auto kNoLimit = std::chrono::hours(24 * 365);

/// So much of a file or pipe is sent at once, and then the time let pass that it takes on the wire:
/// what waits anywhere on the way would be lost when the port closes.
constexpr std::size_t kPiece = 32;

/// The last answer is over when nothing more has come for so long.
constexpr std::chrono::milliseconds kQuiet{1000};

/// While it lives, every key arrives at once and as it is. What is written to the terminal is
/// treated as before.
class RawKeyboard {
  public:
    RawKeyboard() {
        isTerminal_ = tcgetattr(STDIN_FILENO, &before_) == 0;
        if (!isTerminal_) return;
        termios raw = before_;
        cfmakeraw(&raw);
        raw.c_oflag = before_.c_oflag;
        tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
    }
    ~RawKeyboard() {
        if (isTerminal_) tcsetattr(STDIN_FILENO, TCSADRAIN, &before_);
    }
    RawKeyboard(const RawKeyboard&) = delete;
    RawKeyboard& operator=(const RawKeyboard&) = delete;

    bool IsTerminal() const { return isTerminal_; }

  private:
    termios before_{};
    bool isTerminal_ = false;
};

bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR && errno != EAGAIN) return false;
        if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// Why the conversation is over.
struct Ending {
    bool isOver = false;
    bool inputEnded = false;  ///< what was read is still to be sent and answered
    bool cannotWrite = false;
    bool isStuck = false;  ///< not all could be sent
    bool hasHeard = false;
    int signal = 0;
};

/// Sends the keys that were pressed to the board. Returns how many they were.
std::size_t SendKeys(TerminalSession& session, bool isTerminal, Ending& ending) {
    std::array<char, 256> keys{};
    static_assert(kPiece <= keys.size());
    const ssize_t count = read(STDIN_FILENO, keys.data(), isTerminal ? keys.size() : kPiece);
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return 0;
    if (count <= 0) ending.isOver = ending.inputEnded = true;
    for (ssize_t i = 0; i < count; ++i) {
        const char key = keys[static_cast<std::size_t>(i)];
        if (key == kEndKey) {
            ending.isOver = true;
            ending.inputEnded = !isTerminal;
            break;
        }
        // A file's lines end in LF, where the key Enter is CR.
        session.SendKeyStroke(key == '\n' && !isTerminal ? '\r' : key);
    }
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}

/// Lets everything leave that was read, however long that takes while it goes on, and then hears
/// the answer.
void FinishInput(BoardLine& line, Ending& ending) {
    const auto isAsked = [&] { return ending.signal != 0 || ending.cannotWrite; };
    while (const std::size_t unsent = line.Unsent()) {
        const auto goesOn = [&] { return isAsked() || line.Unsent() < unsent; };
        ending.isStuck = !line.WaitUntil(goesOn, kAnswerLimit);
        if (ending.isStuck || isAsked()) return;
    }
    line.WaitUntil([&] { return ending.hasHeard || isAsked(); }, kAnswerLimit);
    line.WaitForQuiet(kQuiet, kAnswerLimit);
}

/// Returns when the conversation is over.
Ending Converse(BoardLine& line) {
    const EndingSignals endingSignals;
    const RawKeyboard keyboard;
    const bool isTerminal = keyboard.IsTerminal();
    Ending ending;
    BoardText text;
    QSocketNotifier keys(STDIN_FILENO, QSocketNotifier::Read);
    QTimer pause;
    pause.setSingleShot(true);
    pause.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pause, &QTimer::timeout, [&] { keys.setEnabled(!ending.isOver); });
    QObject::connect(&keys, &QSocketNotifier::activated, [&] {
        const std::size_t sent = SendKeys(line.Session(), isTerminal, ending);
        if (isTerminal && !ending.isOver) return;
        keys.setEnabled(false);
        pause.start(std::chrono::ceil<std::chrono::milliseconds>(TimeOnTheWire(sent)));
    });
    QSocketNotifier asked(endingSignals.Descriptor(), QSocketNotifier::Read);
    QObject::connect(&asked, &QSocketNotifier::activated, [&] {
        ending.signal = endingSignals.Take();
        if (ending.signal != 0) ending.isOver = true;
    });
    line.onReceived = [&](std::string_view bytes) {
        ending.hasHeard = true;
        if (!WriteAll(STDOUT_FILENO, text.Take(bytes))) ending.isOver = ending.cannotWrite = true;
    };
    if (line.WaitUntil([&] { return ending.isOver; }, kNoLimit) && ending.inputEnded)
        FinishInput(line, ending);
    line.onReceived = nullptr;
    return ending;
}

/// What became of it; failures are told.
ExitStatus StatusOf(const Ending& ending, const BoardLine& line, const Options& options) {
    if (line.IsLost()) {
        TellFailure("the connection to " + options.port + " was lost");
        return ExitStatus::NoConnection;
    }
    if (ending.cannotWrite) {
        TellFailure("cannot write to standard output");
        return ExitStatus::BadUsage;
    }
    if (!ending.inputEnded || ending.signal != 0) return ExitStatus::Done;
    if (ending.isStuck) {
        TellFailure("the board on " + options.port + " does not take what is sent");
        return ExitStatus::Refused;
    }
    if (ending.hasHeard) return ExitStatus::Done;
    TellFailure("the board on " + options.port + " does not answer");
    return ExitStatus::Refused;
}

}  // namespace

ExitStatus TalkToBoard(const Options& options, int& signal) {
    BoardLine line;
    if (!line.Open(options.port)) return ExitStatus::NoConnection;
    if (!options.quiet && isatty(STDERR_FILENO) != 0) {
        static_cast<void>(
            std::fprintf(stderr, "Connected to %s. Ctrl+] ends.\n", options.port.c_str()));
    }
    const Ending ending = Converse(line);
    signal = ending.signal;
    return StatusOf(ending, line, options);
}

}  // namespace zentro
