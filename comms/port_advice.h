#pragma once

#include <string>

namespace zentro {

/// What a user can do about a port that does not open: why it does not, found by looking at the
/// device, and what to type. `asked` is the name that the user gave; a port of that name in the
/// current folder may be meant. UTF-8. Empty when there is nothing to say.
std::string AdviceForPort(const std::string& device, const std::string& asked = {});

}  // namespace zentro
