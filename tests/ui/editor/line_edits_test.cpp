// Edits of whole lines: what they make of text and selection, and that one undo takes them back.

#include "ui/editor/line_edits.h"

#include "tests/ui/ui_fixture.h"
#include "ui/editor/scintilla_text.h"
#include "ui/editor/source_editor.h"

namespace zentro {
namespace {

using Sci = QsciScintillaBase;

class LineEdits : public UiTest {
  protected:
    LineEdits() : editor(configuration, nullptr) { editor.show(); }

    /// A text with "[" at the anchor and "]" at the caret; "|" is both.
    void Set(std::string text) {
        const auto take = [&](char sign) {
            const std::size_t place = text.find(sign);
            if (place != std::string::npos) text.erase(place, 1);
            return place;
        };
        std::size_t anchor = take('[');
        std::size_t caret = take(']');
        if (caret != std::string::npos && anchor != std::string::npos && anchor > caret) --anchor;
        if (const std::size_t both = take('|'); both != std::string::npos) anchor = caret = both;
        editor.LoadText(text, true);
        Send(editor, Sci::SCI_SETSEL, static_cast<long>(anchor), static_cast<long>(caret));
    }
    std::string Text() {
        QApplication::processEvents();  // what is left to spell would be spelt now
        std::string text = editor.TextBytes();
        const auto anchor = static_cast<std::size_t>(Send(editor, Sci::SCI_GETANCHOR));
        const auto caret = static_cast<std::size_t>(CaretPosition(editor));
        if (anchor == caret) return text.insert(caret, "|");
        text.insert(std::max(anchor, caret), anchor < caret ? "]" : "[");
        return text.insert(std::min(anchor, caret), anchor < caret ? "[" : "]");
    }

