// The source window with its file, its marks and what is searched in it.

#include "ui/editor/source_window.h"

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QHelpEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolTip>
#include <QUrl>

#include "desktop/live_check.h"
#include "desktop/text_file.h"
#include "tests/ui/files/child_process.h"
#include "tests/ui/ui_fixture.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"

namespace zentro {
namespace {

class SourceWindowTest : public UiTest {
  protected:
    SourceWindowTest() : window(*workbench, programs) {
        window.resize(700, 500);
        window.show();
    }

    void Load(const QByteArray& bytes) {
        WriteFile("line.txt", bytes);
        ASSERT_TRUE(window.LoadFile(folder_.path(), "line.txt"));
    }
    void Type(const char* text) { QTest::keyClicks(window.Editor(), text); }
    bool HasMark(int line) { return window.Editor()->markersAtLine(line - 1) != 0; }

    /// What a check or a compile finds in the text as it stands.
    void Report(const std::vector<LineMessage>& messages) {
        ProgramReport report;
        report.root = window.File().key;
        report.texts[report.root] = window.File().revision;
        report.messages[report.root] = messages;
        programs.SetReport(report);
    }

    Programs programs{*workbench->disk};
    SourceWindow window;
};

TEST_F(SourceWindowTest, KeepsAFileAsItWas) {
    const QByteArray bytes = "; \xC3\xA4\r\nBEGIN PROGRAM\r\n\r\nEND PROGRAM\r\n";
    Load(bytes);
    EXPECT_EQ(window.windowTitle(), "line.txt[*] (Source Code)");
    EXPECT_EQ(window.objectName(), "frmSource");
    EXPECT_EQ(window.Editor()->objectName(), "rtfSource");
    EXPECT_EQ(window.DocStats(), "Line 1/4");
    EXPECT_FALSE(window.SourceChanged());
    EXPECT_EQ(window.SaveFile(), SaveResult::Saved);
    EXPECT_EQ(ReadFile("line.txt"), bytes);

    QSignalSpy stats(&window, &SourceWindow::DocStatsChanged);
    window.GotoLine(4);
    QTest::keyClick(window.Editor(), Qt::Key_End);
    QTest::keyClick(window.Editor(), Qt::Key_Return);
    Type("; more");
    EXPECT_TRUE(window.SourceChanged());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isWindowModified(); }));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return stats.count() > 0 && stats.last()[0] == "Line 5/5"; }));
    EXPECT_EQ(window.SaveFile(), SaveResult::Saved);
    EXPECT_EQ(ReadFile("line.txt"), bytes + "; more\r\n");
    EXPECT_FALSE(window.isWindowModified());
}

TEST_F(SourceWindowTest, ReadsItsFileAgainAsAnEdit) {
    Load("; old\n");
    WriteFile("line.txt", "end program\r\nwait");
    EXPECT_TRUE(window.Reload());
    QApplication::processEvents();
    EXPECT_EQ(window.Text(), "END PROGRAM\nwait");
    EXPECT_FALSE(window.SourceChanged());
    EXPECT_EQ(window.SaveFile(), SaveResult::Saved);
    EXPECT_EQ(ReadFile("line.txt"), "END PROGRAM\r\nwait\r\n");
    window.Undo();
    EXPECT_EQ(window.Text(), "; old");
    EXPECT_TRUE(window.SourceChanged());
}

TEST_F(SourceWindowTest, AFailureKeepsTheTextAndItsFile) {
    Load("BEGIN PROGRAM\n");
    EXPECT_FALSE(window.LoadFile(folder_.path(), "missing.txt"));
    EXPECT_TRUE(dialogs.shown.value(0).startsWith("Error Loading Source File:\n"));
    EXPECT_EQ(window.FileName(), "line.txt");
    EXPECT_EQ(window.Text(), "BEGIN PROGRAM");

    Type("x");
    dialogs.fileToSave = FilePath("no such folder/other.txt");
    EXPECT_EQ(window.SaveFileAs(), SaveResult::Failed);
    EXPECT_TRUE(dialogs.shown.value(1).startsWith(
        "Could Not Save File. System returned the following error: \n"));
    EXPECT_GT(dialogs.shown.value(1).size(), 60);
    EXPECT_EQ(window.PathName(), folder_.path());
    EXPECT_TRUE(window.SourceChanged());
    EXPECT_EQ(window.Text(), "xBEGIN PROGRAM");
    EXPECT_EQ(ReadFile("line.txt"), "BEGIN PROGRAM\n");
}

