#include "ui/shell/last_moment.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QMetaObject>
#include <QSemaphore>
#include <QSessionManager>
#include <QThread>
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace zentro {

namespace {

constexpr std::array kSignals{SIGTERM, SIGHUP, SIGINT};
constexpr std::array kLossesOfDisplay{"The X11 connection broke", "The Wayland connection "};
constexpr int kLongestWait =
    5000;  // milliseconds that another thread waits for that of the windows
constexpr unsigned kLongestEnd = 60;  // seconds
constexpr int kSignalStatus = 128;    // the exit status after a signal is this and its number

// What calls these has no room for an argument.
std::atomic<LastMoment*> present = nullptr;
std::array<int, 2> signalPipe{-1, -1};

/// A signal may come in the middle of anything; the event loop does the rest, or if the program
/// hangs the alarm. The same signal may well come twice.
void NoteSignal(int number) {
    const int error = errno;
    alarm(kLongestEnd);
    const auto byte = static_cast<unsigned char>(number);
    static_cast<void>(!write(signalPipe[1], &byte, 1));
    errno = error;
}

void SetHandler(int number, void (*handler)(int)) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigaction(number, &action, nullptr);
}

}  // namespace

LastMoment::LastMoment(Use use) : use_(std::move(use)) {
    present = this;
    WatchSignals();
    previousHandler_ = qInstallMessageHandler(&LastMoment::HandleMessage);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &LastMoment::PrepareForLogOut,
            Qt::DirectConnection);
    connect(qGuiApp, &QGuiApplication::saveStateRequest, this, [this] { use_(Ending::Likely); });
    qGuiApp->installEventFilter(this);
}

LastMoment::~LastMoment() {
    present = nullptr;
    qInstallMessageHandler(previousHandler_);
    for (const int number : kSignals)
        SetHandler(number, SIG_DFL);
    signalCame_.reset();
    for (int& end : signalPipe)
        close(std::exchange(end, -1));
    if (std::uncaught_exceptions() > 0) use_(Ending::Certain);
}

void LastMoment::WatchSignals() {
    if (pipe2(signalPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    signalCame_ = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    connect(signalCame_.get(), &QSocketNotifier::activated, this, &LastMoment::TakeSignal);
    for (const int number : kSignals)
        SetHandler(number, &NoteSignal);
}

void LastMoment::TakeSignal() {
    unsigned char number = 0;
    if (read(signalPipe[0], &number, 1) != 1) return;
    use_(Ending::Certain);
    QCoreApplication::exit(kSignalStatus + number);
}

void LastMoment::PrepareForLogOut() {
    logsOut_ = true;
    use_(Ending::Likely);
}

/// The session is over: there is no time for the questions of windows that close.
bool LastMoment::eventFilter(QObject* watched, QEvent* event) {
    if (!logsOut_ || watched != qGuiApp || event->type() != QEvent::Quit) return false;
    use_(Ending::Certain);
    QCoreApplication::exit();
    return true;
}

void LastMoment::UseNow() {
    LastMoment* const moment = present;
    if (moment == nullptr) return;
    if (QThread::currentThread() == moment->thread()) return moment->use_(Ending::Certain);
    // The other thread may be inside UseNow itself, or hang: then there is nothing to wait for.
    auto isUsed = std::make_shared<QSemaphore>();
    QMetaObject::invokeMethod(
        moment,
        [moment, isUsed] {
            moment->use_(Ending::Certain);
            isUsed->release();
        },
        Qt::QueuedConnection);
    isUsed->tryAcquire(1, kLongestWait);
}

/// When the display goes away, Qt ends the process: by exit() for an X server, and for a Wayland
/// compositor by _exit(), from a thread of its own. What it says before is the only sign that comes
/// while everything is still there.
void LastMoment::HandleMessage(QtMsgType type, const QMessageLogContext& context,
                               const QString& text) {
    LastMoment* const moment = present;
    if (moment != nullptr && moment->previousHandler_ != nullptr)
        moment->previousHandler_(type, context, text);
    if (std::ranges::any_of(kLossesOfDisplay,
                            [&](const char* loss) { return text.startsWith(loss); }))
        UseNow();
}

}  // namespace zentro
