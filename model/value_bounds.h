#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/data_type.h"

namespace zentro {

/// Numbers are written with a sign bit in mind, though a word of the board counts to 65535.
inline constexpr std::int32_t kLargestWrittenNumber = 32767;

/// What a flag holds. The board takes any value but 0 for true.
inline constexpr std::int32_t kFlagTrue = 255;
inline constexpr std::int32_t kFlagFalse = 0;

/// True when the type can hold the value: a byte or flag takes a number from 0 to 255 (a byte also
/// one character), a word or pointer 0 to 32767 or up to two characters. A value is a number when
/// its text is numeric, else its characters count; a quoted digit is its code by now.
/// The type is never Any or Table.
bool CheckValueBounds(DataType type, std::string_view value);

/// True for the values that a flag can have.
bool IsFlagValue(std::string_view value);

/// The number that the board holds for a value: the number itself, a character's code, two
/// characters' codes with the first as the high byte. Nothing when there is none.
std::optional<std::int32_t> NumberOf(std::string_view value);

}  // namespace zentro