TEST_F(SourceWindowTest, AFileWhoseSaveWasKilledIsOpenedWhole) {
    const QByteArray old = QByteArray(1000, ';') + '\n';
    WriteFile("line.txt", old);
    // A file with two names is overwritten where it is.
    ASSERT_EQ(link(PathOf("line.txt").c_str(), PathOf("same.txt").c_str()), 0);
    EXPECT_TRUE(KillAtFileSize(2000, [this] {
        static_cast<void>(SaveText(FilePath("line.txt"), {std::string(5000, 'x'), "\n"}));
    }));
    EXPECT_NE(ReadFile("line.txt"), old);
    EXPECT_TRUE(window.LoadFile(folder_.path(), "line.txt"));
    EXPECT_EQ(window.Text().size(), 1000);
    EXPECT_EQ(ReadFile("same.txt"), old);
    EXPECT_EQ(QDir(folder_.path()).entryList({".zentro-*"}, QDir::Files | QDir::Hidden),
              QStringList());
}

TEST_F(SourceWindowTest, ANewFileAsksForItsName) {
    window.NewFile(3);
    EXPECT_EQ(window.FileName(), "NewFile3");
    Type("; rest");
    EXPECT_EQ(window.SaveFile(), SaveResult::Cancelled);
    EXPECT_TRUE(window.IsNewFile());

    settings->SaveSetting(SettingNumber::SourceFolder, folder_.path().toStdString());
    ASSERT_TRUE(QDir(folder_.path()).mkdir("sub.d"));
    dialogs.fileToSave = FilePath("sub.d/robot");
    EXPECT_EQ(window.SaveFile(), SaveResult::Saved);
    EXPECT_EQ(dialogs.lastChoice.folder, folder_.path());
    EXPECT_EQ(dialogs.lastChoice.filters, "Source (Text) Files|*.txt");
    EXPECT_EQ(ReadFile("sub.d/robot.txt"), "; rest\n");
    EXPECT_EQ(window.FileTitle(), "robot.txt");
    EXPECT_FALSE(window.SourceChanged());
    EXPECT_EQ(AsText(settings->GetSetting(SettingNumber::SourceFolder)),
              window.PathName().toStdString());
    Type("x");
    dialogs.fileToSave.reset();
    EXPECT_EQ(window.SaveFile(), SaveResult::Saved);  // it has its name now
}

TEST_F(SourceWindowTest, AWrongFontIsRefusedInWords) {
    const QFont before = window.Editor()->lexer()->font(0);
    settings->SaveSetting(SettingNumber::EditorFontSize, 0.0);
    window.SetFont();
    EXPECT_TRUE(dialogs.shown.value(0).startsWith(
        "Could not set Source Window Font name or size. Error was: "));
    EXPECT_EQ(window.Editor()->lexer()->font(0), before);
}

TEST_F(SourceWindowTest, FindsAndReplaces) {
    constexpr FindOption kWord = FindOption::WholeWord;
    constexpr FindOption kCase = FindOption::MatchCase;
    Load("\xC3\xA4 speed Speeds\nSPEED\n");
    EXPECT_EQ(window.Find("Speed", false, {}), 2);  // in characters, not bytes
    EXPECT_EQ(window.Find("Speed", true, {}), 8);
    EXPECT_EQ(window.Find("Speed", true, kWord), 15);
    EXPECT_EQ(window.Find("Speed", true, {}), -1);
    EXPECT_EQ(window.Editor()->selectedText(), "SPEED");  // no match, no other selection
    EXPECT_EQ(window.Find("Speed", false, kCase), 8);
    EXPECT_EQ(window.Find("Speed", false, kCase | kWord), -1);
    EXPECT_EQ(window.Find("", false, {}), -1);

    EXPECT_EQ(window.Find("speed", false, {}), 2);
    EXPECT_FALSE(window.ReplaceIfSelected("spee", "x"));
    EXPECT_TRUE(window.ReplaceIfSelected("SPEED", "Speed it"));
    EXPECT_EQ(window.Text(), "ä Speed it Speeds\nSPEED");
    EXPECT_FALSE(window.Editor()->hasSelectedText());
    EXPECT_EQ(window.Find("speed", true, {}), 11);  // not within what was put in
    window.Undo();
    EXPECT_EQ(window.Text(), "ä speed Speeds\nSPEED");
}

TEST_F(SourceWindowTest, GoesToLines) {
    Load("one\ntwo\nthree\n");
    window.GotoLine(1);
    EXPECT_EQ(window.Editor()->selectedText(), "one");
    window.GotoLine(2);
    EXPECT_EQ(window.Editor()->selectedText(), "two");
    window.GotoLine(99);
    EXPECT_EQ(window.Editor()->selectedText(), "three");
    window.GotoLine(-1);
    EXPECT_EQ(window.Editor()->selectedText(), "one");
    EXPECT_EQ(window.TopicAtCursor().word, "one");
}

