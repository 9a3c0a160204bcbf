// The robot of the virtual board does what the first lesson says.

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "board/loader.h"
#include "desktop/board_world.h"
#include "tests/support/compile_fixture.h"
#include "tools/handbook/manuscript.h"
#include "world/load_world.h"
#include "world/world_state.h"

namespace zentro {
namespace {

constexpr double kNear = 0.02;  // metres

/// The program that the lesson prints below a title.
std::string ProgramOfSection(std::string_view title) {
    std::string section;
    for (const Block& block : ReadManuscriptFolder(ZENTRO_HANDBOOK_FOLDER).blocks) {
        if (block.kind == Block::Kind::Section) section = block.name;
        if (block.kind == Block::Kind::Program && section == title) return ProgramText(block);
    }
    ADD_FAILURE() << "no program below " << title;
    return {};
}

/// As a reader changes a program.
std::string Replaced(std::string text, std::string_view old, std::string_view changed) {
    EXPECT_NE(text.find(old), std::string::npos) << old;
    for (std::size_t at = text.find(old); at != std::string::npos;
         at = text.find(old, at + changed.size()))
        text.replace(at, old.size(), changed);
    return text;
}

/// A program drives the robot from its start until the program ends, at most for a minute.
struct Journey {
    explicit Journey(const std::string& text) {
        constexpr int kMost = 6000;
        constexpr std::uint64_t kInstructions = 200;  // in a tick
        test::Program program(text);
        EXPECT_TRUE(program.Compile()) << text;
        EXPECT_EQ(LoadObjectText(world.board, program.object.text), "");
        StartProgram(world.board);
        while (world.board.processor.running && ticks < kMost) {
            RunInstructions(world.board, kInstructions);
            PassTick(world);
            farthest = std::max(farthest, world.robot.place.x - start.place.x);
            widest = std::max(widest, std::abs(world.robot.place.y - start.place.y));
            ++ticks;
        }
        EXPECT_FALSE(world.board.processor.running) << text;
        EXPECT_EQ(world.board.processor.fault, Fault::None);
        EXPECT_EQ(world.board.outputs.motors[0].value, 0) << "the robot stands in the end";
        EXPECT_EQ(world.board.outputs.motors[1].value, 0);
    }

    double Right() const { return world.robot.place.x - start.place.x; }
    double Up() const { return world.robot.place.y - start.place.y; }

    const RobotModel start;
    BoardWorld world = *MakeBoardWorld();
    double farthest = 0;  ///< to the right of its start
    double widest = 0;    ///< to either side of the line of its start
    int ticks = 0;
};

/// The shipped world of that name.
world::WorldMap ShippedWorld(const std::string& name) {
    world::LoadedWorld loaded =
        world::LoadWorld(test::ReadFile(ZENTRO_WORLDS_FOLDER "/" + name + ".world"));
    EXPECT_EQ(loaded.error, "");
    return world::MakeMap(std::move(loaded.world));
}

// The window's floor and the first world are one: what is learnt on one holds on the other.
TEST(FirstLesson, TheFirstWorldIsTheWindowsFloor) {
    const world::WorldMap oval = ShippedWorld("oval");
    world::WorldState state = StartState(oval);
    const auto window = MakeBoardWorld();
    constexpr double kCentimetres = 100;
    std::uint32_t chance = 1;
    for (int tick = 0; tick < 3000; ++tick) {
        if (tick % 50 == 0) {
            for (Drive& motor : window->board.outputs.motors) {
                chance = chance * 1'664'525U + 1'013'904'223U;
                motor = {(chance >> 20) % 5 == 0 ? kBackward : kForward,
                         static_cast<std::uint8_t>((chance >> 24) % 101)};
            }
        }
        PassTick(*window);
        PassTick(oval, state, window->board.outputs);
        Inputs inputs;
        FeedInputs(oval, state, inputs);
        ASSERT_NEAR(state.robot.place.x, (window->robot.place.x + kFloorWidth / 2) * kCentimetres,
                    1e-6);
        ASSERT_NEAR(state.robot.place.y, (window->robot.place.y + kFloorHeight / 2) * kCentimetres,
                    1e-6);
        for (std::size_t eye = 0; eye < 2; ++eye) {
            ASSERT_NEAR(inputs.analog[eye], window->board.inputs.analog[eye], 1) << tick;
        }
    }
    EXPECT_NE(state.robot, oval.world.start);
}

TEST(FirstLesson, TwoWheelsTurn) {
    const std::string program = ProgramOfSection("Two wheels turn");
    const Journey drive(program);
    EXPECT_NEAR(drive.ticks, 300, 2);
    EXPECT_GT(drive.Right(), 0.5);
    EXPECT_NEAR(drive.widest, 0, kNear);

    const Journey slow(Replaced(program, "60", "30"));
    EXPECT_NEAR(slow.ticks, 300, 2);
    EXPECT_NEAR(slow.Right(), drive.Right() / 2, kNear) << "half as far";

    const Journey curve(Replaced(program, "MOTOR 1, FORWARD, 60", "MOTOR 1, FORWARD, 55"));
    EXPECT_GT(curve.Up(), kNear) << "towards the slower wheel, the left one";
    const Journey other(Replaced(program, "MOTOR 2, FORWARD, 60", "MOTOR 2, FORWARD, 55"));
    EXPECT_LT(other.Up(), -kNear);
}

TEST(FirstLesson, RoundACorner) {
    const std::string program = ProgramOfSection("Round a corner");
    const Journey square(program);
    EXPECT_EQ(square.world.board.outputs.display.value, 4);
    EXPECT_NEAR(square.farthest, 0.45, kNear);
    EXPECT_NEAR(square.widest, 0.45, kNear) << "as wide as long";
    EXPECT_NEAR(square.Right(), 0, kNear) << "back where it began";
    EXPECT_NEAR(square.Up(), 0, kNear);
    EXPECT_NEAR(square.world.robot.heading, 0, 0.1);

    const Journey toAndFro(Replaced(program, "WAIT 42", "WAIT 84"));
    EXPECT_NEAR(toAndFro.farthest, 0.45, kNear);
    EXPECT_LT(toAndFro.widest, 0.05);
    EXPECT_NEAR(toAndFro.Right(), 0, kNear);
}

TEST(FirstLesson, TheRobotLooks) {
    const std::string program = ProgramOfSection("The robot looks");
    const Journey left(program);
    const Journey right(Replaced(program, "ANALOG(1)", "ANALOG(2)"));
    for (const Journey* journey : {&left, &right}) {
        EXPECT_GT(journey->Right(), 0.5) << "along the straight piece of the line";
        EXPECT_EQ(journey->world.board.outputs.display.form, Display::Form::Number);
        EXPECT_GT(journey->world.board.outputs.display.value, 150);
    }
    EXPECT_GT(left.world.board.inputs.analog[0], 150);
    EXPECT_LT(right.world.board.inputs.analog[0], 150);
    EXPECT_LT(right.Right(), left.Right()) << "the right eye loses the line first";
    constexpr double kRoom = kFloorWidth / 2 - kRobotRadius;
    EXPECT_LT(left.world.robot.place.x, kRoom - kNear) << "it stops before the wall";
}

}  // namespace
}  // namespace zentro
