#pragma once

#include <cstddef>
#include <string>

namespace zentro {

/// Keeps every other program that respects locks off a device, which the system alone does not: its
/// own exclusive mode lets the administrator in. Where opening a port is exclusive anyway, there is
/// nothing to do and every lock succeeds.
class PortLock {
  public:
    PortLock() = default;
    ~PortLock() { Release(); }
    PortLock(const PortLock&) = delete;
    PortLock& operator=(const PortLock&) = delete;

    /// False when the device cannot be opened or somebody has locked it.
    bool Acquire(const std::string& device);
    void Release();

    /// How many characters that were written to the device are not on the wire yet.
    std::size_t Unsent() const;
    /// Waits until what was written to the device is on the wire, at most half a second.
    void WaitUntilSent() const;

  private:
    int descriptor_ = -1;
};

}  // namespace zentro
