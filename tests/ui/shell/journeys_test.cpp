#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTreeWidget>

#include "desktop/board_state.h"
#include "desktop/virtual_board_host.h"
#include "model/address.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/shell/compile_commands.h"
#include "ui/shell/source_files.h"

namespace zentro {

class JourneyTest : public MainWindowTest {
  protected:
    const Board& TheBoard() { return window->Board().VirtualBoard().State(); }
    QString ScreenText() { return Child<QPlainTextEdit>("txtTerminal")->toPlainText(); }
    bool WaitForScreen(const QString& text) {
        return QTest::qWaitFor([&] { return ScreenText().contains(text); });
    }
    /// Types into the terminal.
    void Say(const QString& text) {
        QWidget* screen = Child("txtTerminal");
        QTest::keyClicks(screen, text);
        QTest::keyClick(screen, Qt::Key_Return);
    }
};

// What a pupil without hardware does in the first lesson.
TEST_F(JourneyTest, FromAnEmptyFileToARobotThatMoves) {
    Press(CommandId::NewSource);
    Type(
        "define byte Speed = 40\nbegin program\nset motor 1, \"F\", Sped\nwait 500\nend program\n");
    dialogs.fileToSave = FilePath("first");
    Press(CommandId::Save);
    EXPECT_EQ(FrontSource()->FileName(), "first.txt");
    EXPECT_TRUE(FrontSource()->Text().startsWith("DEFINE BYTE Speed = 40\nBEGIN PROGRAM\n"))
        << FrontSource()->Text().toStdString();

    // The mistake is found, and a double click on its message leads to it.
    Press(CommandId::CompileSource);
    CompilerOutputWindow* output = window->Compiler().Output();
    ASSERT_NE(output, nullptr);
    ASSERT_EQ(output->GetErrorCount(), 1);
    output->ShowNextMessage();
    EXPECT_EQ(FrontSource()->DocStats(), "Line 3/6");
    SourceEditor* editor = FrontSource()->Editor();
    EXPECT_FALSE(editor->hasSelectedText()) << "the next key would delete it";
    const auto* summary = output->findChild<QLabel*>("lblSummary");
    EXPECT_EQ(summary->text(), "1 error, no warnings");
    QTest::keyClick(editor, Qt::Key_End);
    QTest::keyClick(editor, Qt::Key_Backspace);
    Type("ed");
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return summary->text() == "1 error, no warnings. The text has been changed since.";
    })) << summary->text().toStdString();
    Press(CommandId::CompileSource);
    ASSERT_EQ(window->Compiler().Output()->GetErrorCount(), 0)
        << window->Compiler().Output()->Messages().size();
    EXPECT_FALSE(ReadFile("first.obj").isEmpty());

    // The virtual board, and there the program moves the robot.
    Press(CommandId::OpenVirtualBoard);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return window->Action(CommandId::DownloadCurrent)->isEnabled(); }));
    ASSERT_TRUE(WaitForScreen("Kinetron"));
    window->Files().BringToFront(1);
    Press(CommandId::DownloadCurrent);
    ASSERT_TRUE(QTest::qWaitFor([&] { return TheBoard().outputs.motors[0].value == 40; }, 10'000));
    EXPECT_TRUE(WaitForScreen("Download Complete. Sent")) << ScreenText().toStdString();
    // It is seen, whatever stood before it.
    const auto* area = window->findChild<QMdiArea*>();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return area->activeSubWindow()->widget() == Child("frmVirtualBoard"); }));
    Click("BtnStop");
    ASSERT_TRUE(QTest::qWaitFor([&] { return TheBoard().outputs.motors[0].value == 0; }));
}

TEST_F(JourneyTest, StepsThroughAProgramAndReadsItsVariables) {
    Write("count.txt",
          "DEFINE BYTE Count = 5\nBEGIN PROGRAM\n    INCREMENT Count\n    INCREMENT Count\n"
          "END PROGRAM\n");
    Press(CommandId::CompileSource);
    ASSERT_EQ(window->Compiler().Output()->GetErrorCount(), 0);
    Press(CommandId::OpenVirtualBoard);
    Press(CommandId::OpenComms);
    ASSERT_TRUE(WaitForScreen("Kinetron"));
    Press(CommandId::DownloadSaved);  // cancelled: nothing happens
    EXPECT_TRUE(dialogs.lastChoice.filters.contains("*.odn"));
    dialogs.fileToOpen = FilePath("count.obj");
    Press(CommandId::DownloadSaved);
    ASSERT_TRUE(WaitForScreen("Loaded"));
    Say("D");
    ASSERT_TRUE(WaitForScreen("or <CR> to Step ->"));

    // Hardware is left alone meanwhile, and an address leads to its line.
    Click("BtnRun");
    EXPECT_EQ(LastShown(), "KineTron in Debug Mode and cannot alter hardware");
    for (int step = 0; step < 5 && !ScreenText().contains("INCREMENT BYTE"); ++step) {
        QTest::keyClick(Child("txtTerminal"), Qt::Key_Return);
        QTest::qWait(30);
    }
    ASSERT_TRUE(ScreenText().contains("INCREMENT BYTE"));
    const QString address = ScreenText().section("] INCREMENT", 0, 0).right(4);
    // The source follows the board, and an address leads to its line.
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return window->Files().Front()->Editor()->markersAtLine(2) != 0; }));
    window->Compiler().ShowAddress(window->OpenPrograms().LastCompiled().get(),
                                   *ParseAddress(address.toStdString()));
    EXPECT_EQ(FrontSource()->DocStats(), "Line 3/6");

    Press(CommandId::Variables);
    ASSERT_NE(Child("frmVariables"), nullptr);
    auto* list = Child<QListWidget>("ListVars");
    const auto shows = [list](const char* value) {
        const QList<QListWidgetItem*> lines = list->findItems("Count", Qt::MatchContains);
        return lines.size() == 1 && lines[0]->text().contains(QString("\t") + value + '\t');
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows("5"); }))
        << list->item(list->count() - 1)->text().toStdString();
    QTest::keyClick(Child("txtTerminal"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows("6"); }));
}

