// The editor's commands in the whole program, with the keys that users press.

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTextBlock>

#include "desktop/live_check.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/find_bar.h"
#include "ui/editor/outline_box.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

using Sci = QsciScintillaBase;
using enum CommandId;

constexpr const char* kMain =
    "DEFINE CONSTANT Cruise = 60\n"    // 1
    "DEFINE BYTE Speed = 0 ; Speed\n"  // 2
    "INCLUDE \"drive.txt\"\n"          // 3
    "DEFINE EVENT Bumped()\n"          // 4
    "    Speed = Cruise\n"             // 5
    "END EVENT\n"                      // 6
    "BEGIN PROGRAM\n"                  // 7
    "    CALL Drive(speed, Cruise)\n"  // 8
    "    DISPLAY 5 ; \"Speed\"\n"      // 9
    "END PROGRAM\n";                   // 10
constexpr const char* kDrive =
    "DEFINE ROUTINE Drive(Thrust BYTE, Way BYTE)\n"
    "    SET MOTOR 1, FORWARD, Thrust\n"
    "    Speed = Way\n"
    "END ROUTINE\n"
    "DEFINE TABLE Text = \"Speed\"\n"
    "END TABLE\n";

class EditorCommandsTest : public MainWindowTest {
  protected:
    /// Two files on the disk, the main one open.
    void OpenProgram(const char* main = kMain, const char* drive = kDrive) {
        WriteFile("drive.txt", drive);
        WriteFile("main.txt", main);
        Open("main.txt");
    }
    void Open(const QString& name) {
        ASSERT_NE(window->Files().OpenFile(folder_.path(), name), nullptr);
        window->findChild<LiveCheck*>()->CheckNow();
    }
    SourceEditor& Editor() { return *FrontSource()->Editor(); }
    /// Puts the caret, with the line from 1 and the column from 0.
    void Caret(int line, int column) {
        Editor().setFocus();
        Editor().setCursorPosition(line - 1, column);
        QApplication::processEvents();
    }
    /// "main.txt 3:4": the file in front and the caret's place in it.
    QString Place() {
        return QString("%1 %2:%3")
            .arg(FrontSource()->FileName())
            .arg(Editor().CaretLine())
            .arg(Editor().CaretColumn());
    }
    QString Told() { return window->statusBar()->currentMessage(); }
    QString TextOf(const QString& name) { return window->Files().Find(FilePath(name))->Text(); }
    /// Answers the question for a new name and keeps what it showed.
    void AnswerRename(const QString& newName) {
        dialogs.run = [this, newName](QDialog& dialog) {
            places_ = dialog.findChild<QLabel*>("lblPlaces")->text();
            auto* text = dialog.findChild<QLineEdit*>("txtNewName");
            QTest::keyClicks(text, newName);  // the old name is selected
            problem_ = dialog.findChild<QLabel*>("lblProblem")->text();
            auto* ok = dialog.findChild<QPushButton*>("OKButton");
            if (!ok->isEnabled()) return false;
            ok->click();
            return dialog.result() == QDialog::Accepted;
        };
    }
    std::vector<TextRange> Marked(SoftMark mark) { return Editor().Soft().Shown(mark); }
    /// The texts that are marked.
    QStringList MarkedLines(SoftMark mark) {
        QStringList lines;
        for (const TextRange& range : Marked(mark)) {
            lines +=
                QString("%1:%2")
                    .arg(LineOf(Editor(), range.begin) + 1)
                    .arg(QString::fromStdString(TextBetween(Editor(), range.begin, range.end)));
        }
        return lines;
    }

    QString places_;
    QString problem_;
};

TEST_F(EditorCommandsTest, WhatTheStatusLineSaysIsBackAfterAMenu) {
    OpenProgram("DEFINE BYTE Count\nBEGIN PROGRAM\n    Cuont = 1\nEND PROGRAM\n");
    const auto lookIntoMenu = [&] {
        const QString before = Told();
        QTest::keyClick(window.get(), Qt::Key_C, Qt::AltModifier);
        QWidget* menu = QApplication::activePopupWidget();
        ASSERT_NE(menu, nullptr);
        QTest::keyClick(menu, Qt::Key_Down);
        EXPECT_NE(Told(), before) << "the menu says what its entry does";
        QTest::keyClick(menu, Qt::Key_Escape);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_EQ(Told().toStdString(), before.toStdString());
    };
    Caret(3, 6);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Told().startsWith("Error: "); }));
    lookIntoMenu();
    // What has just happened covers it for a while, and is back as well.
    Press(CommandId::GoBack);
    ASSERT_TRUE(Told().contains("no place to go back")) << Told().toStdString();
    lookIntoMenu();
    Caret(2, 0);
    EXPECT_TRUE(Told().contains("no place to go back")) << "it is no less new for that";
}

