#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "comms/link.h"

namespace zentro {

/// The most bytes that one read takes; what else waits is taken by the next.
inline constexpr std::size_t kMaxRead = 12'000;

/// The six routines through which the program reaches a board. They tell the user of every failure
/// themselves, in fixed words, and return a result; none throws.
class KineTronComms {
  public:
    using MessageSink = std::function<void(const std::string& message)>;

    /// The link outlives this object.
    KineTronComms(Link& link, MessageSink showMessage);

    /// A handle; below 1 means failure.
    std::int32_t OpenCommPort(const std::string& portName);

    /// Sets 9600 baud, 8N1, no flow control. 0 on failure.
    std::int32_t ConfigCommPorts(std::int32_t handle);

    /// restore false: makes reads return at once with what has arrived, after keeping the time-outs
    /// as they were; restore true: puts those back. 0 on failure; -1 when there are none to put
    /// back.
    std::int32_t ConfigCommTimeouts(std::int32_t handle, bool restore, bool showErrors);

    /// What has arrived, possibly nothing. 0 when the line is gone; then text and count stay.
    std::int32_t ReadCommPort(std::int32_t handle, std::string& text, std::int32_t& count);

    /// The number of bytes written; 0 on failure.
    std::int32_t WriteCommPort(std::int32_t handle, std::string_view text);

    /// Tries every step, even after one that failed.
    void CloseCommPort(std::int32_t handle, bool showErrors);

  private:
    std::int32_t MakeReadsReturnAtOnce(std::int32_t handle, bool showErrors);
    std::int32_t PutTimeoutsBack(std::int32_t handle, bool showErrors);

    Link& link_;
    MessageSink showMessage_;
    bool savedTimeoutsValid_ = false;
    bool writeFailureTold_ = false;  ///< once for each opening, not for each of hundreds of lines
};

}  // namespace zentro
