#include "world/world_state.h"

#include <cmath>

#include "world/arithmetic.h"
#include "world/goals.h"
#include "world/robot.h"
#include "world/sensors.h"

namespace zentro::world {

namespace {

std::size_t BitOf(const InputId& input) {
    constexpr std::size_t kMostOfOneKind = 8;
    return static_cast<std::size_t>(input.kind) * kMostOfOneKind + input.index;
}

/// From -1 to 1.
double DrawNoise(std::uint32_t& state) {
    constexpr std::uint32_t kFactor = 1'664'525;
    constexpr std::uint32_t kSummand = 1'013'904'223;
    state = state * kFactor + kSummand;
    constexpr double kHalfOfHigh = 32'768;
    return static_cast<double>(state >> 16) / kHalfOfHigh - 1;
}

double WithNoise(const Sensor& sensor, std::uint32_t& noise, double reading) {
    return noise == 0 || sensor.noise == 0 ? reading : reading + sensor.noise * DrawNoise(noise);
}

void Feed(const WorldMap& map, WorldState& state, const SensorPlan& plan, const Stance& robot,
          Inputs& inputs) {
    const Sensor& sensor = plan.sensor;
    const std::size_t index = sensor.input.index;
    switch (sensor.input.kind) {
        case InputKind::Digital: inputs.digital[index] = IsPressed(map, plan, robot); break;
        case InputKind::Button: inputs.buttons[index] = IsPressed(map, plan, robot); break;
        case InputKind::Analog:
            inputs.analog[index] =
                ToByte(WithNoise(sensor, state.noise, Reading(map, plan, robot)));
            break;
        case InputKind::Pulses:
            inputs.pulses[index] =
                static_cast<std::uint16_t>(inputs.pulses[index] + state.newPulses[index]);
            break;
    }
}

void TurnWheels(const WorldMap& map, WorldState& state, const std::array<double, 2>& ways) {
    const double round = kPi * map.world.robot.wheelDiameter;
    for (const Sensor& sensor : map.world.sensors) {
        if (sensor.kind != SensorKind::Wheel) continue;
        const std::size_t wheel = sensor.rightWheel ? 1 : 0;
        const double before = state.wheelsTurned[wheel];
        const double after = before + std::abs(ways[wheel]);
        const double pulse = round / sensor.pulses;
        const double count = std::floor(after / pulse) - std::floor(before / pulse);
        state.newPulses[sensor.input.index] = static_cast<std::uint16_t>(
            state.newPulses[sensor.input.index] + static_cast<std::uint16_t>(count));
    }
    for (std::size_t wheel = 0; wheel < ways.size(); ++wheel) {
        state.wheelsTurned[wheel] += std::abs(ways[wheel]);
    }
}

}  // namespace

WorldState StartState(const WorldMap& map, std::uint32_t noiseSeed) {
    WorldState state;
    state.noise = noiseSeed;
    PutAtStart(map, state);
    return state;
}

void PutAtStart(const WorldMap& map, WorldState& state) {
    state.robot = map.world.start;
    state.tick = 0;
    state.wheelsTurned = {};
    state.newPulses = {};
    state.goals.assign(map.world.goals.size(), {});
}

void PassTick(const WorldMap& map, WorldState& state, const Outputs& outputs) {
    ++state.tick;
    const std::array<double, 2> ways = WheelWays(map.world.robot, outputs);
    const Pose before = state.robot;
    state.robot = Driven(map, before, ways);
    TurnWheels(map, state, ways);
    DecideGoals(map, state, state.robot != before);
}

void FeedInputs(const WorldMap& map, WorldState& state, Inputs& inputs) {
    const Stance robot = StanceOf(state.robot);
    for (const SensorPlan& plan : map.sensors) {
        if (!IsTakenOver(state, plan.sensor.input)) Feed(map, state, plan, robot, inputs);
    }
    state.newPulses = {};
}

bool IsFed(const WorldMap& map, const InputId& input) {
    for (const Sensor& sensor : map.world.sensors) {
        if (sensor.input == input) return true;
    }
    return false;
}

void TakeOver(WorldState& state, const InputId& input) {
    state.takenOver.set(BitOf(input));
}

void LetGo(WorldState& state, const InputId& input) {
    state.takenOver.reset(BitOf(input));
}

bool IsTakenOver(const WorldState& state, const InputId& input) {
    return state.takenOver.test(BitOf(input));
}

}  // namespace zentro::world
