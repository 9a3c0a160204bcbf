// A folder whose disk hangs, as that of a network that is gone: the windows stay alive, say what
// they wait for, and lose nothing when the user would not wait.
#include "tests/desktop/hanging_disk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QTabBar>
#include <QToolTip>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/ui/shell/main_window_fixture.h"
#include "ui/dialogs/options_state.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

const QString kProgram = "BEGIN PROGRAM\nWAIT 1\nEND PROGRAM\n";

class HangingDiskTest : public MainWindowTest {
  protected:
    HangingDiskTest() {
        EXPECT_TRUE(QDir(folder_.path()).mkdir("dead"));
        window.reset();
        workbench->disk = std::make_shared<Disk>(hanging_.Backend());
        Start();
    }
    ~HangingDiskTest() override { hanging_.Answer(); }

    QString Dead(const QString& name) const { return FilePath("dead/" + name); }
    SourceWindow* OpenDead(const QByteArray& text) {
        WriteFile("dead/a.txt", text);
        return window->Files().Open(Dead("a.txt"));
    }
    QString TabText() const { return window->findChild<QTabBar*>("TabStripFiles")->tabText(0); }

    HangingFolder hanging_{FilePath("dead")};
};

TEST_F(HangingDiskTest, OpeningCanBeGivenUp) {
    WriteFile("dead/a.txt", kProgram.toUtf8());
    hanging_.Hang();
    dialogs.keepsWaiting = false;
    EXPECT_EQ(window->Files().Open(Dead("a.txt")), nullptr);
    EXPECT_EQ(dialogs.waited, QStringList{Dead("a.txt")});
    EXPECT_EQ(dialogs.shown, QStringList()) << "the user knows";
    dialogs.keepsWaiting = true;
    QTimer::singleShot(20, [this] { hanging_.Answer(); });
    ASSERT_NE(window->Files().Open(Dead("a.txt")), nullptr);
    EXPECT_EQ(FrontSource()->Text(), kProgram.trimmed());
}

TEST_F(HangingDiskTest, ATextThatIsNotSavedIsSaidToBe) {
    ASSERT_NE(OpenDead("; old\n"), nullptr);
    Type("; new\n");
    hanging_.Hang();
    dialogs.keepsWaiting = false;
    Press(CommandId::Save);
    EXPECT_EQ(dialogs.waited, QStringList{Dead("a.txt")});
    EXPECT_TRUE(LastShown().startsWith("a.txt is not saved. ")) << LastShown().toStdString();
    EXPECT_TRUE(FrontSource()->SourceChanged());
    EXPECT_EQ(TabText(), "a.txt*");
    // What goes on by itself asks nothing of the user.
    Type("; and more\n");
    QTest::qWait(500);
    EXPECT_EQ(dialogs.waited.size(), 1);
    hanging_.Answer();
    dialogs.keepsWaiting = true;
    Press(CommandId::Save);
    EXPECT_EQ(TabText(), "a.txt");
    EXPECT_TRUE(ReadFile("dead/a.txt").contains("and more"));
    QTest::qWait(300);
    EXPECT_EQ(dialogs.questions, QStringList()) << "nobody else has changed the file";
}

TEST_F(HangingDiskTest, ClosingKeepsWhatCannotBeSaved) {
    ASSERT_NE(OpenDead("; old\n"), nullptr);
    Type("; new\n");
    hanging_.Hang();
    dialogs.keepsWaiting = false;
    dialogs.saveAnswer = SaveAnswer::Save;
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(FrontSource()->SourceChanged());
}

TEST_F(HangingDiskTest, CompilingWaitsForIncludedFilesOnce) {
    WriteFile("dead/part.txt", "DEFINE BYTE Part = 0\n");
    Write("main.txt", "INCLUDE \"part.txt\"\nINCLUDE \"part.txt\"\n" + kProgram);
    settings->SaveSetting(SettingNumber::SourceFolder, FilePath("dead").toStdString());
    hanging_.Hang();
    dialogs.keepsWaiting = false;
    Press(CommandId::Run);
    EXPECT_EQ(dialogs.waited, QStringList{Dead("part.txt")});
    EXPECT_EQ(Child("frmVirtualBoard"), nullptr);
    hanging_.Answer();
    FrontSource()->SetText("INCLUDE \"part.txt\"\n" + kProgram);
    Press(CommandId::Run);
    EXPECT_NE(Child("frmVirtualBoard"), nullptr);
}