TEST_F(EditorCommandsTest, LinesAreEditedWithTheKeysOfTheMenu) {
    OpenProgram();
    struct Step {
        CommandId id;
        int line;
        const char* first;  ///< what two lines are then
        const char* second;
    };
    const QString before = FrontSource()->Text();
    for (const Step& step : {Step{ToggleComment, 5, "    ; Speed = Cruise", "END EVENT"},
                             Step{DuplicateLines, 5, "    Speed = Cruise", "    Speed = Cruise"},
                             Step{MoveLinesUp, 6, "END EVENT", "Speed = Cruise"},
                             Step{MoveLinesDown, 5, "END EVENT", "Speed = Cruise"}}) {
        Caret(step.line, 2);
        Press(step.id);
        const QStringList lines = FrontSource()->Text().split('\n');
        EXPECT_EQ(lines[4], step.first) << window->Action(step.id)->objectName().toStdString();
        EXPECT_EQ(lines[5], step.second);
        EXPECT_TRUE(FrontSource()->SourceChanged());
        Press(Undo);
        EXPECT_EQ(FrontSource()->Text(), before);
    }
}

TEST_F(EditorCommandsTest, MessagesAreVisitedThroughAllFilesAndRound) {
    OpenProgram(
        "INCLUDE \"drive.txt\"\nBEGIN PROGRAM\n    WAIT Later\n    CALL Drive(1, 2)\n"
        "    Spede = 2\nEND PROGRAM\n",
        "DEFINE BYTE Speed = 0\nDEFINE ROUTINE Drive(Thrust BYTE, Way BYTE)\n"
        "    Speed = Wya\nEND ROUTINE\n");
    const QStringList places{"main.txt 3:4", "main.txt 5:4", "drive.txt 3:4"};
    for (const int stop : {0, 1, 2, 0, 1}) {
        Press(NextMessage);
        EXPECT_EQ(Place(), places[stop]);
        EXPECT_FALSE(Editor().hasSelectedText());
        // The check that follows a file that came to the front leaves the message there.
        window->findChild<LiveCheck*>()->CheckNow();
        EXPECT_TRUE(Editor().annotation(Editor().CaretLine() - 1).contains("Error: "));
        EXPECT_TRUE(QTest::qWaitFor([&] { return Told().startsWith("Error: "); }));
    }
    for (const int stop : {0, 2, 1, 0}) {
        Press(PreviousMessage);
        EXPECT_EQ(Place(), places[stop]);
    }
    // What was mended a moment ago is none any more, and what was typed is one.
    QTest::keyClick(&Editor(), Qt::Key_End);
    QTest::keyClick(&Editor(), Qt::Key_Return);
    Type("x = 1");
    Caret(3, 9);
    Editor().setSelection(2, 9, 2, 14);
    QTest::keyClicks(&Editor(), "5");
    Press(NextMessage);
    EXPECT_EQ(Place(), "main.txt 4:4");
}

TEST_F(EditorCommandsTest, WhatAMessageIsAboutIsUnderlined) {
    OpenProgram(
        "DEFINE BYTE Count = 0\nBEGIN PROGRAM\n    SET MOTOR 1, FORWARD, 3030\n    Count = Cuont + "
        "1\n"
        "    Later = Later\n    FOO BAR ; note\nEND PROGRAM\n");
    const auto underlined = [this](int line) {
        std::string text;
        const long begin = LineBegin(Editor(), line - 1);
        for (long at = begin; at < LineEnd(Editor(), line - 1); ++at) {
            if (Send(Editor(), Sci::SCI_INDICATORVALUEAT, 8, at) != 0)
                text += TextBetween(Editor(), at, at + 1);
        }
        return text;
    };
    EXPECT_EQ(underlined(3), "3030");
    EXPECT_EQ(underlined(4), "Cuont");
    EXPECT_EQ(underlined(5), "Later = Later") << "it stands there twice";
    EXPECT_EQ(underlined(6), "FOO BAR ; note");
}

