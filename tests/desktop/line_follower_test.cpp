// Breakpoints, lines and values through edits, compiles and new names, without a window.
#include "desktop/line_follower.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "desktop/compile_service.h"
#include "desktop/variable_values.h"
#include "tests/support/compile_fixture.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

constexpr const char* kText = R"(DEFINE BYTE Count = 0
DEFINE FLAG Lost = FALSE
; counts and works
DEFINE CONSTANT Most = 3
DEFINE ROUTINE Work(Number WORD)
    DEFINE WORD Twice = 0
    Twice = Number + Number
    Count = Count + 1
END ROUTINE
BEGIN PROGRAM
    LOOP
        CALL Work(500)

        ; rest
        WAIT 5
    END LOOP
END PROGRAM
DEFINE TABLE Tune = 1, 2, "A"
END TABLE
)";

class LineFollowerTest : public UiTest {
  protected:
    LineFollowerTest() {
        board.SetVirtualBoardSeen(true);
        id = programs.Add(FilePath(""), "main.txt", [this] { return text; });
    }

    void Compile() {
        test::CapturedOutput log;
        program = service.CompileTexts(*programs.File(id), log, nullptr);
        ASSERT_TRUE(program != nullptr && program->succeeded) << log.log;
    }
    void Load() {
        Compile();
        ASSERT_TRUE(board.Load(program));
    }
    const OpenFile& File() { return *programs.File(id); }
    /// As the editor tells it: lines put in before a line, or taken out from it on.
    void PutIn(int line, int count) {
        QStringList lines = text.split('\n');
        for (int i = 0; i < count; ++i)
            lines.insert(line - 1, "; new");
        Edit(lines, {line, 0, count});
    }
    void TakeOut(int line, int count) {
        QStringList lines = text.split('\n');
        lines.remove(line - 1, count);
        Edit(lines, {line, count, 0});
    }
    void Edit(const QStringList& lines, const LineMove& move) {
        programs.NoteEdited(id);
        text = lines.join('\n');
        programs.NoteLinesMoved(id, move);
    }
    std::vector<int> Lines() {
        std::vector<int> lines;
        for (const Breakpoint& breakpoint : breakpoints.All())
            lines.push_back(breakpoint.line);
        return lines;
    }
    bool IsOnBoard(int line) { return follower.IsOnBoard({File().key, line, {}}); }
    /// Runs until it is held, and tells the line.
    int RunToStop() {
        VirtualBoardHost& host = board.VirtualBoard();
        host.Run();
        for (int i = 0; i < 50 && !host.IsPaused(); ++i)
            host.Advance(100);
        const auto address = board.Activity().address;
        const auto place = address ? follower.PlaceOf(*program, *address) : std::nullopt;
        return place ? place->line : 0;
    }

    struct NoPrompts : Prompts {
        void ShowMessage(std::string_view) override {}
        std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                                   std::string_view) override {
            return std::nullopt;
        }
    };

    QString text = kText;
    NoPrompts prompts;
    Programs programs{*workbench->disk};
    BoardState board{[](const std::string&) {}, [] { return std::vector<PortDescription>(); }};
    CompileService service{configuration, *settings, programs, prompts};
    Breakpoints breakpoints{programs};
    LineFollower follower{programs, board, breakpoints, configuration};
    FileId id{};
    std::shared_ptr<const CompiledProgram> program;
};

