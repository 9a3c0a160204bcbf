// A program followed in its source with real keys and clicks, through the whole window.
#include <QAbstractButton>
#include <QAction>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QListWidget>
#include <QStatusBar>
#include <QToolTip>

#include "desktop/board_state.h"
#include "desktop/breakpoints.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

constexpr int kHereBit = 1 << 2;
constexpr int kLitBit = 1 << 3;
constexpr int kSoftBit = 1 << 4;
constexpr int kFaultBit = 1 << 6;
constexpr int kFullBit = 1 << 7;
constexpr int kConditionalBit = 1 << 8;
constexpr int kHollowBit = 1 << 9;

constexpr const char* kCounting = R"(DEFINE BYTE Count = 0
DEFINE FLAG Even = TRUE
; counts
DEFINE ROUTINE Add(Number BYTE)
    Count = Count + Number
    Even = FALSE
END ROUTINE
BEGIN PROGRAM
    LOOP
        CALL Add(1)
        WAIT 1
    END LOOP
END PROGRAM
DEFINE TABLE Notes = 1, 2, 3
END TABLE
)";

class FollowTest : public MainWindowTest {
  protected:
    VirtualBoardHost& Host() { return window->Board().VirtualBoard(); }
    bool IsHeld() { return Host().State().processor.running && Host().IsPaused(); }
    bool WaitUntilHeld() {
        return QTest::qWaitFor([this] { return IsHeld(); }, 10'000);
    }

    /// The lines, from 1, of the window that bear the mark.
    static std::vector<int> LinesWith(const SourceWindow& source, int bit) {
        std::vector<int> lines;
        for (int line = 0; line < source.Editor()->lines(); ++line) {
            if ((source.Editor()->markersAtLine(line) & bit) != 0) lines.push_back(line + 1);
        }
        return lines;
    }
    std::vector<int> LinesWith(int bit) { return LinesWith(*FrontSource(), bit); }
    /// Waits until these lines of the source in front, and no others, bear the mark.
    bool Bears(int bit, const std::vector<int>& lines) {
        return QTest::qWaitFor([&] { return LinesWith(bit) == lines; }, 2000);
    }
    /// Waits until the line of the source in front, and no other, is lit.
    ::testing::AssertionResult IsLit(int line) {
        const auto isLit = [&] {
            return LinesWith(kHereBit) == std::vector{line} &&
                   LinesWith(kLitBit) == std::vector{line};
        };
        if (QTest::qWaitFor(isLit, 2000)) return ::testing::AssertionSuccess();
        const std::vector<int> lit = LinesWith(kHereBit);
        return ::testing::AssertionFailure()
               << "lit in " << FrontSource()->FileName().toStdString() << ": "
               << (lit.empty() ? std::string("nothing") : std::to_string(lit.front()));
    }
    ::testing::AssertionResult KeyLightsUp(CommandId id, int line) {
        Press(id);
        return IsLit(line);
    }

    QPoint PlaceIn(int line, int column) {
        SourceEditor& editor = *FrontSource()->Editor();
        const long position = LineBegin(editor, line - 1) + column;
        return {
            static_cast<int>(Send(editor, QsciScintillaBase::SCI_POINTXFROMPOSITION, 0, position)) +
                2,
            static_cast<int>(Send(editor, QsciScintillaBase::SCI_POINTYFROMPOSITION, 0, position)) +
                4};
    }
    void ClickMargin(int line, Qt::MouseButton button = Qt::LeftButton, int x = 8) {
        QTest::mouseClick(FrontSource()->Editor()->viewport(), button, {},
                          {x, PlaceIn(line, 0).y()});
    }
    QString TipOver(int line, int column) {
        FrontSource()->ShowLine(line);
        QWidget* viewport = FrontSource()->Editor()->viewport();
        const QPoint place = PlaceIn(line, column);
        QHelpEvent event(QEvent::ToolTip, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        QString text = QToolTip::text();
        QToolTip::hideText();
        return text.remove("<p style='white-space:pre-wrap'>").remove("</p>");
    }
    QString Status() { return window->statusBar()->currentMessage(); }
    unsigned Count() { return TipOver(5, 4).section("Count = ", 1).section('\n', 0, 0).toUInt(); }
};

TEST_F(FollowTest, ARightClickBesideALineAsksForItsConditionOnly) {
    Write("count.txt", kCounting);
    const auto wantMenu = [&](const QPoint& place) {
        QWidget* viewport = FrontSource()->Editor()->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
        QWidget* menu = QApplication::activePopupWidget();
        if (menu != nullptr) menu->close();
        return menu != nullptr;
    };
    QTest::qWait(350);  // the names of the program are known once it was checked
    dialogs.text = "Count > 10";
    ClickMargin(11, Qt::RightButton);
    EXPECT_TRUE(dialogs.questions.last().startsWith("Hold the program before line 11"));
    EXPECT_FALSE(wantMenu({8, PlaceIn(11, 0).y()})) << "a desktop asks for it after the press";
    // On the other side of the numbers it is the same, but for the mark of a message.
    const auto& editor = *FrontSource()->Editor();
    const int right = editor.marginWidth(0) + editor.marginWidth(1) + 8;
    ClickMargin(10, Qt::LeftButton, right);
    EXPECT_TRUE(Bears(kHollowBit | kConditionalBit, {10, 11}));
    ClickMargin(10, Qt::LeftButton, right);
    FrontSource()->PutCaretAt(6);
    Type("x");
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor.markersAtLine(5) != 0; }));
    ClickMargin(6, Qt::LeftButton, right);
    EXPECT_TRUE(Bears(kHollowBit | kConditionalBit, {11}));
    Press(CommandId::Undo);
    FrontSource()->GotoLine(1);
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(11));
    EXPECT_TRUE(TipOver(5, 4).startsWith("Count = 11"));
    EXPECT_EQ(Status(), "count.txt is held.");
    ClickMargin(11);
    EXPECT_TRUE(Bears(kConditionalBit | kHollowBit | kFullBit, {}));
    Press(CommandId::PauseProgram);
    const auto runs = [this] { return Status() == "count.txt runs on the virtual board."; };
    EXPECT_TRUE(QTest::qWaitFor(runs)) << Status().toStdString();
    EXPECT_TRUE(wantMenu(PlaceIn(11, 8)));
}

