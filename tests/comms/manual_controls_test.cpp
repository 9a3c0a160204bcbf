// The panel that drives the board by hand: what it sends and what the board does.
#include "comms/manual_controls.h"

#include <QTemporaryFile>
#include <QTimer>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "board/board.h"
#include "comms/virtual_board_link.h"
#include "tests/comms/board_fixture.h"
#include "tests/comms/recording_link.h"

namespace zentro {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

/// A panel on a line that records.
struct Panel {
    Panel() {
        session.OpenConnection("port");
        link.written.clear();
    }
    std::string Sent() { return std::exchange(link.written, {}); }

    RecordingLink link;
    std::vector<std::string> messages;
    TerminalSession session{link, [this](const std::string& text) { messages.push_back(text); },
                            [] { return std::vector<PortDescription>(); }};
    ManualControls controls{session};
};

using Action = std::function<void(ManualControls&)>;

/// What a series of actions sends, one after the other.
std::vector<std::string> Send(Panel& panel, const std::vector<Action>& actions) {
    std::vector<std::string> sent;
    for (const Action& action : actions) {
        action(panel.controls);
        sent.push_back(panel.Sent());
    }
    return sent;
}

Action Motor(int number, DriveOption option) {
    return [=](ManualControls& controls) { controls.ChooseMotor(number, option); };
}
Action Speed(int number, int speed) {
    return [=](ManualControls& controls) { controls.ChangeMotorSpeed(number, speed); };
}
Action Servo(int number, DriveOption option) {
    return [=](ManualControls& controls) { controls.ChooseServo(number, option); };
}
Action Position(int number, int position) {
    return [=](ManualControls& controls) { controls.ChangeServoPosition(number, position); };
}
Action Port(int number, bool on) {
    return [=](ManualControls& controls) { controls.SwitchAction(number, on); };
}
const Action kScan = [](ManualControls& controls) { controls.ToggleScan(); };
const Action kRun = [](ManualControls& controls) { controls.Run(); };
const Action kStop = [](ManualControls& controls) { controls.Stop(); };

TEST(ManualControls, SendExactlyTheirCommands) {
    using enum DriveOption;
    Panel panel;
    EXPECT_THAT(
        Send(panel, {Speed(1, 45), Motor(1, Forward), Speed(1, 7), Speed(1, 7), Motor(1, Back),
                     Speed(1, 100), Motor(1, Rest), Speed(1, 3)}),
        ElementsAre("", "M1F045\r", "M1F007\r", "", "M1B007\r", "M1B100\r", "M1F000\r", ""));
    EXPECT_EQ(panel.controls.Motor(1).value, 3);
    EXPECT_FALSE(panel.controls.Motor(1).active);
    EXPECT_THAT(Send(panel, {Motor(4, Forward), Speed(4, 1000), Speed(4, -5), Motor(3, Back)}),
                ElementsAre("M4F000\r", "M4F100\r", "M4F000\r", "M3B000\r"));
    EXPECT_TRUE(panel.controls.Motor(4).active);
    EXPECT_THAT(Send(panel, {Servo(2, Back), Position(2, 5), Servo(2, Rest), Position(2, 90),
                             Servo(1, Forward), Position(1, 91)}),
                ElementsAre("S2B00\r", "S2B05\r", "S2F00\r", "", "S1F00\r", "S1F90\r"));
    EXPECT_THAT(Send(panel, {Port(1, true), Port(2, true), Port(3, true), Port(3, false)}),
                ElementsAre("A11\r", "A21\r", "A31\r", "A30\r"));
    EXPECT_THAT(Send(panel, {kRun, kScan, kScan, kScan}), ElementsAre("G\r", "R\r", "\r", "R\r"));
    EXPECT_TRUE(panel.controls.IsScanning());
    EXPECT_TRUE(panel.messages.empty());
}

TEST(ManualControls, StopPutsToRestWhatIsNot) {
    using enum DriveOption;
    Panel panel;
    EXPECT_THAT(Send(panel, {kStop}), ElementsAre("X\rZ\r\r"));
    Send(panel, {Motor(2, Forward), Speed(2, 30), Motor(4, Back), Servo(1, Back), Port(3, true),
                 Speed(1, 9), Position(2, 9)});
    EXPECT_THAT(Send(panel, {kStop}), ElementsAre("X\rZ\r\rM2F000\rM4F000\rS1F00\rA30\r"));
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(panel.controls.Motor(number).value, 0) << number;
    EXPECT_EQ(panel.controls.Servo(2).value, 0);
    EXPECT_EQ(panel.controls.Motor(2).option, Rest);
    EXPECT_FALSE(panel.controls.Action(3));
    EXPECT_THAT(Send(panel, {kStop}), ElementsAre("X\rZ\r\r"));
}

TEST(ManualControls, SendNothingButStopInDebugMode) {
    using enum DriveOption;
    Panel panel;
    panel.session.WriteToScreen(kSentPrompt);
    EXPECT_THAT(Send(panel, {Motor(1, Forward), Position(1, 3), Servo(1, Back), Port(1, true), kRun,
                             kScan, kScan}),
                testing::Each(""));
    EXPECT_EQ(panel.messages.size(), 6U);  // the position of a servo at rest is nobody's business
    EXPECT_THAT(panel.messages, testing::Each("KineTron in Debug Mode and cannot alter hardware"));
    for (int number = 1; number <= 4; ++number)
        EXPECT_EQ(panel.controls.Motor(number).option, Rest) << "the board was not told";
    EXPECT_EQ(panel.controls.Servo(1).option, Rest);
    EXPECT_FALSE(panel.controls.Action(1));
    EXPECT_FALSE(panel.controls.IsScanning());
    panel.controls.Stop();
    EXPECT_EQ(panel.Sent(), "X\rZ\r\r");
}

/// The prompt is on the screen until the board answers.
TEST(ManualControls, ShowWhatTheBoardWasToldWhenStopFindsADebugPrompt) {
    using enum DriveOption;
    for (const bool somethingElseIsSent : {false, true}) {
        Panel panel;
        int changes = 0;
        QObject::connect(&panel.controls, &ManualControls::Changed, [&] { ++changes; });
        Send(panel, {Motor(2, Back), Speed(2, 45), Servo(1, Forward), Port(3, true)});
        panel.session.WriteToScreen(kSentPrompt);
        panel.controls.Stop();
        EXPECT_EQ(panel.Sent(), "X\rZ\r\r");
        EXPECT_EQ(panel.controls.Motor(2).option, Back);
        EXPECT_EQ(panel.controls.Motor(2).value, 45);
        EXPECT_EQ(panel.controls.Servo(1).option, Forward);
        EXPECT_TRUE(panel.controls.Action(3));
        EXPECT_EQ(changes, 0);

        if (somethingElseIsSent) panel.session.SendCmd("W\r");
        panel.Sent();
        panel.session.WriteToScreen("X\r\nStopped at [0000]\r\n");
        EXPECT_EQ(panel.Sent(), somethingElseIsSent ? "" : "M2F000\rS1F00\rA30\r");
        EXPECT_EQ(panel.controls.Motor(2).option, somethingElseIsSent ? Back : Rest);
        EXPECT_EQ(panel.controls.Action(3), somethingElseIsSent);
        EXPECT_EQ(changes, somethingElseIsSent ? 0 : 1);
        panel.session.WriteToScreen("more");
        EXPECT_EQ(panel.Sent(), "");
    }
}

TEST(ManualControls, FollowWhatElseTheBoardIsTold) {
    using enum DriveOption;
    const struct {
        const char* what;
        std::function<void(Panel&)> action;
        bool endsScan;
        bool putsToRest;
    } rows[] = {
        {"key", [](Panel& panel) { panel.session.PressKey('g'); }, false, false},
        {"line", [](Panel& panel) { panel.session.PressKey('\r'); }, true, false},
        {"typed stop",
         [](Panel& panel) {
             for (const char key : {'q', '\b', 'z', '\r'})
                 panel.session.PressKey(key);
         },
         true, true},
        {"run", [](Panel& panel) { panel.controls.Run(); }, true, false},
        {"port", [](Panel& panel) { panel.controls.SwitchAction(1, true); }, true, false},
        {"stop", [](Panel& panel) { panel.controls.Stop(); }, true, true},
        {"lost line",
         [](Panel& panel) {
             panel.link.lost = true;
             panel.session.SendCmd("W\r");
         },
         true, false},
        {"cancelled download",
         [](Panel& panel) {
             QTemporaryFile program;
             ASSERT_TRUE(program.open());
             panel.session.DownloadSource(program.fileName().toStdString());
             panel.session.CancelDownload();
         },
         true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Panel panel;
        Send(panel, {Motor(3, Forward), Servo(2, Back), Port(2, true), kScan});
        int changes = 0;
        QObject::connect(&panel.controls, &ManualControls::Changed, [&] { ++changes; });
        row.action(panel);
        EXPECT_EQ(panel.controls.IsScanning(), !row.endsScan);
        EXPECT_EQ(changes > 0, row.endsScan);
        EXPECT_EQ(panel.controls.Motor(3).option, row.putsToRest ? Rest : Forward);
        EXPECT_EQ(panel.controls.Servo(2).option, row.putsToRest ? Rest : Back);
        EXPECT_EQ(panel.controls.Action(2), !row.putsToRest);
    }
}

TEST(ManualControls, ScanBringsTheScreenBack) {
    Panel panel;
    panel.session.SetScreenOff(true);
    panel.controls.ToggleScan();
    EXPECT_FALSE(panel.session.ScreenOff());
}

/// A panel on a virtual board, which answers through the session's own clockwork.
struct VirtualPanel {
    VirtualPanel() { session.OpenConnection(kVirtualBoardPort); }

    std::unique_ptr<Board> board = std::make_unique<Board>();
    VirtualBoardLink link{*board};
    TerminalSession session{link, [](const std::string& text) { ADD_FAILURE() << text; },
                            [] { return std::vector<PortDescription>(); }};
    ManualControls controls{session};
};

TEST(ManualControls, DriveEveryOutputOfTheBoard) {
    using enum DriveOption;
    VirtualPanel panel;
    Outputs expected;
    for (int number = 1; number <= static_cast<int>(kMotors); ++number) {
        panel.controls.ChooseMotor(number, number % 2 == 0 ? Back : Forward);
        panel.controls.ChangeMotorSpeed(number, 20 * number);
    }
    expected.motors = {{{'F', 20}, {'B', 40}, {'F', 60}, {'B', 80}}};
    panel.controls.ChangeServoPosition(1, 90);
    panel.controls.ChooseServo(1, Back);
    panel.controls.ChooseServo(2, Forward);
    panel.controls.ChangeServoPosition(2, 7);
    expected.servos = {{{'B', 90}, {'F', 7}, {}}};
    for (int number = 1; number <= static_cast<int>(kActionPorts); ++number)
        panel.controls.SwitchAction(number, true);
    panel.controls.SwitchAction(2, false);
    expected.ports = {true, false, true};
    EXPECT_EQ(panel.board->outputs, expected);

    panel.controls.Stop();
    EXPECT_EQ(panel.board->outputs, Outputs{});
}

TEST(ManualControls, ScanShowsTheInputsAsTheyChange) {
    VirtualPanel panel;
    QTimer time;
    QObject::connect(&time, &QTimer::timeout, [&] { RunTicks(*panel.board, 10, 100); });
    time.start(1);
    const auto shows = [&](std::string_view line) {
        return WaitUntil(
            [&] { return panel.session.Screen().Text().find(line) != std::string::npos; });
    };
    panel.controls.ToggleScan();
    EXPECT_TRUE(shows("Digital    0 0 0 0\r\n"));
    Inputs inputs;
    inputs.digital[2] = true;
    inputs.analog[5] = 200;
    SetInputs(*panel.board, inputs);
    EXPECT_TRUE(shows("Digital    0 0 1 0\r\n"));
    EXPECT_THAT(panel.session.Screen().Text(), HasSubstr("Analogue   0 0 0 0 0 200\r\n"));
    EXPECT_THAT(panel.session.Screen().Text(), testing::Not(HasSubstr("Digital    0 0 0 0")));
    panel.controls.ToggleScan();
    panel.controls.SwitchAction(1, true);
    const std::uint64_t ended = panel.board->clock;
    EXPECT_TRUE(WaitUntil([&] { return panel.board->clock > ended + 50; }));
    EXPECT_THAT(panel.session.Screen().Text(), EndsWith("Program    1\r\n\r\nA11\r\n"));
}

}  // namespace
}  // namespace zentro
