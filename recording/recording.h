#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "recording/action.h"
#include "recording/output_log.h"
#include "recording/scene.h"

namespace zentro {

/// What a run did.
struct Outcome {
    OutputLog outputs;
    std::uint64_t steps = 0;  ///< instructions

    bool operator==(const Outcome&) const = default;
};

/// Where two outcomes part, in a sentence; empty: they are equal.
std::string Difference(const Outcome& recorded, const Outcome& replayed);

/// Bytes that are there at the start of a run, where a fresh board has others.
struct BytesAt {
    std::uint32_t address = 0;
    std::vector<std::uint8_t> bytes;

    bool operator==(const BytesAt&) const = default;
};

/// Everything that a run came from, and what came of it.
struct Recording {
    std::vector<std::uint8_t> program;  ///< from address 0 on
    std::string source;                 ///< name of the source file; empty: unknown
    std::string world;                  ///< the text of its file; empty: the board stood alone
    std::uint32_t seed = kFirstRandom;  ///< of the program's random numbers
    std::uint32_t noise = 0;            ///< seed of the noise of the world's sensors; 0: none
    std::uint64_t clock = 0;            ///< of the board at the start
    std::vector<BytesAt> memory;        ///< behind the program
    std::vector<BytesAt> eeprom;
    std::array<StickPosition, 2> sticks{};  ///< where the joysticks are taken to be at rest
    std::vector<Action> actions;            ///< by ticks
    std::uint64_t ticks = 0;  ///< how long it lasted; of the last tick only its actions happened
    std::optional<Outcome> outcome;  ///< nothing: a person wrote it who does not know

    /// What the board's clock shows at the end.
    std::uint64_t End() const { return clock + ticks; }

    bool operator==(const Recording&) const = default;
};

/// The program as the board holds it once it is loaded.
std::vector<std::uint8_t> ProgramOf(const Board& board);

/// The text of an object file that loads it.
std::string ObjectText(const std::vector<std::uint8_t>& program);

/// Puts a fresh board at the beginning of the run. `map` is made of the recording's world.
void Prepare(const Recording& recording, std::shared_ptr<const world::WorldMap> map, Scene& scene);

/// Runs it again, at most so many ticks. The scene is left as it is then.
Outcome Replay(const Recording& recording, Scene& scene, std::uint64_t mostTicks);

}  // namespace zentro
