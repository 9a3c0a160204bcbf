// Line by line forwards and back through real programs, at breakpoints and in the background.
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "comms/debug_variables.h"
#include "compiler/line_starts.h"
#include "desktop/program_lines.h"
#include "desktop/virtual_board_host.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

/// A program on a board, followed by its lines.
class Followed {
  public:
    explicit Followed(const std::string& text, const std::map<std::string, std::string>& files = {})
        : program_(text) {
        for (const auto& [name, content] : files)
            program_.WithFile(name, content);
        EXPECT_TRUE(program_.Compile()) << program_.output.log;
        host.SetLines(ProgramLines(program_.compilation, &FileKey).Starts());
        EXPECT_EQ(host.LoadProgram(program_.object.text), "");
    }

    /// "5", in an included file "part.txt:5"; "end" when no program runs, "?" within a line.
    std::string Line() const {
        const Board& board = host.State();
        if (!board.processor.running) return "end";
        const std::uint32_t address = NextOf(board).address;
        for (const LineStart& start : LineStartsOf(program_.compilation)) {
            if (start.address != address) continue;
            const LineXref place = XrefOf(program_.compilation, start.lineNumber);
            const std::string line = std::to_string(place.sourceLineNo);
            return place.fileName == "main.txt" ? line : place.fileName + ":" + line;
        }
        return "?";
    }

    /// Carries out the keys: o(ver), i(nto), b(ack), s(tep by instruction), and tells the lines.
    std::string Keys(const std::string& keys) {
        std::string lines;
        for (const char key : keys) {
            if (key == 'o') host.StepLine(LineStep::Over);
            if (key == 'i') host.StepLine(LineStep::Into);
            if (key == 's') host.Step();
            const bool moved = key != 'b' || host.StepLineBack();
            lines += (lines.empty() ? "" : " ") + (moved ? Line() : "no");
        }
        return lines;
    }

    std::uint16_t AddressOf(int line) const {
        for (const LineStart& start : LineStartsOf(program_.compilation)) {
            if (XrefOf(program_.compilation, start.lineNumber).sourceLineNo == line)
                return start.address;
        }
        return 0xFFFF;
    }
    void BreakAt(int line, ProgramStops::Condition condition = {}) {
        host.SetBreakpoints({{AddressOf(line), std::move(condition)}});
    }
    unsigned Value(const std::string& name) const {
        for (const DebugVariable& variable : VariablesOf(program_.compilation)) {
            if (variable.name != name) continue;
            return IsWordSized(variable.type) ? host.State().memory.Word(variable.address)
                                              : host.State().memory.Byte(variable.address);
        }
        return 0xFFFFFF;
    }

    VirtualBoardHost host;

  private:
    test::Program program_;
};

constexpr const char* kBranches = R"(DEFINE BYTE Count = 0
BEGIN PROGRAM
    WHILE Count < 2
        IF Count = 0 THEN
            Count = 1
        ELSE
            Count = 2
        END IF
    END WHILE
    SELECT Count
    CASE 1
        Count = 7
    CASE 2
        Count = 8
    CASE ELSE
        Count = 9
    END SELECT
END PROGRAM
)";

constexpr const char* kCalls = R"(DEFINE BYTE Sum = 0
DEFINE ROUTINE Add(Number BYTE)
    DEFINE BYTE Rest = 0
    IF Number > 0 THEN
        Sum = Sum + Number
        Rest = Number - 1
        CALL Add(Rest)
    END IF
END ROUTINE
BEGIN PROGRAM
    CALL Add(2)
    Sum = Sum + 100
END PROGRAM
)";

constexpr const char* kEvents = R"(DEFINE BYTE Ticks = 0
DEFINE EVENT Tick()
    Ticks = Ticks + 1
END EVENT
BEGIN PROGRAM
    SET EVENT 25, Tick
    ENABLE EVENTS
    WAIT 250
    Ticks = Ticks + 10
END PROGRAM
)";

struct StepCase {
    const char* what;
    const char* text;
    std::map<std::string, std::string> files;
    const char* keys;
    const char* lines;
};

