#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/devices.h"
#include "world/world.h"

namespace zentro {

/// One line of an input script: at a tick, an input gets a value.
struct InputChange {
    std::uint64_t tick;
    void (*set)(Inputs& inputs, std::size_t index, unsigned value);
    std::size_t index;
    unsigned value;
    /// The input as one that a world can feed; nothing for the others.
    std::optional<world::InputId> fed = {};
    bool letsGo = false;  ///< the world feeds it again; there is no value
};

/// What an input script says, by ticks; changes of one tick in the order of the lines.
struct InputScript {
    std::vector<InputChange> changes;
    std::string error;  ///< what is wrong with it, with the line; empty: nothing
};

/// Reads a script: on each line a tick, the name of an input and its new value, with blanks
/// between. "world" instead of a value lets an input go that the world feeds. Empty lines and lines
/// that begin with ";" say nothing.
InputScript ParseInputScript(std::string_view text);

}  // namespace zentro
