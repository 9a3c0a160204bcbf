#pragma once

#include <cstdint>
#include <map>
#include <set>

#include "model/compilation.h"

namespace zentro {

/// The inputs of the board as they stand together in its window.
enum class InputGroup : std::uint8_t {
    Buttons,
    Joysticks,
    Analog,
    Digital,
    PulseAndTimed,
    BatteryAndNumber,
};

/// By groups the numbers of their inputs, none where an input has no number.
using InputUse = std::map<InputGroup, std::set<int>>;

/// What a compiled program reads, or watches for events.
InputUse UsedInputs(const Compilation& compilation);

}  // namespace zentro
