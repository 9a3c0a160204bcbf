#include "faults/value_text.h"

#include <algorithm>

namespace zentro {

namespace {

std::string FlagText(std::uint8_t value, const FlagWords& words) {
    const auto found = words.find(value);
    return found == words.end() ? std::to_string(value) : found->second;
}

std::string TableText(std::span<const std::uint8_t> bytes, std::size_t size) {
    const std::size_t count = std::min(bytes.size(), kMostBytesShown);
    std::string text;
    for (const std::uint8_t byte : bytes.first(count))
        text += (text.empty() ? "" : ", ") + std::to_string(byte);
    return count < size ? text + ", ... (" + std::to_string(size) + " bytes)" : text;
}

}  // namespace

std::string ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                      const FlagWords& words) {
    const auto at = [&](std::size_t index) {
        return index < bytes.size() ? bytes[index] : std::uint8_t{0};
    };
    switch (type) {
        case DataType::Table: return TableText(bytes, size);
        case DataType::Flag: return FlagText(at(0), words);
        case DataType::Word:
        case DataType::Pointer: return std::to_string(at(0) * 256 + at(1));
        case DataType::Any:
        case DataType::Byte: return std::to_string(at(0));
    }
    return {};
}

}  // namespace zentro