const StepCase kStepCases[] = {
    {"branches and loops", kBranches, {}, "oooooooooooooooo", "2 3 4 5 8 9 3 4 6 7 8 9 3 10 11 13"},
    {"branches and loops back", kBranches, {}, "oooooobbbbbb", "2 3 4 5 8 9 8 5 4 3 2 no"},
    {"a whole call at once", kCalls, {}, "oooo", "10 11 12 13"},
    {"a whole call back", kCalls, {}, "oooobbb", "10 11 12 13 12 11 10"},
    {"into calls of itself", kCalls, {}, "ooiiiiiiii", "10 11 2 4 5 6 7 2 4 5"},
    {"over a call inside", kCalls, {}, "ooiiiiioo", "10 11 2 4 5 6 7 8 9"},
    {"out of a call", kCalls, {}, "ooiiiiiooo", "10 11 2 4 5 6 7 8 9 12"},
    {"steps are taken back as they were made",
     kCalls,
     {},
     "ooiiiiiooobbbb",
     "10 11 2 4 5 6 7 8 9 12 9 8 7 6"},
    {"the middle of a line goes back to its beginning", kCalls, {}, "oosb", "10 11 ? 11"},
    {"a handler within a wait", kEvents, {}, "ooooo", "5 6 7 8 9"},
    {"into a handler", kEvents, {}, "ooooiiiiiii", "5 6 7 8 2 3 4 2 3 4 9"},
    {"over a handler's lines", kEvents, {}, "ooooioo", "5 6 7 8 2 3 4"},
    {"back out of a handler", kEvents, {}, "ooooib", "5 6 7 8 2 8"},
    {"the end can be taken back", kEvents, {}, "oooooobb", "5 6 7 8 9 10 9 8"},
    {"and the very end", kEvents, {}, "ooooooobo", "5 6 7 8 9 10 end 10 end"},
    {"another file",
     "INCLUDE \"part.txt\"\nBEGIN PROGRAM\n    CALL Rest()\nEND PROGRAM\n",
     {{"part.txt", "; rests\nDEFINE ROUTINE Rest()\n    WAIT 1\nEND ROUTINE\n"}},
     "ooiooobbb",
     "2 3 part.txt:2 part.txt:3 part.txt:4 4 part.txt:4 part.txt:3 part.txt:2"},
};

TEST(LineSteps, LeadFromLineToLineAndBack) {
    for (const StepCase& row : kStepCases) {
        Followed followed(row.text, row.files);
        EXPECT_EQ(followed.Keys(row.keys), row.lines) << row.what;
    }
}

TEST(LineSteps, HandlersAndWaitsOfALineAreDoneWithIt) {
    Followed followed(kEvents);
    followed.Keys("ooooo");
    EXPECT_EQ(followed.host.State().clock, 250U);
    EXPECT_EQ(followed.Value("Ticks"), 2U);
    followed.Keys("o");
    EXPECT_EQ(followed.Value("Ticks"), 12U);
}

TEST(LineSteps, GoingBackByLinesFromARunNeedsNoSteps) {
    Followed followed(kCalls);
    followed.BreakAt(12);
    followed.host.Run();
    followed.host.Advance(10);
    EXPECT_EQ(followed.Line(), "12");
    EXPECT_EQ(followed.Value("Sum"), 3U);
    EXPECT_EQ(followed.Keys("bbb"), "11 10 no");
    EXPECT_EQ(followed.Keys("oo"), "11 12");
    // From inside of a call it leads to the line that called.
    followed.BreakAt(9);
    followed.host.StepLineBack();
    followed.host.Run();
    followed.host.Advance(10);
    EXPECT_EQ(followed.Line(), "9");
    EXPECT_EQ(followed.Keys("bbbb"), "8 4 2 7");
}

constexpr const char* kCounting = R"(DEFINE WORD Count = 0
BEGIN PROGRAM
    LOOP
        Count = Count + 1
    END LOOP
END PROGRAM
)";

TEST(LineSteps, BreakpointsHoldAtEverySpeed) {
    for (const BoardSpeed::Kind kind :
         {BoardSpeed::Kind::SlowMotion, BoardSpeed::Kind::RealTime, BoardSpeed::Kind::FullSpeed}) {
        Followed followed(kCounting);
        followed.host.SetSpeed({kind, 1000});
        QSignalSpy reached(&followed.host, &VirtualBoardHost::StopReached);
        followed.BreakAt(5, [&](const Board&) { return followed.Value("Count") == 20; });
        followed.host.Run();
        for (int i = 0; i < 20 && !followed.host.IsPaused(); ++i)
            followed.host.Advance(50);
        EXPECT_TRUE(followed.host.IsPaused());
        EXPECT_EQ(followed.Line(), "5");
        EXPECT_EQ(followed.Value("Count"), 20U);
        EXPECT_EQ(reached.count(), 1);
        followed.BreakAt(5);
        followed.host.Run();
        followed.host.Advance(50);
        EXPECT_EQ(followed.Value("Count"), 21U) << "once around, and no further";
    }
}

