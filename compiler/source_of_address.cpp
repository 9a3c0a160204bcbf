#include "compiler/source_of_address.h"

#include <algorithm>

namespace zentro {

std::optional<LineXref> SourceOfAddress(const Compilation& compilation, std::uint16_t address) {
    const std::int32_t lineNumber = GetSourceLineNoForAddress(compilation, address);
    if (lineNumber == 0) return std::nullopt;
    LineXref place = XrefOf(compilation, lineNumber);
    place.address = address;
    return place;
}

std::optional<std::size_t> ListingLineOfAddress(const Compilation& compilation,
                                                std::uint16_t address) {
    const auto& lines = compilation.objectLines;
    const auto found =
        std::ranges::lower_bound(lines, std::int32_t{address}, {}, &ObjectLine::address);
    if (found == lines.end() || found->address != address) return std::nullopt;
    return static_cast<std::size_t>(found - lines.begin()) + 1;
}

}  // namespace zentro