/// To open a pipe that nobody reads waits for a reader.
TEST_F(HangingDiskTest, AnObjectFileThatIsAPipeStopsNothing) {
    Write("main.txt", kProgram);
    const std::string pipe = PathOf("main.obj");
    ASSERT_EQ(mkfifo(pipe.c_str(), S_IRUSR | S_IWUSR), 0);
    dialogs.keepsWaiting = false;
    Press(CommandId::CompileSource);
    EXPECT_EQ(dialogs.waited, QStringList{FilePath("main.obj")});
    EXPECT_TRUE(LastShown().endsWith(kNoAnswer)) << LastShown().toStdString();
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_GE(reader, 0);
    // Whoever waited for it is done, and what is asked next is answered.
    dialogs.keepsWaiting = true;
    EXPECT_TRUE(workbench->disk->Ask(FilePath("a"), Patience::WhileWanted, [] { return true; }));
    close(reader);
}

TEST_F(HangingDiskTest, TheOptionsOpenWithAFolderThatDoesNotAnswer) {
    settings->SaveSetting(SettingNumber::SourceFolder, FilePath("dead").toStdString());
    hanging_.Hang();
    QStringList failures;
    LoadOptions(*settings, *workbench->disk, failures);
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().endsWith(kNoAnswer)) << failures.first().toStdString();
}

TEST_F(HangingDiskTest, TheBoxSaysWhatIsWaitedForAndHasAWayOut) {
    DesktopDialogs desktop;
    for (const bool isCancelled : {true, false}) {
        bool isDone = false;
        QString said;
        QTimer::singleShot(50, [&] {
            auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            said = box->labelText();
            if (isCancelled) {
                QTest::mouseClick(box->findChild<QAbstractButton*>(), Qt::LeftButton);
            } else {
                isDone = true;
            }
        });
        desktop.WaitFor(window.get(), "/net/school/a.txt", [&] { return isDone; });
        EXPECT_EQ(said, "Waiting for /net/school/a.txt...");
        EXPECT_EQ(isDone, !isCancelled);
    }
}

/// Qt's own file dialog would ask a disk that hangs for each text that it is given.
TEST_F(HangingDiskTest, APathThatDoesNotAnswerCannotBeTypedIntoAFileDialog) {
    WriteFile("alive.txt", kProgram.toUtf8());
    WriteFile("dead/a.txt", kProgram.toUtf8());
    DesktopDialogs desktop(hanging_.Backend());
    for (const bool isForSaving : {false, true}) {
        hanging_.Hang();
        QStringList texts;
        QStringList tips;
        QTimer::singleShot(50, [&] {
            auto* const box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            auto* const edit = box->findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(edit, nullptr);
            QObject::connect(edit, &QLineEdit::textChanged, box,
                             [&](const QString& text) { texts += text; });
            for (const QString& path : {Dead("a.txt"), QString("dead/a.txt")}) {
                edit->clear();
                QTest::keyClicks(edit, path);
                tips += QToolTip::text();
                QToolTip::hideText();
                edit->clear();
                QApplication::clipboard()->setText(path);
                QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
                EXPECT_EQ(edit->text(), "");
            }
            edit->clear();
            QTest::keyClicks(edit, isForSaving ? "new.txt" : "alive.txt");
            QTest::keyClick(edit, Qt::Key_Return);
        });
        const FileChoice choice{"Choose", folder_.path(), "All Files (*.*)|*.*", {}, {}};
        const auto chosen = isForSaving ? desktop.ChooseFileToSave(window.get(), choice)
                                        : desktop.ChooseFileToOpen(window.get(), choice);
        EXPECT_TRUE(texts.contains(FilePath("dea")));
        EXPECT_THAT(texts.filter(QRegularExpression("dead(/|$)")), ::testing::IsEmpty());
        EXPECT_THAT(tips, ::testing::Each(::testing::ResultOf(
                              [](const QString& tip) { return tip.contains("does not answer"); },
                              ::testing::IsTrue())));
        EXPECT_EQ(chosen, FilePath(isForSaving ? "new.txt" : "alive.txt"));
        hanging_.Answer();
    }
}

}  // namespace
}  // namespace zentro
