#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentro {

/// The speed of the line to a board, in baud.
inline constexpr std::int32_t kBaud = 9600;

/// What came of opening a way to a board.
struct LinkOpening {
    std::int32_t handle = -1;  ///< 1 or more: open; -12 to -1: why it is not (see OpenCommPort)
    std::string advice;        ///< what the user can do about a failure; may be empty
};

enum class LineSetup : std::uint8_t { Done, SettingsUnreadable, SettingsRefused };

/// A way to a board: a serial port, a board in this process, or one that fails on purpose. At most
/// one connection is open on it at a time. Nothing waits. Characters are bytes, all 256 of them.
///
/// Order: Open, ConfigureLine, SaveTimeouts, MakeReadsReturnAtOnce, any number of Read and Write,
/// Flush, RestoreTimeouts, Close. Close is called once for each Open that gave a handle.
class Link {
  public:
    virtual ~Link() = default;

    virtual LinkOpening Open(const std::string& portName) = 0;

    /// kBaud, 8 data bits, no parity, 1 stop bit, no flow control.
    virtual LineSetup ConfigureLine() = 0;

    virtual bool SaveTimeouts() = 0;
    virtual bool MakeReadsReturnAtOnce() = 0;
    virtual bool RestoreTimeouts() = 0;

    /// What has arrived, at most `limit` bytes, possibly none; nothing when the line is gone.
    virtual std::optional<std::string> Read(std::size_t limit) = 0;

    /// Sends all bytes. Returns how many were taken, 0 when the line is gone.
    virtual std::size_t Write(std::string_view bytes) = 0;

    /// Gives what was written the time to leave: the one step that may wait, for a second at most.
    virtual void Flush() = 0;

    /// Whether characters take the time of a serial line on their way. If not, nobody need wait for
    /// them.
    virtual bool TakesTime() const { return true; }

    /// Puts the line back as it was before Open.
    virtual bool Close() = 0;
};

}  // namespace zentro
