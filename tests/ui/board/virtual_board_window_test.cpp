// The window as a pupil uses it: mouse and keys on the board's picture, in real time.
#include "ui/board/virtual_board_window.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <gmock/gmock.h>

#include "comms/terminal_session.h"
#include "tests/ui/board/board_programs.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

struct BoardWindowTest : UiTest {
    BoardWindowTest() {
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    void Load(const std::string& objectText) {
        ASSERT_EQ(host.LoadProgram(objectText), "");
        ASSERT_TRUE(QTest::qWaitFor([&] { return Find("BtnBoardRun")->isEnabled(); }));
    }

    void LoadExample(const std::string& name) { Load(CompiledExample(name)); }

    template <typename Widget = QWidget>
    Widget* Find(const char* name) {
        auto* widget = window.findChild<Widget*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    void Press(const char* name) { QTest::mousePress(Find(name), Qt::LeftButton); }
    void Release(const char* name) { QTest::mouseRelease(Find(name), Qt::LeftButton); }
    QString Said(const char* name) { return Find(name)->accessibleDescription(); }
    /// What a screen reader says.
    QString Spoken(const char* name) {
        return QAccessible::queryAccessibleInterface(Find(name))->text(QAccessible::Name);
    }
    QString Text(const char* name) { return Find<QLabel>(name)->text(); }

    bool Becomes(const char* name, const QString& value) {
        const bool became = QTest::qWaitFor([&] { return Said(name) == value; }, 3000);
        EXPECT_TRUE(became) << name << " says " << Said(name).toStdString();
        return became;
    }

    const Outputs& Out() const { return host.State().outputs; }

    VirtualBoardHost host;
    VirtualBoardWindow window{host};
};

TEST_F(BoardWindowTest, LineFollowerReactsToItsEyes) {
    LoadExample("line_follower");
    EXPECT_FALSE(Find("Analog2")->isEnabled()) << "the robot's eye";
    Find<QCheckBox>("RobotSees")->click();
    Click("BtnBoardRun");
    ASSERT_TRUE(Becomes("LeftLed", "on"));
    EXPECT_EQ(Said("Sounder"), "C4");
    Press("Button1");
    ASSERT_TRUE(Becomes("LeftLed", "off"));
    Release("Button1");
    // Both eyes see the dark line, then the left one alone.
    ASSERT_TRUE(Becomes("Motor1", "60 % forward"));
    EXPECT_TRUE(Becomes("NumberDisplay", "3"));
    Find<QSlider>("Analog2")->setFocus();
    QTest::keyClick(Find("Analog2"), Qt::Key_End);
    ASSERT_TRUE(Becomes("Motor1", "25 % forward"));
    EXPECT_EQ(Said("Motor2"), "60 % forward");
    QTest::keyClick(Find("Analog1"), Qt::Key_End);
    EXPECT_TRUE(Becomes("LeftLed", "on")) << "it has lost the line for two seconds";
    Click("BtnBoardStop");
    EXPECT_FALSE(host.State().processor.running);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Text("BoardState").startsWith("Stopped at ["); }));
}

TEST_F(BoardWindowTest, JoystickDrivesByMouseAndKeysAndSpringsBack) {
    LoadExample("joystick_drive");
    Click("BtnBoardRun");
    QWidget* stick = Find("Joystick1");
    const QPoint middle = stick->rect().center();
    QTest::mousePress(stick, Qt::LeftButton, {}, middle);
    QTest::mouseMove(stick, {middle.x(), 0});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Out().motors[0].value > 20; }));
    EXPECT_EQ(Out().motors[0].direction, kForward);
    EXPECT_EQ(host.State().inputs.joysticks[0].y, 255);
    QTest::mouseRelease(stick, Qt::LeftButton, {}, middle);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Out().motors[0].value == 0; }));
    EXPECT_GT(host.World().robot.place.x, RobotModel{}.place.x);
    Click("BtnRobotToStart");
    EXPECT_EQ(host.World().robot, RobotModel{});
    EXPECT_TRUE(host.State().processor.running);

    stick->setFocus();
    QTest::keyPress(stick, Qt::Key_Down);
    ASSERT_TRUE(Becomes("LeftLed", "on")) << "it lights while it drives back";
    QTest::keyRelease(stick, Qt::Key_Down);
    EXPECT_EQ(host.State().inputs.joysticks[0], StickPosition{});
}

TEST_F(BoardWindowTest, ReactionGameIsPlayedWithAKey) {
    LoadExample("reaction_game");
    Click("BtnBoardRun");
    QWidget* button = Find("Button1");
    const auto press = [&] { QTest::keyClick(button, Qt::Key_Space); };
    QTest::qWait(30);
    press();
    ASSERT_TRUE(Becomes("LeftLed", "on"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Said("RightLed") == "on"; }, 6000));
    press();
    ASSERT_TRUE(Becomes("LeftLed", "off"));
    EXPECT_EQ(Out().display.form, Display::Form::Number);
    EXPECT_LT(Out().display.value, 100);
}

