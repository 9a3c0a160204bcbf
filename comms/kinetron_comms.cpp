#include "comms/kinetron_comms.h"

#include <array>
#include <exception>
#include <system_error>
#include <utility>

namespace zentro {

namespace {

struct OpenFailure {
    std::int32_t code;
    std::string_view ending;
};

/// The classic codes of a failed open. Those that are missing have no message.
constexpr std::array<OpenFailure, 8> kOpenFailures{{
    {-1, "' - Specified port was not found"},
    {-2, "' - Specified port is already opened for another application"},
    {-3, "' - Specified port can not be opend"},
    {-4, "' - Not enough memory. Please close some applications and try again"},
    {-5, "' - Error in Default Parameters for this port."},
    {-10, "' - PC device Hardware not present, connected or switched on"},
    {-11, "' - Error in Default Parameters for this port."},
    {-12, "' - Error in Default Parameters for this port."},
}};

/// Empty when the opening has nothing to tell.
std::string OpenFailureMessage(const std::string& portName, const LinkOpening& opening) {
    for (const OpenFailure& failure : kOpenFailures) {
        if (failure.code != opening.handle) continue;
        std::string message = "Failed to open '" + portName;
        message += failure.ending;
        if (!opening.advice.empty()) message += "\n\n" + opening.advice;
        return message;
    }
    return {};
}

std::int32_t NumberOf(const std::exception& error) {
    const auto* const systemError = dynamic_cast<const std::system_error*>(&error);
    return systemError == nullptr ? 0 : systemError->code().value();
}

}  // namespace

KineTronComms::KineTronComms(Link& link, MessageSink showMessage)
    : link_(link), showMessage_(std::move(showMessage)) {}

std::int32_t KineTronComms::OpenCommPort(const std::string& portName) {
    writeFailureTold_ = false;
    try {
        const LinkOpening opening = link_.Open(portName);
        const std::string message = OpenFailureMessage(portName, opening);
        if (!message.empty()) showMessage_(message);
        return opening.handle;
    } catch (const std::exception& error) {
        showMessage_(std::string("Error Opening Comm Port ") + error.what());
        return 0;
    }
}

std::int32_t KineTronComms::ConfigCommPorts(std::int32_t handle) {
    try {
        const LineSetup setup = handle < 1 ? LineSetup::SettingsUnreadable : link_.ConfigureLine();
        switch (setup) {
            case LineSetup::Done: return 1;
            case LineSetup::SettingsUnreadable:
                showMessage_("System Error obtaining Comm Port Configuration settings");
                return 0;
            case LineSetup::SettingsRefused:
                showMessage_("System Error Setting Comm Port Configuration settings");
                return 0;
        }
    } catch (const std::exception& error) {
        // "Err" is part of the text.
        showMessage_(std::string("Error Err occurred in ConfigCommPorts. Message reads: ") +
                     error.what());
    }
    return 0;
}

std::int32_t KineTronComms::ConfigCommTimeouts(std::int32_t handle, bool restore, bool showErrors) {
    try {
        return restore ? PutTimeoutsBack(handle, showErrors)
                       : MakeReadsReturnAtOnce(handle, showErrors);
    } catch (const std::exception& error) {
        showMessage_("Error " + std::to_string(NumberOf(error)) +
                     " occurred in ConfigCommTimeouts. Error message reads " + error.what());
        return 0;
    }
}

std::int32_t KineTronComms::MakeReadsReturnAtOnce(std::int32_t handle, bool showErrors) {
    if (handle < 1 || !link_.SaveTimeouts()) {
        if (showErrors) showMessage_("System Error Occurred Getting Comm port timeout values");
        return 0;
    }
    savedTimeoutsValid_ = true;
    return link_.MakeReadsReturnAtOnce() ? 1 : 0;
}

std::int32_t KineTronComms::PutTimeoutsBack(std::int32_t handle, bool showErrors) {
    if (!savedTimeoutsValid_) {
        if (showErrors) {
            showMessage_(
                "Error. Attempt to restore comm port timeouts before they we read "
                "successfully");
        }
        return -1;
    }
    return handle >= 1 && link_.RestoreTimeouts() ? 1 : 0;
}

std::int32_t KineTronComms::ReadCommPort(std::int32_t handle, std::string& text,
                                         std::int32_t& count) {
    if (handle < 1) return 0;
    try {
        std::optional<std::string> bytes = link_.Read(kMaxRead);
        if (!bytes) return 0;
        text = std::move(*bytes);
        count = static_cast<std::int32_t>(text.size());
        return 1;
    } catch (const std::exception& error) {
        showMessage_(std::string("An Error has occurred while attempting to read from the comm "
                                 "port. Error text is: ") +
                     error.what());
        return 0;
    }
}

std::int32_t KineTronComms::WriteCommPort(std::int32_t handle, std::string_view text) {
    if (handle < 1 || text.empty()) return 0;
    std::size_t written = 0;
    try {
        written = link_.Write(text);
    } catch (const std::exception&) {
        // Told below: there is one text for every write that failed.
        written = 0;
    }
    if (written == 0 && !std::exchange(writeFailureTold_, true)) {
        showMessage_("CommPort Write Error. Operating System returned 0");
    }
    return static_cast<std::int32_t>(written);
}

void KineTronComms::CloseCommPort(std::int32_t handle, bool showErrors) {
    const bool isOpen = handle >= 1;
    const auto trying = [](const auto& step) {
        try {
            return step();
        } catch (const std::exception&) {
            return false;
        }
    };
    trying([&] {
        if (isOpen) link_.Flush();
        return isOpen;
    });
    ConfigCommTimeouts(handle, true, showErrors);
    const bool closed = trying([&] { return isOpen && link_.Close(); });
    if (!closed && showErrors) showMessage_("System Error Closing Comm Port");
}

}  // namespace zentro
