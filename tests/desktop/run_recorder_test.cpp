// A run on the virtual board's host, recorded afterwards: replayed it must do the same to the last
// bit, whatever hands, steps and steps back there were.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

#include "board/commands.h"
#include "desktop/virtual_board_host.h"
#include "recording/recording_file.h"
#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

using Refusal = RunRecorder::Refusal;

/// What a replay may leave as it likes: what was said on the serial line, inputs that a hand holds
/// although nothing feeds them, and what stood on the return stack once.
Scene Comparable(const Scene& scene) {
    Scene comparable = scene;
    comparable.board.output.clear();
    comparable.board.changes.clear();
    comparable.board.serial = {};
    comparable.board.serial.received = scene.board.serial.received;
    comparable.state.takenOver = {};
    Processor& processor = comparable.board.processor;
    std::fill(processor.returnStack.begin() + processor.returnDepth, processor.returnStack.end(),
              std::uint16_t{});
    for (std::size_t index = 0; index < comparable.board.inputs.pulses.size(); ++index) {
        const auto start = comparable.board.devices.pulsesAtStart[index];
        for (std::uint16_t* count : {&comparable.board.inputs.pulses[index],
                                     &comparable.board.devices.pulsesAtSecond[index]})
            *count = static_cast<std::uint16_t>(*count - start);
        comparable.board.devices.pulsesAtStart[index] = 0;
    }
    return comparable;
}

class RunRecorderTest : public ::testing::TestWithParam<const char*> {
  protected:
    void Begin() {
        ASSERT_EQ(host.LoadProgram(CompiledExample(GetParam())), "");
        host.Run();
    }
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    void Type(std::string_view text) { host.Link().Write(text); }