TEST_F(BoardWindowTest, StepsShowWhereTheProgramStands) {
    Load(ObjectOf({56, 0, 0x10, 53, 0, 0}, 32));
    EXPECT_EQ(Text("BoardState"), "Ready, 32 bytes loaded");
    EXPECT_FALSE(Find("BtnBoardStepBack")->isEnabled());
    const auto step = [&](const char* name) {
        Click(name);
        QTest::qWait(30);
    };
    step("BtnBoardStep");
    EXPECT_EQ(Text("BoardState"), "Paused");
    EXPECT_EQ(Spoken("BoardState"), "State of the board: Paused");
    EXPECT_EQ(Text("BoardInstruction"), "next  [0000] INCREMENT BYTE [0010]");
    EXPECT_EQ(Spoken("BoardInstruction"), "Present instruction: next [0000] INCREMENT BYTE [0010]");
    EXPECT_EQ(Spoken("BoardSteps"), "Instructions carried out: 0 instructions");
    step("BtnBoardStep");
    EXPECT_EQ(Text("BoardInstruction"),
              "done  [0000] INCREMENT BYTE [0010] : [0010] = 1\nnext  [0003] JUMP [0000]");
    EXPECT_EQ(Text("BoardSteps"), "1 instruction");
    step("BtnBoardStepBack");
    EXPECT_EQ(host.State().memory.Byte(0x10), 0);
    EXPECT_EQ(Text("BoardInstruction"), "next  [0000] INCREMENT BYTE [0010]");
    EXPECT_TRUE(Find<QPushButton>("BtnBoardPause")->isChecked());
    Click("BtnBoardPause");
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.State().processor.steps > 10'000; }));
}

TEST_F(BoardWindowTest, AFaultIsToldInWords) {
    Load(ObjectOf({0, 0, 52}, 16));
    Click("BtnBoardRun");
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return Text("BoardState").contains("Return without a call at [0002]: ");
    })) << Text("BoardState").toStdString();
}

TEST_F(BoardWindowTest, ATerminalLoadsAProgramRunsItAndComesBackAfterThePulledCable) {
    const auto ports = [] { return std::vector<PortDescription>{{kVirtualBoardPort, "", {}}}; };
    TerminalSession session(
        host.Link(), [](const std::string& text) { ADD_FAILURE() << text; }, ports);
    QSignalSpy finished(&session, &TerminalSession::DownloadFinished);
    const auto waitForText = [&](const std::string& text) {
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return session.Screen().Text().find(text) != std::string::npos;
        })) << text
            << " in " << session.Screen().Text();
    };
    WriteFile("hanoi.obj", QByteArray::fromStdString(CompiledExample("hanoi")));
    session.OpenConnection(kVirtualBoardPort);
    waitForText("Kinetron");
    session.DownloadSource(PathOf("hanoi.obj"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return finished.count() == 1; }, 60'000));
    waitForText("Loaded ");
    Find<QSlider>("BoardSpeed")->setValue(Find<QSlider>("BoardSpeed")->maximum());
    session.SendCmd("G\r");
    waitForText("End at [");
    EXPECT_EQ(host.State().processor.end, EndReason::End);

    QSignalSpy lost(&session, &TerminalSession::ConnectionLost);
    QSignalSpy back(&session, &TerminalSession::PortIsBack);
    host.Link().Unplug();
    ASSERT_TRUE(QTest::qWaitFor([&] { return lost.count() == 1 && back.count() == 1; }));
    session.Reopen();
    EXPECT_TRUE(session.IsConnected());
    session.SendCmd("M3B020\r");
    EXPECT_TRUE(Becomes("Motor3", "20 % backward"));
}

TEST_F(BoardWindowTest, EveryInputReachesTheBoardAndIsShownAgain) {
    host.LetRobotSee(false);
    host.SetInputs({});
    Find<QCheckBox>("ButtonsStay")->click();
    Click("Button6");
    Click("Digital4");
    Click("Pulse2");
    Click("Pulse2");
    Find<QSpinBox>("Timed3")->setValue(65535);
    Find<QSlider>("Analog6")->setValue(200);
    Find<QSpinBox>("Battery")->setValue(100);
    Find<QSpinBox>("ProgramNumber")->setValue(3);
    Inputs expected;
    expected.buttons[5] = true;
    expected.digital[3] = true;
    expected.pulses[1] = 2;
    expected.timed[2] = 65535;
    expected.analog[5] = 200;
    expected.battery = 100;
    expected.programNumber = 3;
    EXPECT_EQ(host.State().inputs, expected);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QPushButton>("Pulse2")->text() == "2"; }));
    host.SetInputs({});
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QPushButton>("Pulse2")->text() == "0"; }));
    EXPECT_FALSE(Find<QPushButton>("Button6")->isChecked());
    EXPECT_EQ(Find<QSlider>("Analog6")->value(), 0);
    EXPECT_EQ(host.State().inputs, Inputs{}) << "showing inputs changed them";
}

TEST_F(BoardWindowTest, HiddenItDrawsNothingAndTheBoardGoesOn) {
    LoadExample("blink");
    window.hide();
    host.Run();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Out().leds[0] || Out().leds[1]; }));
    EXPECT_EQ(Said("LeftLed"), "off");
    EXPECT_EQ(Said("RightLed"), "off");
    window.show();
    EXPECT_TRUE(Said("LeftLed") == "on" || Said("RightLed") == "on");
}

TEST_F(BoardWindowTest, EveryControlHasANameAndFitsASmallScreen) {
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith("qt_"))
            continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty() &&
                     widget->property("text").toString().isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
    EXPECT_LE(window.minimumSizeHint().width(), 1000);
    EXPECT_LE(window.minimumSizeHint().height(), 600);
}

TEST_F(BoardWindowTest, TheTitlesOnTheBoardHaveOneSizeInWhichAllFit) {
    for (const QSize& size : {QSize(500, 400), QSize(740, 400), QSize(900, 900)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        const QList<QWidget*> parts = Find("Outputs")->findChildren<QWidget*>();
        ASSERT_FALSE(parts.isEmpty());
        for (const QWidget* part : parts) {
            QFont bold = part->font();
            bold.setBold(true);
            EXPECT_EQ(part->font(), parts.front()->font());
            EXPECT_LE(QFontMetrics(bold).horizontalAdvance(part->accessibleName()), part->width())
                << part->accessibleName().toStdString() << " at " << size.width();
        }
    }
}

}  // namespace
}  // namespace zentro
