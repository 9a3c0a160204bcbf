// A reader types the programs of the handbook as they are printed.

#include <gtest/gtest.h>

#include "tests/ui/ui_fixture.h"
#include "tools/handbook/manuscript.h"
#include "ui/editor/source_editor.h"

namespace zentro {
namespace {

class TypedPrograms : public UiTest {
  protected:
    TypedPrograms() : editor_(configuration, nullptr) {
        editor_.resize(700, 500);
        editor_.show();
    }

    /// Types the program key by key; `tabs`: the tab key for each four blanks at the head of a
    /// line.
    QString Typed(const Block& program, bool tabs) {
        editor_.LoadText("", false);
        for (std::size_t line = 0; line < program.lines.size(); ++line) {
            if (line > 0) Press(Qt::Key_Return);
            std::string_view text = program.lines[line];
            while (tabs && text.starts_with("    ")) {
                Press(Qt::Key_Tab);
                text.remove_prefix(4);
            }
            for (const char c : text)
                QTest::keyClick(&editor_, c);
        }
        return editor_.text() + '\n';
    }
    void Press(Qt::Key key) { QTest::keyClick(&editor_, key); }

    SourceEditor editor_;
};

// The first lesson and the chapters that are read like it.
TEST_F(TypedPrograms, StandInTheEditorAsTheyArePrinted) {
    int programs = 0;
    for (const Block& block : ReadManuscriptFolder(ZENTRO_HANDBOOK_FOLDER).blocks) {
        if (block.kind != Block::Kind::Program || !block.place.starts_with('0')) continue;
        ++programs;
        const QString printed = QString::fromStdString(ProgramText(block));
        EXPECT_EQ(Typed(block, false), printed) << block.place;
        EXPECT_EQ(Typed(block, true), printed) << block.place;
    }
    EXPECT_GT(programs, 3);
}

}  // namespace
}  // namespace zentro
