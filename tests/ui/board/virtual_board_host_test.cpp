// The board's time, its holding and stepping and its line, in virtual time where that is possible.
#include "desktop/virtual_board_host.h"

#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>

#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

using ::testing::AllOf;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::Le;

/// Counts up for ever in two instructions: INCREMENT WORD [0020], JUMP [0000].
const std::string kCounting = ObjectOf({64, 0, 0x20, 53, 0, 0}, 64);
/// WAIT FOR TIME [0020], which is 50 ticks, then INCREMENT BYTE [0022], and again.
const std::string kWaiting = [] {
    std::vector<int> bytes{70, 0, 0x20, 56, 0, 0x22, 53, 0, 0};
    bytes.resize(0x20);
    bytes.insert(bytes.end(), {0, 50, 0});
    return ObjectOf(bytes);
}();

struct HostTest : ::testing::Test {
    void Load(const std::string& objectText) { ASSERT_EQ(host.LoadProgram(objectText), ""); }
    std::uint64_t Steps() const { return host.State().processor.steps; }
    world::Pose Start() const { return host.World().map->world.start; }

    void Turn(const std::function<void(Inputs&)>& change) {
        Inputs inputs = host.State().inputs;
        change(inputs);
        host.SetInputs(inputs);
    }

    std::string Say(std::string_view characters) {
        EXPECT_EQ(host.Link().Write(characters), characters.size());
        return host.Link().Read(100'000).value_or("the line is gone");
    }

    VirtualBoardHost host;
    const BoardSpeed slow{BoardSpeed::Kind::SlowMotion, 3};
    const BoardSpeed fast{BoardSpeed::Kind::FullSpeed, 1};
};

TEST_F(HostTest, RealTimeIsTenThousandInstructionsATick) {
    Load(kCounting);
    host.Run();
    host.Advance(45);
    host.Advance(5);
    EXPECT_EQ(Steps(), 50'000U);
    EXPECT_EQ(host.State().clock, 5U);
    host.Advance(60'000);
    EXPECT_EQ(host.State().clock, 105U) << "of a long pause more than a second was caught up";
    host.Pause();
    host.Advance(1000);
    EXPECT_EQ(host.State().clock, 105U);
    host.Run();
    host.Advance(10);
    EXPECT_EQ(Steps(), 1'060'000U) << "it began again instead of going on";
}

TEST_F(HostTest, SlowMotionCountsInstructionsAndWaitsAsLongAsEver) {
    host.SetSpeed(slow);
    Load(kCounting);
    host.Run();
    for (int second = 0; second < 4; ++second)
        host.Advance(1000);
    EXPECT_THAT(Steps(), AllOf(Ge(11U), Le(12U)));
    EXPECT_EQ(host.LastStep(), "[0003] JUMP [0000] : to [0000]");
    EXPECT_EQ(host.State().clock, 0U);

    Load(kWaiting);
    host.Run();
    host.Advance(340);
    EXPECT_EQ(Steps(), 1U);
    host.Advance(490);
    EXPECT_EQ(host.State().memory.Byte(0x22), 0) << "the wait was cut short";
    host.Advance(360);
    EXPECT_EQ(host.State().memory.Byte(0x22), 1);
}

TEST_F(HostTest, FullSpeedLeavesTheEventLoopAlive) {
    host.SetSpeed(fast);
    Load(kCounting);
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] { ++turns; });
    other.start(20);
    QSignalSpy changes(&host, &VirtualBoardHost::Changed);
    host.Run();
    QTest::qWait(500);
    EXPECT_GT(turns, 8);
    EXPECT_GT(Steps(), 500'000U) << "no faster than real time";
    EXPECT_THAT(changes.count(), AllOf(Ge(5), Le(31)));
}

TEST_F(HostTest, AnIdleBoardSleepsAndARunningOneWakesByItself) {
    Load(CompiledExample("blink"));
    QTest::qWait(30);
    EXPECT_EQ(host.State().clock, 0U);
    host.Run();
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.State().outputs.leds[0]; }));
    host.Reset();
    EXPECT_EQ(host.State().outputs, Outputs{});
    EXPECT_FALSE(host.State().processor.running);
}

