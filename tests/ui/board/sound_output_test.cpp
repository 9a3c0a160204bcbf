// What the desktop program does when the program that plays the sound does not.
#include "desktop/sound_output.h"

#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gmock/gmock.h>

#include "tests/ui/board/board_programs.h"
#include "tests/ui/ui_fixture.h"
#include "ui/board/sound_controls.h"

namespace zentro {
namespace {

using namespace std::chrono_literals;
using testing::Each;
using testing::HasSubstr;

struct SoundTest : UiTest {
    /// A program in place of zentro-sound: it keeps what it is told, and does as the script says.
    SoundOutput& Player(const std::string& script, std::chrono::milliseconds patience = 60s) {
        const std::string path = (folder_.path() + "/player").toStdString();
        std::ofstream(path) << "#!/bin/sh\n" << script << '\n';
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        output = std::make_unique<SoundOutput>(QString::fromStdString(path), patience);
        output->SetVolume(50);
        return *output;
    }

    std::string Keeping() const { return "echo playing; cat > '" + Kept() + "'"; }
    std::string Kept() const { return (folder_.path() + "/kept").toStdString(); }

    std::vector<std::string> Lines() const {
        std::ifstream file(Kept());
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    bool Becomes(SoundProblem problem) {
        return QTest::qWaitFor([&] { return output->Problem() == problem; });
    }

    std::unique_ptr<SoundOutput> output;
};

TEST_F(SoundTest, EveryWayToFailHasItsProblem) {
    for (const auto& [script, problem] : {std::pair{"echo no-device", SoundProblem::NoDevice},
                                          {"echo refused", SoundProblem::Refused},
                                          {"echo playing; echo lost", SoundProblem::Lost},
                                          {"exit 127", SoundProblem::NotInstalled},
                                          {"echo playing; kill -9 $$", SoundProblem::Lost}}) {
        Player(script).Pass({69, 10});
        EXPECT_TRUE(Becomes(problem)) << script;
    }
    output = std::make_unique<SoundOutput>("/nonexistent/zentro-sound");
    output->SetVolume(50);
    output->Pass({69, 10});
    EXPECT_TRUE(Becomes(SoundProblem::NotInstalled));
}

TEST_F(SoundTest, OneThatHangsIsGivenUp) {
    Player("exec sleep 1000", 50ms).Pass({69, 10});
    EXPECT_TRUE(Becomes(SoundProblem::NoAnswer));
    // One that begins and hangs later.
    Player("echo playing; exec sleep 1000", 200ms);
    QSignalSpy changes(output.get(), &SoundOutput::ProblemChanged);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        output->Pass({69, 10});
        return output->Problem() == SoundProblem::NoAnswer;
    }));
}

TEST_F(SoundTest, NothingIsStartedForSilence) {
    Player("echo started > '" + Kept() + "'; cat").Pass({0, 0});
    output->Pass({255, 10});
    output->SetVolume(0);
    output->Pass({69, 10});
    QTest::qWait(200);
    EXPECT_FALSE(std::filesystem::exists(Kept()));
    output->SetVolume(50);
    output->Pass({69, 10});
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(Kept()); }));
}

TEST_F(SoundTest, ItIsTriedAgainWhenTheUserAsksForIt) {
    Player("echo no-device").Pass({69, 10});
    EXPECT_TRUE(Becomes(SoundProblem::NoDevice));
    std::ofstream(folder_.path().toStdString() + "/player") << "#!/bin/sh\n" << Keeping() << '\n';
    output->Pass({69, 10});
    EXPECT_EQ(output->Problem(), SoundProblem::NoDevice);
    output->ForgetProblem();
    output->Pass({69, 11});
    EXPECT_TRUE(QTest::qWaitFor([&] { return std::filesystem::exists(Kept()); }));
    EXPECT_EQ(output->Problem(), SoundProblem::None);
}

struct HeardBoardTest : SoundTest {
    HeardBoardTest() {
        Player(Keeping());
        host.SetSoundListener([this](const SoundTick& tick) { heard.push_back(tick); });
        // Half a second, a pause of a fifth, and the same note twice.
        const std::string text = Compiled(
            "BEGIN PROGRAM\n  PLAY SOUND 69, 50\n  WAIT 70\n  PLAY SOUND 60, 20\n"
            "  WAIT 20\n  PLAY SOUND 60, 20\n  WAIT 40\nEND PROGRAM\n");
        EXPECT_EQ(host.LoadProgram(text), "");
    }

    void PassTicks(int count) {
        for (int tick = 0; tick < count; ++tick)
            host.Advance(10);
    }

