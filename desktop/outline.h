#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config/command_catalogue.h"

namespace zentro {

enum class OutlineKind : std::uint8_t { Routine, Event, Table, Program };

/// A block of a source file that stands by itself. Lines count from 1.
struct OutlineEntry {
    OutlineKind kind = OutlineKind::Program;
    std::string name;  ///< UTF-8; empty for the program, or while it is not typed yet
    int line = 0;
    int lastLine = 0;

    bool operator==(const OutlineEntry&) const = default;
};

/// The routines, events, tables and the program of a text (UTF-8), from its top to its end. A block
/// without an end goes up to the next one.
std::vector<OutlineEntry> OutlineOf(const CommandCatalogue& commands, std::string_view text);

/// The place of the entry that the line belongs to; nothing outside of all.
std::optional<std::size_t> EntryOfLine(const std::vector<OutlineEntry>& outline, int line);

}  // namespace zentro
