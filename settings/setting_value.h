#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace zentro {

/// Empty (std::monostate), a text in UTF-8, an integer of 16 or 32 bits, a number or a Boolean.
using SettingValue =
    std::variant<std::monostate, std::string, std::int16_t, std::int32_t, double, bool>;

/// The value read as what the caller needs; Empty reads as "", 0 and false, a text as the number
/// that it spells, or 0, and a number as its decimal text. That of a floating-point number has a
/// point and every digit that reading it back needs.
bool IsEmpty(const SettingValue& value);
std::string AsText(const SettingValue& value);
double AsNumber(const SettingValue& value);
std::int32_t AsInteger(const SettingValue& value);  ///< rounded, kept within 32 bits
bool AsBoolean(const SettingValue& value);          ///< whether the number is other than 0

/// The finite number that the whole text spells in decimal, whatever the locale; otherwise Empty.
/// Without point and exponent it is a 32-bit integer, where that holds it.
SettingValue NumberFromText(std::string_view text);

}  // namespace zentro
