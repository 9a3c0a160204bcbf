// What happens while the user types: spelling, colours, indentation, folds and completions.

#include <QAccessible>
#include <QWheelEvent>

#include "tests/ui/ui_fixture.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"
#include "ui/editor/source_window.h"
#include "ui/support/colours.h"

namespace zentro {
namespace {

using Sci = QsciScintillaBase;

class SourceTyping : public UiTest {
  protected:
    SourceTyping() : window(*workbench, programs), editor(*window.Editor()) {
        window.resize(700, 500);
        window.show();
        window.NewFile(1);
    }

    /// Types the text; "\n" is the return key.
    void Type(const QByteArray& text) {
        for (const char c : text) {
            if (c == '\n') {
                Press(Qt::Key_Return);
            } else {
                QTest::keyClick(&editor, c);
            }
        }
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&editor, key, modifiers);
    }
    void Load(const QByteArray& bytes) {
        WriteFile("line.txt", bytes);
        ASSERT_TRUE(window.LoadFile(folder_.path(), "line.txt"));
    }

    /// The colours of a line (from 1), a letter for each of its characters.
    std::string ColoursOf(int line) {
        QApplication::processEvents();  // what is painted is coloured
        std::string colours;
        for (long i = LineBegin(editor, line - 1); i < LineEnd(editor, line - 1); ++i)
            colours += ".KCS"[Send(editor, Sci::SCI_GETSTYLEAT, i)];
        return colours;
    }
    std::string Line(int line) { return LineText(editor, line - 1); }

    Programs programs{*workbench->disk};
    SourceWindow window;
    SourceEditor& editor;
};

TEST_F(SourceTyping, SpellsAndColoursWordsWhenTheyAreComplete) {
    Type("loop");
    EXPECT_EQ(Line(1), "loop");
    EXPECT_EQ(ColoursOf(1), "....");
    Type(" ");
    EXPECT_EQ(Line(1), "LOOP ");
    EXPECT_EQ(ColoursOf(1), "KKKK.");
    Type("\"end\";on");
    EXPECT_EQ(Line(1), "LOOP \"end\";on");
    EXPECT_EQ(ColoursOf(1), "KKKK.SSSSSCCC");
    EXPECT_EQ(window.Editor()->SendScintilla(Sci::SCI_GETCURRENTPOS), 13);
    Type("\nmotor1 orange or\n");  // "or" is a word of its own only once it is complete
    EXPECT_EQ(Line(2), "    MOTOR1 orange OR");
    EXPECT_EQ(ColoursOf(2), "....KKKKK.........KK");
}

TEST_F(SourceTyping, AWordIsCompleteWhenTheCaretLeavesIt) {
    Load("x\ny\n");
    Press(Qt::Key_End);
    Type(" loop");
    EXPECT_EQ(ColoursOf(1), "......");
    Press(Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Line(1) == "x LOOP"; }));
    EXPECT_EQ(ColoursOf(1), "..KKKK");
}

TEST_F(SourceTyping, UndoBringsBackWhatWasTyped) {
    Type("loop ");
    QApplication::processEvents();
    window.Undo();
    QApplication::processEvents();
    EXPECT_EQ(Line(1), "loop ");
    window.Undo();
    QApplication::processEvents();
    EXPECT_EQ(Line(1), "");
    EXPECT_FALSE(window.SourceChanged());
    window.Redo();
    window.Redo();
    QApplication::processEvents();
    EXPECT_EQ(Line(1), "LOOP ");
    EXPECT_EQ(ColoursOf(1), "KKKK.");
}

