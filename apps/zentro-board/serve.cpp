#include "apps/zentro-board/serve.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include "apps/zentro-board/pseudo_terminal.h"
#include "board/board.h"
#include "recording/player.h"

namespace zentro {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr auto kTick = std::chrono::milliseconds(10);
constexpr int kMaxTicksBehind = 100;  // after a long pause of the computer, the rest is forgotten
constexpr unsigned kBitsPerCharacter = 10;
constexpr std::size_t kReadSize = 1024;
constexpr std::size_t kMostUnsent = 2 * kOutputLimit;

/// How many characters may pass in one direction; at a given speed so many come to be with each
/// tick.
class Allowance {
  public:
    explicit Allowance(unsigned baud) : baud_(baud) {}

    // An idle line saves up no burst.
    void AddTick() { bits_ = std::min(bits_ + baud_, baud_ + kUnits); }
    std::size_t Characters(std::size_t wanted) const {
        return baud_ == 0 ? wanted : std::min(wanted, bits_ / kUnits);
    }
    void Use(std::size_t characters) {
        if (baud_ != 0) bits_ -= characters * kUnits;
    }

  private:
    static constexpr std::size_t kUnits = kBitsPerCharacter * kTicksPerSecond;

    std::size_t baud_;
    std::size_t bits_ = 0;  // in 1/100, so that no speed is too slow to add up
};

/// A board, its line and how fast that is.
struct Server {
    Server(PseudoTerminal&& terminal, unsigned baud)
        : line(std::move(terminal)), incoming(baud), outgoing(baud) {}

    PseudoTerminal line;
    Allowance incoming;
    Allowance outgoing;
    Board board;
    std::string unsent;
    bool hadClient = false;
};

/// Signals arrive as something to read, so there is no handler and nothing global.
int OpenSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signals, signal);
    }
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return signalfd(-1, &signals, SFD_CLOEXEC);
}

/// A link that a board left behind is replaced; any other file stays, and that is an error.
bool MakeLink(const std::string& link, const std::string& target) {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(link, error))) fs::remove(link, error);
    fs::create_symlink(target, link, error);
    if (error) std::cerr << "zentro-board: cannot make " << link << ": " << error.message() << '\n';
    return !error;
}

/// Removes the link, unless another board has taken it over.
void RemoveLink(const std::string& link, const std::string& target) {
    std::error_code error;
    if (fs::read_symlink(link, error) == target) fs::remove(link, error);
}

void ReceiveFromClient(Server& server) {
    // A client that does not read is not listened to either until it does. More than TRANSMIT may
    // leave waiting, or a program that sends without end could not be stopped.
    if (server.unsent.size() >= kMostUnsent) return;
    const std::string text = server.line.Read(server.incoming.Characters(kReadSize));
    server.incoming.Use(text.size());
    ReceiveCharacters(server.board, text);
}

void SendToClient(Server& server) {
    server.unsent += TakeOutput(server.board);
    TakeChanges(server.board);
    const std::size_t allowed = server.outgoing.Characters(server.unsent.size());
    const std::size_t sent = server.line.Write(std::string_view(server.unsent).substr(0, allowed));
    server.outgoing.Use(sent);
    server.unsent.erase(0, sent);
}

/// What the board says while nobody listens is lost, as on a real line.
void ForgetUnheard(Server& server) {
    TakeOutput(server.board);
    TakeChanges(server.board);
    server.unsent.clear();
    if (server.hadClient) server.line.DiscardUnread();
}

/// The tick's instructions run before it is over, and at once after each command. While characters
/// wait to be sent they stay with the board, so that it sees how busy the line is.
void PassTick(Server& server) {
    server.incoming.AddTick();
    server.outgoing.AddTick();
    server.unsent.swap(server.board.output);
    RunTicks(server.board, 1, kStepsPerTick);
    server.unsent.swap(server.board.output);
}

void Exchange(Server& server) {
    const bool hasClient = server.line.HasClient();
    ReceiveFromClient(server);
    if (hasClient) {
        SendToClient(server);
    } else {
        ForgetUnheard(server);
    }
    server.hadClient = hasClient;
}

/// Waits until something arrives or the time comes. Returns whether the program was asked to stop.
bool WaitUntil(const Server& server, int signals, Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - Clock::now());
    std::array<pollfd, 2> entries{{{signals, POLLIN, 0}, {server.line.Descriptor(), POLLIN, 0}}};
    // A line without a client, and one at a given speed, is looked at once a tick instead.
    const bool listens =
        server.hadClient && server.incoming.Characters(1) > 0 && server.unsent.size() < kMostUnsent;
    poll(entries.data(), listens ? 2 : 1, std::max(0, static_cast<int>(left.count())));
    return (entries[0].revents & POLLIN) != 0;
}

void Serve(Server& server, int signals) {
    Clock::time_point nextTick = Clock::now() + kTick;
    while (!WaitUntil(server, signals, nextTick)) {
        Exchange(server);
        const Clock::time_point now = Clock::now();
        if (now - nextTick > kMaxTicksBehind * kTick) nextTick = now;
        for (; nextTick <= now; nextTick += kTick) {
            PassTick(server);
        }
        Exchange(server);
    }
}

}  // namespace

ExitStatus ServeBoard(const ServeOptions& options) {
    const int signals = OpenSignals();
    std::string error;
    std::optional<PseudoTerminal> terminal = PseudoTerminal::Open(error);
    if (signals < 0 || !terminal) {
        std::cerr << "zentro-board: cannot make a pseudo-terminal: " << error << '\n';
        return ExitStatus::BadUsage;
    }
    const std::string name = terminal->Name();
    const bool linked = !options.link.empty();
    if (linked && !MakeLink(options.link, name)) return ExitStatus::BadUsage;
    std::cout << name << std::endl;

    const auto server = std::make_unique<Server>(std::move(*terminal), options.baud);
    Serve(*server, signals);
    if (linked) RemoveLink(options.link, name);
    close(signals);
    return ExitStatus::Ended;
}

}  // namespace zentro
