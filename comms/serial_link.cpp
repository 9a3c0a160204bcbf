#include "comms/serial_link.h"

#include <QDeadlineTimer>
#include <QMetaObject>

#include "comms/port_advice.h"
#include "comms/port_list.h"

namespace zentro {

namespace {

/// Whatever keeps a port from opening is reported with this one; the advice says more.
constexpr std::int32_t kNotFound = -1;

/// The board sends 960 characters a second; more than this only waits when somebody floods us.
constexpr qint64 kReadBuffer = 65'536;

/// For the last characters to leave before a close.
constexpr std::chrono::milliseconds kFlushTime{500};

/// The file of a device; a bare name lies where devices do.
std::string DeviceFile(const std::string& portName) {
    std::string device = DevicePath(portName, ListPorts());
#ifdef Q_OS_UNIX
    if (!device.empty() && device.find('/') == std::string::npos) return "/dev/" + device;
#endif
    return device;
}

}  // namespace

SerialLink::SerialLink() {
    serial_.setReadBufferSize(kReadBuffer);
    QObject::connect(&serial_, &QSerialPort::errorOccurred, &serial_,
                     [this](QSerialPort::SerialPortError error) { TakeError(error); });
}

void SerialLink::TakeError(QSerialPort::SerialPortError error) {
    const bool lineLost = error == QSerialPort::ReadError || error == QSerialPort::WriteError ||
                          error == QSerialPort::ResourceError;
    if (!open_ || !lineLost || gone_) return;
    gone_ = true;
    // A port that hung up is always ready and would keep the event loop from ever resting. It
    // cannot be closed here, in the middle of its own work.
    QMetaObject::invokeMethod(
        &serial_,
        [this, opening = openings_] {
            if (gone_ && opening == openings_) serial_.close();
        },
        Qt::QueuedConnection);
}

LinkOpening SerialLink::Open(const std::string& portName) {
    Close();
    const std::string device = DeviceFile(portName);
    if (!lock_.Acquire(device)) return {kNotFound, AdviceForPort(device, portName)};
    serial_.setPortName(QString::fromUtf8(device));
    if (!serial_.open(QIODevice::ReadWrite)) {
        lock_.Release();
        return {kNotFound, AdviceForPort(device, portName)};
    }
    gone_ = false;
    open_ = true;
    return {++openings_, {}};
}

LineSetup SerialLink::ConfigureLine() {
    if (!IsUsable()) return LineSetup::SettingsUnreadable;
    const bool set = serial_.setBaudRate(kBaud) && serial_.setDataBits(QSerialPort::Data8) &&
                     serial_.setParity(QSerialPort::NoParity) &&
                     serial_.setStopBits(QSerialPort::OneStop) &&
                     serial_.setFlowControl(QSerialPort::NoFlowControl);
    if (!set || gone_) return LineSetup::SettingsRefused;
    // Fails on a line that has no such signal, which is as good as having it off.
    serial_.setDataTerminalReady(false);
    return gone_ ? LineSetup::SettingsRefused : LineSetup::Done;
}

// Opening and closing keep and restore the time-outs together with the line's other settings.
bool SerialLink::SaveTimeouts() {
    return IsUsable();
}

bool SerialLink::MakeReadsReturnAtOnce() {
    return IsUsable();
}

bool SerialLink::RestoreTimeouts() {
    return IsUsable();
}

std::optional<std::string> SerialLink::Read(std::size_t limit) {
    if (!IsUsable()) return std::nullopt;
    // An event loop that runs has fetched what has arrived; without one it is fetched here.
    const auto wanted = static_cast<qint64>(limit);
    if (serial_.bytesAvailable() < wanted) serial_.waitForReadyRead(0);
    std::string bytes = serial_.read(wanted).toStdString();
    if (bytes.empty() && gone_) return std::nullopt;
    return bytes;
}

std::size_t SerialLink::Write(std::string_view bytes) {
    if (!IsUsable() || bytes.empty()) return 0;
    const qint64 taken = serial_.write(bytes.data(), static_cast<qint64>(bytes.size()));
    serial_.flush();
    return gone_ || taken < 0 ? 0 : static_cast<std::size_t>(taken);
}

void SerialLink::Flush() {
    const QDeadlineTimer deadline(kFlushTime);
    while (IsUsable() && serial_.bytesToWrite() > 0 && !deadline.hasExpired()) {
        serial_.waitForBytesWritten(static_cast<int>(deadline.remainingTime()));
    }
    if (IsUsable()) lock_.WaitUntilSent();
}

std::size_t SerialLink::Unsent() const {
    if (!IsUsable()) return 0;
    return static_cast<std::size_t>(serial_.bytesToWrite()) + lock_.Unsent();
}

bool SerialLink::Close() {
    const bool wasOpen = open_;
    open_ = false;
    serial_.close();
    lock_.Release();
    return wasOpen;
}

}  // namespace zentro