TEST_F(LineFollowerTest, BreakpointsMoveWithTheirLinesAndFile) {
    Load();
    breakpoints.Toggle(File(), 8);
    breakpoints.Toggle(File(), 15);
    EXPECT_EQ(RunToStop(), 8);
    PutIn(1, 3);
    EXPECT_EQ(Lines(), (std::vector{11, 18}));
    EXPECT_TRUE(IsOnBoard(11)) << "the board holds the line, wherever it stands now";
    EXPECT_FALSE(IsOnBoard(2)) << "this line came later";
    EXPECT_EQ(RunToStop(), 18);
    EXPECT_EQ(RunToStop(), 11);
    TakeOut(2, 1);
    EXPECT_EQ(Lines(), (std::vector{10, 17}));
    TakeOut(10, 1);
    EXPECT_EQ(Lines(), std::vector{16}) << "a breakpoint goes with its line";
    EXPECT_EQ(RunToStop(), 16);

    programs.NoteSaved(id, FilePath("other"), "renamed.txt");
    EXPECT_EQ(breakpoints.All()[0].file, File().key);
    EXPECT_TRUE(IsOnBoard(16)) << "it is the program on the board, by another name";
    EXPECT_EQ(RunToStop(), 16);
    Load();
    EXPECT_TRUE(IsOnBoard(16));
    EXPECT_EQ(RunToStop(), 16);
    breakpoints.Clear();
    board.VirtualBoard().Run();
    board.VirtualBoard().Advance(500);
    EXPECT_FALSE(board.VirtualBoard().IsPaused());
}

TEST(LineMoves, LeadBackToWhereALineWas) {
    for (const LineMove& move :
         {LineMove{3, 2, 0}, {3, 0, 2}, {3, 1, 0, 6}, {6, 1, 0, 3}, {1, 2, 0, 4}, {4, 2, 0, 1}}) {
        for (int line = 1; line < 10; ++line) {
            const std::optional<int> after = LineAfter(move, line);
            EXPECT_TRUE(!after || LineBefore(move, *after) == line) << line;
            EXPECT_EQ(after.has_value(),
                      move.carriedTo != 0 || line < move.line || line >= move.line + move.removed);
        }
    }
    EXPECT_EQ(LineAfter({3, 1, 0, 6}, 3), 6);
    EXPECT_EQ(LineAfter({3, 1, 0, 6}, 6), 5);
    EXPECT_EQ(LineAfter({3, 1, 0, 6}, 7), 7);
}

TEST_F(LineFollowerTest, ALineWithoutCodeGivesItsBreakpointToTheNext) {
    using What = Breakpoints::Toggled::What;
    // Before anything is known of the program a breakpoint stands where it was wanted.
    EXPECT_EQ(breakpoints.Toggle(File(), 13).line, 13);
    QSignalSpy moved(&follower, &LineFollower::BreakpointMoved);
    Load();
    EXPECT_EQ(Lines(), std::vector{15});
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].toInt(), 13);
    EXPECT_EQ(moved[0][1].toInt(), 15);
    EXPECT_EQ(breakpoints.Toggle(File(), 1).line, 5);
    EXPECT_EQ(breakpoints.Toggle(File(), 5).what, What::Removed);
    EXPECT_EQ(breakpoints.Toggle(File(), 18).what, What::NoCode);
    EXPECT_EQ(Lines(), std::vector{15});
}

TEST_F(LineFollowerTest, TheLitLineFollowsEdits) {
    Load();
    breakpoints.Toggle(File(), 12);
    ASSERT_EQ(RunToStop(), 12);
    const std::uint16_t address = *board.Activity().address;
    PutIn(4, 2);
    EXPECT_EQ(follower.PlaceOf(*program, address)->line, 14);
    PutIn(14, 1);
    TakeOut(3, 1);
    EXPECT_EQ(follower.PlaceOf(*program, address)->line, 14);
    TakeOut(14, 1);
    EXPECT_FALSE(follower.PlaceOf(*program, address)->isCertain);
}

TEST_F(LineFollowerTest, ALineThatWaitsIsTheOneThatIsLit) {
    Load();
    board.VirtualBoard().Run();
    board.VirtualBoard().Advance(10);
    board.VirtualBoard().Pause();
    ASSERT_EQ(board.VirtualBoard().State().processor.wait.kind, Wait::Kind::Time);
    EXPECT_EQ(follower.PlaceOf(*program, *board.Activity().address)->line, 15);
}

