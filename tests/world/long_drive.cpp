#include "tests/world/long_drive.h"

#include <bit>

#include "world/arithmetic.h"

namespace zentro::world {

namespace {

class Digest {
  public:
    void Add(std::uint64_t value) {
        constexpr std::uint64_t kPrime = 1'099'511'628'211U;
        for (int byte = 0; byte < 8; ++byte) {
            value_ = (value_ ^ (value & 0xFF)) * kPrime;
            value >>= 8;
        }
    }
    void Add(double value) { Add(std::bit_cast<std::uint64_t>(value)); }
    std::uint64_t Value() const { return value_; }

  private:
    std::uint64_t value_ = 14'695'981'039'346'656'037U;
};

void AddTick(Digest& digest, const WorldState& state, const Inputs& inputs) {
    digest.Add(state.robot.place.x);
    digest.Add(state.robot.place.y);
    digest.Add(state.robot.heading);
    for (const double turned : state.wheelsTurned)
        digest.Add(turned);
    for (const std::uint8_t reading : inputs.analog)
        digest.Add(std::uint64_t{reading});
    for (const bool pressed : inputs.digital)
        digest.Add(std::uint64_t{pressed});
    for (const std::uint16_t pulses : inputs.pulses)
        digest.Add(std::uint64_t{pulses});
    for (const GoalState& goal : state.goals) {
        digest.Add(static_cast<std::uint64_t>(goal.status));
        digest.Add(goal.tick);
        digest.Add(goal.passed);
    }
}

Sensor On(SensorKind kind, InputKind input, std::size_t index, Point place, double degrees) {
    Sensor sensor;
    sensor.kind = kind;
    sensor.input = {input, index};
    sensor.place = place;
    sensor.heading = Radians(degrees);
    sensor.cone = Radians(40);
    sensor.noise = 7;
    return sensor;
}

}  // namespace

World FullWorld() {
    World world;
    world.lines = {{"track", {{20, 30}, {180, 40}, {200, 120}}, {}, 8, 200},
                   {"track", {}, Arc{{120, 75}, 50, 0.3, 4}, 5.5, 170}};
    world.areas = {{"home", {190, 100}, {40, 40}, 0, 60}, {"spot", {60, 110}, {}, 20, 90}};
    world.walls = {{{60, 60}, {100, 75}}, {{100, 75}, {97, 120}}, {{150, 20}, {151, 60}}};
    world.boxes = {{{190, 60}, {15, 12}}, {{30, 120}, {20, 20}}};
    world.lamps = {{{120, 75}, 220, 40}, {{10, 140}, 180, 70}};
    world.start = {{40, 30}, 0.5};
    world.sensors = {On(SensorKind::Floor, InputKind::Analog, 0, {9, 2.5}, 0),
                     On(SensorKind::Floor, InputKind::Analog, 1, {9, -2.5}, 0),
                     On(SensorKind::Distance, InputKind::Analog, 2, {11, 0}, 0),
                     On(SensorKind::Distance, InputKind::Analog, 3, {4, -8}, -70),
                     On(SensorKind::Light, InputKind::Analog, 4, {5, 5}, 35),
                     On(SensorKind::Light, InputKind::Analog, 5, {5, -5}, -35),
                     On(SensorKind::Bumper, InputKind::Digital, 0, {}, 45),
                     On(SensorKind::Bumper, InputKind::Digital, 1, {}, -45),
                     On(SensorKind::Wheel, InputKind::Pulses, 0, {}, 0),
                     On(SensorKind::Wheel, InputKind::Pulses, 1, {}, 0)};
    world.sensors.back().rightWheel = true;
    world.goals = {{GoalKind::Follow, "track", 3600, 0, 15},
                   {GoalKind::Reach, "home", 3600, 0, 0},
                   {GoalKind::Clear, "", 3600, 0, 0}};
    return world;
}

std::uint64_t DigestOfLongDrive(int ticks) {
    const WorldMap map = MakeMap(FullWorld());
    WorldState state = StartState(map, 77);
    Inputs inputs;
    Outputs outputs;
    Digest digest;
    std::uint32_t chance = 1;
    const auto draw = [&chance] {
        chance = chance * 1'664'525U + 1'013'904'223U;
        return chance >> 24;
    };
    for (int tick = 0; tick < ticks; ++tick) {
        if (tick % 60 == 0) {
            for (std::size_t motor = 0; motor < 2; ++motor) {
                const auto speed = static_cast<std::uint8_t>(draw() % 101);
                outputs.motors[motor] = {draw() % 4 == 0 ? kBackward : kForward, speed};
            }
        }
        PassTick(map, state, outputs);
        FeedInputs(map, state, inputs);
        AddTick(digest, state, inputs);
    }
    return digest.Value();
}

}  // namespace zentro::world
