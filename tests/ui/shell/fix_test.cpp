// What messages know to be written, with the keys and clicks of users.

#include <QAction>
#include <QPushButton>
#include <QStatusBar>
#include <QTextBlock>

#include "desktop/live_check.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/editor_marks.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/compiler_text_window.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

using Sci = QsciScintillaBase;
using enum CommandId;

constexpr const char* kMistakes =
    "DEFINE BYTE Speed = 0\n"               // 1
    "BEGIN PROGRAM\n"                       // 2
    "    SET MOTER 1, FORWARD, Speed\n"     // 3
    "    IF Speed == 1 THEN\n"              // 4
    "        Speed = Other\n"               // 5: nobody knows what is meant
    "    END IF\n"                          // 6
    "    IF Speed == 2 THEN // the rest\n"  // 7: two mistakes
    "        Speed++\n"                     // 8
    "    END IF\n"                          // 9
    "END PROGRAM\n";

class FixTest : public MainWindowTest {
  protected:
    SourceWindow& Open(const QString& text = kMistakes) {
        SourceWindow* source = Write("drive.txt", text);
        source->Editor()->setFocus();
        Check();
        return *source;
    }
    void Check() { window->findChild<LiveCheck*>()->CheckNow(); }
    SourceEditor& Editor() { return *FrontSource()->Editor(); }
    QString Line(int line) { return FrontSource()->Text().split('\n')[line - 1]; }
    void Caret(int line, int column = 0) {
        Editor().setFocus();
        Editor().setCursorPosition(line - 1, column);
        QApplication::processEvents();
    }
    QString Told() { return window->statusBar()->currentMessage(); }
    /// Whether the marks of the line (a disc, a lamp) tell of a mistake or a fix.
    bool IsMarked(int line) { return Editor().markersAtLine(line - 1) != 0; }
    void ClickLamp(int line) {
        SourceEditor& editor = Editor();
        int right = 0;
        for (int margin = 0; margin < editor.margins(); ++margin)
            right += editor.marginWidth(margin);
        const long position = LineBegin(editor, line - 1);
        const long top = Send(editor, Sci::SCI_POINTYFROMPOSITION, 0, position);
        QTest::mouseClick(editor.viewport(), Qt::LeftButton, {},
                          {right - 6, static_cast<int>(top) + 4});
    }
};

TEST_F(FixTest, AltEnterFixesTheLineInOneStep) {
    Open();
    const QString before = FrontSource()->Text();
    EXPECT_TRUE(Editor().Marks().HasLamp(2));
    EXPECT_TRUE(Editor().Marks().TextAt(2).endsWith("fixes it."));
    Caret(3, 2);
    Press(FixLine);
    EXPECT_EQ(Line(3), "    SET MOTOR 1, FORWARD, Speed");
    EXPECT_FALSE(IsMarked(3)) << Editor().Marks().TextAt(2).toStdString();
    EXPECT_TRUE(IsMarked(4)) << "other lines keep their marks";
    EXPECT_EQ(Told(), "Line 3 is fixed. Undo takes it back.");
    EXPECT_EQ(Editor().CaretLine(), 3);
    Press(Undo);
    EXPECT_EQ(FrontSource()->Text(), before);
    Check();
    EXPECT_TRUE(IsMarked(3));
}

TEST_F(FixTest, AClickOnTheLampDoesTheSame) {
    Open();
    Caret(1);
    ClickLamp(4);
    EXPECT_EQ(Line(4), "    IF Speed = 1 THEN");
    EXPECT_FALSE(Editor().Marks().HasLamp(3));
    EXPECT_EQ(Editor().CaretLine(), 1);
    // Without a lamp a click there is none.
    const QString before = FrontSource()->Text();
    ClickLamp(5);
    ClickLamp(2);
    EXPECT_EQ(FrontSource()->Text(), before);
}

TEST_F(FixTest, OfOneKindAllAreFixedAtOnce) {
    Open();
    const QString before = FrontSource()->Text();
    Caret(4);
    Press(FixAllOfKind);
    EXPECT_EQ(Line(4), "    IF Speed = 1 THEN");
    EXPECT_EQ(Line(7), "    IF Speed = 2 THEN // the rest") << "another kind stays";
    EXPECT_EQ(Line(3), "    SET MOTER 1, FORWARD, Speed");
    EXPECT_EQ(Told(), "2 lines are fixed. Undo takes all of it back.");
    Press(Undo);
    EXPECT_EQ(FrontSource()->Text(), before);
}

