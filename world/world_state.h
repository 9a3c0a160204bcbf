#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "board/devices.h"
#include "world/world_map.h"

namespace zentro::world {

enum class GoalStatus : std::uint8_t { Open, Met, Missed };

struct GoalState {
    GoalStatus status = GoalStatus::Open;
    std::uint64_t tick = 0;      ///< when that was decided
    std::uint64_t passed = 0;    ///< one bit for each passage of a line
    std::uint64_t standing = 0;  ///< ticks without a move in the area

    bool operator==(const GoalState&) const = default;
};

inline constexpr std::size_t kInputs = 32;

/// All that changes in a world while a robot drives in it. A copy is a snapshot.
struct WorldState {
    Pose robot;
    std::uint64_t tick = 0;                    ///< 1/100 seconds since the start
    std::array<double, 2> wheelsTurned{};      ///< centimetres, both directions counting
    std::array<std::uint16_t, 4> newPulses{};  ///< not yet fed to the board
    std::bitset<kInputs> takenOver;            ///< inputs that a hand holds, see TakeOver
    std::uint32_t noise = 0;                   ///< 0: sensors read truly; otherwise its generator
    std::vector<GoalState> goals;

    bool operator==(const WorldState&) const = default;
};

/// The robot at its start, nothing met; with a seed above 0 the sensors have noise.
WorldState StartState(const WorldMap& map, std::uint32_t noiseSeed = 0);

/// The robot is put back and the goals are open again. Inputs stay in the hands that hold them.
void PutAtStart(const WorldMap& map, WorldState& state);

/// Lets 1/100 second pass: the robot drives as the board's outputs say, and goals are decided.
void PassTick(const WorldMap& map, WorldState& state, const Outputs& outputs);

/// Puts what the sensors read into the inputs that no hand holds. Draws noise, if there is any.
void FeedInputs(const WorldMap& map, WorldState& state, Inputs& inputs);

/// Whether a sensor of the world feeds the input while no hand holds it.
bool IsFed(const WorldMap& map, const InputId& input);

/// A hand holds the input: the world leaves it alone until it is let go.
void TakeOver(WorldState& state, const InputId& input);
void LetGo(WorldState& state, const InputId& input);
bool IsTakenOver(const WorldState& state, const InputId& input);

}  // namespace zentro::world