TEST_F(HostTest, StepsForwardAndBackThroughAnExample) {
    Load(CompiledExample("line_follower"));
    host.Step();
    ASSERT_TRUE(host.State().processor.running);
    ASSERT_EQ(Steps(), 0U);
    std::vector<std::unique_ptr<Scene>> before;
    for (unsigned step = 0; step < 300; ++step) {
        if (step % 7 == 0)
            Turn([&](Inputs& inputs) {
                inputs.analog[step % 2] = static_cast<std::uint8_t>(step);
                inputs.buttons[0] = step > 50 && step < 100;
            });
        before.push_back(std::make_unique<Scene>(host.World()));
        host.Step();
        ASSERT_EQ(Steps(), step + 1);
    }
    for (; !before.empty(); before.pop_back()) {
        ASSERT_TRUE(host.StepBack());
        // Where the step began by waiting, the wait is over: only its instruction is taken back.
        const bool waited = before.back()->board.processor.wait.kind != Wait::Kind::None;
        ASSERT_TRUE(waited || host.World() == *before.back()) << before.size();
    }
    EXPECT_FALSE(host.StepBack());
}

TEST_F(HostTest, AStepWaitsButDoesNotSleepForEver) {
    Load(kWaiting);
    host.Step();
    host.Step();
    host.Step();
    EXPECT_EQ(host.State().memory.Byte(0x22), 1);
    EXPECT_EQ(host.State().clock, 50U);
    EXPECT_EQ(host.LastStep(), "[0003] INCREMENT BYTE [0022] : [0022] = 1");
    Load(ObjectOf({4, 5}));  // SLEEP, END, and nothing is watched
    host.Step();
    host.Step();
    host.Step();
    EXPECT_EQ(Steps(), 1U);
    EXPECT_EQ(host.State().clock, 150U);
}

TEST_F(HostTest, TellsOfFaultsAndEnds) {
    QSignalSpy ends(&host, &VirtualBoardHost::ProgramEnded);
    FaultReport last;
    QObject::connect(&host, &VirtualBoardHost::FaultHappened,
                     [&](const FaultReport& report) { last = report; });
    Load(ObjectOf({46, 0, 0x10, 0, 0x12}, 32));
    host.Run();
    host.Advance(10);
    EXPECT_EQ(last.text,
              "Division by zero at [0000]: DIVIDE BYTE divides by [0012], which holds 0");
    EXPECT_EQ(ends.count(), 1);
    ASSERT_TRUE(host.StepBack());
    EXPECT_TRUE(host.State().processor.running);
    host.Step();
    EXPECT_EQ(ends.count(), 2);
    last = {};
    Load(kCounting);
    host.Run();
    host.Stop();
    EXPECT_EQ(ends.count(), 3);
    EXPECT_EQ(last.fault, Fault::None);
}

TEST_F(HostTest, ReadsMemoryAlsoBehindItsEnd) {
    Load(kWaiting);
    EXPECT_EQ(host.ReadMemory(0x20, 3), std::string("\x00\x32\x00", 3));
    EXPECT_EQ(host.ReadMemory(0x7FFF, 3), std::string("\x00\xFF\xFF", 3));
    EXPECT_EQ(host.ReadMemory(0xFFFFFFFF, 1), "\xFF");
}

