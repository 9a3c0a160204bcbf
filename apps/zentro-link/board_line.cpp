#include "apps/zentro-link/board_line.h"

#include <QCoreApplication>
#include <algorithm>

#include "apps/zentro-link/console.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kWakeInterval = 10ms;
constexpr auto kBusyPause = 250ms;  ///< a board that is busy sending makes no pause as long as this
constexpr auto kLongestQueue = 5000ms;  ///< what a board may have waiting takes less at kBaud
constexpr std::size_t kMostKept = std::size_t{64} << 10;  ///< of what one answer brings

/// Without the CR that would carry out an instruction in debug mode.
const std::string kGreeting = kCancelCharacter + std::string("]\rW\r");

}  // namespace

std::optional<std::string> TappedLink::Read(std::size_t limit) {
    std::optional<std::string> bytes = link_.Read(limit);
    if (bytes && !bytes->empty() && listener) listener(*bytes);
    return bytes;
}

BoardLine::BoardLine() : session_(tap_, TellFailure) {
    tap_.listener = [this](std::string_view bytes) {
        received_ += bytes;
        if (received_.size() > kMostKept) received_.erase(0, received_.size() - kMostKept);
        heardLast_ = Clock::now();
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
    session_.OpenConnection(port, kGreeting);
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

bool BoardLine::WaitForAnswer(const std::function<bool()>& hasEnded) {
    if (WaitUntil(hasEnded, kAnswerLimit)) return true;
    const auto isOver = [&] { return hasEnded() || Clock::now() - heardLast_ > kBusyPause; };
    WaitUntil(isOver, kLongestQueue);
    return hasEnded();
}

void BoardLine::WaitForQuiet(std::chrono::milliseconds quiet, std::chrono::milliseconds limit) {
    const Clock::time_point start = Clock::now();
    WaitUntil([&] { return Clock::now() - std::max(start, heardLast_) >= quiet; }, limit);
}

void BoardLine::Send(std::string_view command) {
    Forget();
    session_.SendCmd(command);
}

void BoardLine::Forget() {
    session_.HearArrived();
    received_.clear();
}

}  // namespace zentro
