#include "apps/zentro-link/ending_signals.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace zentro {

namespace {

/// A program that was started to go on after its terminal is told so by a signal that is ignored.
bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

EndingSignals::EndingSignals() {
    sigset_t wanted;
    sigemptyset(&wanted);
    for (int signal : {SIGINT, SIGTERM, SIGQUIT})
        sigaddset(&wanted, signal);
    if (!IsIgnored(SIGHUP)) sigaddset(&wanted, SIGHUP);
    sigprocmask(SIG_BLOCK, &wanted, &before_);
    descriptor_ = signalfd(-1, &wanted, SFD_CLOEXEC | SFD_NONBLOCK);
}

EndingSignals::~EndingSignals() {
    close(descriptor_);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

int EndingSignals::Take() const {
    signalfd_siginfo info{};
    if (read(descriptor_, &info, sizeof info) != sizeof info) return 0;
    return static_cast<int>(info.ssi_signo);
}

}  // namespace zentro
