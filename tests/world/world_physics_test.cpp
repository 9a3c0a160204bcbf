// The robot's ways, what it hits and what its sensors read, in centimetres and degrees. Expected
// values come from geometry.
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "board/board.h"
#include "tests/world/long_drive.h"
#include "world/arithmetic.h"
#include "world/goals.h"
#include "world/robot.h"
#include "world/sensors.h"
#include "world/world_state.h"

namespace zentro::world {
namespace {

constexpr std::uint64_t kExpectedDigest = 0x9df5b7f8ba8cacf6;

World EmptyWorld() {
    World world;
    world.floor = {400, 300, 225};
    world.start = {{200, 150}, 0};
    return world;
}

Outputs Motors(int left, int right) {
    const auto drive = [](int speed) {
        return Drive{speed < 0 ? kBackward : kForward, static_cast<std::uint8_t>(std::abs(speed))};
    };
    Outputs outputs;
    outputs.motors[0] = drive(left);
    outputs.motors[1] = drive(right);
    return outputs;
}

/// Where a robot is after so many ticks.
Pose After(const World& world, int left, int right, int ticks) {
    const WorldMap map = MakeMap(world);
    WorldState state = StartState(map);
    for (int tick = 0; tick < ticks; ++tick)
        PassTick(map, state, Motors(left, right));
    return state.robot;
}

TEST(WorldArithmetic, SineAndCosineAreThoseOfGeometry) {
    for (int degrees = -1000; degrees <= 1000; ++degrees) {
        const double angle = Radians(degrees);
        EXPECT_NEAR(Sine(angle), std::sin(angle), 1e-14) << degrees;
        EXPECT_NEAR(Cosine(angle), std::cos(angle), 1e-14) << degrees;
    }
    EXPECT_EQ(Sine(0), 0);
}

TEST(WorldDrive, GoesStraightTurnsAndCurves) {
    struct Case {
        const char* what;
        int left, right, ticks;
        double x, y, degrees;  // from the start
    };
    // 50 cm/s at 100 percent, wheels 16 cm apart: on the spot at 50 percent 50/16 radians a second.
    const double spot = Degrees(50.0 / 16);
    const double radius = 8 * (80.0 + 40) / (80 - 40);  // of a curve at 80 and 40 percent
    const double turn = (40.0 - 20) / 16;               // radians in its second
    const Case cases[] = {
        {"stands", 0, 0, 100, 0, 0, 0},
        {"ahead", 60, 60, 200, 60, 0, 0},
        {"back", -60, -60, 100, -30, 0, 0},
        {"no faster than 100", 200, 200, 100, 50, 0, 0},
        {"on the spot to the left", -50, 50, 50, 0, 0, spot / 2},
        {"on the spot to the right", 50, -50, 50, 0, 0, -spot / 2},
        {"curve to the left", 40, 80, 100, radius * std::sin(turn), radius * (1 - std::cos(turn)),
         Degrees(turn)},
        {"curve to the right", 80, 40, 100, radius * std::sin(turn), -radius * (1 - std::cos(turn)),
         -Degrees(turn)},
    };
    for (const Case& test : cases) {
        const Pose end = After(EmptyWorld(), test.left, test.right, test.ticks);
        EXPECT_NEAR(end.place.x - 200, test.x, 0.01) << test.what;
        EXPECT_NEAR(end.place.y - 150, test.y, 0.01) << test.what;
        EXPECT_NEAR(Degrees(end.heading), test.degrees, 0.01) << test.what;
    }
}

TEST(WorldDrive, StopsAtWhatItHitsAndSlidesAlong) {
    struct Case {
        const char* what;
        std::vector<Segment> walls;
        std::vector<Box> boxes;
        double degrees;
        Point end;
    };
    const double half = 100 / std::sqrt(2.0);  // along both ways after two seconds at 45 degrees
    const std::vector<Segment> ahead{{{250, 0}, {250, 300}}};
    const Case cases[] = {
        {"a wall ahead", ahead, {}, 0, {239, 150}},
        {"a wall at the side leaves it alone", {{{0, 161.1}, {400, 161.1}}}, {}, 0, {300, 150}},
        {"along a wall at 45 degrees", ahead, {}, 45, {239, 150 + half}},
        {"along a wall that stands at 45 degrees", {{{200, 100}, {300, 200}}}, {}, 0, {}},
        {"into a corner", {{{230, 0}, {230, 300}}, {{0, 170}, {400, 170}}}, {}, 45, {219, 159}},
        {"a box", {}, {{{240, 100}, {30, 100}}}, 0, {229, 150}},
        {"a gap that is too narrow",
         {{{230, 0}, {230, 140}}, {{230, 160}, {230, 300}}},
         {},
         0,
         {230 - std::sqrt(121.0 - 100), 150}},
    };
    for (const Case& test : cases) {
        World world = EmptyWorld();
        world.walls = test.walls;
        world.boxes = test.boxes;
        world.start.heading = Radians(test.degrees);
        const Pose end = After(world, 100, 100, 200);
        EXPECT_TRUE(IsFree(MakeMap(world), end.place)) << test.what;
        if (test.end == Point{}) {
            // It touches the wall and has gone some of its way, upwards along it.
            EXPECT_NEAR(Distance(world.walls[0], end.place), 11, 0.01) << test.what;
            EXPECT_GT(end.place.y, 170) << test.what;
            continue;
        }
        EXPECT_NEAR(end.place.x, test.end.x, 0.6) << test.what;
        EXPECT_NEAR(end.place.y, test.end.y, 0.6) << test.what;
    }
    const Pose edge = After(EmptyWorld(), 100, 100, 1000);
    EXPECT_NEAR(edge.place.x, 389, 1e-9) << "the floor's edge";
}

TEST(WorldDrive, NeverGetsIntoAWall) {
    const WorldMap map = MakeMap(FullWorld());
    WorldState state = StartState(map);
    std::uint32_t chance = 5;
    for (int tick = 0; tick < 20'000; ++tick) {
        chance = chance * 1'664'525U + 1'013'904'223U;
        if (tick % 40 == 0) chance |= 1U;
        const int left = static_cast<int>(chance >> 25) - 20;
        const int right = static_cast<int>((chance >> 18) & 127U) - 20;
        PassTick(map, state, Motors(left, right));
        ASSERT_TRUE(IsFree(map, state.robot.place)) << tick;
    }
}

TEST(WorldSensors, DistancesToWallsAtAngles) {
    struct Case {
        const char* what;
        double wall;     // stands so far from the sensor, ...
        double slant;    // ... turned by so many degrees about the point ahead
        double heading;  // of the sensor on the robot
        double cone;
        double distance;
    };
    const double slanted = 60 * std::sin(Radians(60)) / std::sin(Radians(60 + 15));
    const Case cases[] = {
        {"straight ahead", 60, 0, 0, 0, 60},
        {"at the end of its range", 120, 0, 0, 0, 100},
        {"past it by 45 degrees", 60, 0, 45, 0, 60 * std::sqrt(2.0)},
        {"the middle of a cone is nearest", 60, 0, 0, 30, 60},
        {"the side of a cone on a slanted wall", 60, 30, 0, 30, slanted},
        {"looking away", 60, 0, 180, 0, 100},
    };
    for (const Case& test : cases) {
        World world = EmptyWorld();
        const Point ahead{200 + test.wall, 150};
        const Point along = Times(Direction(Radians(90 + test.slant)), 80);
        world.walls = {{Minus(ahead, along), Plus(ahead, along)}};
        Sensor sensor;
        sensor.kind = SensorKind::Distance;
        sensor.heading = Radians(test.heading);
        sensor.cone = Radians(test.cone);
        const WorldMap map = MakeMap(world);
        EXPECT_NEAR(FreeWay(map, MakePlan(sensor), StanceOf(world.start)), test.distance, 0.01)
            << test.what;
        EXPECT_NEAR(Reading(map, MakePlan(sensor), StanceOf(world.start)),
                    255 * (1 - test.distance / 100), 0.1)
            << test.what;
    }
}

TEST(WorldSensors, LightFallsOffIsShadedAndHasADirection) {
    World world = EmptyWorld();
    world.lamps = {{{250, 150}, 200, 50}};
    Sensor eye;
    eye.kind = SensorKind::Light;
    const auto reading = [&](const Point& place, double degrees) {
        return Reading(MakeMap(world), MakePlan(eye), StanceOf({place, Radians(degrees)}));
    };
    EXPECT_NEAR(reading({250, 150}, 0), 200, 0.1) << "next to it";
    EXPECT_NEAR(reading({200, 150}, 0), 100, 0.1) << "the half";
    EXPECT_NEAR(reading({100, 150}, 0), 20, 0.1) << "a tenth, 150 cm away";
    EXPECT_NEAR(reading({200, 150}, 60), 50, 0.1) << "from the side";
    EXPECT_NEAR(reading({200, 150}, 120), 0, 1e-9) << "from behind";
    world.lamps.push_back(world.lamps[0]);
    EXPECT_NEAR(reading({200, 150}, 0), 200, 0.1) << "two of them";
    world.walls = {{{225, 100}, {225, 200}}};
    EXPECT_EQ(reading({200, 150}, 0), 0) << "a wall between";
    EXPECT_GT(reading({230, 150}, 0), 0) << "a wall behind";
    world.walls = {};
    world.boxes = {{{220, 140}, {10, 20}}};
    EXPECT_EQ(reading({200, 150}, 0), 0) << "a box between";
}

TEST(WorldSensors, FloorEyesOverEdges) {
    World world = EmptyWorld();
    world.lines = {{"straight", {{0, 150}, {400, 150}}, {}, 8, 200},
                   {"quarter", {}, Arc{{100, 50}, 40, 0, kPi / 2}, 8, 200}};
    world.areas = {{"grey", {300, 200}, {50, 50}, 0, 100}, {"disc", {300, 50}, {}, 20, 50}};
    const WorldMap map = MakeMap(world);
    struct Case {
        const char* what;
        Point place;
        double reading;
    };
    const Case cases[] = {
        {"floor", {200, 100}, 225},
        {"the line's middle", {200, 150}, 25},
        {"inside its edge", {200, 152.9}, 25},
        {"the edge itself", {200, 154}, 125},
        {"a quarter outside", {200, 154.5}, 75 + 100},
        {"outside", {200, 155.1}, 225},
        {"the arc", {140, 50}, 25},
        {"the arc's middle", {100 + 40 * std::sqrt(0.5), 50 + 40 * std::sqrt(0.5)}, 25},
        {"where the arc does not go", {60, 50}, 225},
        {"the arc's round end", {140, 47}, 25},
        {"an area", {325, 225}, 125},
        {"an area's edge", {300, 225}, 175},
        {"a round area", {310, 50}, 175},
    };
    for (const Case& test : cases) {
        EXPECT_NEAR(BrightnessAt(map, test.place), test.reading, 0.01) << test.what;
    }
}

/// The floor of 400 by 300 has pixels of 100 by 150.
TEST(WorldSensors, FloorEyesOverAPicture) {
    World world = EmptyWorld();
    world.picture = {4, {15, 0, 15, 15, 15, 15, 5, 15}};
    world.lines = {{"line", {{200, 30}, {400, 30}}, {}, 8, 125}};
    const WorldMap map = MakeMap(world);
    struct Case {
        const char* what;
        Point place;
        double reading;
    };
    const Case cases[] = {
        {"a bright pixel", {50, 225}, 225},
        {"a black one", {150, 225}, 0},
        {"half the way between them", {100, 225}, 112.5},
        {"half the way down", {150, 150}, 112.5},
        {"between four", {200, 150}, 225 * (0 + 15 + 15 + 5) / 60.0},
        {"the corner", {0, 300}, 225},
        {"the corner across", {400, 0}, 225},
        {"a third", {250, 75}, 75},
        {"a line on it", {350, 30}, 100},
        {"a line in its shade", {250, 30}, 100 / 3.0},
    };
    for (const Case& test : cases) {
        EXPECT_NEAR(BrightnessAt(map, test.place), test.reading, 0.01) << test.what;
    }
}

TEST(WorldSensors, BumpersFeelTheSideThatIsHit) {
    World world = EmptyWorld();
    Sensor left;
    left.kind = SensorKind::Bumper;
    left.heading = Radians(45);
    left.cone = Radians(90);
    Sensor right = left;
    right.heading = Radians(-45);
    struct Case {
        const char* what;
        Segment wall;
        bool left, right;
    };
    const Case cases[] = {
        {"nothing near", {{220, 100}, {220, 200}}, false, false},
        {"to the left ahead", {{203.55, 162}, {212.55, 153}}, true, false},
        {"to the right ahead", {{203.55, 138}, {212.55, 147}}, false, true},
        {"straight ahead", {{211.05, 100}, {211.05, 200}}, true, true},
        {"behind", {{188.95, 100}, {188.95, 200}}, false, false},
    };
    for (const Case& test : cases) {
        world.walls = {test.wall};
        const WorldMap map = MakeMap(world);
        EXPECT_EQ(IsPressed(map, MakePlan(left), StanceOf(world.start)), test.left) << test.what;
        EXPECT_EQ(IsPressed(map, MakePlan(right), StanceOf(world.start)), test.right) << test.what;
    }
}

TEST(WorldInputs, WheelsCountBothWaysAndAHandTakesOver) {
    World world = EmptyWorld();
    Sensor wheel;
    wheel.kind = SensorKind::Wheel;
    wheel.input = {InputKind::Pulses, 1};
    wheel.rightWheel = true;
    Sensor eye;
    eye.kind = SensorKind::Floor;
    eye.input = {InputKind::Analog, 3};
    world.sensors = {wheel, eye};
    const WorldMap map = MakeMap(world);
    WorldState state = StartState(map);
    Inputs inputs;
    const auto drive = [&](int left, int right, int ticks) {
        for (int tick = 0; tick < ticks; ++tick) {
            PassTick(map, state, Motors(left, right));
            FeedInputs(map, state, inputs);
        }
    };
    // A wheel of 6 cm turns once in 18.85 cm: 20 pulses; two seconds at 50 percent are 50 cm.
    drive(0, 50, 200);
    EXPECT_EQ(inputs.pulses[1], 53);
    drive(0, -50, 200);
    EXPECT_EQ(inputs.pulses[1], 106) << "both ways count";
    EXPECT_EQ(inputs.analog[3], 225);

    EXPECT_TRUE(IsFed(map, eye.input));
    EXPECT_FALSE(IsFed(map, {InputKind::Analog, 0}));
    TakeOver(state, eye.input);
    TakeOver(state, wheel.input);
    inputs.analog[3] = 9;
    drive(50, 50, 200);
    EXPECT_EQ(inputs.analog[3], 9) << "in a hand";
    EXPECT_EQ(inputs.pulses[1], 106);
    PutAtStart(map, state);
    EXPECT_TRUE(IsTakenOver(state, eye.input)) << "the start lets nothing go";
    LetGo(state, eye.input);
    LetGo(state, wheel.input);
    drive(0, 50, 200);
    EXPECT_EQ(inputs.analog[3], 225);
    EXPECT_EQ(inputs.pulses[1], 159) << "it goes on where the hand left it";
}

TEST(WorldInputs, NoiseIsOffUnlessAskedForAndRepeatsItself) {
    World world = EmptyWorld();
    Sensor eye;
    eye.kind = SensorKind::Floor;
    eye.input = {InputKind::Analog, 0};
    eye.noise = 10;
    world.floor.brightness = 100;
    world.sensors = {eye};
    const WorldMap map = MakeMap(world);
    const auto readings = [&](std::uint32_t seed) {
        WorldState state = StartState(map, seed);
        std::vector<int> all;
        for (int tick = 0; tick < 200; ++tick) {
            Inputs inputs;
            FeedInputs(map, state, inputs);
            all.push_back(inputs.analog[0]);
        }
        return all;
    };
    EXPECT_EQ(readings(0), std::vector<int>(200, 100));
    const std::vector<int> noisy = readings(1);
    EXPECT_EQ(noisy, readings(1));
    EXPECT_NE(noisy, readings(2));
    const auto [least, most] = std::ranges::minmax(noisy);
    EXPECT_GE(least, 90);
    EXPECT_LE(most, 110);
    EXPECT_GT(most - least, 15);
}

TEST(WorldGoals, AreMetOrMissedInTheirTime) {
    struct Case {
        const char* what;
        Goal goal;
        int speed;
        int driving;  // ticks, and then 200 more at rest
        GoalStatus status;
        std::uint64_t tick;
    };
    constexpr auto kMet = GoalStatus::Met;
    constexpr auto kMissed = GoalStatus::Missed;
    constexpr auto kOpen = GoalStatus::Open;
    const Goal reach{GoalKind::Reach, "home", 5, 0, 0};
    const Goal stop{GoalKind::Reach, "home", 5, 1, 0};
    const Goal follow{GoalKind::Follow, "track", 5, 0, 6};
    const Goal clear{GoalKind::Clear, "", 3, 0, 0};
    const Goal longClear{GoalKind::Clear, "", 10, 0, 0};
    // The area lies 40 to 60 cm ahead, the line goes on for 100 cm, the wall stands 189 cm ahead.
    const Case cases[] = {
        {"reached after 40 cm", reach, 100, 200, kMet, 80},
        {"not reached", reach, 20, 200, kOpen, 0},
        {"out of time", reach, 1, 500, kMissed, 500},
        {"passed without a stop", stop, 100, 200, kOpen, 0},
        {"stood a second", stop, 50, 200, kMet, 300},
        {"followed to its end", follow, 100, 220, kMet, 0},
        {"half the line", follow, 50, 200, kOpen, 0},
        {"touched nothing", clear, 10, 200, kMet, 300},
        {"touched the wall", longClear, 100, 500, kMissed, 378},
    };
    for (const Case& test : cases) {
        World world = EmptyWorld();
        world.lines = {{"track", {{200, 153}, {300, 153}}, {}, 8, 200}};
        world.areas = {{"home", {240, 140}, {20, 20}, 0, 0}};
        world.goals = {test.goal};
        const WorldMap map = MakeMap(world);
        WorldState state = StartState(map);
        for (int tick = 0; tick < test.driving + 200; ++tick) {
            const int speed = tick < test.driving ? test.speed : 0;
            PassTick(map, state, Motors(speed, speed));
            if (state.tick == 400 && test.status == kOpen) break;
        }
        EXPECT_EQ(state.goals[0].status, test.status) << test.what;
        if (test.tick != 0) {
            EXPECT_LE(state.goals[0].tick, test.tick + 1) << test.what;
            EXPECT_GE(state.goals[0].tick + 1, test.tick) << test.what;
        }
        EndGoals(map, state);
        EXPECT_TRUE(AllDecided(state)) << test.what;
        EXPECT_EQ(AllMet(state), test.status == kMet) << test.what;
    }
}

// What scripts/same-world compares over compilers and levels of optimisation.
TEST(WorldDeterminism, ALongDriveIsTheSameToTheLastBit) {
    EXPECT_EQ(DigestOfLongDrive(kLongDrive), kExpectedDigest);
}

TEST(WorldDeterminism, ACopyIsASnapshot) {
    const WorldMap map = MakeMap(FullWorld());
    WorldState state = StartState(map, 3);
    Inputs inputs;
    const auto drive = [&map](WorldState& at, Inputs& fed) {
        for (int tick = 0; tick < 500; ++tick) {
            PassTick(map, at, Motors(tick % 100, 70));
            FeedInputs(map, at, fed);
        }
    };
    drive(state, inputs);
    WorldState copy = state;
    Inputs copyInputs = inputs;
    drive(state, inputs);
    EXPECT_FALSE(copy == state);
    drive(copy, copyInputs);
    EXPECT_TRUE(copy == state);
    EXPECT_EQ(copyInputs, inputs);
}

}  // namespace
}  // namespace zentro::world
