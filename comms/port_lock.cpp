#include "comms/port_lock.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>
#endif

namespace zentro {

#ifdef Q_OS_UNIX

bool PortLock::Acquire(const std::string& device) {
    Release();
    // Without waiting: a line with modem signals would make open wait for its carrier.
    descriptor_ = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return true;
    Release();
    return false;
}

void PortLock::Release() {
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
}

void PortLock::WaitUntilSent() const {
    constexpr int kLooks = 50;
    constexpr std::chrono::milliseconds kBetweenLooks{10};
    int waiting = 0;
    for (int look = 0; look < kLooks; ++look) {
        if (ioctl(descriptor_, TIOCOUTQ, &waiting) != 0 || waiting == 0) return;
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

#else

bool PortLock::Acquire(const std::string&) {
    return true;
}

void PortLock::Release() {}

void PortLock::WaitUntilSent() const {}

#endif

}  // namespace zentro
