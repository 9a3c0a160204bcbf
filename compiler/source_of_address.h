#pragma once

#include <cstdint>
#include <optional>

#include "model/compilation.h"

namespace zentro {

/// Where the instruction at an address comes from: the source line that produced the object line at
/// that very address. Nothing when there is none.
std::optional<LineXref> SourceOfAddress(const Compilation& compilation, std::uint16_t address);

/// The number, from 1, of the listing's line for that address; nothing when no object line stands
/// there.
std::optional<std::size_t> ListingLineOfAddress(const Compilation& compilation,
                                                std::uint16_t address);

}  // namespace zentro
