#include "apps/zentro-board/pseudo_terminal.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace zentro {

namespace {

/// No echo, no line editing, no signals: characters pass as they are. The setting outlives the
/// clients, because the board's end stays open.
bool SetRaw(const char* name) {
    const int client = open(name, O_RDWR | O_NOCTTY);
    if (client < 0) return false;
    termios settings{};
    bool done = tcgetattr(client, &settings) == 0;
    if (done) {
        cfmakeraw(&settings);
        cfsetspeed(&settings, B9600);
        done = tcsetattr(client, TCSANOW, &settings) == 0;
    }
    close(client);
    return done;
}

std::string NameOf(int descriptor) {
    char name[64] = {};
    if (ptsname_r(descriptor, name, sizeof name) != 0) return {};
    return name;
}

}  // namespace

std::optional<PseudoTerminal> PseudoTerminal::Open(std::string& error) {
    const int descriptor = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor >= 0 && grantpt(descriptor) == 0 && unlockpt(descriptor) == 0) {
        const std::string name = NameOf(descriptor);
        if (!name.empty() && SetRaw(name.c_str())) return PseudoTerminal(descriptor, name);
    }
    error = std::strerror(errno);
    if (descriptor >= 0) close(descriptor);
    return std::nullopt;
}

PseudoTerminal::PseudoTerminal(int descriptor, std::string name)
    : descriptor_(descriptor), name_(std::move(name)) {}

PseudoTerminal::PseudoTerminal(PseudoTerminal&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), name_(std::move(other.name_)) {}

PseudoTerminal::~PseudoTerminal() {
    if (descriptor_ >= 0) close(descriptor_);
}

bool PseudoTerminal::HasClient() const {
    pollfd entry{descriptor_, POLLIN, 0};
    return poll(&entry, 1, 0) >= 0 && (entry.revents & POLLHUP) == 0;
}

std::string PseudoTerminal::Read(std::size_t limit) {
    std::string text(limit, '\0');
    const ssize_t count = read(descriptor_, text.data(), text.size());
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

std::size_t PseudoTerminal::Write(std::string_view text) {
    if (text.empty()) return 0;
    const ssize_t count = write(descriptor_, text.data(), text.size());
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void PseudoTerminal::DiscardUnread() {
    // What has reached the client's side can only be thrown away from there.
    const int client = open(name_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (client < 0) return;
    tcflush(client, TCIFLUSH);
    close(client);
}

}  // namespace zentro
