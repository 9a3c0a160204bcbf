#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// The address (four hexadecimal digits) of the instruction that a board in debug mode shows above
/// its prompt: the last line of the screen that begins with "[00A0]" and is not the answer to a
/// memory read. Empty when there is none.
std::string DebugAddressOn(std::string_view screenText);

}  // namespace zentro
