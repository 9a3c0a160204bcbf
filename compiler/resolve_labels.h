#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "config/text.h"
#include "model/compilation.h"

namespace zentro {

/// Gives every label the address of the object line that bears it, and posts the labels that two
/// lines bear or that none does.
void ResolveLabels(Compilation& compilation);

/// The addresses of a finished run by label; a table has one for its first byte. Of two text
/// literals that differ in letter case only the first is in it; their instructions do not go by
/// names.
using LabelTable = std::unordered_map<std::string_view, std::int32_t, FoldedHash, FoldedEqual>;
LabelTable BuildLabelTable(const Compilation& compilation);

/// The address of the label; nothing when no object line bears it.
std::optional<std::int32_t> LookupLabel(const LabelTable& table, std::string_view name);

}  // namespace zentro