TEST_F(EditorCommandsTest, TheLogSelectsTheMessageThatIsVisited) {
    OpenProgram("BEGIN PROGRAM\n    WAIT Later\n    STOP MOTERS\n    WAIT 1\nEND PROGRAM\n");
    Press(CommandId::Run);
    auto* log = Child<CompilerOutputWindow>("frmCompilerOutput");
    ASSERT_NE(log, nullptr);
    const auto selected = [&] {
        return log->findChild<QPlainTextEdit*>()->textCursor().block().text().left(4);
    };
    EXPECT_EQ(selected(), "0002");
    Caret(1, 0);
    for (const char* line : {"0002", "0003", "0002", "0003"}) {
        Press(NextMessage);
        EXPECT_EQ(selected(), line);
    }
    // Lines that have moved are found.
    Caret(1, 13);
    QTest::keyClick(&Editor(), Qt::Key_Return);
    for (const char* line : {"0002", "0003"}) {
        Press(NextMessage);
        EXPECT_EQ(selected(), line) << Place().toStdString();
    }
}

TEST_F(EditorCommandsTest, SaysWhenThereAreNoMessages) {
    OpenProgram();
    Press(NextMessage);
    EXPECT_TRUE(Told().contains("no mistakes")) << Told().toStdString();
    EXPECT_EQ(Place(), "main.txt 1:0");
    // An error that belongs to no line.
    FrontSource()->SetText("DEFINE BYTE Speed = 1");
    Press(PreviousMessage);
    EXPECT_TRUE(Told().contains("something is missing")) << Told().toStdString();
    // Without the checks while typing the keys look all the same.
    window->Action(CheckWhileTyping)->trigger();
    FrontSource()->SetText("BEGIN PROGRAM\nWAIT Later\nEND PROGRAM");
    Press(NextMessage);
    EXPECT_EQ(Place(), "main.txt 2:0");
}

TEST_F(EditorCommandsTest, GoesToDeclarationsInAllFilesAndBack) {
    OpenProgram();
    struct Jump {
        int line;
        int column;
        const char* to;
    };
    for (const Jump& jump :
         {Jump{8, 10, "drive.txt 1:15"}, Jump{8, 15, "main.txt 2:12"}, Jump{8, 27, "main.txt 1:16"},
          Jump{8, 29, "main.txt 1:16"}, Jump{3, 0, "drive.txt 1:0"}, Jump{5, 4, "main.txt 2:12"}}) {
        window->Files().OpenFile(folder_.path(), "main.txt");
        Caret(jump.line, jump.column);
        const QString from = Place();
        Press(GoToDeclaration);
        EXPECT_EQ(Place(), jump.to);
        Press(GoBack);
        EXPECT_EQ(Place(), from);
    }
    // From file to file, and back through all of it, wherever lines have moved to.
    Caret(8, 10);
    Press(GoToDeclaration);
    Caret(2, 26);
    Press(GoToDeclaration);
    EXPECT_EQ(Place(), "drive.txt 1:21");
    Caret(3, 5);
    Press(GoToDeclaration);
    EXPECT_EQ(Place(), "main.txt 2:12");
    Caret(1, 0);
    Type("; one more line\n");
    Press(GoBack);
    EXPECT_EQ(Place(), "drive.txt 3:5");
    Press(GoBack);
    EXPECT_EQ(Place(), "drive.txt 2:26");
    Press(GoBack);
    EXPECT_EQ(Place(), "main.txt 9:10");
    Press(GoBack);
    EXPECT_TRUE(Told().contains("no place to go back")) << Told().toStdString();
    EXPECT_EQ(Place(), "main.txt 9:10");
    // A window that is closed is left out.
    Caret(9, 10);
    Press(GoToDeclaration);
    Caret(3, 5);
    Press(GoToDeclaration);
    window->Files().BringToFront(2);
    Press(CloseSource);
    Press(GoBack);
    EXPECT_EQ(Place(), "main.txt 9:10");
}

