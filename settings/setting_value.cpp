#include "settings/setting_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace zentro {

namespace {

std::string DecimalText(double number) {
    std::array<char, 400> digits{};  // the longest ones are 309 before the point, 340 behind it
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                            std::chars_format::fixed);
    std::string text(digits.data(), end);
    if (text.find('.') == std::string::npos) text += ".0";
    return text;
}

}  // namespace

SettingValue NumberFromText(std::string_view text) {
    const char* const end = text.data() + text.size();
    std::int32_t integer = 0;
    if (const auto [rest, error] = std::from_chars(text.data(), end, integer);
        rest == end && error == std::errc()) {
        return integer;
    }
    double real = 0;
    const auto [rest, error] = std::from_chars(text.data(), end, real);
    if (rest == end && error == std::errc() && std::isfinite(real)) return real;
    return {};
}

bool IsEmpty(const SettingValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

std::string AsText(const SettingValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* real = std::get_if<double>(&value)) return DecimalText(*real);
    if (std::holds_alternative<std::monostate>(value)) return {};
    return std::to_string(AsInteger(value));
}

double AsNumber(const SettingValue& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return AsNumber(NumberFromText(*text));
    if (const auto* narrow = std::get_if<std::int16_t>(&value)) return *narrow;
    if (const auto* wide = std::get_if<std::int32_t>(&value)) return *wide;
    if (const auto* real = std::get_if<double>(&value)) return std::isnan(*real) ? 0 : *real;
    if (const auto* boolean = std::get_if<bool>(&value)) return *boolean ? 1 : 0;
    return 0;
}

std::int32_t AsInteger(const SettingValue& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double number = std::round(AsNumber(value));
    return static_cast<std::int32_t>(
        std::clamp(number, double{Limits::min()}, double{Limits::max()}));
}

bool AsBoolean(const SettingValue& value) {
    return AsNumber(value) != 0;
}

}  // namespace zentro
