#pragma once

#include <QSerialPort>
#include <cstdint>

#include "comms/link.h"
#include "comms/port_lock.h"

namespace zentro {

/// A serial port of this computer, used by nobody else meanwhile. Works with and without a running
/// event loop.
class SerialLink : public Link {
  public:
    SerialLink();

    /// COM1 to COM4 stand for built-in ports on every system (see DevicePath).
    LinkOpening Open(const std::string& portName) override;
    LineSetup ConfigureLine() override;
    bool SaveTimeouts() override;
    bool MakeReadsReturnAtOnce() override;
    bool RestoreTimeouts() override;
    std::optional<std::string> Read(std::size_t limit) override;
    std::size_t Write(std::string_view bytes) override;
    void Flush() override;
    bool Close() override;

    /// How many of the characters written have not left yet, as far as the system tells.
    std::size_t Unsent() const;

  private:
    bool IsUsable() const { return serial_.isOpen() && !gone_; }
    void TakeError(QSerialPort::SerialPortError error);

    QSerialPort serial_;
    PortLock lock_;
    std::int32_t openings_ = 0;
    bool open_ = false;  ///< between Open and Close, also when the device is gone
    bool gone_ = false;
};

}  // namespace zentro