TEST_F(EditorCommandsTest, SaysWhenThereIsNothingToGoTo) {
    OpenProgram();
    for (const auto& [line, column] : {std::pair{7, 3}, {9, 15}, {2, 26}, {6, 9}}) {
        Caret(line, column);
        const QString place = Place();
        Press(GoToDeclaration);
        EXPECT_TRUE(Told().contains("no name of the program")) << Told().toStdString();
        EXPECT_EQ(Place(), place);
    }
    Caret(2, 14);
    Press(GoToDeclaration);
    EXPECT_TRUE(Told().contains("Speed is declared here")) << Told().toStdString();
}

TEST_F(EditorCommandsTest, ANameIsRenamedInAllFilesOpenOrNot) {
    OpenProgram();
    Caret(8, 17);
    AnswerRename("Velocity");
    Press(RenameName);
    EXPECT_EQ(places_, "Speed stands at 4 places in 2 files.");
    EXPECT_EQ(problem_, "");
    EXPECT_EQ(Place(), "main.txt 8:17");
    EXPECT_EQ(TextOf("main.txt"), QString(kMain)
                                      .replace("BYTE Speed", "BYTE Velocity")
                                      .replace("    Speed", "    Velocity")
                                      .replace("(speed", "(Velocity")
                                      .chopped(1));
    EXPECT_EQ(TextOf("drive.txt"), QString(kDrive).replace("    Speed", "    Velocity").chopped(1));
    // Nothing is saved, one undo a file takes it back, and the program is as good as before.
    EXPECT_EQ(ReadFile("drive.txt"), kDrive);
    for (SourceWindow* source : window->Files().Windows()) {
        EXPECT_TRUE(source->SourceChanged());
        source->Undo();
        QApplication::processEvents();
        EXPECT_FALSE(source->SourceChanged()) << source->FileName().toStdString();
        source->Redo();
    }
    Press(NextMessage);
    EXPECT_TRUE(Told().contains("no mistakes")) << Told().toStdString();
}

TEST_F(EditorCommandsTest, EveryKindOfNameIsRenamedWithinItsScope) {
    struct Case {
        const char* file;
        int line;
        int column;
        const char* newName;
        int places;
        const char* sign;  ///< a line that is there then
    };
    for (const Case& one : {
             Case{"drive.txt", 1, 22, "Force", 2, "    SET MOTOR 1, FORWARD, Force"},
             Case{"drive.txt", 1, 16, "Steer", 2, "DEFINE ROUTINE Steer(Thrust BYTE, Way BYTE)"},
             Case{"main.txt", 1, 18, "Pace", 3, "    CALL Drive(speed, Pace)"},
             Case{"main.txt", 4, 15, "Touched", 1, "DEFINE EVENT Touched()"},
             // What is a word of the language is spelt like one, and undone all the same.
             Case{"main.txt", 2, 13, "motor", 4, "    MOTOR = Cruise"},
         }) {
        OpenProgram();
        Open(one.file);
        const QString before = FrontSource()->Text();
        Caret(one.line, one.column);
        AnswerRename(one.newName);
        Press(RenameName);
        EXPECT_EQ(problem_, "");
        EXPECT_TRUE(places_.contains(one.places == 1 ? QString("one place")
                                                     : QString::number(one.places) + " places"))
            << places_.toStdString();
        EXPECT_TRUE(FrontSource()->Text().split('\n').contains(one.sign))
            << FrontSource()->Text().toStdString();
        QApplication::processEvents();
        Press(Undo);
        EXPECT_EQ(FrontSource()->Text(), before);
        dialogs.yesNoAnswer = YesNoAnswer::No;
        while (FrontSource() != nullptr) {
            Press(CloseSource);
            QApplication::processEvents();
        }
    }
}