TEST_F(FollowTest, ABreakpointWithAConditionHoldsInALoopAndLinesGoBack) {
    Write("count.txt", kCounting);
    ClickMargin(11);
    EXPECT_TRUE(Bears(kHollowBit, {11})) << "it is not on the board yet";
    FrontSource()->GotoLine(11);
    dialogs.text = "Cuont > 10";
    QTest::qWait(350);  // the names of the program are known once it was checked
    Press(CommandId::SetCondition);
    EXPECT_TRUE(dialogs.questions.last().startsWith(
        "The program declares no variable and no constant Cuont.\n\nHold the program"));
    EXPECT_EQ(dialogs.offered, "Cuont > 10") << "what was typed can be mended";
    dialogs.text = "Count > 10";
    Press(CommandId::SetCondition);
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(11));
    EXPECT_TRUE(Bears(kConditionalBit, {11}));
    EXPECT_TRUE(TipOver(5, 4).startsWith("Count = 11")) << TipOver(5, 4).toStdString();
    EXPECT_TRUE(TipOver(6, 4).startsWith("Even = FALSE"));
    EXPECT_TRUE(TipOver(5, 20).startsWith("Number of Add = 1"));
    EXPECT_TRUE(TipOver(14, 14).startsWith("Notes = 1, 2, 3"));
    // What is no condition is told, and the old one stays.
    dialogs.text = "Count 3";
    Press(CommandId::SetCondition);
    EXPECT_TRUE(dialogs.questions.last().startsWith(
        "A condition is one comparison, such as Count > 10.\n\nHold the program"));
    EXPECT_TRUE(TipOver(11, 60).contains("when Count &gt; 10") ||
                FrontSource()->MessageAtCursor().contains("when Count > 10"));

    for (const int line : {10, 9, 12, 11, 10})
        EXPECT_TRUE(KeyLightsUp(CommandId::StepLineBack, line)) << line;
    EXPECT_EQ(Count(), 9U);
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 11));
    EXPECT_EQ(Count(), 10U);
    Press(CommandId::PauseProgram);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(11));
    EXPECT_EQ(Count(), 11U);
    // The breakpoint is taken away by a click, and the program runs on.
    ClickMargin(11);
    EXPECT_TRUE(Bears(kConditionalBit | kHollowBit | kFullBit, {}));
    Press(CommandId::PauseProgram);
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return Host().State().outputs == Outputs{} && !IsHeld(); }));
}

