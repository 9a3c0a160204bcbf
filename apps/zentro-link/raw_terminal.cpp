#include "apps/zentro-link/raw_terminal.h"

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <optional>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include "apps/zentro-link/board_line.h"
#include "apps/zentro-link/console.h"
#include "config/encoding.h"

namespace zentro {

namespace {

constexpr char kEndKey = 0x1D;  // Ctrl+]
constexpr auto kNoLimit = std::chrono::hours(24 * 365);

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

/// The signals that ask to end, as something to read.
class EndingSignals {
  public:
    EndingSignals() {
        sigset_t wanted;
        sigemptyset(&wanted);
        for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            sigaddset(&wanted, signal);
        sigprocmask(SIG_BLOCK, &wanted, &before_);
        descriptor_ = signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK);
    }
    ~EndingSignals() {
        close(descriptor_);
        sigprocmask(SIG_SETMASK, &before_, nullptr);
    }
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

    int Descriptor() const { return descriptor_; }
    /// The one that came, 0 if none did.
    int Take() const {
        signalfd_siginfo info{};
        if (read(descriptor_, &info, sizeof info) != sizeof info) return 0;
        return static_cast<int>(info.ssi_signo);
    }

  private:
    sigset_t before_{};
    int descriptor_ = -1;
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
    bool inputEnded = false;  ///< the last answer is still to be heard
    bool cannotWrite = false;
    int signal = 0;
};

/// Sends the keys that were pressed to the board.
void SendKeys(TerminalSession& session, bool isTerminal, Ending& ending) {
    std::array<char, 256> keys{};
    const ssize_t count = read(STDIN_FILENO, keys.data(), keys.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
    if (count <= 0) ending.isOver = ending.inputEnded = true;
    for (ssize_t i = 0; i < count; ++i) {
        const char key = keys[static_cast<std::size_t>(i)];
        if (key == kEndKey) {
            ending.isOver = true;
            return;
        }
        // A file's lines end in LF, where the key Enter is CR.
        session.SendKeyStroke(key == '\n' && !isTerminal ? '\r' : key);
    }
}

void ShowOnScreen(std::string_view bytes, Ending& ending) {
    const bool isScreen = isatty(STDOUT_FILENO) != 0;
    if (WriteAll(STDOUT_FILENO, isScreen ? ToUtf8(bytes) : std::string(bytes))) return;
    ending.isOver = ending.cannotWrite = true;
}

/// Returns when the conversation is over.
Ending Converse(BoardLine& line) {
    const EndingSignals endingSignals;
    const RawKeyboard keyboard;
    Ending ending;
    QSocketNotifier keys(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&keys, &QSocketNotifier::activated, [&] {
        SendKeys(line.Session(), keyboard.IsTerminal(), ending);
        if (ending.isOver) keys.setEnabled(false);
    });
    QSocketNotifier asked(endingSignals.Descriptor(), QSocketNotifier::Read);
    QObject::connect(&asked, &QSocketNotifier::activated, [&] {
        ending.signal = endingSignals.Take();
        if (ending.signal != 0) ending.isOver = true;
    });
    line.onReceived = [&](std::string_view bytes) { ShowOnScreen(bytes, ending); };
    line.Forget();
    const auto isOver = [&] {
        line.Forget();
        return ending.isOver;
    };
    if (line.WaitUntil(isOver, kNoLimit) && ending.inputEnded) line.Listen();
    line.onReceived = nullptr;
    return ending;
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
    if (line.IsLost()) {
        TellFailure("the connection to " + options.port + " was lost");
        return ExitStatus::NoConnection;
    }
    if (!ending.cannotWrite) return ExitStatus::Done;
    TellFailure("cannot write to standard output");
    return ExitStatus::BadUsage;
}

}  // namespace zentro
