// F1 on a message of the user's own program.

#include <QLabel>
#include <QTextBrowser>

#include "desktop/live_check.h"
#include "tests/ui/shell/main_window_fixture.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/output/compiler_output_window.h"
#include "ui/output/compiler_text_window.h"

namespace zentro {
namespace {

using Sci = QsciScintillaBase;
using enum CommandId;
using testing::HasSubstr;

class OwnCaseTest : public MainWindowTest {
  protected:
    OwnCaseTest() {
        settings->SaveSetting(SettingNumber::HelpFile, ZENTRO_HANDBOOK);
        Start();
    }

    void Open(const QString& text) {
        Write("drive.txt", text)->Editor()->setFocus();
        window->findChild<LiveCheck*>()->CheckNow();
    }
    SourceEditor& Editor() { return *FrontSource()->Editor(); }
    void Caret(int line, int column = 0) {
        Editor().setFocus();
        Editor().setCursorPosition(line - 1, column);
        QApplication::processEvents();
    }
    void ClickMark(int line) {
        const long top =
            Send(Editor(), Sci::SCI_POINTYFROMPOSITION, 0, LineBegin(Editor(), line - 1));
        const int left = Editor().marginWidth(0) + Editor().marginWidth(1);
        QTest::mouseClick(Editor().viewport(), Qt::LeftButton, {},
                          {left + 6, static_cast<int>(top) + 4});
    }
    /// Which page F1 opens.
    std::string PageOfF1() {
        Press(Help);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Child("frmBrowser")->windowTitle().contains("Handbook"); }));
        return Child<QTextBrowser>("brwWebBrowser")
            ->source()
            .fragment(QUrl::FullyDecoded)
            .toUpper()
            .toStdString();
    }
    /// What the box above the page says; empty: there is none.
    std::string Box() {
        const auto* box = Child<QLabel>("lblOwnCase");
        EXPECT_EQ(box->isVisible(), !box->text().isEmpty());
        QTextDocument document;
        document.setHtml(box->text());
        return document.toPlainText().toStdString();
    }
};

constexpr const char* kMistakes =
    "DEFINE BYTE Speed = 0\n"            // 1
    "BEGIN PROGRAM\n"                    // 2
    "    SET MOTER 1, FORWARD, Speed\n"  // 3
    "    IF Speed & 1 THEN ; <b>\n"      // 4: nobody knows what is meant
    "    END IF\n"                       // 5
    "    Speed = \"\xC3\xA9\" == 1\n"    // 6
    "END PROGRAM\n";

constexpr const char* kBoxOfMoter =
    "Line 3 of your program: SET MOTER 1, FORWARD, Speed\n"
    "MOTER is not a word of the language. Did you mean MOTOR?\n"
    "The line then: SET MOTOR 1, FORWARD, Speed";

TEST_F(OwnCaseTest, PageOfALineBeginsWithIt) {
    Open(kMistakes);
    Caret(3, 20);
    const std::string code = PageOfF1();
    EXPECT_THAT(code, testing::StartsWith("E"));
    EXPECT_EQ(Box(), kBoxOfMoter);
    EXPECT_EQ(Child<QLabel>("lblSearching")->text().toUpper().toStdString(),
              "SEARCHING FOR: " + code);
}

TEST_F(OwnCaseTest, AClickOnTheMarkLeadsToItsLine) {
    Open(kMistakes);
    ClickMark(3);
    EXPECT_EQ(Editor().CaretLine(), 3);
    PageOfF1();
    EXPECT_EQ(Box(), kBoxOfMoter);
}

TEST_F(OwnCaseTest, MessageOfTheLogDoesTheSame) {
    Open(kMistakes);
    Press(SyntaxCheck);
    Child<CompilerTextView>("txtOutput")->setFocus();
    PageOfF1();
    EXPECT_EQ(Box(), kBoxOfMoter);
}

/// The line with its own signs, and none of another page or line.
TEST_F(OwnCaseTest, BoxGoesWithItsPage) {
    Open(kMistakes);
    Caret(6);
    PageOfF1();
    EXPECT_THAT(Box(), HasSubstr(": Speed = \"\xC3\xA9\" == 1\n"));
    Caret(2);
    EXPECT_EQ(PageOfF1(), "BEGIN PROGRAM");
    EXPECT_EQ(Box(), "");
    Caret(6);
    PageOfF1();
    Click("Home");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Box().empty(); }));
}

/// A message at the end of the program shows the line that has to be changed.
TEST_F(OwnCaseTest, ShowsTheLineThatMatters) {
    Open("DEFINE BYTE Speed = 0\nDEFINE ROUTINE Halt()\n    STOP MOTORS\n");
    Press(SyntaxCheck);
    Child<CompilerTextView>("txtOutput")->setFocus();
    PageOfF1();
    EXPECT_THAT(Box(), testing::StartsWith("Line 2 of your program: DEFINE ROUTINE Halt()\n"));
}

}  // namespace
}  // namespace zentro
