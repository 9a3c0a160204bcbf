#include "tests/comms/board_fixture.h"

#include <QCoreApplication>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace zentro {

bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    return QTest::qWaitFor(condition, static_cast<int>(limit.count()));
}

ServedBoard::ServedBoard(const QStringList& options) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(ZENTRO_BOARD_PROGRAM, QStringList("serve") + options);
    while (!process_.canReadLine() && process_.waitForReadyRead(10'000)) {
    }
    portName_ = process_.readLine().trimmed().toStdString();
    EXPECT_FALSE(portName_.empty()) << "the board does not start";
}

void ServedBoard::Kill() {
    process_.kill();
    process_.waitForFinished();
}

ScriptedBoard::ScriptedBoard() {
    descriptor_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 64> name{};
    const bool made = descriptor_ >= 0 && grantpt(descriptor_) == 0 && unlockpt(descriptor_) == 0 &&
                      ptsname_r(descriptor_, name.data(), name.size()) == 0;
    EXPECT_TRUE(made) << "no pseudo-terminal";
    portName_ = name.data();
    termios settings{};
    tcgetattr(descriptor_, &settings);
    cfmakeraw(&settings);
    tcsetattr(descriptor_, TCSANOW, &settings);
    // Looked at by the clock: without a client the line counts as hung up, and waiting for
    // characters would never wait.
    timer_.setInterval(1);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        TakeArrived();
        SendWaiting(slow_ ? 1 : waiting_.size());
    });
    timer_.start();
}

void ScriptedBoard::Send(std::string_view bytes) {
    waiting_ += bytes;
    SendWaiting(waiting_.size());
}

void ScriptedBoard::SendSlowly(std::string_view bytes, std::chrono::milliseconds interval) {
    slow_ = true;
    timer_.setInterval(interval);
    waiting_ += bytes;
}

const std::string& ScriptedBoard::Received() {
    TakeArrived();
    return received_;
}

void ScriptedBoard::HangUp() {
    timer_.stop();
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
}

void ScriptedBoard::TakeArrived() {
    std::array<char, 4096> buffer{};
    std::string arrived;
    ssize_t count = 0;
    while (descriptor_ >= 0 && (count = read(descriptor_, buffer.data(), buffer.size())) > 0) {
        arrived.append(buffer.data(), static_cast<std::size_t>(count));
    }
    if (arrived.empty()) return;
    received_ += arrived;
    if (answer) waiting_ += answer(arrived);
}

void ScriptedBoard::SendWaiting(std::size_t limit) {
    if (waiting_.empty() || descriptor_ < 0) return;
    const ssize_t count = write(descriptor_, waiting_.data(), std::min(limit, waiting_.size()));
    if (count > 0) waiting_.erase(0, static_cast<std::size_t>(count));
}

}  // namespace zentro