/// Edits that take the line with the breakpoint out, or carry it to another place, and their undo.
TEST_F(FollowTest, ABreakpointIsBackWithItsConditionWhenItsLineIs) {
    Write("count.txt", kCounting);
    ClickMargin(11);
    FrontSource()->GotoLine(11);
    dialogs.text = "Count > 10";
    Press(CommandId::SetCondition);
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    ASSERT_TRUE(Bears(kConditionalBit, {11}));
    SourceEditor& editor = *FrontSource()->Editor();
    const QString text = FrontSource()->Text();
    const auto select = [&](int first, int last) {
        editor.setFocus();
        editor.setSelection(first - 1, 0, last, 0);
    };
    const auto key = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&editor, key, modifiers);
    };
    struct Case {
        const char* name;
        std::function<void()> edit;
        std::vector<int> lines;  ///< with the breakpoint then
    };
    const std::vector<Case> cases = {
        {"deleted", [&] { select(11, 11), key(Qt::Key_Delete); }, {}},
        {"joined with the line before",
         [&] { editor.setCursorPosition(10, 0), key(Qt::Key_Backspace); },
         {}},
        {"cut and pasted",
         [&] {
             select(11, 11), Press(CommandId::Cut);
             editor.setCursorPosition(2, 0), Press(CommandId::Paste);
         },
         {}},
        {"typed over", [&] { Press(CommandId::SelectAll), key(Qt::Key_A); }, {}},
        {"replaced", [&] { FrontSource()->SetText("; nothing\n"); }, {}},
        {"deleted with its neighbours, one after the other",
         [&] { select(11, 11), key(Qt::Key_Delete), select(9, 12), key(Qt::Key_Delete); },
         {}},
        {"moved up", [&] { editor.setCursorPosition(10, 2), Press(CommandId::MoveLinesUp); }, {10}},
        {"moved under a neighbour",
         [&] { editor.setCursorPosition(11, 2), Press(CommandId::MoveLinesUp); },
         {12}},
        {"moved over two", [&] { select(9, 10), Press(CommandId::MoveLinesDown); }, {9}},
        {"duplicated", [&] { select(11, 11), Press(CommandId::DuplicateLines); }, {11}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.name);
        for (int round = 0; round < 2; ++round) {
            one.edit();
            EXPECT_TRUE(QTest::qWaitFor(
                [&] { return LinesWith(kConditionalBit | kHollowBit) == one.lines; }, 2000));
            while (editor.isUndoAvailable() && FrontSource()->Text() != text)
                Press(CommandId::Undo);
            ASSERT_EQ(FrontSource()->Text(), text);
            EXPECT_TRUE(Bears(kConditionalBit, {11})) << "and the board holds it";
            EXPECT_TRUE(IsLit(11));
        }
    }
    // One that is taken away stays away.
    Press(CommandId::ClearBreakpoints);
    select(11, 11), key(Qt::Key_Delete);
    Press(CommandId::Undo);
    EXPECT_TRUE(Bears(kConditionalBit | kHollowBit | kFullBit, {}));
}

TEST_F(FollowTest, StepsFromTheFirstLineAndTheLitLineFollowsEdits) {
    Write("count.txt", kCounting);
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 8));
    EXPECT_TRUE(FrontSource()->Editor()->hasFocus());
    for (const int line : {9, 10, 11, 12, 9})
        EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, line)) << line;
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 10));
    for (const int line : {4, 5, 6, 7, 11})
        EXPECT_TRUE(KeyLightsUp(CommandId::StepInto, line)) << line;
    FrontSource()->PutCaretAt(1);
    Type("; one\n; two\n");
    EXPECT_TRUE(IsLit(13));
    FrontSource()->PutCaretAt(13);
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return FrontSource()->MessageAtCursor().contains("The text has been changed");
    })) << FrontSource()->MessageAtCursor().toStdString();
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 14));
    Press(CommandId::Undo);
    Press(CommandId::StepLineBack);
    EXPECT_EQ(LinesWith(kHereBit).size(), 1U);
}

TEST_F(FollowTest, GoesIntoAFileThatIsNotOpen) {
    WriteFile("part.txt", "DEFINE ROUTINE Rest()\n    WAIT 1\nEND ROUTINE\n");
    Write("main.txt",
          "INCLUDE \"part.txt\"\nBEGIN PROGRAM\n    CALL Rest()\n    WAIT 2\nEND PROGRAM\n");
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 2));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 3));
    Press(CommandId::StepInto);
    EXPECT_EQ(FrontSource()->FileName(), "part.txt");
    EXPECT_TRUE(IsLit(1));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 2));
    ClickMargin(3);
    EXPECT_TRUE(Bears(kFullBit, {3}));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 3));
    Press(CommandId::StepLine);
    EXPECT_EQ(FrontSource()->FileName(), "main.txt");
    EXPECT_TRUE(IsLit(4));
    // In a file that was closed meanwhile it holds all the same.
    window->Files().Find(FilePath("part.txt"))->parentWidget()->close();
    QTest::qWait(0);
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_EQ(FrontSource()->FileName(), "part.txt");
    EXPECT_TRUE(IsLit(3));
}

