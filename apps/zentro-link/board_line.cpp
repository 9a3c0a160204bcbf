#include "apps/zentro-link/board_line.h"

#include <QCoreApplication>

#include "apps/zentro-link/console.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kWakeInterval = 10ms;
constexpr auto kAnswerLimit = 3000ms;    ///< the board begins to answer within this time
constexpr auto kQuiet = 250ms;           ///< a pause as long as this ends an answer
constexpr auto kLongestAnswer = 2000ms;  ///< a running program may never be quiet

}  // namespace

std::optional<std::string> TappedLink::Read(std::size_t limit) {
    std::optional<std::string> bytes = link_.Read(limit);
    if (bytes && !bytes->empty() && listener) listener(*bytes);
    return bytes;
}

BoardLine::BoardLine() : session_(tap_, TellFailure) {
    tap_.listener = [this](std::string_view bytes) {
        received_ += bytes;
        if (onReceived) onReceived(bytes);
    };
    QObject::connect(&session_, &TerminalSession::ConnectionInitOK, [this] { opened_ = true; });
    QObject::connect(&session_, &TerminalSession::ConnectionLost, [this] { lost_ = true; });
    wake_.start(kWakeInterval);
}

BoardLine::~BoardLine() {
    if (opened_) session_.CloseConnection();
}

bool BoardLine::Open(const std::string& port) {
    session_.OpenConnection(port);
    return opened_;
}

bool BoardLine::WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const Clock::time_point end = Clock::now() + limit;
    while (!condition()) {
        if (lost_ || Clock::now() >= end) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

std::optional<std::string> BoardLine::Listen() {
    if (!WaitUntil([this] { return !received_.empty(); }, kAnswerLimit)) return std::nullopt;
    std::size_t heard = 0;
    Clock::time_point lastHeard = Clock::now();
    const auto isQuiet = [&] {
        if (received_.size() != heard) {
            heard = received_.size();
            lastHeard = Clock::now();
        }
        return Clock::now() - lastHeard >= kQuiet;
    };
    WaitUntil(isQuiet, kLongestAnswer);
    return std::exchange(received_, {});
}

std::optional<std::string> BoardLine::Ask(std::string_view command) {
    received_.clear();
    session_.SendCmd(command);
    return Listen();
}

}  // namespace zentro
