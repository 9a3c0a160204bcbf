#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "config/command_catalogue.h"
#include "model/compilation.h"

namespace zentro {

/// Looks up memory of a board.
using ReadMemory = std::function<std::string(std::uint32_t address, std::size_t count)>;

/// So much of a table is shown.
inline constexpr std::size_t kMostBytesShown = 64;

/// A value as people read it: "42", TRUE and FALSE in the words of the language, of a table the
/// numbers of all its bytes, "1, 2, 65", or the first ones "1, 2, ... (200 bytes)". `size` is that
/// of the whole variable.
QString ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                  const CommandCatalogue& commands);

/// The variable that a line of the routine means by the name; null: it declares none.
const Symbol* FindVariable(const Compilation& compilation, const std::string& name, ParentId scope);

/// "Count = 5", of a routine's variable "Rest of Add = 3". It must have a place in memory.
QString DescribeVariable(const Compilation& compilation, const Symbol& variable,
                         const ReadMemory& read);

}  // namespace zentro
