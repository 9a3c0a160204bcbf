#include "model/address.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace zentro {

std::string AddressDigits(std::uint32_t address) {
    std::array<char, kAddressDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%04X", address & 0xFFFFU);
    return digits.data();
}

std::string FormatAddress(std::uint32_t address) {
    return '[' + AddressDigits(address) + ']';
}

std::optional<std::uint16_t> ParseAddress(std::string_view digits) {
    std::uint16_t address = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, address, 16);
    if (digits.size() != kAddressDigits || error != std::errc{} || stop != end) return std::nullopt;
    return address;
}

}  // namespace zentro
