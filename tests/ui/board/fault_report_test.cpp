// Faults in plain words, of programs that really fail.
#include "desktop/fault_report.h"

#include <gtest/gtest.h>
#include <memory>

#include "board/board.h"
#include "board/loader.h"
#include "tests/ui/board/board_programs.h"

namespace zentro {
namespace {

std::string NameOf(std::uint32_t address) {
    if (address == 0x20) return "Count";
    if (address == 0x22) return "Place";
    return {};
}

/// Runs a program of 64 bytes to its end and tells its fault.
FaultReport FaultOf(const std::vector<int>& bytes, std::size_t size = 64) {
    auto board = std::make_unique<Board>();
    EXPECT_EQ(LoadObjectText(*board, ObjectOf(bytes, size)), "");
    StartProgram(*board);
    RunInstructions(*board, 100'000);
    EXPECT_EQ(board->processor.end, EndReason::Fault);
    return DescribeFault(*board, NameOf);
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
     "Division by zero at [0001]: DIVIDE BYTE by Count, which holds 0"},
    {"word division",
     {47, 0, 0x21, 0, 0x26},
     64,
     0,
     47,
     "Division by zero at [0000]: DIVIDE WORD by [0026], which holds 0"},
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
     "Address outside memory at [0003]: READ DATA BYTE follows the pointer Place, which leads to "
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
     "Data stack full at [0000]: PUSH BYTE finds no room for Count, because 2 bytes lie on the "
     "stack, down to the program, which ends before [7FFE]"},
    {"empty stack",
     {23, 0, 0x20, 26, 0, 0x22},
     64,
     3,
     26,
     "Data stack empty at [0003]: POP WORD wants a value for Place, but 1 byte lies on the stack"},
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

}  // namespace
}  // namespace zentro
