// Faults in plain words, of programs that really fail.
#include "faults/fault_report.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

#include "board/board.h"
#include "board/loader.h"
#include "faults/program_words_file.h"
#include "faults/words_of_program.h"
#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Runs a program of 64 bytes to its end and tells its fault.
FaultReport FaultOf(const std::vector<int>& bytes, std::size_t size = 64) {
    auto board = std::make_unique<Board>();
    EXPECT_EQ(LoadObjectText(*board, ObjectOf(bytes, size)), "");
    StartProgram(*board);
    RunInstructions(*board, 100'000);
    EXPECT_EQ(board->processor.end, EndReason::Fault);
    return DescribeFault(*board, {});
}

struct FaultCase {
    const char* what;
    std::vector<int> bytes;
    std::size_t size;
    std::uint32_t address;
    int opcode;
    const char* text;
};

const FaultCase kFaultCases[] = {
    {"byte division",
     {0, 46, 0, 0x21, 0, 0x20},
     64,
     1,
     46,
     "Division by zero at [0001]: DIVIDE BYTE divides by [0020], which holds 0"},
    {"word division",
     {47, 0, 0x21, 0, 0x26},
     64,
     0,
     47,
     "Division by zero at [0000]: DIVIDE WORD divides by [0026], which holds 0"},
    {"no instruction",
     {0, 0, 200},
     64,
     2,
     200,
     "Unknown instruction at [0002]: the byte there is 200, and instructions have the numbers 0 to "
     "100"},
    {"operand",
     {56, 0x90, 0},
     64,
     0,
     56,
     "Address outside memory at [0000]: INCREMENT BYTE uses the address [9000], but memory ends at "
     "[7FFF]"},
    {"second byte of a word",
     {64, 0x7F, 0xFF},
     64,
     0,
     64,
     "Address outside memory at [0000]: INCREMENT WORD uses the address [7FFF], but memory ends at "
     "[7FFF]"},
    {"pointer",
     {60, 0, 0x22, 16, 0, 0x22, 0, 0x20},
     64,
     3,
     16,
     "Address outside memory at [0003]: READ DATA BYTE follows the pointer [0022], which leads to "
     "[FF00], but memory ends at [7FFF]"},
    {"behind the end",
     {},
     32768,
     0x8000,
     0xFF,
     "Address outside memory at [8000]: the program ran on there, but memory ends at [7FFF]"},
    {"full stack",
     {23, 0, 0x20, 53, 0, 0},
     32766,
     0,
     23,
     "Data stack full at [0000]: PUSH BYTE finds no room for [0020], because 2 bytes lie on the "
     "stack, down to the program, which ends before [7FFE]"},
    {"empty stack",
     {23, 0, 0x20, 26, 0, 0x22},
     64,
     3,
     26,
     "Data stack empty at [0003]: POP WORD wants a value for [0022], but 1 byte lies on the stack"},
    {"calls",
     {51, 0, 0},
     64,
     0,
     51,
     "Too many calls at [0000]: 256 calls inside each other are the most, and CALL [0000] would be "
     "one more. Perhaps a routine calls itself without end"},
    {"return",
     {52},
     64,
     0,
     52,
     "Return without a call at [0000]: RETURN without a CALL before it has nowhere to go"},
    {"event",
     {75},
     64,
     0,
     75,
     "No event to complete at [0000]: COMPLETE EVENT ends the handler of an event, and none is "
     "running"},
};

TEST(FaultReportTest, SaysWhatWentWrongWithTheValues) {
    for (const FaultCase& row : kFaultCases) {
        SCOPED_TRACE(row.what);
        const FaultReport report = FaultOf(row.bytes, row.size);
        EXPECT_EQ(report.text, row.text);
        EXPECT_EQ(report.address, row.address);
        EXPECT_EQ(report.opcode, row.opcode);
    }
}

TEST(FaultReportTest, AnInstructionCutOffByTheEndOfMemory) {
    auto board = std::make_unique<Board>();
    ASSERT_EQ(LoadObjectText(*board, ObjectOf({53, 0x7F, 0xFE}, 64)), "");
    board->memory.StoreByte(0x7FFE, 53);
    StartProgram(*board);
    RunInstructions(*board, 10);
    EXPECT_EQ(DescribeFault(*board, {}).text,
              "Address outside memory at [7FFE]: JUMP does not fit there, because memory ends at "
              "[7FFF]");
}

/// The fault of a program, which may be meddled with after its start.
std::string FaultOfSource(
    test::Program& program, const std::function<void(Board&)>& meddle = [](Board&) {}) {
    EXPECT_TRUE(program.Compile()) << program.output.log;
    const auto board = std::make_unique<Board>();
    EXPECT_EQ(LoadObjectText(*board, program.object.text), "");
    StartProgram(*board);
    meddle(*board);
    RunInstructions(*board, 1'000'000);
    EXPECT_EQ(board->processor.end, EndReason::Fault);
    return DescribeFault(*board, WordsOf(program.compilation)).text;
}

struct SourceCase {
    const char* declarations;
    const char* statements;
    const char* text;
};

const SourceCase kSourceCases[] = {
    {"DEFINE BYTE Mean\nDEFINE BYTE Total = 10\nDEFINE BYTE Count = 0\n",
     "  Mean = Total / Count ; the mean\n",
     "Division by zero in line 5, Mean = Total / Count: Count is 0 when Total is divided by it"},
    {"DEFINE WORD Rest\nDEFINE WORD Count = 0\n", "\nRest = 700 MOD Count\n",
     "Division by zero in line 5, Rest = 700 MOD Count: Count is 0 when 700 is divided by it"},
    {"DEFINE CONSTANT Most = 9\n"
     "DEFINE ROUTINE Share(Parts BYTE)\nDEFINE BYTE Local\nLocal = Most / Parts\nEND ROUTINE\n",
     "CALL Share(0)\n",
     "Division by zero in line 4, Local = Most / Parts: Parts of Share is 0 when Most is divided "
     "by "
     "it"},
    {"DEFINE POINTER Place\nDEFINE WORD Top = 32767\nDEFINE BYTE Seen\n",
     "Place = Top + 1\nSeen = READ(Place)\n",
     "Address outside memory in line 6, Seen = READ(Place): Place points to 32768, but memory ends "
     "at 32767"},
    {"DEFINE POINTER Place\nDEFINE WORD Top = 32767\n", "Place = Top + 0\nWRITE Place, Top\n",
     "Address outside memory in line 5, WRITE Place, Top: Place points to 32767, and a word takes "
     "two bytes, but memory ends there"},
    {"DEFINE BYTE Pushed = 7\n", "LOOP\nPUSH Pushed\nEND LOOP\n",
     "Data stack full in line 4, PUSH Pushed: there is no room for Pushed, because 32741 bytes lie "
     "on the stack and the program takes the rest of the memory"},
    {"DEFINE ROUTINE Deeper(Left WORD)\nCALL Deeper(Left)\nEND ROUTINE\n", "CALL Deeper(3)\n",
     "Too many calls in line 2, CALL Deeper(Left): 256 calls inside each other are the most, and "
     "this would be one more. Perhaps Deeper calls itself without end"},
    {"DEFINE BYTE Value = 200\nDEFINE WORD Start = 0\nDEFINE POINTER Place\n",
     "Place = Start + 0\nLOOP\nWRITE Place, Value\nINCREMENT Place\nEND LOOP\n",
     "Unknown instruction in line 6, LOOP: the program has written over this line at [0016], and "
     "now the byte there is 200, and instructions have the numbers 0 to 100"},
    {"DEFINE BYTE Taken\n", "Taken = POP()\n",
     "Data stack empty in line 3, Taken = POP(): Taken is to get a byte from the stack, but 0 "
     "bytes "
     "lie on the stack"},
    {"DEFINE WORD Taken\nDEFINE BYTE One = 1\n", "PUSH One\nTaken = POP()\n",
     "Data stack empty in line 5, Taken = POP(): Taken is to get a word from the stack, but 1 byte "
     "lies on the stack"},
    {"DEFINE ROUTINE Greedy(Given BYTE)\nDEFINE BYTE Own\nOwn = POP()\nOwn = POP()\nEND ROUTINE\n",
     "CALL Greedy(3)\n",
     "Data stack empty in line 3, Own = POP(): Own of Greedy is to get a byte from the stack, but "
     "0 "
     "bytes lie on the stack"},
};

TEST(FaultReportTest, OfASourceSpeaksItsWords) {
    for (const SourceCase& row : kSourceCases) {
        SCOPED_TRACE(row.text);
        test::Program program(std::string(row.declarations) + "BEGIN PROGRAM\n" + row.statements +
                              "END PROGRAM\n");
        EXPECT_EQ(FaultOfSource(program), row.text);
    }
}

/// The values of the line and the calls of a program that fails.
FaultReport ReportOfSource(test::Program& program) {
    EXPECT_TRUE(program.Compile()) << program.output.log;
    const auto board = std::make_unique<Board>();
    EXPECT_EQ(LoadObjectText(*board, program.object.text), "");
    StartProgram(*board);
    RunInstructions(*board, 1'000'000);
    return DescribeFault(*board, WordsOf(program.compilation));
}

TEST(FaultReportTest, TellsTheValuesOfTheLineAndTheCalls) {
    test::Program deep(
        "DEFINE BYTE Mean = 3\nDEFINE FLAG Done = TRUE\n"
        "DEFINE ROUTINE Share(Parts BYTE)\nMean = Mean / Parts\nEND ROUTINE\n"
        "DEFINE ROUTINE Work()\nCALL Share(0)\nEND ROUTINE\n"
        "BEGIN PROGRAM\nCALL Work()\nEND PROGRAM\n");
    FaultReport report = ReportOfSource(deep);
    EXPECT_EQ(report.values, "Mean = 3, Parts of Share = 0");
    EXPECT_EQ(report.calls, "Share was called in line 7, Work in line 10");
    EXPECT_THAT(report.WholeText(),
                EndsWith("divided by it. Mean = 3, Parts of Share = 0. Share was called in line 7, "
                         "Work in line 10"));

    test::Program endless(
        "DEFINE ROUTINE Deeper(Left WORD)\nCALL Deeper(Left)\nEND ROUTINE\n"
        "BEGIN PROGRAM\nCALL Deeper(3)\nEND PROGRAM\n");
    report = ReportOfSource(endless);
    EXPECT_EQ(report.values, "Left of Deeper = 3");
    EXPECT_EQ(report.calls,
              "Deeper was called in line 2, Deeper in line 2, Deeper in line 2, Deeper in line 2, "
              "Deeper in line 2, 250 more calls, Deeper in line 5");

    test::Program handler(
        "DEFINE BYTE Zero = 0\nDEFINE ROUTINE Fail()\nZero = 1 / Zero\nEND ROUTINE\n"
        "DEFINE EVENT Tick()\nCALL Fail()\nEND EVENT\n"
        "BEGIN PROGRAM\nSET EVENT 9, Tick\nENABLE EVENTS\nRAISE EVENT 9\nEND PROGRAM\n");
    report = ReportOfSource(handler);
    EXPECT_EQ(report.values, "Zero = 0");
    EXPECT_EQ(report.calls, "Fail was called in line 6");
}

/// What a compiler wrote for the command line is what the window knows.
TEST(FaultReportTest, TheWordsOfEveryExampleAreTheSameFromTheirFile) {
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".txt") continue;
        test::Program program(test::ReadFile(entry.path()));
        if (!program.Compile()) continue;  // of several files
        const ProgramWords words = WordsOf(program.compilation);
        const LoadedProgramWords loaded = ParseProgramWords(ProgramWordsText(words));
        EXPECT_EQ(loaded.error, "") << entry.path();
        EXPECT_TRUE(loaded.words == words) << entry.path();
    }
}