TEST_F(HostTest, SpeaksOverItsLineAndSurvivesThePulledCable) {
    ASSERT_GE(host.Link().Open(kVirtualBoardPort).handle, 1);
    EXPECT_EQ(Say("]\rW\r"), "]\r\nW\r\nKinetron\r\n");
    EXPECT_THAT(Say("L" + kCounting + "]\r"), HasSubstr("Loaded 64 bytes"));
    host.Pause();
    Say("G\r");
    host.Advance(10);
    EXPECT_EQ(Steps(), 10'000U) << "who starts a program over the line wants it to run";
    host.Link().Unplug();
    EXPECT_FALSE(host.Link().Read(100));
    EXPECT_EQ(host.Link().Write("X\r"), 0U);
    host.Advance(10);
    EXPECT_TRUE(host.State().processor.running);
    host.Link().Close();
    ASSERT_GE(host.Link().Open(kVirtualBoardPort).handle, 1);
    EXPECT_THAT(Say("X\r"), HasSubstr("Stopped at [000"));
    EXPECT_FALSE(host.State().processor.running);
}

TEST_F(HostTest, WhatIsSaidToNobodyIsLost) {
    Load(ObjectOf({13, 0, 0x10, 0, 53, 0, 0}, 32));  // TRANSMIT [0010], NOP, JUMP [0000]
    host.Run();
    host.Advance(1000);
    EXPECT_EQ(Steps(), 1'000'000U) << "it waits for a reader";
    EXPECT_TRUE(host.State().output.empty());
}

TEST_F(HostTest, StepsInDebugModeAsTheTerminalDoes) {
    Load(kCounting);
    ASSERT_GE(host.Link().Open(kVirtualBoardPort).handle, 1);
    EXPECT_THAT(Say("D\rM00"), HasSubstr("[0000] INCREMENT WORD [0020]\r\n*Debug Mode*"));
    host.Step();
    EXPECT_EQ(Steps(), 1U);
    EXPECT_THAT(host.Link().Read(1000).value_or(""), HasSubstr("[0003] JUMP [0000]\r\n*Debug"));
    ASSERT_TRUE(host.StepBack());
    EXPECT_EQ(Steps(), 0U);
    host.Run();
    host.Advance(10);
    EXPECT_EQ(Steps(), 10'000U);
}

TEST_F(HostTest, TheRobotFollowsTheLineWithItsEyes) {
    EXPECT_LT(host.State().inputs.analog[0], 50) << "it sees from the start";
    Load(CompiledExample("line_follower"));
    host.Run();
    host.Advance(100);
    Turn([](Inputs& inputs) { inputs.buttons[0] = true; });
    host.Advance(100);
    Turn([](Inputs& inputs) { inputs.buttons[0] = false; });
    host.Advance(1000);
    const auto met = [this] {
        return host.World().state.goals[0].status == world::GoalStatus::Met;
    };
    for (int second = 0; second < 60 && !met(); ++second)
        host.Advance(1000);
    EXPECT_TRUE(met()) << "all round the line";
}

// The robot drives against the wall, the wall presses the bumper, and all of it is taken back.
TEST_F(HostTest, AWallPressesTheBumperAndStepsGoBackAcrossTheCollision) {
    const auto bumpers = [this] {
        return std::pair(host.State().inputs.digital[0], host.State().inputs.digital[1]);
    };
    Load(
        Compiled("DEFINE BYTE Count = 0\nDEFINE BYTE Bumper = 0\nBEGIN PROGRAM\n"
                 "SET MOTOR 1, FORWARD, 100\nSET MOTOR 2, FORWARD, 100\n"
                 "REPEAT\nINCREMENT Count\nWAIT 10\nBumper = DIGITAL(1)\n"
                 "UNTIL Bumper <> 0\nDISPLAY Count\nLOOP\nWAIT 1\nEND LOOP\nEND PROGRAM\n"));
    host.Run();
    std::vector<world::Pose> way;
    while (!bumpers().first && way.size() < 1000) {
        host.Advance(10);
        way.push_back(host.World().state.robot);
    }
    EXPECT_EQ(bumpers(), std::pair(true, true));
    EXPECT_GT(host.State().inputs.analog[2], 250) << "the distance sensor sees the wall at once";
    host.Advance(200);
    EXPECT_GT(host.State().outputs.display.value, 0);
    const double trail = host.Trail().Pieces().back().points.back().x;
    while (host.World().state.tick > way.size() / 2)
        ASSERT_TRUE(host.StepBack());
    EXPECT_EQ(bumpers(), std::pair(false, false));
    EXPECT_EQ(host.World().state.robot, way[host.World().state.tick - 1]);
    EXPECT_LT(host.Trail().Pieces().back().points.back().x, trail) << "its way goes back with it";
}

TEST_F(HostTest, TheRobotDrawsItsWayWithThePenThatItHas) {
    Load(
        Compiled("BEGIN PROGRAM\nSET MOTOR 1, FORWARD, 100\nSET MOTOR 2, FORWARD, 100\n"
                 "LOOP\nWAIT 1\nEND LOOP\nEND PROGRAM\n"));
    host.Run();
    const auto drive = [this] {
        for (int tick = 0; tick < 30; ++tick)
            host.Advance(10);
    };
    drive();
    host.TakePen(Pen::None);
    drive();
    host.TakePen(Pen::Blue);
    drive();
    const std::vector<TrailPiece> pieces = host.Trail().Pieces();
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].pen, Pen::Orange);
    EXPECT_EQ(pieces[1].pen, Pen::Blue);
    EXPECT_GT(pieces[1].points.front().x, pieces[0].points.back().x + 10) << "without a pen";
    // A hand that carries it draws nothing.
    host.PlaceRobot({{100, 100}, 0});
    drive();
    EXPECT_EQ(host.Trail().Pieces().size(), 3U);
    host.WipeTrail();
    EXPECT_LE(host.Trail().Pieces().size(), 1U);
}

