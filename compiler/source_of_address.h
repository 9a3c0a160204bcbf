#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// Four hexadecimal digits, in any letter case, as an address; nothing when they are not that.
std::optional<std::int32_t> ParseAddress(std::string_view hexDigits);

/// Where the instruction at an address comes from: the source line that produced the object line at
/// that very address. Nothing when there is none.
std::optional<LineXref> SourceOfAddress(const Compilation& compilation, std::string_view hexDigits);

/// The number, from 1, of the listing's line for that address; nothing when no object line stands
/// there.
std::optional<std::size_t> ListingLineOfAddress(const Compilation& compilation,
                                                std::string_view hexDigits);

}  // namespace zentro
