// Recordings made in the window, replayed by the real zentro-board and in the window again.
#include <QFileInfo>
#include <QProcess>
#include <QToolButton>
#include <gmock/gmock.h>

#include "desktop/board_state.h"
#include "desktop/virtual_board_host.h"
#include "tests/support/compile_fixture.h"
#include "tests/ui/shell/main_window_fixture.h"

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

}  // namespace
}  // namespace zentro
