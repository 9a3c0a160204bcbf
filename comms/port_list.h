#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zentro {

/// What tells one USB device from another.
struct UsbIdentity {
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
    std::string serialNumber;  ///< may be empty

    bool operator==(const UsbIdentity&) const = default;
};

/// A serial port that is present.
struct PortDescription {
    std::string name;                ///< what OpenCommPort takes: "COM3", "/dev/ttyUSB0"
    std::string description;         ///< in the maker's words; may be empty
    std::optional<UsbIdentity> usb;  ///< nothing: a built-in port

    bool operator==(const PortDescription&) const = default;
};

using PortLister = std::function<std::vector<PortDescription>()>;

/// The ports of this computer that are present, by name.
std::vector<PortDescription> ListPorts();

/// The device that a port name of the settings stands for. On Windows the name itself. Elsewhere
/// COM1 to COM4, in any letter case, stand for the first four built-in ports; every other name
/// stays as it is.
std::string DevicePath(const std::string& portName, const std::vector<PortDescription>& present);

/// What an opened port is known by when it comes back.
struct PortIdentity {
    std::string device;
    std::optional<UsbIdentity> usb;
};

PortIdentity IdentityOf(const std::string& device, const std::vector<PortDescription>& present);

/// The device under which that very port is present now; nothing when it is not. A USB adapter with
/// a serial number may have another name than before; one without must have the same. Never another
/// port.
std::optional<std::string> FindPort(const PortIdentity& identity,
                                    const std::vector<PortDescription>& present);

}  // namespace zentro
