#include "comms/debug_address.h"

#include <cctype>

#include "model/address.h"

namespace zentro {

namespace {

constexpr std::size_t kPrefix = kAddressDigits + 3;  // "[00A0] "

bool IsHexDigit(char character) {
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

/// "[00A0] SET MOTOR ...": but not "[00A0] 2A 00 ...".
bool ShowsInstruction(std::string_view line) {
    if (line.size() <= kPrefix || line[0] != '[' || line.substr(kPrefix - 2, 2) != "] ")
        return false;
    if (!ParseAddress(line.substr(1, kAddressDigits))) return false;
    const std::string_view rest = line.substr(kPrefix);
    const bool beginsWithPair = rest.size() > 2 && IsHexDigit(rest[0]) && IsHexDigit(rest[1]) &&
                                std::isspace(static_cast<unsigned char>(rest[2])) != 0;
    return !beginsWithPair;
}

}  // namespace

std::optional<std::uint16_t> DebugAddressOn(std::string_view screenText) {
    while (!screenText.empty()) {
        const std::size_t lineEnd = screenText.find_last_of("\r\n");
        const std::size_t start = lineEnd == std::string_view::npos ? 0 : lineEnd + 1;
        const std::string_view line = screenText.substr(start);
        if (ShowsInstruction(line)) return ParseAddress(line.substr(1, kAddressDigits));
        screenText = screenText.substr(0, start == 0 ? 0 : start - 1);
    }
    return std::nullopt;
}

}  // namespace zentro
