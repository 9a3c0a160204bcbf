#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentro {

/// An address of the board's memory is shown, sent and read as four hexadecimal digits.
inline constexpr std::size_t kAddressDigits = 4;

/// "00A0"; of a number with more digits the last four.
std::string AddressDigits(std::uint32_t address);

/// "[00A0]", as the board and the listing show an address.
std::string FormatAddress(std::uint32_t address);

/// Four hexadecimal digits, in any letter case, as an address; nothing when they are not that.
std::optional<std::uint16_t> ParseAddress(std::string_view digits);

}  // namespace zentro