/// Each call keeps 142 bytes, so memory ends before 256 of them.
TEST(FaultReportTest, OfManyLocalVariablesOnTheStackNamesTheLikelyCause) {
    std::string source = "DEFINE ROUTINE Deeper(Left WORD)\n";
    for (int number = 10; number < 80; ++number)
        source += "DEFINE WORD Local" + std::to_string(number) + "\n";
    test::Program program(source + "CALL Deeper(Left)\nEND ROUTINE\nBEGIN PROGRAM\n" +
                          "CALL Deeper(3)\nEND PROGRAM\n");
    EXPECT_THAT(FaultOfSource(program),
                AllOf(StartsWith("Data stack full in line 72, CALL Deeper(Left): there is no room "
                                 "for L"),
                      HasSubstr(" of Deeper, because "),
                      EndsWith(". Perhaps a routine calls itself without end")));
}

TEST(FaultReportTest, NamesTheFileOfAnIncludedLine) {
    test::Program program("INCLUDE \"share.txt\"\nBEGIN PROGRAM\nCALL Share(0)\nEND PROGRAM\n");
    program.WithFile("share.txt",
                     "; \xe9\nDEFINE ROUTINE Share(Parts BYTE)\n"
                     "Parts = Parts / Parts  ; as often as it takes, whatever that may be\n"
                     "END ROUTINE\n");
    EXPECT_EQ(FaultOfSource(program),
              "Division by zero in line 3 of share.txt, Parts = Parts / Parts: Parts of Share is 0 "
              "when Parts of Share is divided by it");
}