TEST_F(HostTest, AHandHoldsAnInputUntilItLetsGo) {
    const world::InputId bumper{world::InputKind::Digital, 0};
    const auto eye = host.State().inputs.analog[0];
    Turn([](Inputs& inputs) { inputs.analog[0] = 77; });
    host.HoldInput(bumper, true);
    host.PlaceRobot({{300, 75}, 0});
    EXPECT_EQ(host.State().inputs.analog[0], 77);
    EXPECT_FALSE(host.State().inputs.digital[0]);
    EXPECT_TRUE(host.State().inputs.digital[1]) << "this one is not held";
    host.HoldInput(bumper, false);
    EXPECT_TRUE(host.State().inputs.digital[0]);
    host.LetAllInputsGo();
    host.PutRobotAtStart();
    EXPECT_EQ(host.State().inputs.analog[0], eye);
}

TEST_F(HostTest, TheRobotIsBackAtItsStartWithEachProgramResetAndByHand) {
    const auto eyes = [this] {
        return std::pair(host.State().inputs.analog[0], host.State().inputs.analog[1]);
    };
    const auto start = eyes();
    // SET MOTOR 1, FORWARD, 100 and a loop: the robot turns off its line.
    const std::string program = ObjectOf({21, 1, 70, 0, 9, 53, 0, 5, 0, 100});
    ASSERT_EQ(host.Link().Open(kVirtualBoardPort).handle, 1);
    const std::function<void()> waysBack[] = {
        [&] { Load(program); }, [&] { Say("L" + program + "]\r"); }, [&] { host.Reset(); },
        [&] { host.PutRobotAtStart(); }};
    for (const auto& putBack : waysBack) {
        Load(program);
        host.Run();
        host.Advance(400);
        ASSERT_NE(host.World().state.robot, Start());
        ASSERT_NE(eyes(), start);
        putBack();
        EXPECT_EQ(host.World().state.robot, Start());
        EXPECT_EQ(eyes(), start);
    }
    EXPECT_TRUE(host.State().processor.running) << "by hand nothing else changes";
    host.Step();
    host.PutRobotAtStart();
    ASSERT_TRUE(host.StepBack());
    EXPECT_EQ(host.World().state.robot, Start()) << "it was there before the step, too";

    Turn([](Inputs& inputs) { inputs.analog[0] = 77; });
    host.Reset();
    EXPECT_EQ(host.State().inputs.analog[0], 77) << "a hand on the input";
    host.LetAllInputsGo();
    EXPECT_EQ(eyes(), start);
}

/// Programs that count the presses of button 2 on the display.
const char* const kPolling =
    "DEFINE BYTE Count = 0\nDEFINE BYTE Pressed = 0\nBEGIN PROGRAM\nLOOP\n"
    "REPEAT\nPressed = BUTTON(2)\nUNTIL Pressed <> 0\nINCREMENT Count\nDISPLAY Count\n"
    "REPEAT\nPressed = BUTTON(2)\nUNTIL Pressed = 0\nEND LOOP\nEND PROGRAM\n";
