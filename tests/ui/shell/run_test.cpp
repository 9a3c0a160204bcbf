// From the text as it stands in the editor to the board that carries it out, with keys alone.

#include <QLabel>
#include <QStatusBar>
#include <Qsci/qsciscintilla.h>

#include "desktop/board_state.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/board_windows.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

constexpr auto kDrive = "BEGIN PROGRAM\nSET MOTOR 1, FORWARD, 60\nLOOP\nEND LOOP\nEND PROGRAM\n";

class RunTest : public MainWindowTest {
  protected:
    const Board& BoardNow() { return window->Board().VirtualBoard().State(); }
    bool Drives(int motor, int speed) {
        return QTest::qWaitFor([&] {
            const Drive& drive = BoardNow().outputs.motors[static_cast<std::size_t>(motor) - 1];
            return BoardNow().processor.running && drive.value == speed;
        });
    }
    QString Below(int line) { return FrontSource()->Editor()->annotation(line - 1); }
    QString Status() { return window->statusBar()->currentMessage(); }
};

TEST_F(RunTest, TypedTextMovesTheRobotWithoutAQuestion) {
    Press(CommandId::NewSource);
    Type(kDrive);
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(1, 60));
    EXPECT_TRUE(dialogs.questions.isEmpty());
    EXPECT_TRUE(dialogs.shown.isEmpty()) << LastShown().toStdString();
    EXPECT_NE(Child("frmVirtualBoard"), nullptr);
    EXPECT_EQ(Child("frmTerminal"), nullptr);
    EXPECT_TRUE(Status().contains("NewFile1 runs on the virtual board")) << Status().toStdString();
    EXPECT_TRUE(FrontSource()->SourceChanged()) << "nothing was saved";
    EXPECT_TRUE(FrontSource()->isAncestorOf(QApplication::focusWidget())) << "one types on";
    EXPECT_EQ(window->Board().Program().name, "NewFile1");

    Press(CommandId::Stop);
    EXPECT_FALSE(BoardNow().processor.running);
    EXPECT_EQ(BoardNow().outputs, Outputs{});
}

/// Which inputs a program waits for is seen beside the robot, and nothing that it does not use.
TEST_F(RunTest, TheInputsThatTheProgramReadsAreNamed) {
    struct Row {
        const char* lines;
        const char* buttons;  ///< empty: nothing is said of them
        bool hasAnalog;
    };
    for (const auto& [lines, buttons, hasAnalog] :
         {Row{"Pressed = BUTTON(4)\n", "The program reads button 4.", false},
          Row{"Pressed = BUTTON(6)\nPressed = BUTTON(2)\nPressed = BUTTON(6)\n",
              "The program reads buttons 2, 6.", false},
          Row{"Pressed = ANALOG(2)\n", "", true}, Row{"WAIT 1\n", "", false}}) {
        if (FrontSource() == nullptr) Press(CommandId::NewSource);
        FrontSource()->SetText(
            "DEFINE BYTE Pressed = 0\nBEGIN PROGRAM\nSET MOTOR 1, FORWARD, 60\n" + QString(lines) +
            "LOOP\nEND LOOP\nEND PROGRAM\n");
        Press(CommandId::Run);
        ASSERT_TRUE(Drives(1, 60)) << lines;
        auto* named = Child<QLabel>("UsedButtons");
        const QString expected = buttons;
        EXPECT_TRUE(QTest::qWaitFor([&] { return named->isVisible() == !expected.isEmpty(); }))
            << lines;
        EXPECT_EQ(named->isVisible() ? named->text() : QString(), expected);
        EXPECT_EQ(Child("Button1")->isVisible(), !expected.isEmpty()) << lines;
        EXPECT_EQ(Child("Analog1")->isVisible(), hasAnalog) << lines;
        Press(CommandId::Stop);
    }
}

TEST_F(RunTest, ErrorsLeadToTheFirstMistakeWithItsText) {
    Press(CommandId::NewSource);
    Type("BEGIN PROGRAM\nWAIT 10\nWAITT 10\nEND PROGRAM\nBLA\n");
    Press(CommandId::Run);
    EXPECT_EQ(FrontSource()->Editor()->CaretLine(), 3);
    EXPECT_FALSE(Below(3).isEmpty());
    EXPECT_EQ(Below(3).simplified(), FrontSource()->MessageAtCursor().simplified());
    EXPECT_TRUE(Status().contains("does not run yet")) << Status().toStdString();
    EXPECT_EQ(Child("frmVirtualBoard"), nullptr);
    FrontSource()->SetText(kDrive);
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(1, 60));
    EXPECT_TRUE(Below(3).isEmpty());
}

TEST_F(RunTest, TheFileInFrontRunsWhateverTheMainFileIs) {
    Write("one.txt", kDrive);
    Write("two.txt", QString(kDrive).replace("MOTOR 1", "MOTOR 2"));
    ChooseMain(0);
    window->Files().BringToFront(window->Files().Windows().at(1)->Id());
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(2, 60));
    EXPECT_EQ(window->Board().Program().name, "two.txt");
    EXPECT_EQ(window->OpenPrograms().Main()->name, "one.txt") << "Run chooses nothing";
    EXPECT_FALSE(QFile::exists(FilePath("two.obj"))) << "and writes nothing";
}

TEST_F(RunTest, AnIncludedFileRunsTheProgramThatItBelongsTo) {
    Write("main.txt",
          "INCLUDE \"part.txt\"\nBEGIN PROGRAM\nSET MOTOR 1, FORWARD, Fast\nLOOP\n"
          "END LOOP\nEND PROGRAM\n");
    WriteFile("part.txt", "DEFINE CONSTANT Fast = 10\n");
    ChooseMain(0);
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(1, 10));
    window->Files().OpenFile(folder_.path(), "part.txt");
    FrontSource()->SetText("DEFINE CONSTANT Fast = 33\n");
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(1, 33)) << "with the text as it stands in the editor";
    EXPECT_EQ(window->Board().Program().name, "main.txt");
}

TEST_F(RunTest, AMistakeInAFileThatIsNotOpenOpensIt) {
    WriteFile("part.txt", "DEFINE BYTE Speed\nDEFINE BYTTE Way\n");
    Write("main.txt", "INCLUDE \"part.txt\"\nBEGIN PROGRAM\nWAITT 1\nEND PROGRAM\n");
    ChooseMain(0);
    Press(CommandId::Run);
    ASSERT_EQ(FrontSource()->FileName(), "part.txt");
    EXPECT_EQ(FrontSource()->Editor()->CaretLine(), 2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Below(2).contains("BYTTE"); }))
        << Below(2).toStdString();
}

TEST_F(RunTest, SaysWhatItLacks) {
    Press(CommandId::Run);
    EXPECT_TRUE(Status().contains("no program to run")) << Status().toStdString();
    EXPECT_FALSE(window->Action(CommandId::Stop)->isEnabled());
    Press(CommandId::OpenVirtualBoard);
    EXPECT_TRUE(window->Action(CommandId::Stop)->isEnabled());
}

TEST_F(RunTest, ARunningProgramGivesWayToTheNextRun) {
    Press(CommandId::NewSource);
    FrontSource()->SetText(kDrive);
    Press(CommandId::Run);
    ASSERT_TRUE(Drives(1, 60));
    window->Board().VirtualBoard().Pause();
    FrontSource()->SetText(QString(kDrive).replace("60", "20"));
    Press(CommandId::Run);
    EXPECT_TRUE(Drives(1, 20)) << "a pause does not hold the new program";
}

}  // namespace
}  // namespace zentro