TEST(FaultReportTest, CutsALongStatement) {
    test::Program program(
        "DEFINE BYTE AVeryLongNameOfAVariable\nBEGIN PROGRAM\n"
        "AVeryLongNameOfAVariable = AVeryLongNameOfAVariable / AVeryLongNameOfAVariable\n"
        "END PROGRAM\n");
    EXPECT_THAT(FaultOfSource(program),
                StartsWith("Division by zero in line 3, "
                           "AVeryLongNameOfAVariable = AVeryLongNameOfAVaria…: "));
}

/// As somebody may do in the board's debug mode.
TEST(FaultReportTest, OfAProgramThatWasMeddledWith) {
    // NOP, two CLEAR WORD, MOVE BYTE, and END at [000C]; five bytes behind it lies Value.
    test::Program runsOn("DEFINE BYTE Value = 200\nBEGIN PROGRAM\nEND PROGRAM\n");
    EXPECT_EQ(FaultOfSource(runsOn, [](Board& board) { board.memory.StoreByte(0x0C, 0); }),
              "Unknown instruction at [0011]: the program ran on into the variable Value, and its "
              "value 200 is no instruction");
    // JUMP, and the routine's first instruction at [0003].
    test::Program returns("DEFINE ROUTINE Work()\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n");
    const auto enter = [](Board& board) { board.processor.address = 3; };
    EXPECT_EQ(FaultOfSource(returns, enter),
              "Return without a call in line 2, END ROUTINE: the routine was not called, so there "
              "is nowhere to go back to");
    test::Program completes("DEFINE EVENT Press()\nEND EVENT\nBEGIN PROGRAM\nEND PROGRAM\n");
    EXPECT_EQ(FaultOfSource(completes, enter),
              "No event to complete in line 2, END EVENT: this ends the handler of an event, and "
              "none is running");
}

}  // namespace
}  // namespace zentro
