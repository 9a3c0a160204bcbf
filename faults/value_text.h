#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>

#include "model/data_type.h"

namespace zentro {

/// So much of a table is shown.
inline constexpr std::size_t kMostBytesShown = 64;

/// What the language calls the values of a flag, UTF-8.
using FlagWords = std::map<std::int32_t, std::string>;

/// A value as people read it: "42", "TRUE", of a table the numbers of all its bytes, "1, 2, 65", or
/// the first ones "1, 2, ... (200 bytes)". `size` is that of the whole variable.
std::string ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                      const FlagWords& words);

}  // namespace zentro