TEST_F(SourceWindowTest, AKeyTypedInAShownLineOnlyAddsToIt) {
    Load("one\n    two\nthree\n");
    window.PutCaretAt(2);
    Type("x");
    EXPECT_EQ(window.Text(), "one\n    xtwo\nthree");
    window.PutCaretAt(99);
    EXPECT_EQ(window.DocStats(), "Line 3/3");
}

TEST_F(SourceWindowTest, MarksMoveWithTheirLinesAndSayWhy) {
    Load("one\ntwo\nthree\n");
    Report({{2, Severity::Warning, "careful"}, {99, Severity::Error, "at the end"}});
    window.MarkLine(LineMark{2, "stopped here"});
    EXPECT_TRUE(HasMark(2));
    EXPECT_TRUE(HasMark(3));
    EXPECT_NE(window.Editor()->markersAtLine(1), window.Editor()->markersAtLine(2));
    window.GotoLine(1);
    QTest::keyClick(window.Editor(), Qt::Key_Home);
    QTest::keyClick(window.Editor(), Qt::Key_Return);
    EXPECT_FALSE(HasMark(2));
    window.GotoLine(3);
    EXPECT_EQ(window.MessageAtCursor(), "stopped here\nWarning: careful");

    const QPoint point(5, window.Editor()->viewport()->height() - 1);
    QHelpEvent below(QEvent::ToolTip, point, window.mapToGlobal(point));
    QApplication::sendEvent(window.Editor()->viewport(), &below);
    EXPECT_EQ(QToolTip::text(), "");
    const QPoint third(
        60, static_cast<int>(Send(*window.Editor(), QsciScintillaBase::SCI_TEXTHEIGHT) * 5 / 2));
    QHelpEvent hover(QEvent::ToolTip, third, window.mapToGlobal(third));
    QApplication::sendEvent(window.Editor()->viewport(), &hover);
    EXPECT_TRUE(QToolTip::text().contains("careful"));
    EXPECT_TRUE(QToolTip::isVisible());
    Type("x");  // what is typed is not covered
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000));

    window.MarkLine(std::nullopt);
    Report({});
    EXPECT_FALSE(HasMark(3) || HasMark(4));
}

TEST_F(SourceWindowTest, ThousandsOfMessagesAreNotFelt) {
    constexpr int kLines = 20000;
    Load(QByteArray("x\n").repeated(kLines));
    std::vector<LineMessage> messages;
    for (int line = 1; line <= kLines; ++line)
        messages.push_back({line, Severity::Error, "wrong"});
    for (int i = 0; i < 20; ++i)
        Report(messages);
    EXPECT_TRUE(HasMark(1));
    EXPECT_FALSE(HasMark(kLines));
}

TEST_F(SourceWindowTest, AMistakeIsMarkedWhileItStands) {
    Load("DEFINE BYTE Speed = 0\nBEGIN PROGRAM\n    Speed = 1\nEND PROGRAM\n");
    LiveCheck check(configuration, *settings, programs);
    EXPECT_TRUE(QTest::qWaitFor([&] { return programs.NamesFor(window.File()).size() == 1; }));
    EXPECT_FALSE(HasMark(3));

    window.GotoLine(3);
    QTest::keyClick(window.Editor(), Qt::Key_End);
    Type("x");
    EXPECT_TRUE(QTest::qWaitFor([&] { return HasMark(3); }));
    QTest::keyClick(window.Editor(), Qt::Key_Backspace);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !HasMark(3); }));
    EXPECT_EQ(ReadFile("line.txt").count('x'), 0);  // never written

    Type("x");
    EXPECT_TRUE(QTest::qWaitFor([&] { return HasMark(3); }));
    check.SetLiveCheck(false);
    EXPECT_FALSE(HasMark(3));
}

TEST_F(SourceWindowTest, FilesThatAreDroppedAreNotPasted) {
    Load("one\n");
    QSignalSpy drops(&window, &SourceWindow::FilesDropped);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/tmp/other.txt")});
    QDragEnterEvent enter(QPoint(50, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.Editor()->viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.Editor()->viewport(), &drop);
    ASSERT_EQ(drops.count(), 1);
    EXPECT_EQ(drops[0][0].toStringList(), QStringList("/tmp/other.txt"));
    EXPECT_EQ(window.Text(), "one");
}

TEST_F(SourceWindowTest, ClosingTells) {
    QSignalSpy closing(&window, &SourceWindow::FormClosing);
    window.close();
    EXPECT_EQ(closing.count(), 1);
}

}  // namespace
}  // namespace zentro