const char* const kLookingNowAndThen =
    "DEFINE BYTE Count = 0\nDEFINE BYTE Pressed = 0\nBEGIN PROGRAM\nLOOP\nWAIT 90\n"
    "Pressed = BUTTON(2)\nIF Pressed <> 0 THEN\nINCREMENT Count\nDISPLAY Count\nEND IF\n"
    "END LOOP\nEND PROGRAM\n";
const char* const kWatching =
    "DEFINE BYTE Count = 0\nDEFINE BYTE Pressed = 0\nDEFINE EVENT Press()\nPressed = BUTTON(2)\n"
    "IF Pressed <> 0 THEN\nINCREMENT Count\nDISPLAY Count\nEND IF\nEND EVENT\n"
    "BEGIN PROGRAM\nSET EVENT 10, Press\nENABLE EVENTS\nLOOP\nEND LOOP\nEND PROGRAM\n";

struct ClickTest : HostTest, ::testing::WithParamInterface<std::tuple<const char*, int>> {
    static constexpr std::size_t kButton = 1;

    void Click() {
        host.PressButton(kButton);
        host.LetButtonGo(kButton);
    }
    bool IsDown() const { return host.State().inputs.buttons[kButton]; }
    int Counted() const { return host.State().outputs.display.value; }
    void Pass(int seconds) {
        for (int tenth = 0; tenth < 10 * seconds; ++tenth)
            host.Advance(100);
    }
};

TEST_P(ClickTest, IsSeenOnceByAProgramHoweverShort) {
    const auto [source, speed] = GetParam();
    const BoardSpeed speeds[] = {{}, {BoardSpeed::Kind::SlowMotion, 30}, fast};
    host.SetSpeed(speeds[speed]);
    Load(Compiled(source));
    host.Run();
    Pass(5);
    for (int click = 1; click <= 3; ++click) {
        Click();
        EXPECT_TRUE(IsDown()) << "no time has passed";
        Pass(5);
        EXPECT_EQ(Counted(), click);
        EXPECT_FALSE(IsDown());
    }
    host.Pause();
    Click();
    Pass(5);
    EXPECT_TRUE(IsDown()) << "the program is held and cannot look";
    host.Resume();
    Pass(5);
    EXPECT_EQ(Counted(), 4);
    EXPECT_FALSE(IsDown());
    host.Pause();
    Click();
    for (int step = 0; step < 30; ++step)
        host.Step();
    EXPECT_EQ(Counted(), 5) << "stepped";
    EXPECT_FALSE(IsDown());
}
INSTANTIATE_TEST_SUITE_P(Programs, ClickTest,
                         ::testing::Combine(::testing::Values(kPolling, kLookingNowAndThen,
                                                              kWatching),
                                            ::testing::Values(0, 1, 2)));

TEST_F(ClickTest, OfSomebodyQuickerThanTheProgramIsAnEventEachTime) {
    Load(Compiled(kWatching));
    host.Run();
    Pass(1);
    Click();
    Click();
    Click();
    Pass(1);
    EXPECT_EQ(Counted(), 3);
}

TEST_F(ClickTest, EndsAlsoWhenNobodyLooks) {
    Click();
    EXPECT_FALSE(IsDown()) << "nothing runs, and nobody listens";
    ASSERT_EQ(host.Link().Open(kVirtualBoardPort).handle, 1);
    Say("R\r");
    Click();
    Pass(1);
    EXPECT_THAT(Say(""), HasSubstr("Buttons    0 1 0 0 0 0")) << "a report has shown it";
    EXPECT_FALSE(IsDown());

    Load(kCounting);
    for (const BoardSpeed& speed : {BoardSpeed{}, BoardSpeed{BoardSpeed::Kind::SlowMotion, 100}}) {
        host.SetSpeed(speed);
        host.Run();
        Click();
        Pass(1);
        EXPECT_TRUE(IsDown());
        Pass(12);
        EXPECT_FALSE(IsDown());
    }
    host.PressButton(kButton);
    Pass(20);
    EXPECT_TRUE(IsDown()) << "it is held";
    host.LetButtonGo(kButton);
    EXPECT_FALSE(IsDown());
}

}  // namespace
}  // namespace zentro
