// Any bytes are read as a world; a robot drives in it by the same bytes.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "world/load_world.h"
#include "world/picture.h"
#include "world/save_world.h"
#include "world/world_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zentro;
    constexpr std::size_t kMostTicks = 300;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    world::LoadedWorld loaded = world::LoadWorld(text);
    if (!loaded.error.empty()) return 0;
    // Whoever can open it can change and save it.
    if (!world::LoadWorld(world::SaveWorld(loaded.world)).error.empty()) std::abort();
    const world::WorldMap map = world::MakeMap(std::move(loaded.world));
    world::WorldState state = StartState(map, 1);
    Inputs inputs;
    Outputs outputs;
    for (std::size_t tick = 0; tick < size && tick < kMostTicks; ++tick) {
        Drive& motor = outputs.motors[tick % 2];
        motor = {data[tick] % 5 == 0 ? kBackward : kForward, data[tick]};
        PassTick(map, state, outputs);
        FeedInputs(map, state, inputs);
        if (!IsFree(map, state.robot.place) || !std::isfinite(state.robot.heading)) std::abort();
    }
    if (PictureOf(map, {state.robot}).empty()) std::abort();
    return 0;
}
