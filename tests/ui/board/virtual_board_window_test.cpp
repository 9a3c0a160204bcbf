// The window as a pupil uses it: mouse and keys on the board's picture, in real time.
#include "ui/board/virtual_board_window.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <gmock/gmock.h>

#include "comms/terminal_session.h"
#include "desktop/sound_output.h"
#include "tests/ui/board/board_programs.h"
#include "tests/ui/ui_fixture.h"
#include "ui/board/floor_widget.h"
#include "ui/board/world_commands.h"

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
    const world::Pose& Robot() const { return host.World().state.robot; }
    const world::Pose& Start() const { return host.World().map->world.start; }

    VirtualBoardHost host;
    WorldDocument document{host, QString::fromStdString(ZENTRO_WORLDS_FOLDER)};
    WorldCommands commands{
        *workbench, host, document, {[this] { return folder_.path(); }, {}, {}}, nullptr};
    SoundOutput sound{"/nonexistent/zentro-sound"};
    VirtualBoardWindow window{host, commands, sound, workbench->settings};
};

TEST_F(BoardWindowTest, LineFollowerReactsToItsEyes) {
    LoadExample("line_follower");
    for (const char* eye : {"FeedAnalog1", "FeedAnalog2"})
        Click(eye);
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

/// The sizes that the desk gives it beside a source, with other windows below it.
TEST_F(BoardWindowTest, FloorAndBoardAreWhollySeenWhereTheWindowIsLow) {
    for (const char* example : {"tune", "line_follower"}) {
        LoadExample(example);
        for (const QSize& size : {QSize{740, 570}, QSize{740, 430}}) {
            window.resize(size);
            QApplication::processEvents();
            QApplication::processEvents();
            for (const char* part : {"Outputs", "Floor"}) {
                const QWidget* widget = Find(part);
                EXPECT_EQ(widget->visibleRegion().boundingRect(), widget->rect())
                    << part << ' ' << example << ' ' << size.width() << 'x' << size.height();
            }
            EXPECT_GE(Find("Floor")->height(), 130) << size.height();
        }
    }
}

TEST_F(BoardWindowTest, ThePauseButtonSaysWhatItDoes) {
    LoadExample("line_follower");
    window.resize(960, 640);
    Click("BtnBoardRun");
    auto* pause = Find<QPushButton>("BtnBoardPause");
    ASSERT_TRUE(QTest::qWaitFor([&] { return pause->isEnabled(); }));
    for (const char* words : {"&Go On", "&Pause", "&Go On"}) {
        Click("BtnBoardPause");
        EXPECT_TRUE(QTest::qWaitFor([&] { return pause->text() == words; }));
        EXPECT_EQ(pause->accessibleName(), QString(words).remove('&'));
    }
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
    EXPECT_GT(Robot().place.x, Start().place.x);
    Click("BtnRobotToStart");
    EXPECT_EQ(Robot(), Start());
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
    window.resize(960, 640);
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
    window.resize(480, 640);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Text("BoardInstruction").endsWith("…")) << Text("BoardInstruction").toStdString();
    EXPECT_EQ(Find("BoardInstruction")->toolTip(), "next  [0000] INCREMENT BYTE [0010]");
    EXPECT_EQ(Spoken("BoardInstruction"), "Present instruction: next [0000] INCREMENT BYTE [0010]");
    window.resize(960, 640);
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

TEST_F(BoardWindowTest, AHandTakesASensorsInputOverUntilItLetsGo) {
    const auto feeder = [this](int input) {
        return Find<QToolButton>(qPrintable(QString("FeedAnalog%1").arg(input)))->text();
    };
    QTest::qWait(30);
    EXPECT_EQ(feeder(1), "robot");
    EXPECT_FALSE(Find("FeedAnalog4")->isVisible()) << "nobody feeds it";
    EXPECT_FALSE(Find("LetAllGo")->isVisible());
    // An exact value, typed while the robot goes on seeing.
    auto* exact = Find<QSpinBox>("AnalogValue1");
    exact->setFocus();
    exact->selectAll();
    QTest::keyClicks(exact, "13");
    host.PlaceRobot({{120, 75}, 0});
    QTest::qWait(30);
    EXPECT_EQ(host.State().inputs.analog[0], 225) << "not yet entered";
    QTest::keyClicks(exact, "7\r");
    EXPECT_EQ(host.State().inputs.analog[0], 137);
    QTest::keyClick(Find("Digital1"), Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Spoken("FeedDigital1").startsWith("Digital input 1 is held by hand"); }));
    EXPECT_EQ(feeder(1), "hand");
    EXPECT_EQ(feeder(2), "robot");
    EXPECT_TRUE(Find("LetAllGo")->isVisible());
    Click("FeedAnalog1");
    EXPECT_EQ(host.State().inputs.analog[0], 225);
    EXPECT_TRUE(host.State().inputs.digital[0]) << "still held";
    Click("LetAllGo");
    EXPECT_FALSE(host.State().inputs.digital[0]);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Find("LetAllGo")->isVisible(); }));
}