TEST_F(LineFollowerTest, ConditionsHoldWhenTheyAreTrue) {
    struct Case {
        const char* condition;
        unsigned count;  ///< when it holds first
    };
    for (const Case& row : {Case{"Count > 10", 11},
                            {"count >= 10", 10},
                            {"10=Count", 10},
                            {"Count<>0", 1},
                            {"Twice = 1000", 1},
                            {"Count > Most", 4},
                            {"Count = 0FH", 15},
                            {"Lost = FALSE", 1},
                            {"Number > 499", 1},
                            {"Count = \"A\"", 65},
                            {"Count =>3", 3},
                            {"2 < Count", 3}}) {
        breakpoints.Clear();
        Load();
        ASSERT_EQ(follower.ProblemWith(File(), 9, row.condition), "") << row.condition;
        breakpoints.Toggle(File(), 9);
        breakpoints.SetCondition(File().key, 9, row.condition);
        EXPECT_EQ(RunToStop(), 9) << row.condition;
        EXPECT_EQ(follower.ValueOf(File(), 9, "Count"), QString("Count = %1").arg(row.count))
            << row.condition;
    }
}

TEST_F(LineFollowerTest, SaysWhatIsWrongWithACondition) {
    Load();
    struct Case {
        const char* condition;
        const char* problem;
    };
    for (const Case& row :
         {Case{"Count", "A condition is one comparison, such as Count > 10."},
          {"Count > 1 AND Count < 3", "A condition is one comparison, such as Count > 10."},
          {"Count + 1",
           "+ does not compare anything. Write =, <>, <, >, <= or >= between the two "
           "values."},
          {"Count > 70000", "70000 is neither a name nor a value from 0 to 65535."},
          {"Cuont > 1", "The program declares no variable and no constant Cuont."},
          {"Work > 1", "Work is a routine, and a condition compares values."},
          {"Tune = 1", "Tune is a table, and a condition compares single values."}})
        EXPECT_EQ(follower.ProblemWith(File(), 9, row.condition), row.problem);
    EXPECT_EQ(follower.ProblemWith(File(), 12, "Twice > 1"),
              "The program on the board has no variable and no constant Twice that this line can "
              "use.");
    EXPECT_EQ(follower.ProblemWith(File(), 9, " "), "");
}

TEST_F(LineFollowerTest, ValuesAreThoseOfTheBoardThatHoldsTheProgram) {
    Compile();
    EXPECT_EQ(follower.ValueOf(File(), 12, "Count"), "") << "it is not on the board";
    Load();
    breakpoints.Toggle(File(), 9);
    ASSERT_EQ(RunToStop(), 9);
    EXPECT_EQ(follower.ValueOf(File(), 12, "count"), "Count = 1");
    EXPECT_EQ(follower.ValueOf(File(), 12, "Lost"), "Lost = FALSE");
    EXPECT_EQ(follower.ValueOf(File(), 12, "Tune"), "Tune = 1, 2, 65");
    EXPECT_EQ(follower.ValueOf(File(), 7, "Twice"), "Twice of Work = 1000");
    EXPECT_EQ(follower.ValueOf(File(), 12, "Twice"), "") << "not to be seen from here";
    EXPECT_EQ(follower.ValueOf(File(), 12, "Work"), "");
    PutIn(1, 1);
    EXPECT_EQ(follower.ValueOf(File(), 8, "Twice"),
              "Twice of Work = 1000 (in the program on the board, which is older than this text)");
}

TEST(VariableValues, AreBounded) {
    std::vector<std::uint8_t> bytes(200, 7);
    const QString shown =
        ValueText(bytes, DataType::Table, bytes.size(), test::ShippedLanguage().commands);
    EXPECT_TRUE(shown.startsWith("7, 7, ")) << shown.toStdString();
    EXPECT_TRUE(shown.endsWith("7, ... (200 bytes)"));
    EXPECT_EQ(shown.count(','), 64);
    const std::uint8_t odd = 3;
    EXPECT_EQ(ValueText(std::span(&odd, 1), DataType::Flag, 1, test::ShippedLanguage().commands),
              "3");
}

}  // namespace
}  // namespace zentro
