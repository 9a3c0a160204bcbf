#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace zentro {

/// The types of the language.
enum class DataType : std::uint8_t {
    Any = 0,  ///< not fixed, or not known after an error
    Byte = 1,
    Word = 2,
    Flag = 3,
    Pointer = 4,
    Table = 5,
};

/// What files call them, in their order.
inline constexpr std::array<std::string_view, 6> kTypeNames{"unknown", "byte",    "word",
                                                            "flag",    "pointer", "table"};

/// Bytes and flags take one byte of the board's memory.
constexpr bool IsByteSized(DataType type) {
    return type == DataType::Byte || type == DataType::Flag;
}

/// Words and pointers take two.
constexpr bool IsWordSized(DataType type) {
    return type == DataType::Word || type == DataType::Pointer;
}

}  // namespace zentro