TEST_F(SourceTyping, PastedTextIsSpeltToo) {
    window.SetText("if speed < 2 then\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Line(1) == "IF speed < 2 THEN"; }));
    EXPECT_EQ(ColoursOf(1), "KK...........KKKK");
    EXPECT_TRUE(window.SourceChanged());
    window.Undo();
    window.Undo();
    EXPECT_EQ(window.Text(), "");
}

TEST_F(SourceTyping, TheLastWordKeepsItsColourWhenAWholeTextComesOrComesBack) {
    Load("LOOP\nEND PROGRAM\n");
    EXPECT_EQ(ColoursOf(2), "KKK.KKKKKKK");
    WriteFile("line.txt", "WAIT 1\nEND PROGRAM\n");
    EXPECT_TRUE(window.Reload());
    EXPECT_EQ(ColoursOf(2), "KKK.KKKKKKK");
    window.SetText("WAIT 2\nEND LOOP");
    EXPECT_EQ(ColoursOf(2), "KKK.KKKK");
    window.Undo();
    EXPECT_EQ(ColoursOf(2), "KKK.KKKKKKK");
    window.Redo();
    EXPECT_EQ(ColoursOf(2), "KKK.KKKK");
}

TEST_F(SourceTyping, OnlyTouchedLinesAreColouredAgain) {
    Load("loop\ndisplay \"a\n; end\nend loop\nEND PROGRAM");
    EXPECT_EQ(window.Text(), "LOOP\nDISPLAY \"a\n; end\nend loop\nEND PROGRAM");
    EXPECT_FALSE(window.SourceChanged());
    EXPECT_EQ(ColoursOf(3), "SSSSS");  // the string goes on to the end of the text
    window.GotoLine(1);
    Press(Qt::Key_End);
    Type(" ");
    EXPECT_EQ(ColoursOf(1), "KKKK.");
    EXPECT_EQ(ColoursOf(3), "SSSSS");
    window.GotoLine(3);
    Press(Qt::Key_End);
    Type(" ");
    EXPECT_EQ(ColoursOf(3), "CCCCCC");
    EXPECT_EQ(ColoursOf(4), "SSSSSSSS");
}

TEST_F(SourceTyping, TheSwitchLeavesTheTextPlain) {
    settings->SaveSetting(SettingNumber::ColourSource, 0);
    window.SetColouring();
    Load("loop\n");
    Press(Qt::Key_End);
    Type(" end ; x ");
    EXPECT_EQ(Line(1), "loop end ; x ");
    EXPECT_EQ(ColoursOf(1), ".............");
}

TEST_F(SourceTyping, ColoursCanBeReadOnAnyPage) {
    for (const QColor& page : {QColor(255, 255, 255), QColor(30, 30, 30)}) {
        settings->SaveSetting(SettingNumber::EditorPageColour, FromColour(page));
        window.SetFormColours();
        EXPECT_EQ(editor.lexer()->paper(0), page);
        EXPECT_EQ(editor.lexer()->color(1), ReadableOn(QColor(0, 0, 255), page));
        EXPECT_EQ(editor.lexer()->color(2), ReadableOn(QColor(0, 127, 0), page));
    }
    EXPECT_EQ(ReadableOn(QColor(0, 0, 255), Qt::white), QColor(0, 0, 255));
}

TEST_F(SourceTyping, BlocksIndentThemselves) {
    Type(
        "define routine Drive()\nif Speed < 2 then\nwait 1\nelse\nselect Speed\ncase 1\nwait 2\n"
        "case else\nwait 3\nend select\nend if\nend routine\nbegin program\n\nloop\nend loop\n");
    EXPECT_EQ(window.Text().toStdString(),
              "DEFINE ROUTINE Drive()\n"
              "    IF Speed < 2 THEN\n"
              "        WAIT 1\n"
              "    ELSE\n"
              "        SELECT Speed\n"
              "            CASE 1\n"
              "                WAIT 2\n"
              "            CASE ELSE\n"
              "                WAIT 3\n"
              "        END SELECT\n"
              "    END IF\n"
              "END ROUTINE\n"
              "BEGIN PROGRAM\n"
              "    \n"
              "    LOOP\n"
              "    END LOOP\n"
              "    ");
}

// A printed program brings its own blanks; "^" is a key that is none of them, "\t" the tab key.
TEST_F(SourceTyping, BlanksThatAnIndentedLineHasAreNotTypedTwice) {
    struct Row {
        const char* typed;
        const char* text;
    };
    for (const auto& [typed, text] : std::vector<Row>{
             {"LOOP\n    WAIT 1\n", "LOOP\n    WAIT 1\n    "},
             {"LOOP\nWAIT 1", "LOOP\n    WAIT 1"},
             {"LOOP\n\tWAIT 1", "LOOP\n    WAIT 1"},
             {"LOOP\n  WAIT 1", "LOOP\n    WAIT 1"},
             {"LOOP\n      WAIT 1", "LOOP\n      WAIT 1"},
             {"LOOP\n\t\tWAIT 1", "LOOP\n        WAIT 1"},
             {"LOOP\n  \tWAIT 1", "LOOP\n    WAIT 1"},
             {"LOOP\nLOOP\n    \tWAIT  1", "LOOP\n    LOOP\n        WAIT  1"},
             {"LOOP\n    END LOOP\n  x", "LOOP\nEND LOOP\n  x"},
             {"LOOP\n^    WAIT 1", "LOOP\n        WAIT 1"},
             {"x\n    y", "x\n    y"},
         }) {
        editor.LoadText("", false);
        for (const char* key = typed; *key != '\0'; ++key) {
            if (*key == '\t') {
                Press(Qt::Key_Tab);
            } else if (*key == '^') {
                Press(Qt::Key_Left);
                Press(Qt::Key_Right);
            } else {
                Type(QByteArray(1, *key));
            }
        }
        EXPECT_EQ(window.Text(), text) << typed;
    }
}

TEST_F(SourceTyping, FoldsFollowTheText) {
    const auto depths = [&] {
        editor.Folds().Finish();
        std::string all;
        for (int line = 0; line < editor.lines(); ++line) {
            const long level = Send(editor, Sci::SCI_GETFOLDLEVEL, line);
            all += static_cast<char>('0' + (level & Sci::SC_FOLDLEVELNUMBERMASK) -
                                     Sci::SC_FOLDLEVELBASE);
        }
        return all;
    };
    Load("BEGIN PROGRAM\n    LOOP\n    WAIT 1\n    END LOOP\n    WAIT 2\nEND PROGRAM\n; end\n");
    EXPECT_EQ(depths(), "0122110");
    window.GotoLine(2);
    Type("LOO");  // no loop any more: END LOOP ends the program's block
    QApplication::processEvents();
    EXPECT_EQ(depths(), "0111000");
    Type("P");
    Press(Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(depths(), "01222110");
}

TEST_F(SourceTyping, ALineEndIsUndoneWithItsIndentation) {
    Type("LOOP");
    Press(Qt::Key_Return);
    Type("WAIT 1");
    editor.undo();
    EXPECT_EQ(editor.TextBytes(), "LOOP\n    ");
    editor.undo();
    EXPECT_EQ(editor.TextBytes(), "LOOP");
}

TEST_F(SourceTyping, AListEndsWhenItsLastWordIsTyped) {
    Type("; first\nSET LEDS ON, OF");
    EXPECT_TRUE(editor.Typing().IsOffering());
    Type("F");
    EXPECT_FALSE(editor.Typing().IsOffering());
    Press(Qt::Key_Up);
    EXPECT_EQ(editor.CaretLine(), 1);
}

TEST_F(SourceTyping, OffersCompletionsWithoutTakingTheReturnKey) {
    editor.Typing().SetProgramNames({{"SpeedLimit", "DEFINE BYTE SpeedLimit = 0", false},
                                     {"Speedometer", "DEFINE BYTE Speedometer = 0", false}});
    Type("s");
    EXPECT_FALSE(editor.Typing().IsOffering());
    Type("p");
    EXPECT_TRUE(editor.Typing().IsOffering());
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(1), "Speedometer");
    Type(" = sp\n");  // offered, not chosen: the line ends
    EXPECT_EQ(Line(1), "Speedometer = sp");
    EXPECT_EQ(editor.lines(), 2);
    Type("speedo");
    Press(Qt::Key_Return);
    EXPECT_EQ(Line(2), "Speedometer") << "nothing else can be meant";
    EXPECT_EQ(editor.lines(), 2);
    Send(editor, Sci::SCI_DELLINELEFT);
    Type("set m");
    Press(Qt::Key_Tab);
    EXPECT_EQ(Line(2), "SET MOTOR");
    Type(" ");
    EXPECT_NE(Send(editor, Sci::SCI_CALLTIPACTIVE), 0);
    Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_TRUE(editor.Typing().IsOffering());
    Press(Qt::Key_Escape);
    EXPECT_EQ(Line(2), "SET MOTOR ");
}

TEST_F(SourceTyping, TypesWhereNoScreenIs) {
    window.move(-9000, -9000);  // a list of completions has no place there
    Type("se");
    EXPECT_EQ(Line(1), "se");
}

TEST_F(SourceTyping, ScreenReadersChangeNothing) {
    QAccessible::setActive(true);
    Type("loop\nend loop\n");
    EXPECT_EQ(window.Text(), "LOOP\nEND LOOP\n");
    window.Undo();
    QAccessible::setActive(false);
    EXPECT_EQ(window.Text(), "LOOP\nEND loop\n");  // the spelling was the last step
}

TEST_F(SourceTyping, TheWheelZooms) {
    const auto turn = [&](int angle) {
        QWheelEvent event(QPointF(50, 5), editor.mapToGlobal(QPointF(50, 5)), {}, QPoint(0, angle),
                          Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(editor.viewport(), &event);
        return Send(editor, Sci::SCI_GETZOOM);
    };
    EXPECT_GT(turn(120), 0);
    window.ResetZoom();
    EXPECT_LT(turn(-120), 0);
}

TEST_F(SourceTyping, BracesAreMatchedAndBlanksStayBlanks) {
    Press(Qt::Key_Tab);
    Type("CALL Drive()");
    EXPECT_EQ(Line(1), "    CALL Drive()");
    EXPECT_EQ(Send(editor, Sci::SCI_BRACEMATCH, 14), 15);
}

}  // namespace
}  // namespace zentro