    SourceEditor editor;
};

struct EditCase {
    void (*edit)(SourceEditor&);
    const char* before;
    const char* after;
};

TEST_F(LineEdits, ChangeLinesKeepTheSelectionAndAreUndoneAtOnce) {
    const std::vector<EditCase> cases{
        // Comments.
        {ToggleComment, "WAIT| 1", "; WAIT| 1"},
        {ToggleComment, "; WAIT| 1", "WAIT| 1"},
        {ToggleComment, "|WAIT 1", "; |WAIT 1"},
        {ToggleComment, ";WAIT 1|", "WAIT 1|"},
        {ToggleComment, "|", "; |"},
        {ToggleComment, "    |", "    ; |"},
        {ToggleComment, "    LOOP\n[        WAIT 1\n\n    END LOOP\n]x",
         "    LOOP\n[    ;     WAIT 1\n\n    ; END LOOP\n]x"},
        {ToggleComment, "[    ;     WAIT 1\n    ; END LOOP]", "[        WAIT 1\n    END LOOP]"},
        {ToggleComment, "; a\n]WAIT 1\n; b[", "; a\n]; WAIT 1\n; ; b["},
        {ToggleComment, "]WAIT 1\n; b[", "]; WAIT 1\n; ; b["},
        {ToggleComment, "\tWAI[T 1\n        WA]IT 2", "\t; WAI[T 1\n    ;     WA]IT 2"},
        {ToggleComment, "WAIT 1 ; \u00e4|", "; WAIT 1 ; \u00e4|"},
        // Repeated.
        {Duplicate, "a\nWAIT| 1\nb", "a\nWAIT| 1\nWAIT 1\nb"},
        {Duplicate, "WAIT| 1", "WAIT| 1\nWAIT 1"},
        {Duplicate, "x[yz]", "x[yz]yz"},
        // Moved.
        {MoveLinesUp, "a\nWAIT| 1\nb", "WAIT| 1\na\nb"},
        {MoveLinesDown, "a\nWAIT| 1\nb", "a\nb\nWAIT| 1"},
        {MoveLinesUp, "a\nb|", "b|\na"},
        {MoveLinesDown, "a|\nb", "b\na|"},
        {MoveLinesDown, "a|\n", "\na|"},
        {MoveLinesUp, "a\nW[AIT 1\nWA]IT 2\nb", "W[AIT 1\nWA]IT 2\na\nb"},
        {MoveLinesDown, "]WAIT 1\n[b\nc", "b\n]WAIT 1\n[c"},
        {MoveLinesDown, "a\n[b\n]c", "a\nc\n[b]"},
        // Into a block and out of it.
        {MoveLinesDown, "a|\nLOOP", "LOOP\n    a|"},
        {MoveLinesDown, "  a|\nEND LOOP", "END LOOP\na|"},
        {MoveLinesUp, "LOOP\n    [a\n\n    b]", "[a\n\nb]\nLOOP"},
        {MoveLinesUp, "END LOOP\na|", "    a|\nEND LOOP"},
        {MoveLinesUp, "ELSE\n    a|", "    a|\nELSE"},
        {MoveLinesUp, "    a\nUNTIL x| > 1", "UNTIL x| > 1\na"},
        {MoveLinesDown, "LOOP|\n    a", "a\nLOOP|"},
        {MoveLinesUp, "a\n[LOOP\n    b\nEND LOOP]", "[LOOP\n    b\nEND LOOP]\na"},
        {MoveLinesDown, "[LOOP\n    b\nEND LOOP]\nIF a = 1 THEN",
         "IF a = 1 THEN\n[    LOOP\n        b\n    END LOOP]"},
        {MoveLinesDown, "    END IF|\nEND LOOP", "END LOOP\n    END IF|"},
    };
    for (const EditCase& one : cases) {
        Set(one.before);
        const std::string before = editor.TextBytes();
        one.edit(editor);
        EXPECT_EQ(Text(), one.after) << one.before;
        editor.undo();
        EXPECT_EQ(editor.TextBytes(), before) << one.before;
        EXPECT_FALSE(editor.isUndoAvailable()) << one.before;
    }
    // There is nowhere to go.
    for (const EditCase& one :
         {EditCase{MoveLinesUp, "a|\nb", "a|\nb"}, EditCase{MoveLinesDown, "a\nb|", "a\nb|"},
          EditCase{MoveLinesDown, "a\n[b\nc]", "a\n[b\nc]"}}) {
        Set(one.before);
        one.edit(editor);
        EXPECT_EQ(Text(), one.after);
        EXPECT_FALSE(editor.isUndoAvailable());
    }
}

TEST_F(LineEdits, MarksBesideLinesMoveWithThem) {
    Set("a\nWAIT| 1\nb");
    const int mark = editor.markerAdd(1, editor.markerDefine(QsciScintilla::Circle));
    for (const auto& [move, line] : {std::pair{&MoveLinesUp, 0},
                                     {MoveLinesDown, 1},
                                     {MoveLinesDown, 2},
                                     {MoveLinesUp, 1},
                                     {ToggleComment, 1}}) {
        move(editor);
        EXPECT_EQ(editor.markerLine(mark), line);
    }
}

TEST_F(LineEdits, CommentingTwiceGivesTheTextBack) {
    const std::string text =
        "DEFINE ROUTINE Go(Way BYTE)\n    ; note\n    IF Way = 1 THEN\n\n        WAIT 5 ; x\n"
        "    END IF\nEND ROUTINE";
    editor.LoadText(text, true);
    editor.selectAll();
    ToggleComment(editor);
    EXPECT_NE(editor.TextBytes(), text);
    ToggleComment(editor);
    EXPECT_EQ(editor.TextBytes(), text);
}

TEST_F(LineEdits, PiecesAreReplacedWithTheCaretInItsPlace) {
    struct Case {
        const char* before;
        const char* text;
        const char* after;
    };
    const std::vector<LinePiece> pieces{{1, 0, 5}, {2, 4, 5}, {1, 8, 5}};
    for (const Case& one :
         {Case{"Speed = Speed\n\u00e4\u00e4\u00e4 Speed + |1", "Velocity",
               "Velocity = Velocity\n\u00e4\u00e4\u00e4 Velocity + |1"},
          Case{"Speed = Speed|\n\u00e4\u00e4\u00e4 Speed", "Go_1",
               "Go_1 = Go_1|\n\u00e4\u00e4\u00e4 Go_1"},
          Case{"Speed = Spee|d\n    Speed", "Up_", "Up_ = Up_|\n    Up_"},
          Case{"[Speed] = Speed\n    Speed", "Power_9", "[Power_9] = Power_9\n    Power_9"}}) {
        Set(one.before);
        const std::string before = editor.TextBytes();
        ReplacePieces(editor, pieces, one.text);
        EXPECT_EQ(Text(), one.after);
        editor.undo();
        EXPECT_EQ(editor.TextBytes(), before);
        EXPECT_FALSE(editor.isUndoAvailable());
    }
}

}  // namespace
}  // namespace zentro
