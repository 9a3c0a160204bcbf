#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "board/devices.h"
#include "world/world.h"

namespace zentro {

/// The inputs of a board, as texts name them: "digital1" to "digital4" and so on.
enum class InputField : std::uint8_t {
    Digital,
    Button,
    Analog,
    Timed,
    Pulses,
    StickX,
    StickY,
    Battery,
    Program,
};

struct InputPlace {
    InputField field{};
    std::size_t index = 0;  ///< input 1 is 0

    bool operator==(const InputPlace&) const = default;
};

/// "analog2", "battery"
std::string InputName(const InputPlace& place);

/// Pulses are added to those that were there; every other input gets the value.
void SetInput(Inputs& inputs, const InputPlace& place, unsigned value);

/// What SetInput sets; of pulses all so far.
unsigned InputValue(const Inputs& inputs, const InputPlace& place);

/// Every input that there is.
std::vector<InputPlace> AllInputs();

/// The input as one that a world can feed; nothing for the others.
std::optional<world::InputId> FedInput(const InputPlace& place);

enum class ActionKind : std::uint8_t {
    SetInput,  ///< an input gets a value, and a hand holds it from then on
    LetGo,     ///< the world feeds it again
    Pace,      ///< so many instructions to each tick from this one on
    Step,      ///< so many instructions at once, before what follows
    Receive,   ///< a character arrives on the serial line
    StopProgram,
    StopAll,       ///< the program ends, outputs are at rest, the robot at its start
    RobotToStart,  ///< a hand puts it there
    PlaceRobot,    ///< a hand puts it somewhere; where something is in the way, beside it
};

/// What is done to a board from outside, and when.
struct Action {
    std::uint64_t tick = 0;  ///< by the board's clock
    ActionKind kind{};
    InputPlace input = {};    ///< of SetInput and LetGo
    std::uint32_t value = 0;  ///< of SetInput, Pace, Step and Receive
    world::Pose robot = {};   ///< of PlaceRobot

    bool operator==(const Action&) const = default;
};

inline constexpr std::uint32_t kLargestPace = 100'000;

/// Reads "100 button1 1", "400 analog1 world", "20 pace 500", "20 step 3", "30 receive 65",
/// "40 stop program", "40 stop all", "50 robot start" or "50 robot 20.5,30,1.57" with blanks
/// between. Nothing if it is something else; `error` tells what is wrong.
std::optional<Action> ParseAction(std::string_view line, std::string& error);

/// What ParseAction reads, to the last bit.
std::string FormatAction(const Action& action);

/// What an input script says, by ticks; actions of one tick in the order of the lines.
struct InputScript {
    std::vector<Action> actions;
    std::string error;  ///< what is wrong with it, with the line; empty: nothing
};

/// Reads a script, an action on each line. Empty lines and lines that begin with ";" say nothing.
InputScript ParseInputScript(std::string_view text);

}  // namespace zentro