TEST_F(EditorCommandsTest, ANameThatCannotBeTakenIsRefusedWithTheReason) {
    OpenProgram();
    Caret(2, 14);
    for (const auto& [newName, reason] : {std::pair<QString, QString>{"Cruise", "declared already"},
                                          {"Drive", "declared already"},
                                          {"loop", "kept for the language"},
                                          {"x", "three"},
                                          {"Speed", ""}}) {
        AnswerRename(newName);
        Press(RenameName);
        EXPECT_TRUE(problem_.contains(reason)) << problem_.toStdString();
        EXPECT_FALSE(FrontSource()->SourceChanged()) << newName.toStdString();
    }
    Caret(9, 14);
    places_.clear();
    Press(RenameName);
    EXPECT_EQ(places_, "") << "nothing was asked";
    EXPECT_TRUE(Told().contains("no name of the program"));
    // Files that cannot be read may hold the name too.
    QFile::remove(FilePath("drive.txt"));
    Caret(2, 14);
    Press(RenameName);
    EXPECT_TRUE(LastShown().contains("cannot be renamed")) << LastShown().toStdString();
    EXPECT_TRUE(LastShown().contains("drive.txt")) << LastShown().toStdString();
}

TEST_F(EditorCommandsTest, UnsavedTextCountsAndATextThatChangesMeanwhileIsLeftAlone) {
    OpenProgram();
    Caret(9, 0);
    Type("Speed = 5\n");
    Caret(2, 14);
    AnswerRename("Pace");
    Press(RenameName);
    EXPECT_EQ(places_, "Speed stands at 5 places in 2 files.");
    EXPECT_TRUE(TextOf("main.txt").contains("Pace = 5"));
    const QString before = TextOf("drive.txt");
    dialogs.run = [this](QDialog& dialog) {
        window->Files().Find(FilePath("drive.txt"))->SetText("; Nothing is left of it");
        dialog.findChild<QLineEdit*>("txtNewName")->setText("Tempo");
        dialog.findChild<QPushButton*>("OKButton")->click();
        return true;
    };
    const QString main = TextOf("main.txt");
    Press(RenameName);
    EXPECT_EQ(TextOf("main.txt"), main);
    EXPECT_TRUE(Told().contains("Nothing was renamed")) << Told().toStdString();
}

TEST_F(EditorCommandsTest, TheUsesOfTheNameAtTheCaretAreMarked) {
    OpenProgram();
    const auto isMarked = [&](const QStringList& lines) {
        return QTest::qWaitFor([&] { return MarkedLines(SoftMark::Use) == lines; }, 3000);
    };
    Caret(5, 4);
    EXPECT_TRUE(isMarked({"2:Speed", "5:Speed", "8:speed"}))
        << MarkedLines(SoftMark::Use).join(' ').toStdString();
    Caret(7, 0);
    EXPECT_TRUE(isMarked({}));
    Caret(1, 17);
    EXPECT_TRUE(isMarked({"1:Cruise", "5:Cruise", "8:Cruise"}));
    // The marks follow what is typed, and the file in front.
    Caret(9, 0);
    Type("Cruise = 1\n");
    Caret(1, 17);
    EXPECT_TRUE(isMarked({"1:Cruise", "5:Cruise", "8:Cruise", "9:Cruise"}));
    SourceWindow* main = FrontSource();
    Open("drive.txt");
    Caret(2, 28);
    EXPECT_TRUE(isMarked({"1:Thrust", "2:Thrust"}));
    EXPECT_TRUE(main->Editor()->Soft().Shown(SoftMark::Use).empty());
}

TEST_F(EditorCommandsTest, TheOutlineFollowsTheCaretAndLeadsToBlocks) {
    OpenProgram();
    OutlineBox* outline = FrontSource()->Outline();
    const auto shows = [&](const QString& text) {
        return QTest::qWaitFor([&] { return outline->currentText() == text; }, 3000);
    };
    EXPECT_TRUE(shows(""));
    Caret(5, 0);
    EXPECT_TRUE(shows("Event Bumped"));
    Caret(9, 0);
    EXPECT_TRUE(shows("Program"));
    Press(GoToRoutine);
    ASSERT_TRUE(outline->view()->isVisible());
    QTest::keyClick(outline->view(), Qt::Key_Up);
    QTest::keyClick(outline->view(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Place() == "main.txt 4:0"; }))
        << Place().toStdString();
    EXPECT_EQ(QApplication::focusWidget(), &Editor());
    Press(GoBack);
    EXPECT_EQ(Place(), "main.txt 9:0");
    // Left with Escape, all stays as it is and the next key is for the text.
    Press(GoToRoutine);
    QApplication::processEvents();  // it is seen
    QTest::keyClick(outline->view(), Qt::Key_Up);
    QTest::keyClick(outline->view(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !outline->view()->isVisible(); }));
    EXPECT_EQ(QApplication::focusWidget(), &Editor());
    EXPECT_EQ(Place(), "main.txt 9:0");
    EXPECT_TRUE(shows("Program"));
    // What is typed comes in by itself.
    Caret(4, 0);
    Type("DEFINE TABLE Song = 1\nEND TABLE\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return outline->count() == 3; }, 3000));
    EXPECT_EQ(outline->itemText(0), "Table Song");
    Press(NewSource);
    QApplication::processEvents();
    Press(GoToRoutine);
    EXPECT_TRUE(Told().contains("no routine, event or table")) << Told().toStdString();
}