    void TurnSomeInput() {
        Inputs inputs = host.State().inputs;
        inputs.buttons[Below(6)] = Below(2) == 1;
        inputs.analog[Below(6)] = static_cast<std::uint8_t>(Below(256));
        inputs.joysticks[Below(2)] = {static_cast<std::uint8_t>(Below(256)), 30};
        inputs.digital[Below(4)] = Below(2) == 1;
        inputs.timed[Below(4)] = static_cast<std::uint16_t>(Below(60'000));
        std::uint16_t& pulses = inputs.pulses[Below(4)];
        pulses = static_cast<std::uint16_t>(pulses + Below(9));
        inputs.battery = static_cast<std::uint8_t>(100 + Below(100));
        host.SetInputs(inputs);
    }

    void LetSomethingHappen() {
        switch (Below(14)) {
            case 0: return TurnSomeInput();
            case 1: return host.PressButton(Below(6));
            case 2: return host.LetButtonGo(Below(6));
            case 3: return host.HoldInput({world::InputKind::Analog, Below(3)}, Below(2) == 1);
            case 4:
                return host.PlaceRobot({{Below(2400) / 10.0, Below(1500) / 7.0}, Below(700) / 9.0});
            case 5: return host.PutRobotAtStart();
            case 6:
                for (unsigned steps = Below(30); steps > 0; --steps)
                    host.Step();
                return host.Resume();
            case 7:
                for (unsigned steps = Below(40); steps > 0; --steps)
                    host.StepBack();
                return host.Resume();
            case 8: return host.SetSpeed({BoardSpeed::Kind::SlowMotion, 10.0 + Below(5000)});
            case 9: return host.SetSpeed({});
            case 10: return Type(Below(2) == 0 ? "m1b040\r" : "k");
            case 11: return host.LetAllInputsGo();
            default: return host.Advance(Below(400));
        }
    }

    void ExpectAnExactReplay() {
        const RunRecorder::Made made = host.Record();
        ASSERT_EQ(made.refusal, Refusal::None);
        const LoadedRecording loaded = LoadRecording(SaveRecording(made.recording));
        ASSERT_EQ(loaded.error, "");
        auto scene = std::make_unique<Scene>();
        Prepare(loaded.recording, loaded.map, *scene);
        const Outcome outcome = Replay(loaded.recording, *scene, kMostRecordedTicks);
        EXPECT_EQ(Difference(*loaded.recording.outcome, outcome), "");
        ExpectSame(*scene);
    }

    /// By a host, whose user goes back and forth in it.
    void ExpectAnExactReplayWithSteps() {
        const RunRecorder::Made made = host.Record();
        ASSERT_EQ(made.refusal, Refusal::None);
        VirtualBoardHost player;
        std::optional<QString> ending;
        QObject::connect(&player, &VirtualBoardHost::ReplayEnded, &player,
                         [&ending](const QString& difference) { ending = difference; });
        player.EnterWorld(host.World().map);
        player.Link().Open(kVirtualBoardPort);
        player.Replay(made.recording);
        for (int count = 0; count < 60; ++count) {
            GoOnIn(player);
        }
        player.SetSpeed({});
        while (player.IsReplaying() && !player.IsReplayOver()) {
            player.Resume();
            player.Advance(1000);
        }
        EXPECT_EQ(ending, QString());
        ExpectSame(player.World());
    }

    void GoOnIn(VirtualBoardHost& player) {
        if (player.IsReplayOver()) {
            player.StepBack();
            return;
        }
        switch (Below(7)) {
            case 0:
                for (unsigned steps = Below(30); steps > 0 && !player.IsReplayOver(); --steps)
                    player.Step();
                break;
            case 1:
                for (unsigned steps = Below(60); steps > 0; --steps)
                    player.StepBack();
                break;
            case 2: player.SetSpeed({BoardSpeed::Kind::SlowMotion, 10.0 + Below(5000)}); break;
            case 3: player.SetSpeed({}); break;
            case 4: player.SetBreakpoints({{static_cast<std::uint16_t>(Below(60)), {}}}); break;
            case 5: player.SetBreakpoints({}); break;
            default: player.Resume(); player.Advance(Below(900));
        }
        if (Below(3) == 0) player.Link().Read(50);
    }

    void ExpectSame(const Scene& scene) {
        const auto expected = std::make_unique<Scene>(Comparable(host.World()));
        const auto replayed = std::make_unique<Scene>(Comparable(scene));
        EXPECT_TRUE(replayed->board.memory == expected->board.memory);
        EXPECT_TRUE(replayed->board.processor == expected->board.processor);
        EXPECT_TRUE(replayed->board.events == expected->board.events);
        EXPECT_TRUE(replayed->board.inputs == expected->board.inputs);
        EXPECT_TRUE(replayed->board.devices == expected->board.devices);
        EXPECT_TRUE(replayed->board.outputs == expected->board.outputs);
        EXPECT_TRUE(replayed->board.eeprom == expected->board.eeprom);
        EXPECT_EQ(replayed->board.clock, expected->board.clock);
        EXPECT_TRUE(replayed->state == expected->state);
    }

    VirtualBoardHost host;
    std::mt19937 random{3};
};

TEST_P(RunRecorderTest, WhateverHappenedIsReplayedToTheLastBit) {
    Begin();
    for (int round = 0; round < 12; ++round) {
        for (int count = 0; count < 40; ++count) {
            LetSomethingHappen();
        }
        ExpectAnExactReplay();
        ExpectAnExactReplayWithSteps();
        if (HasFailure()) FAIL() << "in round " << round;
    }
}

/// The second run finds what the first one, hands and the keyboard have left.
TEST_P(RunRecorderTest, ARunThatBeginsOnAUsedBoardIsReplayedToo) {
    Begin();
    host.PressButton(0);
    host.Advance(950);
    host.LetButtonGo(0);
    TurnSomeInput();
    host.Advance(777);
    host.Reset();
    host.Advance(30);
    Type("m1");
    host.Run();
    ASSERT_GT(host.State().clock, 100U);
    host.Advance(500);
    Type("f050\r");
    host.Advance(300);
    host.Stop();
    host.Advance(90);
    ExpectAnExactReplay();
    ExpectAnExactReplayWithSteps();
}

/// What the last hand does to the outputs is in the recording too.
TEST_P(RunRecorderTest, ARunIsReplayedUpToItsReset) {
    Begin();
    Type("m1f050\r");
    host.Advance(500);
    host.Reset();
    ExpectAnExactReplay();
    ExpectAnExactReplayWithSteps();
}

INSTANTIATE_TEST_SUITE_P(Examples, RunRecorderTest,
                         ::testing::Values("line_follower", "joystick_drive", "reaction_game",
                                           "vending_machine", "explorer", "tune"),
                         [](const auto& info) { return std::string(info.param); });

class LongRunTest : public ::testing::Test {
  protected:
    VirtualBoardHost host;
};

/// So many happenings that the history has forgotten the first ones.
TEST_F(LongRunTest, WhatTheHistoryHasForgottenIsRecorded) {
    ASSERT_EQ(host.LoadProgram(Compiled("DEFINE BYTE Light\nBEGIN PROGRAM\nLOOP\nLight = "
                                        "ANALOG(4)\nDISPLAY Light\nWAIT 1\nEND LOOP\n"
                                        "END PROGRAM\n")),
              "");
    host.Run();
    for (int count = 0; count < 40'000; ++count) {
        Inputs inputs = host.State().inputs;
        inputs.analog[3] = static_cast<std::uint8_t>(count * 7 / 3);
        host.SetInputs(inputs);
        host.Advance(10);
    }
    while (host.StepBack() && host.State().clock > 39'990) {
    }
    const RunRecorder::Made made = host.Record();
    ASSERT_EQ(made.refusal, Refusal::None);
    auto scene = std::make_unique<Scene>();
    Prepare(made.recording, host.World().map, *scene);
    const Outcome outcome = Replay(made.recording, *scene, kMostRecordedTicks);
    EXPECT_EQ(Difference(*made.recording.outcome, outcome), "");
    EXPECT_EQ(scene->board.clock, host.State().clock);
    EXPECT_GT(outcome.outputs.lines.size(), 35'000U);
    for (int count = 0; count < 70'000; ++count) {
        Inputs inputs = host.State().inputs;
        inputs.analog[3] = static_cast<std::uint8_t>(count);
        host.SetInputs(inputs);
    }
    EXPECT_EQ(host.Record().refusal, Refusal::TooLong);
}

TEST_F(LongRunTest, WhatCannotBeReplayedIsRefused) {
    const std::string talks = ObjectOf({13, 0, 6, 53, 0, 0, 65});  // TRANSMIT [6]; JUMP 0
    EXPECT_EQ(host.Record().refusal, Refusal::NoRun);
    ASSERT_EQ(host.LoadProgram(talks), "");
    EXPECT_EQ(host.Record().refusal, Refusal::NoRun);
    host.Run();
    host.Advance(100);
    EXPECT_EQ(host.Record().refusal, Refusal::None) << "nobody listens";
    host.Link().Open(kVirtualBoardPort);
    host.Advance(100);
    EXPECT_EQ(host.Record().refusal, Refusal::CharactersWait);
    host.Link().Read(10'000);
    host.ChangeWorld(host.World().map);
    EXPECT_EQ(host.Record().refusal, Refusal::WorldChanged);
    host.Stop();
    host.Link().Write("M1F050\r");
    host.Run();
    EXPECT_EQ(host.Record().refusal, Refusal::OutputsOn);
    host.Link().Write("X\rZ\rD\r");
    EXPECT_EQ(host.Record().refusal, Refusal::DebugMode);
    host.Link().Write("X\rG\r");
    EXPECT_EQ(host.Record().refusal, Refusal::None);
    ASSERT_EQ(host.LoadProgram(talks), "");
    EXPECT_EQ(host.Record().refusal, Refusal::NoRun);
}

}  // namespace
}  // namespace zentro
