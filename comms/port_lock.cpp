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

std::size_t PortLock::Unsent() const {
    int waiting = 0;
    if (ioctl(descriptor_, TIOCOUTQ, &waiting) != 0 || waiting < 0) return 0;
    return static_cast<std::size_t>(waiting);
}

void PortLock::WaitUntilSent() const {
    constexpr int kLooks = 50;
    constexpr std::chrono::milliseconds kBetweenLooks{10};
    for (int look = 0; look < kLooks && Unsent() > 0; ++look)
        std::this_thread::sleep_for(kBetweenLooks);
}

#else

bool PortLock::Acquire(const std::string&) {
    return true;
}

void PortLock::Release() {}

std::size_t PortLock::Unsent() const {
    return 0;
}

void PortLock::WaitUntilSent() const {}

#endif

}  // namespace zentro
