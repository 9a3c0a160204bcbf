#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "recording/action.h"
#include "world/world_state.h"

namespace zentro {

enum class HappeningKind : std::uint8_t {
    Running,  ///< `times` ticks with at most `stepsPerTick` instructions each, then `steps`
    ChangeInputs,
    HoldInput,
    Receive,  ///< `characters`
    TakeOutput,
    StopProgram,
    PutRobotAtStart,
    PlaceRobot,
    PutAllToRest,
    Recorded,  ///< an action of a recording that is replayed
};

/// Something that a history remembers.
struct Happening {
    HappeningKind kind{};
    bool flag = false;        ///< somebody listens; the input is held
    std::uint64_t times = 1;  ///< ticks; characters; 1
    std::uint64_t stepsPerTick = 0;
    std::uint64_t steps = 0;
    std::string characters = {};
    Inputs inputs = {};
    world::InputId input = {};
    world::Pose pose = {};
    std::vector<Action> actions = {};  ///< the same for a recording; the ticks are left open
};

}  // namespace zentro
