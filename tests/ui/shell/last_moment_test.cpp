#include "ui/shell/last_moment.h"

#include <QApplication>
#include <QProcess>
#include <QTimer>
#include <csignal>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <unistd.h>

#include "desktop/recovery_store.h"
#include "tests/ui/shell/main_window_fixture.h"

namespace zentro {
namespace {

constexpr const char* kFolder = "ZENTRO_TEST_FOLDER";  // of the program that is ended
constexpr const char* kLoss = "ZENTRO_TEST_LOSS";  // how it loses its display; empty: it does not

/// The program that is ended. It is another process, which runs this one case.
class LastMomentTest : public MainWindowTest {
  protected:
    LastMomentTest() {
        if (!qEnvironmentVariableIsSet(kFolder)) return;
        workbench->dataFolder = qEnvironmentVariable(kFolder).toStdString();
        Start();
    }

    /// As Qt does it.
    static void LoseDisplay(const QString& loss) {
        if (loss == "X11") {
            qWarning("The X11 connection broke (error 1). Did the X11 server die?");
            _exit(1);
        } else if (loss == "Wayland") {
            std::thread([] {
                qWarning("The Wayland connection broke. Did the Wayland compositor die?");
                _exit(1);
            }).detach();
        }
    }
};

TEST_F(LastMomentTest, DISABLED_IsEnded) {
    Press(CommandId::NewSource);
    Type("beep");
    const LastMoment lastMoment(
        [this](Ending ending) { EXPECT_EQ(window->KeepUnsaved(ending), ""); });
    QTimer::singleShot(0, [] {
        std::cout << "ready" << std::endl;
        LoseDisplay(qEnvironmentVariable(kLoss));
    });
    const int status = QApplication::exec();
    // Whatever becomes of the windows.
    dialogs.saveAnswer = SaveAnswer::Discard;
    EXPECT_TRUE(window->close());
    window.reset();
    std::cout.flush();
    if (!HasFailure()) _exit(status);
}

/// Runs the case above, ends it, and looks at what it left.
class EndedProgramTest : public UiTest {
  protected:
    EndedProgramTest() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(kFolder, FilePath("data"));
        environment.insert("TMPDIR", folder_.path());  // what it leaves is removed with it
        program_.setProcessEnvironment(environment);
        program_.setProcessChannelMode(QProcess::MergedChannels);
    }
    ~EndedProgramTest() override {
        program_.kill();
        program_.waitForFinished();
    }

    void Begin() {
        program_.start(
            QCoreApplication::applicationFilePath(),
            {"--gtest_filter=LastMomentTest.DISABLED_IsEnded", "--gtest_also_run_disabled_tests"});
        while (!output_.contains("ready") && program_.waitForReadyRead()) {
            output_ += program_.readAll();
        }
        ASSERT_TRUE(output_.contains("ready")) << output_.toStdString();
    }
    void Send(int signal) {
        const auto process = static_cast<pid_t>(program_.processId());
        ASSERT_GT(process, 0) << "has ended";
        EXPECT_EQ(kill(process, signal), 0);
    }
    void ExpectEnd(int status) {
        EXPECT_TRUE(program_.waitForFinished());
        output_ += program_.readAll();
        EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit) << output_.toStdString();
        EXPECT_EQ(program_.exitCode(), status) << output_.toStdString();
        const std::vector<UnsavedText> unsaved = RecoveryStore(FilePath("data/recovery")).Unsaved();
        ASSERT_EQ(unsaved.size(), 1U);
        EXPECT_EQ(unsaved[0].copy.text.trimmed(), "beep");
    }

    QProcess program_;
    QByteArray output_;
};

class EndedBySignalTest : public EndedProgramTest, public ::testing::WithParamInterface<int> {};

TEST_P(EndedBySignalTest, TheLastWordsAreKept) {
    Begin();
    // As from those who end a group of processes and each of them.
    Send(GetParam());
    Send(GetParam());
    ExpectEnd(128 + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedBySignalTest, ::testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST_F(EndedProgramTest, ASignalThatItsUserIgnoresIsIgnored) {
    program_.setChildProcessModifier([] { std::signal(SIGHUP, SIG_IGN); });
    Begin();
    Send(SIGHUP);
    EXPECT_FALSE(program_.waitForFinished(500));
    Send(SIGTERM);
    ExpectEnd(128 + SIGTERM);
}

TEST_F(EndedProgramTest, TheLastWordsAreKeptWhenTheDisplayIsLost) {
    for (const char* loss : {"X11", "Wayland"}) {
        QDir(FilePath("data")).removeRecursively();
        QProcessEnvironment environment = program_.processEnvironment();
        environment.insert(kLoss, loss);
        program_.setProcessEnvironment(environment);
        output_.clear();
        Begin();
        ExpectEnd(1);
    }
}

TEST(LastMoment, ComesBeforeAnExceptionThatNobodyCatches) {
    int used = 0;
    const auto fail = [&](bool isFailing) {
        const LastMoment lastMoment([&](Ending ending) {
            ++used;
            EXPECT_EQ(ending, Ending::Certain);
        });
        if (isFailing) throw std::runtime_error("no more memory");
    };
    EXPECT_NO_THROW(fail(false));
    EXPECT_EQ(used, 0);
    EXPECT_THROW(fail(true), std::runtime_error);
    EXPECT_EQ(used, 1);
}

}  // namespace
}  // namespace zentro
