// Recordings made in the window, replayed by the real zentro-board and in the window again.
#include <QFileInfo>
#include <QLabel>
#include <QProcess>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>

#include "desktop/board_state.h"
#include "desktop/virtual_board_host.h"
#include "tests/support/compile_fixture.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"

namespace zentro {
namespace {

using testing::HasSubstr;

class RecordingWindowTest : public MainWindowTest {
  protected:
    VirtualBoardHost& Host() { return window->Board().VirtualBoard(); }
    void WriteExample(const char* name) {
        const std::string path = std::string(ZENTRO_EXAMPLES_FOLDER) + "/" + name + ".txt";
        Write("example.txt", QString::fromStdString(test::ReadFile(path)));
    }
    void SaveAs(const QString& name) {
        dialogs.fileToSave = FilePath(name);
        Press(CommandId::SaveRecording);
    }

    struct Replay {
        int status = -1;
        QString printed;
        QString problems;
    };
    Replay ReplayFile(const QString& name) {
        QProcess process;
        process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        process.start(ZENTRO_BOARD_PROGRAM, {"replay", FilePath(name), "--events"});
        EXPECT_TRUE(process.waitForFinished(60'000));
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    static constexpr int kDiffers = 6;
    static constexpr int kGoalsMissed = 5;
};

TEST_F(RecordingWindowTest, TheCommandLineReplaysWhatTheWindowSaw) {
    Press(CommandId::SaveRecording);
    EXPECT_THAT(LastShown().toStdString(), HasSubstr("there is nothing to record yet"));
    WriteExample("line_follower");
    Press(CommandId::Run);
    Host().PressButton(0);
    Host().Advance(500);
    Host().LetButtonGo(0);
    Host().Advance(900);
    Host().PlaceRobot({{60.123, 61.7}, 0.3});
    Host().Advance(800);
    Host().StepBack();
    Host().StepBack();
    Host().Resume();
    Inputs inputs = Host().State().inputs;
    inputs.analog[0] = 33;
    Host().SetInputs(inputs);
    Host().Advance(700);
    Host().Pause();
    SaveAs("run.recording");
    EXPECT_EQ(dialogs.lastChoice.suggestedName, "example.recording");
    EXPECT_EQ(dialogs.shown.size(), 1) << LastShown().toStdString();
    const Replay replay = ReplayFile("run.recording");
    EXPECT_EQ(replay.status, kGoalsMissed) << replay.problems.toStdString();
    EXPECT_THAT(replay.printed.toStdString(), HasSubstr(" motor1 F 60"));
    EXPECT_THAT(replay.printed.toStdString(),
                HasSubstr("steps\t" + std::to_string(Host().State().processor.steps)));

    // Another output than was seen is found out.
    QByteArray text = ReadFile("run.recording");
    const auto at = text.lastIndexOf("motor1 F");
    ASSERT_GT(at, 0);
    WriteFile("other.recording", text.replace(at, 8, "motor1 B"));
    EXPECT_EQ(ReplayFile("other.recording").status, kDiffers);

    dialogs.fileToSave = FilePath("missing/run.recording");
    Press(CommandId::SaveRecording);
    EXPECT_THAT(LastShown().toStdString(), HasSubstr("run.recording was not saved: "));
}

class ReplayWindowTest : public RecordingWindowTest {
  protected:
    /// A run of the line follower with hands, steps and steps back, kept in a file.
    void Record() {
        WriteExample("line_follower");
        Press(CommandId::Run);
        Host().PressButton(0);
        Host().Advance(500);
        Host().LetButtonGo(0);
        Host().Advance(900);
        Host().PlaceRobot({{60.123, 61.7}, 0.3});
        Host().Advance(800);
        for (int steps = 0; steps < 7; ++steps)
            Host().StepBack();
        Host().Step();
        Host().Resume();
        Inputs inputs = Host().State().inputs;
        inputs.analog[0] = 33;
        Host().SetInputs(inputs);
        Host().Advance(700);
        Host().Pause();
        end = Host().World();
        SaveAs("run.recording");
        ASSERT_TRUE(dialogs.shown.isEmpty()) << LastShown().toStdString();
    }
    void Open(const QString& name) {
        dialogs.fileToOpen = FilePath(name);
        Press(CommandId::OpenRecording);
    }
    void AdvanceToTheEnd() {
        for (int rounds = 0; rounds < 1000 && !Host().IsPaused(); ++rounds)
            Host().Advance(173);
        EXPECT_TRUE(Host().IsReplayOver());
    }
    /// The line that is lit as the next one.
    QString LitText() const {
        constexpr unsigned kHereBit = 1 << 2;
        SourceEditor& editor = *FrontSource()->Editor();
        for (int line = 0; line < editor.lines(); ++line) {
            if ((editor.markersAtLine(line) & kHereBit) != 0) return editor.text(line);
        }
        return {};
    }
    QString Notice() const { return Child<QLabel>("noticeText")->text(); }
    void ExpectTheEnd() {
        EXPECT_THAT(Notice().toStdString(), HasSubstr("the outputs were those that were recorded"));
        const Board& board = Host().State();
        EXPECT_EQ(board.clock, end.board.clock);
        EXPECT_EQ(board.processor.steps, end.board.processor.steps);
        EXPECT_TRUE(board.memory == end.board.memory);
        EXPECT_TRUE(board.outputs == end.board.outputs);
        EXPECT_TRUE(board.inputs == end.board.inputs);
        EXPECT_TRUE(Host().World().state.robot == end.state.robot);
    }
    Scene end;
};

TEST_F(ReplayWindowTest, ARecordingIsReplayedExactlyHoweverOneGoesThroughIt) {
    Record();
    const std::uint64_t begin = end.board.clock - Host().Record().recording.ticks;
    KillAndRestart();
    Open("run.recording");
    ASSERT_TRUE(Host().IsReplaying()) << LastShown().toStdString();
    EXPECT_TRUE(Host().IsPaused());
    EXPECT_EQ(Host().State().clock, begin);
    EXPECT_THAT(Notice().toStdString(), HasSubstr("stands at its beginning"));
    ASSERT_NE(FrontSource(), nullptr) << "its source lies beside it";
    EXPECT_TRUE(Host().KnowsLines());
    EXPECT_FALSE(Host().CanStepBack());
    // The lit line is one of the program, not the routine over which the first instruction leads.
    EXPECT_TRUE(QTest::qWaitFor([this] { return LitText().startsWith("BEGIN PROGRAM"); }))
        << LitText().toStdString();
    Click("BtnBoardRun");
    AdvanceToTheEnd();
    ExpectTheEnd();

    // Back and forth, single, by lines, slowly and with a breakpoint.
    for (int steps = 0; steps < 300; ++steps)
        Host().StepBack();
    EXPECT_FALSE(Host().IsReplayOver());
    const std::uint64_t back = Host().State().processor.steps;
    Click("BtnBoardStep");
    EXPECT_EQ(Host().State().processor.steps, back + 1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Child("BtnBoardStepBack")->isEnabled(); }));
    Click("BtnBoardStepBack");
    EXPECT_EQ(Host().State().processor.steps, back);
    for (int steps = 0; steps < 30; ++steps)
        Host().Step();
    Click("BtnBoardLineBack");
    for (int lines = 0; lines < 20; ++lines)
        Host().StepLine(lines % 2 == 0 ? LineStep::Over : LineStep::Into);
    Host().Pause();
    Host().SetSpeed({BoardSpeed::Kind::SlowMotion, 100'000});
    Host().Run();
    Host().Advance(100);
    Host().SetSpeed({BoardSpeed::Kind::FullSpeed});
    Host().SetBreakpoints({{0, {}}});
    Host().Run();
    Host().Advance(20);
    Host().SetSpeed({});
    AdvanceToTheEnd();
    ExpectTheEnd();

    // While it is replayed it can be kept, and is the same.
    SaveAs("again.recording");
    EXPECT_EQ(ReplayFile("again.recording").printed, ReplayFile("run.recording").printed);
    Click("BtnBoardRun");
    EXPECT_FALSE(Host().IsReplaying());
    EXPECT_THAT(Notice().toStdString(), HasSubstr("is over: the program goes on by itself"));
    Host().Advance(100);
    EXPECT_GT(Host().State().clock, end.board.clock);
}

TEST_F(ReplayWindowTest, AHandEndsTheReplayAndIsTold) {
    Record();
    using Hand = std::function<void()>;
    const std::vector<std::pair<const char*, Hand>> hands = {
        {"input",
         [this] {
             Inputs inputs = Host().State().inputs;
             inputs.digital[0] = !inputs.digital[0];
             Host().SetInputs(inputs);
         }},
        {"button", [this] { Host().PressButton(0); }},
        {"robot",
         [this] {
             Host().PlaceRobot({{30, 30}, 0});
         }},
        {"reset", [this] { Click("BtnBoardReset"); }},
        {"serial line", [this] { Host().Link().Write("k"); }},
    };
    for (const auto& [name, hand] : hands) {
        SCOPED_TRACE(name);
        Open("run.recording");
        Click("BtnBoardRun");
        Host().Advance(300);
        ASSERT_TRUE(Host().IsReplaying());
        hand();
        EXPECT_FALSE(Host().IsReplaying());
        EXPECT_THAT(Notice().toStdString(), HasSubstr("ends here"));
        Click("noticeAccept");
        EXPECT_TRUE(Host().IsReplaying()) << "it begins again";
    }
    Click("BtnBoardRun");
    AdvanceToTheEnd();
    Press(CommandId::Run);
    EXPECT_FALSE(Host().IsReplaying());
}

TEST_F(ReplayWindowTest, ABadRecordingIsRefusedInOneMessageAndNothingChanges) {
    Record();
    const QByteArray text = ReadFile("run.recording");
    WriteFile("cut.recording", text.left(text.size() / 2));
    WriteFile("empty.recording", "");
    WriteFile("source.recording",
              QByteArray(text).replace("\"example.txt\"", "\"../example.txt\""));
    for (const char* name :
         {"cut.recording", "empty.recording", "missing.recording", "source.recording"}) {
        SCOPED_TRACE(name);
        const auto shownBefore = dialogs.shown.size();
        Open(name);
        EXPECT_EQ(dialogs.shown.size(), shownBefore + 1);
        EXPECT_THAT(LastShown().toStdString(),
                    HasSubstr(std::string(name) + " cannot be replayed: "));
        EXPECT_FALSE(Host().IsReplaying());
        EXPECT_EQ(Host().State().clock, end.board.clock);
    }
    // What does not come out as it was recorded is told, and so is a source that is another by now.
    const auto at = text.lastIndexOf("motor1 F");
    ASSERT_GT(at, 0);
    WriteFile("other.recording", QByteArray(text).replace(at, 8, "motor1 B"));
    WriteFile("example.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    KillAndRestart();
    Open("other.recording");
    EXPECT_THAT(Notice().toStdString(),
                HasSubstr("example.txt is not the program that was recorded"));
    Click("BtnBoardRun");
    AdvanceToTheEnd();
    EXPECT_THAT(Notice().toStdString(),
                HasSubstr("the outputs were not those that were recorded: "));
}

}  // namespace
}  // namespace zentro