TEST_F(FollowTest, AFaultTellsItsValuesAndItsCalls) {
    Write("fault.txt", R"(DEFINE BYTE Mean = 0
DEFINE BYTE Parts = 0
DEFINE ROUTINE Share(Total BYTE)
    Mean = Total / Parts
END ROUTINE
DEFINE ROUTINE Work()
    CALL Share(9)
END ROUTINE
BEGIN PROGRAM
    CALL Work()
END PROGRAM
)");
    Press(CommandId::Run);
    ASSERT_TRUE(QTest::qWaitFor([this] { return LinesWith(kFaultBit) == std::vector{4}; }, 5000));
    const QString told = FrontSource()->MessageAtCursor();
    EXPECT_TRUE(told.contains("Total of Share = 9, Parts = 0, Mean = 0") ||
                told.contains("Mean = 0, Total of Share = 9, Parts = 0"))
        << told.toStdString();
    EXPECT_TRUE(told.contains("Share was called in line 7, Work in line 10."))
        << told.toStdString();
    const auto* state = Child<QLabel>("BoardState");
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return state->text().contains("Share was called in line 7, Work in line 10");
    })) << state->text().toStdString();
    // It can be taken back, line by line.
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLineBack, 4));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLineBack, 3));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLineBack, 7));
}

TEST_F(FollowTest, ARunningProgramIsMarkedSoftlyAndRunsToTheCaret) {
    Write("count.txt", kCounting);
    Press(CommandId::Run);
    EXPECT_TRUE(QTest::qWaitFor([this] { return LinesWith(kSoftBit).size() == 1; }, 5000));
    EXPECT_EQ(LinesWith(kHereBit), std::vector<int>{});
    FrontSource()->PutCaretAt(6);
    Press(CommandId::RunToCaret);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(6));
    EXPECT_EQ(LinesWith(kSoftBit), std::vector<int>{});
    Press(CommandId::Stop);
    EXPECT_TRUE(QTest::qWaitFor([this] { return LinesWith(kHereBit).empty(); }));
    // Without a running program the one in front is loaded for it.
    Press(CommandId::RunToCaret);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(6));
}

TEST_F(FollowTest, ALineWithoutEndLeavesTheWindowAlive) {
    Write("endless.txt",
          "DEFINE BYTE Count = 0\nDEFINE ROUTINE Work()\n    LOOP\n        INCREMENT Count\n"
          "    END LOOP\nEND ROUTINE\nBEGIN PROGRAM\n    CALL Work()\nEND PROGRAM\n");
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 7));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLine, 8));
    Press(CommandId::StepLine);
    EXPECT_TRUE(Status().contains("goes on")) << Status().toStdString();
    EXPECT_TRUE(QTest::qWaitFor([this] { return LinesWith(kSoftBit).size() == 1; }));
    Press(CommandId::PauseProgram);
    EXPECT_TRUE(IsHeld());
    EXPECT_TRUE(QTest::qWaitFor([this] { return LinesWith(kHereBit).size() == 1; }));
    EXPECT_TRUE(KeyLightsUp(CommandId::StepLineBack, 8));
}

TEST_F(FollowTest, ALineWithoutCodeSaysWhereItsBreakpointStands) {
    Write("count.txt", kCounting);
    QTest::qWait(350);
    FrontSource()->PutCaretAt(2);
    Press(CommandId::ToggleBreakpoint);
    EXPECT_TRUE(Bears(kHollowBit, {4}));
    EXPECT_EQ(Status(), "Line 2 has no code, so the breakpoint stands in line 4.");
    // A compile, an edit above and a new name keep it.
    FrontSource()->PutCaretAt(1);
    Type("\n");
    dialogs.fileToSave = FilePath("other.txt");
    Press(CommandId::SaveSourceAs);
    Press(CommandId::CompileSource);
    EXPECT_TRUE(Bears(kHollowBit, {5}));
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    EXPECT_TRUE(IsLit(5));
    EXPECT_TRUE(Bears(kFullBit, {5}));
    Press(CommandId::ClearBreakpoints);
    EXPECT_TRUE(Bears(kFullBit | kHollowBit, {}));
}

