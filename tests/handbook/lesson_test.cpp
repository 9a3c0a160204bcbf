// The robot of the virtual board does what the first lesson says.

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "board/loader.h"
#include "recording/scene.h"
#include "tests/support/compile_fixture.h"
#include "tools/handbook/manuscript.h"
#include "world/first_world.h"

namespace zentro {
namespace {

constexpr double kNear = 2;  // centimetres

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
        EnterWorld(scene,
                   std::make_shared<const world::WorldMap>(world::MakeMap(world::FirstWorld())), 0);
        start = scene.state.robot;
        constexpr int kMost = 6000;
        constexpr std::uint64_t kInstructions = 200;  // in a tick
        test::Program program(text);
        EXPECT_TRUE(program.Compile()) << text;
        EXPECT_EQ(LoadObjectText(scene.board, program.object.text), "");
        StartProgram(scene.board);
        while (scene.board.processor.running && ticks < kMost) {
            RunInstructions(scene.board, kInstructions);
            PassTick(scene);
            farthest = std::max(farthest, scene.state.robot.place.x - start.place.x);
            widest = std::max(widest, std::abs(scene.state.robot.place.y - start.place.y));
            ++ticks;
        }
        EXPECT_FALSE(scene.board.processor.running) << text;
        EXPECT_EQ(scene.board.processor.fault, Fault::None);
        EXPECT_EQ(scene.board.outputs.motors[0].value, 0) << "the robot stands in the end";
        EXPECT_EQ(scene.board.outputs.motors[1].value, 0);
    }

    double Right() const { return scene.state.robot.place.x - start.place.x; }
    double Up() const { return scene.state.robot.place.y - start.place.y; }

    Scene scene;
    world::Pose start;
    double farthest = 0;  ///< to the right of its start
    double widest = 0;    ///< to either side of the line of its start
    int ticks = 0;
};

TEST(FirstLesson, TwoWheelsTurn) {
    const std::string program = ProgramOfSection("Two wheels turn");
    const Journey drive(program);
    EXPECT_NEAR(drive.ticks, 300, 2);
    EXPECT_GT(drive.Right(), 50);
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
    EXPECT_EQ(square.scene.board.outputs.display.value, 4);
    EXPECT_NEAR(square.farthest, 45, kNear);
    EXPECT_NEAR(square.widest, 45, kNear) << "as wide as long";
    EXPECT_NEAR(square.Right(), 0, kNear) << "back where it began";
    EXPECT_NEAR(square.Up(), 0, kNear);
    EXPECT_NEAR(square.scene.state.robot.heading, 0, 0.1);

    const Journey toAndFro(Replaced(program, "WAIT 42", "WAIT 84"));
    EXPECT_NEAR(toAndFro.farthest, 45, kNear);
    EXPECT_LT(toAndFro.widest, 5);
    EXPECT_NEAR(toAndFro.Right(), 0, kNear);
}

TEST(FirstLesson, TheRobotLooks) {
    const std::string program = ProgramOfSection("The robot looks");
    const Journey left(program);
    const Journey right(Replaced(program, "ANALOG(1)", "ANALOG(2)"));
    for (const Journey* journey : {&left, &right}) {
        EXPECT_GT(journey->Right(), 50) << "along the straight piece of the line";
        EXPECT_EQ(journey->scene.board.outputs.display.form, Display::Form::Number);
        EXPECT_GT(journey->scene.board.outputs.display.value, 150);
    }
    EXPECT_GT(left.scene.board.inputs.analog[0], 150);
    EXPECT_LT(right.scene.board.inputs.analog[0], 150);
    EXPECT_LT(right.Right(), left.Right()) << "the right eye loses the line first";
    EXPECT_FALSE(left.scene.board.inputs.digital[0]) << "it stops before the wall";
}

}  // namespace
}  // namespace zentro
