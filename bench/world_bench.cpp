// How many ticks of robots a millisecond takes, in the worlds that are named. A robot drives in a
// circle and its sensors feed the board's inputs; its board runs no program.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

#include "world/load_world.h"
#include "world/world_state.h"

namespace {

using namespace zentro;

constexpr int kTicks = 200'000;
constexpr int kRounds = 7;  // the fastest counts

double MillisecondsOfDrive(const world::WorldMap& map) {
    world::WorldState state = StartState(map);
    Inputs inputs;
    Outputs outputs;
    outputs.motors[0] = {kForward, 55};
    outputs.motors[1] = {kForward, 80};
    const auto begin = std::chrono::steady_clock::now();
    for (int tick = 0; tick < kTicks; ++tick) {
        PassTick(map, state, outputs);
        FeedInputs(map, state, inputs);
    }
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
        .count();
}

}  // namespace

int main(int argc, char** argv) {
    for (int index = 1; index < argc; ++index) {
        std::ifstream stream(argv[index]);
        const std::string text(std::istreambuf_iterator<char>(stream), {});
        const world::LoadedWorld loaded = world::LoadWorld(text);
        if (!loaded.error.empty()) {
            std::fprintf(stderr, "%s: %s\n", argv[index], loaded.error.c_str());
            return 1;
        }
        const world::WorldMap map = world::MakeMap(loaded.world);
        double best = std::numeric_limits<double>::max();
        for (int round = 0; round < kRounds; ++round)
            best = std::min(best, MillisecondsOfDrive(map));
        // The first world is the one that is measured against what is wanted.
        std::printf("result\tworld \"%s\", ticks of robots in a millisecond\t\t\t%.0f\t>= %d\n",
                    loaded.world.name.c_str(), kTicks / best, index == 1 ? 1000 : 100);
    }
    return 0;
}