TEST_F(FixTest, EveryFixLeadsToAProgramWithoutMistakes) {
    Open();
    Caret(5, 16);
    QTest::keyClicks(&Editor(), "5 ;");
    for (const int line : {3, 4, 7, 7, 8}) {
        Caret(line);
        Press(FixLine);
    }
    EXPECT_EQ(Line(7), "    IF Speed = 2 THEN ; the rest");
    EXPECT_EQ(Line(8), "        INCREMENT Speed");
    for (int line = 1; line <= 10; ++line)
        EXPECT_FALSE(IsMarked(line)) << Editor().Marks().TextAt(line - 1).toStdString();
}

TEST_F(FixTest, WhatIsNotCertainIsNotWritten) {
    Open();
    const QString before = FrontSource()->Text();
    Caret(5);
    Press(FixLine);
    EXPECT_TRUE(Told().startsWith("What this line means can only be guessed"))
        << Told().toStdString();
    Caret(2);
    Press(FixAllOfKind);
    EXPECT_EQ(Told(), "This line has no message, so there is nothing to fix.");
    EXPECT_EQ(FrontSource()->Text(), before);
}

/// A text that was typed a moment ago is checked first.
TEST_F(FixTest, KnowsTheTextAsItStands) {
    Open();
    Caret(3);
    QTest::keyClicks(&Editor(), "  ");  // the mark's column is old now
    Press(FixLine);
    EXPECT_EQ(Line(3), "      SET MOTOR 1, FORWARD, Speed");
    Caret(4, 7);
    QTest::keyClick(&Editor(), Qt::Key_Return);
    Press(FixLine);
    EXPECT_EQ(Line(5).trimmed(), "Speed = 1 THEN");
}

TEST_F(FixTest, WithoutTheCheckWhileTypingItWorksAsWell) {
    window->findChild<LiveCheck*>()->SetLiveCheck(false);
    Write("drive.txt", kMistakes);
    Caret(3);
    Press(FixLine);
    EXPECT_EQ(Line(3), "    SET MOTOR 1, FORWARD, Speed");
}

TEST_F(FixTest, TheLogFixesItsMessages) {
    Open();
    Press(SyntaxCheck);
    auto* output = Child<CompilerOutputWindow>("frmCompilerOutput");
    auto* view = Child<CompilerTextView>("txtOutput");
    auto* fix = Child<QPushButton>("cmdFix");
    EXPECT_TRUE(fix->isVisible()) << "the first error is selected";
    QTest::mouseClick(fix, Qt::LeftButton);
    EXPECT_EQ(Line(3), "    SET MOTOR 1, FORWARD, Speed");
    QTest::mouseClick(fix, Qt::LeftButton);
    EXPECT_TRUE(Told().startsWith("This line has changed since")) << Told().toStdString();
    // With the key, when the log has the focus.
    view->setFocus();
    output->ShowNextMessage();
    output->ShowNextMessage();
    view->setFocus();
    ASSERT_TRUE(view->textCursor().block().text().contains("== 1"))
        << view->textCursor().block().text().toStdString();
    Press(FixLine);
    EXPECT_EQ(Line(4), "    IF Speed = 1 THEN");
    output->ShowNextMessage();
    EXPECT_FALSE(fix->isVisible()) << view->textCursor().block().text().toStdString();
}

TEST_F(FixTest, AFixInAnIncludedFileIsWrittenThere) {
    WriteFile("parts.txt", "DEFINE ROUTINE Halt()\n    STOP MOTOR\nEND ROUTINE\n");
    Open("INCLUDE \"parts.txt\"\nBEGIN PROGRAM\n    CALL Halt()\nEND PROGRAM\n");
    Press(SyntaxCheck);
    QTest::mouseClick(Child<QPushButton>("cmdFix"), Qt::LeftButton);
    ASSERT_EQ(FrontSource()->FileName(), "parts.txt");
    EXPECT_EQ(Line(2), "    STOP MOTORS");
}

/// The report that windows read carries what the compiler knew.
TEST_F(FixTest, MessagesCarryTheirHintAndFix) {
    SourceWindow& source = Open();
    auto& programs = window->OpenPrograms();
    const OpenFile file = *programs.File(source.Id());
    const auto messages = programs.MessagesOf(file);
    ASSERT_TRUE(messages);
    const LineMessage& first = messages->front();
    EXPECT_EQ(first.line, 3);
    EXPECT_EQ(first.hint, "MOTER is not a word of the language. Did you mean MOTOR?");
    EXPECT_TRUE(first.text.endsWith(first.hint));
    ASSERT_TRUE(first.fix);
    EXPECT_EQ(first.fix->line, 3);
    EXPECT_EQ(first.fix->column, 9);
    EXPECT_EQ(first.fix->length, 5);
    EXPECT_EQ(first.fix->text, "MOTOR");
    const auto guess = std::ranges::find(*messages, 5, &LineMessage::line);
    ASSERT_NE(guess, messages->end());
    EXPECT_EQ(guess->hint, "");
    EXPECT_FALSE(guess->fix);
}

}  // namespace
}  // namespace zentro
