#include "compiler/source_of_address.h"

#include <algorithm>
#include <charconv>

namespace zentro {

std::optional<std::int32_t> ParseAddress(std::string_view hexDigits) {
    constexpr std::size_t kDigits = 4;
    std::uint32_t address = 0;
    const char* const end = hexDigits.data() + hexDigits.size();
    const auto [stop, error] = std::from_chars(hexDigits.data(), end, address, 16);
    if (hexDigits.size() != kDigits || error != std::errc{} || stop != end) return std::nullopt;
    return static_cast<std::int32_t>(address);
}

std::optional<LineXref> SourceOfAddress(const Compilation& compilation,
                                        std::string_view hexDigits) {
    const std::optional<std::int32_t> address = ParseAddress(hexDigits);
    if (!address) return std::nullopt;
    const std::int32_t lineNumber = GetSourceLineNoForAddress(compilation, *address);
    if (lineNumber == 0) return std::nullopt;
    LineXref place = XrefOf(compilation, lineNumber);
    place.address = *address;
    return place;
}

std::optional<std::size_t> ListingLineOfAddress(const Compilation& compilation,
                                                std::string_view hexDigits) {
    const std::optional<std::int32_t> address = ParseAddress(hexDigits);
    if (!address) return std::nullopt;
    const auto& lines = compilation.objectLines;
    const auto found = std::ranges::lower_bound(lines, *address, {}, &ObjectLine::address);
    if (found == lines.end() || found->address != *address) return std::nullopt;
    return static_cast<std::size_t>(found - lines.begin()) + 1;
}

}  // namespace zentro