TEST(LineSteps, ABreakpointInACallEndsAStepOverIt) {
    Followed followed(kCalls);
    followed.BreakAt(9);
    EXPECT_EQ(followed.Keys("oooooo"), "10 11 9 8 9 8");
}

TEST(LineSteps, TheFirstLineCanHoldToo) {
    for (const char* text : {kCounting, kCalls}) {
        Followed followed(text);
        const std::string first = text == kCounting ? "2" : "10";
        followed.BreakAt(std::stoi(first));
        followed.host.Run();
        followed.host.Advance(20);
        EXPECT_EQ(followed.Line(), first);
    }
}

TEST(LineSteps, RunsToAPlace) {
    Followed followed(kCalls);
    followed.host.RunTo(followed.AddressOf(7));
    followed.host.Advance(20);
    EXPECT_EQ(followed.Line(), "7");
    EXPECT_EQ(followed.Value("Sum"), 2U);
    followed.host.RunTo(followed.AddressOf(7));
    followed.host.Advance(20);
    EXPECT_EQ(followed.Value("Sum"), 3U);
    followed.host.Run();
    followed.host.Advance(20);
    EXPECT_EQ(followed.Line(), "end");
}

TEST(LineSteps, ALineWithoutEndGoesOnUntilItIsHeld) {
    Followed followed(R"(DEFINE WORD Count = 0
DEFINE ROUTINE Work()
    LOOP
        Count = Count + 1
    END LOOP
END ROUTINE
BEGIN PROGRAM
    CALL Work()
END PROGRAM
)");
    EXPECT_EQ(followed.Keys("oo"), "7 8");
    followed.host.StepLine(LineStep::Over);
    EXPECT_TRUE(followed.host.IsSteppingLine());
    EXPECT_FALSE(followed.host.IsPaused());
    const std::uint64_t before = followed.host.State().processor.steps;
    followed.host.StepLine(LineStep::Over);  // a key that is held down changes nothing
    EXPECT_EQ(followed.host.State().processor.steps, before);
    followed.host.Advance(100);
    EXPECT_EQ(followed.host.State().processor.steps, before + 100'000);
    followed.host.Pause();
    EXPECT_FALSE(followed.host.IsSteppingLine());
    EXPECT_EQ(followed.Keys("b"), "8") << "all of the line is taken back";
    EXPECT_EQ(followed.Value("Count"), 0U);
}

TEST(LineSteps, AMillionInstructionsASecondAreWatched) {
    Followed followed(kCounting);
    followed.BreakAt(5, [](const Board&) { return false; });
    followed.host.Run();
    for (int second = 0; second < 5; ++second)
        followed.host.Advance(1000);
    EXPECT_EQ(followed.host.State().processor.steps, 5'000'000U);
    EXPECT_EQ(followed.host.State().clock, 500U);
    followed.host.Pause();
    followed.Keys("o");
    const std::string back = followed.Keys("bbbb");
    EXPECT_TRUE(back.ends_with("3 5 4") || back.ends_with("4 3 5") || back.ends_with("5 4 3"))
        << back;
    followed.host.Run();
    followed.host.Advance(1000);
    EXPECT_GT(followed.host.State().processor.steps, 5'900'000U);
}

TEST(LineSteps, LeaveTheBoardsOwnDebugMode) {
    Followed followed(kCalls);
    ASSERT_GE(followed.host.Link().Open(kVirtualBoardPort).handle, 1);
    ASSERT_EQ(followed.host.Link().Write("D\r"), 2U);
    followed.host.Advance(20);
    ASSERT_EQ(followed.host.State().processor.debug, DebugState::AtPrompt);
    EXPECT_EQ(followed.Keys("ooo"), "10 11 12");
    EXPECT_EQ(followed.host.State().processor.debug, DebugState::Off);
}

}  // namespace
}  // namespace zentro