TEST_F(BoardWindowTest, TheRobotIsDraggedAndTurnedWhileItDrives) {
    auto* floor = Find<FloorWidget>("Floor");
    Load(
        Compiled("BEGIN PROGRAM\nSET MOTOR 1, FORWARD, 100\nSET MOTOR 2, FORWARD, 100\n"
                 "LOOP\nWAIT 1\nEND LOOP\nEND PROGRAM\n"));
    Click("BtnBoardRun");
    const auto drag = [&](const QPointF& from, const QPointF& way) {
        QTest::mousePress(floor, Qt::LeftButton, {}, from.toPoint());
        QTest::mouseMove(floor, (from + way / 2).toPoint());
        QTest::mouseMove(floor, (from + way).toPoint());
        QTest::qWait(200);
    };
    QTest::qWait(50);
    drag(floor->RobotInPicture(), {-40, -80});
    const world::Pose held = Robot();
    EXPECT_GT(held.place.y, Start().place.y + 10);
    QTest::qWait(300);
    // Between two looks the motors pull it on a little.
    EXPECT_NEAR(Robot().place.x, held.place.x, 4) << "it stays in the hand";
    EXPECT_EQ(Robot().place.y, held.place.y);
    QTest::mouseRelease(floor, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Robot().place.x > held.place.x + 10; }));
    host.Pause();
    QTest::qWait(30);
    const QPointF handle = floor->HandleInPicture();
    drag(handle, floor->RobotInPicture() + QPointF(0, -60) - handle);
    EXPECT_NEAR(Robot().heading, 1.5708, 0.05);
    QTest::mouseRelease(floor, Qt::LeftButton);
    // Through the floor's edge it does not go, and the wall presses both bumpers.
    drag(floor->RobotInPicture(), {0, -2000});
    EXPECT_EQ(Robot().place.y, 150 - 11);
    EXPECT_TRUE(host.State().inputs.digital[0] && host.State().inputs.digital[1]);
    QTest::mouseRelease(floor, Qt::LeftButton);
}

TEST_F(BoardWindowTest, KeysMoveTheRobotAndTheFloor) {
    auto* floor = Find<FloorWidget>("Floor");
    floor->setFocus();
    QTest::keyClick(floor, Qt::Key_Up);
    QTest::keyClick(floor, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(Robot().place.y, Start().place.y + 1);
    EXPECT_NEAR(Robot().heading, 0.0873, 0.001);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Said("Floor").endsWith("turned by 5 degrees"); }));
    const QPointF whole = floor->RobotInPicture();
    QTest::keyClick(floor, Qt::Key_Plus);
    QTest::keyClick(floor, Qt::Key_Plus);
    QTest::keyClick(floor, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_NE(floor->RobotInPicture(), whole);
    EXPECT_EQ(Robot().place.x, Start().place.x) << "only the picture moves";
    QTest::keyClick(floor, Qt::Key_0);
    EXPECT_EQ(floor->RobotInPicture(), whole);
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
