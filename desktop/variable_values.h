#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "config/command_catalogue.h"
#include "faults/value_text.h"
#include "model/compilation.h"

namespace zentro {

/// Looks up memory of a board.
using ReadMemory = std::function<std::string(std::uint32_t address, std::size_t count)>;

/// A value as people read it, with TRUE and FALSE in the words of the language.
QString ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                  const CommandCatalogue& commands);

/// The variable that a line of the routine means by the name; null: it declares none.
const Symbol* FindVariable(const Compilation& compilation, const std::string& name, ParentId scope);

/// "Count = 5", of a routine's variable "Rest of Add = 3". It must have a place in memory.
QString DescribeVariable(const Compilation& compilation, const Symbol& variable,
                         const ReadMemory& read);

}  // namespace zentro
