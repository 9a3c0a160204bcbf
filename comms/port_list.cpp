#include "comms/port_list.h"

#include <QSerialPortInfo>
#include <QtGlobal>
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>
#include <tuple>

namespace zentro {

namespace {

PortDescription Describe(const QSerialPortInfo& info) {
    PortDescription port;
#ifdef Q_OS_WIN
    port.name = info.portName().toStdString();
#else
    port.name = info.systemLocation().toStdString();
#endif
    port.description = info.description().toStdString();
    if (info.hasVendorIdentifier() && info.hasProductIdentifier()) {
        port.usb = UsbIdentity{info.vendorIdentifier(), info.productIdentifier(),
                               info.serialNumber().toStdString()};
    }
    return port;
}

/// COM10 comes after COM9.
bool ComesBefore(const PortDescription& one, const PortDescription& other) {
    const auto key = [](std::string_view name) {
        const std::size_t lettersEnd = name.find_last_not_of("0123456789") + 1;
        const std::string_view digits = name.substr(lettersEnd);
        return std::tuple(name.substr(0, lettersEnd), digits.size(), digits);
    };
    return key(one.name) < key(other.name);
}

#ifndef Q_OS_WIN
/// 1 to 4 for COM1 to COM4; 0 for every other name.
std::size_t BuiltInNumber(std::string_view name) {
    constexpr std::string_view kPrefix = "COM";
    if (name.size() != kPrefix.size() + 1 || name.back() < '1' || name.back() > '4') return 0;
    const bool matches =
        std::ranges::equal(name.substr(0, kPrefix.size()), kPrefix, [](char one, char other) {
            return std::toupper(static_cast<unsigned char>(one)) == other;
        });
    return matches ? static_cast<std::size_t>(name.back() - '0') : 0;
}
#endif

bool IsThatPort(const PortDescription& port, const PortIdentity& identity) {
    const bool knownBySerialNumber = identity.usb && !identity.usb->serialNumber.empty();
    return port.usb == identity.usb && (knownBySerialNumber || port.name == identity.device);
}

}  // namespace

std::vector<PortDescription> ListPorts() {
    std::vector<PortDescription> ports;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        ports.push_back(Describe(info));
    }
    std::ranges::sort(ports, ComesBefore);
    return ports;
}

std::string DevicePath(const std::string& portName, const std::vector<PortDescription>& present) {
#ifndef Q_OS_WIN
    std::size_t left = BuiltInNumber(portName);
    for (const PortDescription& port : present) {
        if (!port.usb && left > 0 && --left == 0) return port.name;
    }
#endif
    return portName;
}

PortIdentity IdentityOf(const std::string& device, const std::vector<PortDescription>& present) {
    // The name may be a link to the device, made for just this adapter.
    std::error_code failed;
    const std::string target = std::filesystem::canonical(device, failed).string();
    for (const PortDescription& port : present) {
        if (port.name == device || port.name == target) return {port.name, port.usb};
    }
    return {device, std::nullopt};
}

std::optional<std::string> FindPort(const PortIdentity& identity,
                                    const std::vector<PortDescription>& present) {
    std::optional<std::string> found;
    for (const PortDescription& port : present) {
        if (!IsThatPort(port, identity)) continue;
        if (port.name == identity.device) return port.name;
        // Some makers give all their adapters one serial number.
        if (found) return std::nullopt;
        found = port.name;
    }
    return found;
}

}  // namespace zentro
