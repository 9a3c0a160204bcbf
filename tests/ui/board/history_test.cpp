// Going back in time: the world has to be what it was, whatever happened in between.
#include "desktop/history.h"

#include <gtest/gtest.h>
#include <random>

#include "board/commands.h"
#include "board/loader.h"
#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

constexpr world::InputId kEye{world::InputKind::Analog, 0};

class HistoryTest : public ::testing::TestWithParam<const char*> {
  protected:
    HistoryTest() {
        EXPECT_EQ(LoadObjectText(world->board, CompiledExample(GetParam())), "");
        StartProgram(world->board);
        history.Forget();
    }

    unsigned Below(unsigned limit) { return static_cast<unsigned>(random() % limit); }

    void Type(std::string_view characters) {
        history.Receive(characters, [this](char character) {
            ReceiveCharacters(world->board, {&character, 1});
            return true;
        });
    }

    void TurnSomeInput() {
        Inputs inputs = world->board.inputs;
        inputs.buttons[Below(6)] = Below(2) == 1;
        inputs.analog[Below(6)] = static_cast<std::uint8_t>(Below(256));
        inputs.joysticks[0].y = static_cast<std::uint8_t>(Below(256));
        inputs.digital[Below(4)] = Below(2) == 1;
        inputs.pulses[Below(4)] = static_cast<std::uint16_t>(Below(100));
        history.ChangeInputs(inputs);
    }

    /// Often to where a wall is.
    void CarryRobot() {
        if (Below(3) == 0) return history.PutRobotAtStart();
        history.PlaceRobot({{static_cast<double>(Below(260)), static_cast<double>(Below(170))},
                            static_cast<double>(Below(7))});
    }

    void LetSomethingHappen() {
        switch (Below(8)) {
            case 0: TurnSomeInput(); break;
            case 1: {
                const unsigned ticks = 1 + Below(30);
                history.PassTicks(ticks, 0, Below(2) == 1);
                break;
            }
            case 2: Type("m2b0"); break;
            case 3: Type("45\rR\r"); break;
            case 4: history.HoldInput(kEye, Below(2) == 1); break;
            case 5: CarryRobot(); break;
            case 6:
                if (world->board.output.empty()) break;
                world->board.output.erase(0, 1);
                history.NoteOutputTaken(1);
                break;
            default: break;
        }
    }

    /// Carries out instructions singly and keeps what was before each.
    void StepForward(std::size_t count) {
        while (before.size() < count) {
            LetSomethingHappen();
            auto now = std::make_unique<Scene>(*world);
            if (history.Run(1) == 1) {
                before.push_back(std::move(now));
            } else {
                history.PassTicks(1, 0, true);
            }
        }
    }

    void StepBackward() {
        for (; !before.empty(); before.pop_back()) {
            ASSERT_TRUE(history.StepBack()) << before.size();
            ASSERT_TRUE(*world == *before.back())
                << before.size() << " at step " << before.back()->board.processor.steps;
        }
    }

    std::unique_ptr<Scene> world = MakeScene();
    History history{*world};
    std::mt19937 random{20};
    std::vector<std::unique_ptr<Scene>> before;  ///< each instruction
};

TEST_P(HistoryTest, FiveHundredInstructionsForwardAndBack) {
    StepForward(500);
    StepBackward();
    EXPECT_FALSE(history.StepBack()) << "the program began there";
}

TEST_P(HistoryTest, StepsBackIntoWhatRanAtFullSpeed) {
    for (int second = 0; second < 6; ++second) {
        TurnSomeInput();
        history.PassTicks(100, 10'000, second % 2 == 0);
    }
    const std::uint64_t steps = world->board.processor.steps;
    StepForward(50);
    StepBackward();
    // The same way again, so that the past is repeated from other copies.
    StepForward(50);
    StepBackward();
    ASSERT_EQ(world->board.processor.steps, steps);
    for (std::uint64_t back = 1; back <= 500; ++back) {
        ASSERT_TRUE(history.StepBack());
        ASSERT_EQ(world->board.processor.steps, steps - back);
    }
}

INSTANTIATE_TEST_SUITE_P(Examples, HistoryTest,
                         ::testing::Values("line_follower", "joystick_drive", "reaction_game",
                                           "vending_machine"),
                         [](const auto& info) { return std::string(info.param); });

/// In debug mode the instructions come over the serial line.
TEST(HistoryInDebugModeTest, TakesBackWhatACharacterCarriedOut) {
    auto world = MakeScene();
    History history(*world);
    const auto type = [&](std::string_view characters) {
        history.Receive(characters, [&](char character) {
            ReceiveCharacters(world->board, {&character, 1});
            return true;
        });
    };
    type("L56,0,7,56,0,7,5,0]");  // INCREMENT BYTE [0007], the same, END
    type("\rD\r");
    ASSERT_TRUE(history.StepBack() == false);
    type("\r\r");
    EXPECT_EQ(world->board.memory.Byte(7), 2);
    ASSERT_TRUE(history.StepBack());
    EXPECT_EQ(world->board.memory.Byte(7), 1);
    EXPECT_EQ(world->board.processor.address, 3U);
    type("\r\r");
    EXPECT_EQ(world->board.processor.end, EndReason::End);
    ASSERT_TRUE(history.StepBack() && history.StepBack() && history.StepBack());
    EXPECT_EQ(world->board.memory.Byte(7), 0);
    EXPECT_FALSE(history.StepBack());
}

}  // namespace
}  // namespace zentro
