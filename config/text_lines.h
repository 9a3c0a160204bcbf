#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace zentro {

/// Cuts a text at its line ends, LF or CR LF; a last line without one counts as well.
std::vector<std::string_view> SplitLines(std::string_view text);

/// Cuts a text at every separator: one more part than there are separators.
std::vector<std::string_view> SplitFields(std::string_view text, char separator);

/// A decimal number from 0 to `largest`; nothing if the text is anything else.
std::optional<unsigned long> ReadNumber(std::string_view text, unsigned long largest);

}  // namespace zentro