/// What runs, is held and was compiled goes on in the file that its text is saved as.
TEST_F(FollowTest, AProgramThatIsSavedUnderAnotherNameIsFollowedThere) {
    Write("count.txt", kCounting);
    FrontSource()->PutCaretAt(6);
    Press(CommandId::ToggleBreakpoint);
    Press(CommandId::Variables);
    Press(CommandId::Run);
    ASSERT_TRUE(WaitUntilHeld());
    for (const QString name : {"second.txt", "third.txt"}) {
        dialogs.fileToSave = FilePath(name);
        FrontSource()->setFocus();
        Press(CommandId::SaveSourceAs);
        EXPECT_EQ(FrontSource()->FileName(), name);
        EXPECT_TRUE(IsLit(6)) << name.toStdString();
        EXPECT_TRUE(Bears(kFullBit, {6}));
        EXPECT_EQ(Child("frmVirtualBoard")->windowTitle(), "Virtual Board - " + name);
        EXPECT_EQ(Child("frmCompilerOutput")->windowTitle(), name + " (Compiler Output)");
    }
    Press(CommandId::StepLine);
    EXPECT_TRUE(IsLit(7));
    EXPECT_EQ(FrontSource()->FileName(), "third.txt");
    EXPECT_EQ(window->OpenPrograms().Files().size(), 1U);
    // The old name opened again is another text, which nothing runs from.
    dialogs.fileToOpen = FilePath("count.txt");
    Press(CommandId::OpenSource);
    EXPECT_TRUE(LinesWith(kHereBit).empty());
    Press(CommandId::StepLine);
    EXPECT_EQ(FrontSource()->FileName(), "third.txt");
}

/// The breakpoints of a closed file are for its text, which is gone when another is saved over it.
TEST_F(FollowTest, AFileSavedOverAnotherOneHasItsOwnBreakpointsAlone) {
    Write("old.txt", kCounting);
    FrontSource()->PutCaretAt(5);
    Press(CommandId::ToggleBreakpoint);
    Press(CommandId::CloseSource);
    Write("new.txt", kCounting);
    FrontSource()->PutCaretAt(6);
    Press(CommandId::ToggleBreakpoint);
    EXPECT_TRUE(Bears(kHollowBit, {6}));
    dialogs.fileToSave = FilePath("old.txt");
    Press(CommandId::SaveSourceAs);
    EXPECT_TRUE(Bears(kHollowBit, {6}));
    EXPECT_EQ(window->findChild<Breakpoints*>()->All().size(), 1U);
}

TEST_F(FollowTest, VariablesSpeakInWordsAndKeepTheMarksOfAStep) {
    Write("count.txt", kCounting);
    Press(CommandId::StepLine);
    Press(CommandId::Variables);
    auto* list = Child<QListWidget>("ListVars");
    const auto item = [&](const QString& name) {
        return list->findItems(name, Qt::MatchContains)[0];
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return item("Notes")->text().endsWith("\t1, 2, 3"); }))
        << item("Notes")->text().toStdString();
    EXPECT_TRUE(item("Notes")->text().contains("(1st 8 bytes only)"));
    EXPECT_TRUE(item("%SysTemp")->isHidden());
    QTest::mouseClick(Child<QAbstractButton>("chkCompilersOwn"), Qt::LeftButton, {}, {8, 8});
    EXPECT_FALSE(item("%SysTemp")->isHidden());
    Press(CommandId::StepLine);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item("Even")->text().endsWith("\tTRUE"); }));
    for (int step = 0; step < 2; ++step)
        Press(CommandId::StepLine);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item("Even")->text().endsWith("0\t(00h)\tFALSE"); }))
        << item("Even")->text().toStdString();
    EXPECT_TRUE(item("Even")->font().bold());
    QTest::qWait(1300);  // longer than marks of a running program stay
    EXPECT_TRUE(item("Even")->font().bold());
    Press(CommandId::StepLine);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !item("Even")->font().bold(); }));
}

TEST_F(FollowTest, TheBoardsButtonsStepLinesAndInstructions) {
    Write("count.txt", kCounting);
    Press(CommandId::StepLine);
    ASSERT_TRUE(IsLit(8));
    Click("BtnBoardLine");
    EXPECT_TRUE(IsLit(9));
    Click("BtnBoardStep");
    EXPECT_TRUE(IsLit(10));
    Click("BtnBoardStep");
    EXPECT_TRUE(IsLit(10)) << "the middle of the line";
    Click("BtnBoardLineBack");
    EXPECT_TRUE(IsLit(10));
    Click("BtnBoardLineBack");
    EXPECT_TRUE(IsLit(9));
}

}  // namespace
}  // namespace zentro