TEST_F(EditorCommandsTest, TheFindBarFindsWhileOneTypes) {
    OpenProgram();
    Caret(4, 0);
    Press(FindInText);
    auto* text = FrontSource()->findChild<QLineEdit*>("txtFindBar");
    auto* count = FrontSource()->findChild<QLabel*>("lblFindBar");
    ASSERT_TRUE(FrontSource()->Bar()->isVisible());
    ASSERT_EQ(QApplication::focusWidget(), text);
    const auto selected = [&] { return Editor().selectedText(); };
    QTest::keyClicks(text, "S");
    QTest::keyClicks(text, "peed");
    EXPECT_EQ(selected(), "Speed");
    EXPECT_EQ(Editor().CaretLine(), 5);
    EXPECT_EQ(count->text(), "3 of 5");
    EXPECT_EQ(Marked(SoftMark::Match).size(), 4U) << "and the one that is selected";
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(count->text(), "4 of 5");
    QTest::keyClick(text, Qt::Key_F3);
    QTest::keyClick(text, Qt::Key_F3);
    EXPECT_EQ(count->text(), "1 of 5");
    QTest::keyClick(text, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(count->text(), "5 of 5");
    EXPECT_EQ(Editor().CaretLine(), 9);
    FrontSource()->findChild<QCheckBox*>("chkFindBarCase")->click();
    EXPECT_EQ(Marked(SoftMark::Match).size(), 3U);
    QTest::keyClicks(text, "y");
    EXPECT_EQ(count->text(), "Not found");
    EXPECT_TRUE(Marked(SoftMark::Match).empty());
    QTest::keyClick(text, Qt::Key_Backspace);
    EXPECT_EQ(count->text(), "4 of 4");
    // The keys of the bar's own text are for that text.
    Press(SelectAll);
    Press(Copy);
    EXPECT_EQ(text->selectedText(), "Speed");
    EXPECT_EQ(selected(), "Speed");
    // Escape leads back to the text, and F3 goes on from there.
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(FrontSource()->Bar()->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), &Editor());
    EXPECT_EQ(selected(), "Speed");
    EXPECT_TRUE(Marked(SoftMark::Match).empty());
    Editor().setCursorPosition(0, 0);
    Press(FindNext);
    EXPECT_EQ(selected(), "Speed");
    EXPECT_EQ(Editor().CaretLine(), 2);
    // The next time it begins with what is selected.
    Editor().setSelection(0, 16, 0, 22);
    Press(FindInText);
    EXPECT_EQ(text->text(), "Cruise");
    EXPECT_EQ(count->text(), "1 of 3");
    // An edit counts at once.
    Caret(1, 0);
    Type("; Cruise\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return count->text() == "4 matches"; }))
        << count->text().toStdString();
}

TEST_F(EditorCommandsTest, WithoutASourceFileTheCommandsAreDisabled) {
    for (const CommandId id :
         {ToggleComment, DuplicateLines, MoveLinesUp, MoveLinesDown, NextMessage, PreviousMessage,
          GoToDeclaration, GoBack, RenameName, FindInText, GoToRoutine}) {
        EXPECT_FALSE(window->Action(id)->isEnabled());
        window->Action(id)->trigger();
    }
    Press(NewSource);
    for (const CommandId id : {ToggleComment, DuplicateLines, MoveLinesUp, GoToDeclaration})
        EXPECT_TRUE(window->Action(id)->isEnabled());
}

}  // namespace
}  // namespace zentro