    std::size_t Sounding(std::uint8_t note) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(heard, [&](const SoundTick& tick) { return tick.note == note; }));
    }

    VirtualBoardHost host;
    std::vector<SoundTick> heard;
};

TEST_F(HeardBoardTest, EveryNoteSoundsForItsTicks) {
    host.Run();
    PassTicks(130);
    EXPECT_EQ(Sounding(69), 50U);
    EXPECT_EQ(Sounding(60), 40U);
    // The second of the two is told from the first.
    EXPECT_NE(heard[75].end, heard[95].end);
}

TEST_F(HeardBoardTest, NothingSoundsWhileTheBoardIsHeld) {
    host.Run();
    PassTicks(10);
    EXPECT_EQ(heard.size(), 10U);
    host.Pause();
    PassTicks(10);
    EXPECT_TRUE(host.StepBack());
    for (int step = 0; step < 3; ++step)
        host.Step();
    EXPECT_EQ(heard.size(), 10U);
    host.Resume();
    host.SetSpeed({BoardSpeed::Kind::FullSpeed, 1});
    PassTicks(10);
    EXPECT_EQ(heard.size(), 10U);
}

TEST_F(HeardBoardTest, InSlowMotionAWaitSoundsAsLongAsItLasts) {
    host.SetSpeed({BoardSpeed::Kind::SlowMotion, 1000});
    host.Run();
    PassTicks(300);
    EXPECT_EQ(Sounding(69), 50U);
}

struct SoundControlsTest : SoundTest {
    template <typename Widget>
    Widget* Find(QWidget& window, const char* name) {
        return window.findChild<Widget*>(name);
    }

    VirtualBoardHost host;
    QWidget window;
};

TEST_F(SoundControlsTest, VolumeAndMuteAreKeptAndReached) {
    Player(Keeping());
    {
        SoundControls controls(host, *output, *settings, &window);
        auto* mute = Find<QToolButton>(window, "BtnMute");
        auto* volume = Find<QSlider>(window, "SoundVolume");
        window.show();
        EXPECT_EQ(volume->value(), 60);
        QTest::keyClick(volume, Qt::Key_Right);
        EXPECT_EQ(SoundVolume(*settings), 70U);
        QTest::keyClick(mute, Qt::Key_Space);
        EXPECT_EQ(SoundVolume(*settings), 0U);
    }
    SoundControls again(host, *output, *settings, &window);
    EXPECT_TRUE(Find<QToolButton>(window, "BtnMute")->isChecked());
    // Whoever turns it up wants to hear it.
    QTest::keyClick(Find<QSlider>(window, "SoundVolume"), Qt::Key_Left);
    EXPECT_EQ(SoundVolume(*settings), 60U);
    EXPECT_FALSE(Find<QToolButton>(window, "BtnMute")->isChecked());
}

TEST_F(SoundControlsTest, ASentenceSaysWhyNoNoteIsHeardUntilItIsClosed) {
    Player("echo no-device");
    SoundControls controls(host, *output, *settings, &window);
    output->SetVolume(60);
    const auto& sentence = *controls.ProblemRow()->findChild<QLabel*>("SoundProblem");
    auto* const mute = Find<QToolButton>(window, "BtnMute");
    auto* const close = controls.ProblemRow()->findChild<QToolButton*>("BtnCloseSoundProblem");
    output->Pass({69, 10});
    ASSERT_TRUE(Becomes(SoundProblem::NoDevice));
    EXPECT_TRUE(controls.ProblemRow()->isHidden()) << "this program has no notes";
    ASSERT_EQ(host.LoadProgram(Compiled("BEGIN PROGRAM\n  PLAY SOUND 69, 50\nEND PROGRAM\n")), "");
    host.Run();
    host.Advance(10);
    controls.Refresh();
    EXPECT_THAT(sentence.text().toStdString(), HasSubstr("this computer has no sound output"));
    EXPECT_FALSE(controls.ProblemRow()->isHidden());
    close->click();
    EXPECT_TRUE(controls.ProblemRow()->isHidden());
    controls.Refresh();
    EXPECT_TRUE(controls.ProblemRow()->isHidden());
    EXPECT_TRUE(mute->toolTip().startsWith(sentence.text())) << "it is still told";
    mute->click();
    EXPECT_FALSE(mute->toolTip().contains("no sound output"));
    mute->click();
    output->Pass({69, 11});
    ASSERT_TRUE(Becomes(SoundProblem::NoDevice));
    EXPECT_FALSE(controls.ProblemRow()->isHidden()) << "whoever wants to hear it is told again";
}

}  // namespace
}  // namespace zentro
