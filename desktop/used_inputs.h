#pragma once

#include <cstdint>
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

/// What a compiled program reads, or watches for events.
std::set<InputGroup> UsedInputs(const Compilation& compilation);

}  // namespace zentro
