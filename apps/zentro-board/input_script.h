#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/devices.h"

namespace zentro {

/// One line of an input script: at a tick, an input gets a value.
struct InputChange {
    std::uint64_t tick;
    void (*set)(Inputs& inputs, std::size_t index, unsigned value);
    std::size_t index;
    unsigned value;
};

/// What an input script says, by ticks; changes of one tick in the order of the lines.
struct InputScript {
    std::vector<InputChange> changes;
    std::string error;  ///< what is wrong with it, with the line; empty: nothing
};

/// Reads a script: on each line a tick, the name of an input and its new value, with blanks
/// between. Empty lines and lines that begin with ";" say nothing.
InputScript ParseInputScript(std::string_view text);

}  // namespace zentro