TEST_F(JourneyTest, ADivisionByZeroIsToldInPlainWordsAtItsLine) {
    Write("fault.txt",
          "DEFINE BYTE Whole = 10\nDEFINE BYTE Parts = 0\nBEGIN PROGRAM\n"
          "    Whole = Whole / Parts\nEND PROGRAM\n");
    Press(CommandId::CompileSource);
    ASSERT_EQ(window->Compiler().Output()->GetErrorCount(), 0);
    Press(CommandId::OpenVirtualBoard);
    Press(CommandId::DownloadCurrent);
    ASSERT_TRUE(QTest::qWaitFor([&] { return TheBoard().processor.fault == Fault::DivisionByZero; },
                                10'000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return FrontSource()->DocStats() == "Line 4/6"; }));
    EXPECT_TRUE(FrontSource()->MessageAtCursor().contains("Division by zero"))
        << FrontSource()->MessageAtCursor().toStdString();
}

TEST_F(JourneyTest, AProgramOfThreeFilesIsSearchedReplacedAndKept) {
    Write("main.txt",
          "INCLUDE \"one.txt\"\nINCLUDE \"two.txt\"\nBEGIN PROGRAM\n    CALL Go()\nEND PROGRAM\n");
    Write("one.txt", "DEFINE ROUTINE Go()\n    WAIT 1\nEND ROUTINE\n");
    Write("two.txt", "; Go is called from main\n");
    ChooseMain(0);
    EXPECT_FALSE(Child<QTabBar>("TabStripFiles")->tabIcon(0).isNull());
    Press(CommandId::Find);
    auto* find = Child<QDialog>("frmFind");
    ASSERT_NE(find, nullptr);
    find->findChild<QLineEdit*>("TxtToFind")->setText("Go");
    find->findChild<QLineEdit*>("txtToReplace")->setText("Start");
    find->findChild<QAbstractButton*>("OptionOpenSource")->click();
    find->findChild<QAbstractButton*>("CheckWholeWord")->click();
    find->findChild<QAbstractButton*>("BtnFind")->click();
    EXPECT_EQ(window->Files().Front()->FileName(), "main.txt");
    for (int i = 0; i < 3; ++i) {
        find->findChild<QAbstractButton*>("BtnReplace")->click();
    }
    EXPECT_EQ(LastShown(), "Searched all open files. Search again to restart");
    EXPECT_TRUE(window->Files().Windows()[1]->Text().contains("ROUTINE Start()"));
    EXPECT_TRUE(window->Files().Windows()[2]->Text().contains("; Start is called"));
    Press(CommandId::SaveAll);
    EXPECT_TRUE(ReadFile("main.txt").contains("CALL Start()"));
    Press(CommandId::CompileSource);
    EXPECT_EQ(window->Compiler().Output()->GetErrorCount(), 0);
    // The main file stays chosen until it is reset.
    Press(CommandId::ResetMain);
    EXPECT_TRUE(Child<QTabBar>("TabStripFiles")->tabIcon(0).isNull());
}

TEST_F(JourneyTest, WhatACrashLeftIsOfferedAndTakenBack) {
    SourceWindow* source = Write("work.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    source->SetText("BEGIN PROGRAM\n    WAIT 7\nEND PROGRAM\n");
    Press(CommandId::NewSource);
    Type("; never saved ");
    KillAndRestart();
    ASSERT_EQ(window->Files().Windows().size(), 2);
    QStringList texts;
    for (const SourceWindow* open : window->Files().Windows()) {
        EXPECT_TRUE(open->SourceChanged());
        texts += open->Text().trimmed();
    }
    EXPECT_TRUE(texts.contains("; never saved"));
    EXPECT_TRUE(texts.contains("BEGIN PROGRAM\n    WAIT 7\nEND PROGRAM"));
    // Taking it back can itself be undone.
    SourceWindow* work = window->Files().Find(FilePath("work.txt"));
    ASSERT_NE(work, nullptr);
    work->Undo();
    EXPECT_EQ(work->Text().trimmed(), "BEGIN PROGRAM\nEND PROGRAM");
    EXPECT_EQ(ReadFile("work.txt").trimmed(), "BEGIN PROGRAM\nEND PROGRAM");
    // An orderly end leaves nothing to offer, and no copy that nothing leads to.
    dialogs.saveAnswer = SaveAnswer::Discard;
    EXPECT_TRUE(window->close());
    window.reset();
    const auto foldersIn = [&](const QString& folder) {
        return QDir(FilePath("data/recovery/" + folder))
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    };
    EXPECT_EQ(foldersIn("sessions"), QStringList());
    ASSERT_EQ(foldersIn("copies").size(), 1);
    EXPECT_TRUE(foldersIn("copies")[0].startsWith("work-"));
}

/// Of three texts one is taken back, one is not wanted, and then the box is closed.
TEST_F(JourneyTest, WhatIsLeftInTheOfferIsOfferedAtTheNextStart) {
    for (const char* text : {"; first", "; second", "; third"}) {
        Press(CommandId::NewSource);
        Type(text);
    }
    QStringList offered;
    dialogs.run = [&](QDialog& dialog) {
        auto* list = dialog.findChild<QTreeWidget*>("UnsavedList");
        dialog.show();
        for (const char* button : {"BtnRecover", "BtnDiscard"}) {
            for (int i = 0; i < list->topLevelItemCount(); ++i)
                offered += list->topLevelItem(i)->text(2);
            const auto wanted = list->findItems(
                QString(button) == "BtnRecover" ? "; second" : "; first", Qt::MatchExactly, 2);
            if (wanted.size() != 1) break;
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                              list->visualItemRect(wanted[0]).center());
            QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
        }
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return dialog.result() == QDialog::Accepted;
    };
    KillAndRestart();
    offered.sort();
    EXPECT_EQ(offered, QStringList({"; first", "; first", "; second", "; third", "; third"}));
    ASSERT_EQ(window->Files().Windows().size(), 1);
    EXPECT_EQ(FrontSource()->Text().trimmed(), "; second");
    // After an orderly end, too.
    dialogs.saveAnswer = SaveAnswer::Discard;
    EXPECT_TRUE(window->close());
    window.reset();
    offered.clear();
    Start();
    EXPECT_EQ(offered, QStringList("; third"));
    EXPECT_EQ(window->Files().Windows().size(), 0);
}

TEST_F(JourneyTest, ClosingAsksOnceForAllChangedFiles) {
    Write("a.txt", "; a\n")->SetText("; changed a\n");
    Write("b.txt", "; b\n")->SetText("; changed b\n");
    Write("c.txt", "; c\n");
    dialogs.saveAnswer = SaveAnswer::Cancel;
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.savesAsked, QStringList({"a.txt", "b.txt"}));
    EXPECT_EQ(window->Files().Windows().size(), 3);
    dialogs.saveAnswer = SaveAnswer::Save;
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(ReadFile("a.txt").startsWith("; changed a"));
    EXPECT_TRUE(ReadFile("b.txt").startsWith("; changed b"));
    EXPECT_TRUE(dialogs.questions.isEmpty());
}

TEST_F(JourneyTest, AFileChangedByAnotherProgramIsOfferedAgain) {
    SourceWindow* source = Write("shared.txt", "; mine\n");
    dialogs.yes = true;
    WriteFile("shared.txt", "; theirs\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return source->Text().startsWith("; theirs"); }));
    EXPECT_FALSE(source->SourceChanged());
    EXPECT_EQ(dialogs.questions.size(), 1);
    source->Undo();
    EXPECT_TRUE(source->Text().startsWith("; mine"));
}

TEST_F(JourneyTest, APulledCableKeepsTheTerminalAndComesBack) {
    Press(CommandId::OpenVirtualBoard);
    Press(CommandId::OpenComms);
    ASSERT_TRUE(WaitForScreen("Kinetron"));
    window->Board().VirtualBoard().Link().Unplug();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return !window->Action(CommandId::DownloadCurrent)->isEnabled(); }));
    EXPECT_NE(Child("frmTerminal"), nullptr);
    EXPECT_TRUE(Child<QLabel>("panelConnection")->text().contains("lost"));
    auto* again = Child<QAbstractButton>("BtnOpenAgain");
    ASSERT_TRUE(QTest::qWaitFor([&] { return again->isEnabled(); }));
    QTest::mouseClick(again, Qt::LeftButton);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return window->Action(CommandId::DownloadCurrent)->isEnabled(); }));
}

}  // namespace zentro
