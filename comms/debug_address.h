#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zentro {

/// The address of the instruction that a board in debug mode shows above
/// its prompt: the last line of the screen that begins with "[00A0]" and is not the answer to a
/// memory read. Nothing when there is none.
std::optional<std::uint16_t> DebugAddressOn(std::string_view screenText);

}  // namespace zentro
