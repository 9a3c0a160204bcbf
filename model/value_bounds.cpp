#include "model/value_bounds.h"

#include <cassert>
#include <cstddef>

#include "config/text.h"

namespace zentro {

namespace {

constexpr std::int32_t kByteValues = 256;

/// A character takes a byte. A flag holds none.
std::size_t LongestText(DataType type) {
    if (type == DataType::Byte) return 1;
    return IsWordSized(type) ? 2 : 0;
}

std::int32_t CharacterCode(char c) {
    return static_cast<unsigned char>(c);
}

}  // namespace

bool CheckValueBounds(DataType type, std::string_view value) {
    assert(type != DataType::Any && type != DataType::Table);
    if (!IsNumeric(value)) return !value.empty() && value.size() <= LongestText(type);
    const std::optional<std::int32_t> number = ParseNumber(value);
    const std::int32_t largest = IsWordSized(type) ? kLargestWrittenNumber : kByteValues - 1;
    return number && *number >= 0 && *number <= largest;
}

bool IsFlagValue(std::string_view value) {
    constexpr std::int32_t kNoNumber = -1;
    const std::int32_t number = NumberOf(value).value_or(kNoNumber);
    return number == kFlagTrue || number == kFlagFalse;
}

std::optional<std::int32_t> NumberOf(std::string_view value) {
    if (IsNumeric(value)) return ParseNumber(value);
    switch (value.size()) {
        case 1: return CharacterCode(value[0]);
        case 2: return CharacterCode(value[0]) * kByteValues + CharacterCode(value[1]);
        default: return std::nullopt;
    }
}

}  // namespace zentro
