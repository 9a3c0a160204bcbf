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
    std::size_t number = 1;
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.address > address) break;
        const auto offset = static_cast<std::size_t>(address - line.address);
        if (offset == 0) return number;
        if (line.IsTable() && offset < line.Size()) return number + offset;
        number += line.LineCount();
    }
    return std::nullopt;
}

}  // namespace zentro
