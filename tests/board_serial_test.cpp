// The board's end of the serial line, character by character.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/loader.h"
#include "tests/support/board_support.h"

namespace zentro {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string kPrompt = "*Debug Mode*  Go,eXit,Mem,Reset,Alter,Jump or <CR> to Step -> \x1b[D";

/// INCREMENT BYTE [0010]; JUMP [0000]
const std::string kCounting = "56,0,16\r\n53,0,0\r\n]";

/// A board with a program in it and nothing left to say.
Board Loaded(const std::string& text = kCounting) {
    Board board;
    Say(board, "L" + text);
    return board;
}

struct LineCase {
    std::string typed;
    std::string answer;  ///< behind the echo
};

TEST(BoardCommands, AnswerOrRefuse) {
    const LineCase answered[] = {{"W", "Kinetron\r\n"},
                                 {"w", "Kinetron\r\n"},
                                 {"", ""},
                                 {"]", ""},
                                 {"G", "No program\r\n"},
                                 {"D", "No program\r\n"},
                                 {"X", ""},
                                 {"Z", ""},
                                 {"M1F045", ""},
                                 {"m1f045", ""},
                                 {"S2B05", ""},
                                 {"A31", ""},
                                 {"a10", ""},
                                 {"z", ""}};
    for (const LineCase& row : answered) {
        Board board;
        EXPECT_EQ(Say(board, row.typed + "\r"), row.typed + "\r\n" + row.answer) << row.typed;
    }
    const std::string refused[] = {"Q",     "GO",     " W",     "M0F045",  "M5F045", "M1G045",
                                   "M1F45", "M1F256", "M1F-05", "M1F0450", "S4F10",  "S1F100",
                                   "A12",   "A41",    "A1",     "A310",    "B31"};
    for (const std::string& line : refused) {
        Board board;
        EXPECT_EQ(Say(board, line + "\r"), line + "\r\n?\r\n") << line;
        EXPECT_EQ(board.outputs, Outputs{}) << line;
    }
}

TEST(BoardCommands, DriveOutputsByHandAndStopThem) {
    Board board;
    Say(board, "M1F045\rM4B255\rS2B90\rA31\r");
    EXPECT_EQ(board.outputs.motors[0], (Drive{'F', 45}));
    EXPECT_EQ(board.outputs.motors[3], (Drive{'B', 255}));
    EXPECT_EQ(board.outputs.servos[1], (Drive{'B', 90}));
    EXPECT_TRUE(board.outputs.ports[2]);
    Say(board, "M1F000\rA30\r");
    EXPECT_EQ(board.outputs.motors[0], Drive{});
    EXPECT_FALSE(board.outputs.ports[2]);
    Say(board, "X\rZ\r\r");
    EXPECT_EQ(board.outputs, Outputs{});
}

TEST(BoardCommands, LinesCanBeCorrectedAndControlCharactersAreIgnored) {
    Board board;
    const std::string nul(1, '\0');
    EXPECT_EQ(Say(board, "Q\bW\x7f\x7f\x7f" + nul + "W\n\x1b\x80\r"),
              "Q\x1b[DW\x1b[DW\r\nKinetron\r\n");
    EXPECT_EQ(Say(board, std::string(1000, 'W') + "\r"), std::string(32, 'W') + "\r\n?\r\n");
    EXPECT_EQ(Say(board, "W\r"), "W\r\nKinetron\r\n");
}

TEST(BoardCommands, RunAndStopAProgram) {
    Board board = Loaded();
    EXPECT_EQ(Say(board, "G\r"), "G\r\n");
    EXPECT_TRUE(board.processor.running);
    EXPECT_EQ(Say(board, "W\r"), "W\r\nKinetron\r\n");
    EXPECT_EQ(Say(board, "M1F010\r"), "M1F010\r\n");
    EXPECT_EQ(Say(board, "X\r"), "X\r\nStopped at [0000]\r\n");
    EXPECT_EQ(board.outputs.motors[0].value, 10);
    EXPECT_EQ(Say(board, "G\r"), "G\r\n");
    EXPECT_EQ(Say(board, "Z\r"), "Z\r\nStopped at [0000]\r\n");
    EXPECT_EQ(board.outputs, Outputs{});
}

TEST(BoardCommands, TellHowAProgramEnded) {
    const LineCase cases[] = {{"0 5]", "End at [0001]\r\n"},
                              {"1]", "Emergency stop at [0000]\r\n"},
                              {"3]", "Escape at [0000]\r\n"},
                              {"200]", "Fault: unknown opcode at [0000]\r\n"}};
    for (const LineCase& row : cases) {
        Board board = Loaded(row.typed);
        EXPECT_EQ(Say(board, "G\r"), "G\r\n" + row.answer);
    }
}

TEST(BoardCommands, PowerOffIsSilentUntilW) {
    Board board = Loaded("2]");
    EXPECT_EQ(Say(board, "M1F010\rG\r"), "M1F010\r\nG\r\n");
    EXPECT_EQ(board.outputs, Outputs{});
    EXPECT_EQ(Say(board, "X\rZ\rLG\r]\rR\r\r"), "");
    EXPECT_EQ(Say(board, "W\r"), "W\r\nKinetron\r\n");
}

struct LoadCase {
    std::string text;
    std::string answer;
    Bytes bytes;
};

TEST(BoardLoader, TakesLinesOfNumbersUpToTheBracket) {
    const LoadCase cases[] = {
        {"]", "Loaded 0 bytes", {}},
        {"53,0,120\r\n5\r\n]", "Loaded 4 bytes", {53, 0, 120, 5}},
        {"1,2]", "Loaded 2 bytes", {1, 2}},
        {"\r\n1\r\n\r\n2 3\t4\n]", "Loaded 4 bytes", {1, 2, 3, 4}},
        {",\r\n7,\r\n8\r\n]", "Loaded 2 bytes", {7, 8}},
        {"255,0]", "Loaded 2 bytes", {255, 0}},
        {"000000000000000000000000007]", "Loaded 1 bytes", {7}},
        {"1\r\n256\r\n3]",
         "Not loaded: line 2 is not made of numbers from 0 to 255 with commas between",
         {}},
        {"99999999999999999999999]",
         "Not loaded: line 1 is not made of numbers from 0 to 255 with commas between",
         {}},
        {"1\n2\n-3\n]",
         "Not loaded: line 3 is not made of numbers from 0 to 255 with commas between",
         {}},
        {"1\rG\r]",
         "Not loaded: line 2 is not made of numbers from 0 to 255 with commas between",
         {}},
    };
    for (const LoadCase& row : cases) {
        Board board;
        EXPECT_EQ(Say(board, "L" + row.text), "L\r\n" + row.answer + "\r\n");
        EXPECT_EQ(Peek(board, 0, row.bytes.size()), row.bytes) << row.text;
        EXPECT_EQ(board.processor.programSize, row.bytes.size()) << row.text;
        EXPECT_EQ(Say(board, "\r"), "\r\n");
    }
}

TEST(BoardLoader, FillsMemoryToItsLastByteAndNoFurther) {
    std::string text;
    for (std::uint32_t byte = 0; byte < kMemorySize; ++byte) {
        text += "7\r\n";
    }
    Board board;
    EXPECT_THAT(Say(board, "L" + text + "]"), HasSubstr("Loaded 32768 bytes"));
    EXPECT_EQ(board.memory.Byte(kMemorySize - 1), 7);
    EXPECT_THAT(Say(board, "L" + text + "9]"),
                HasSubstr("Not loaded: the program is longer than 32768 bytes"));
    EXPECT_EQ(Say(board, "G\r"), "G\r\nNo program\r\n");
}

TEST(BoardLoader, StartsAtOnceAndStopsWhatRuns) {
    Board running = Loaded();
    Say(running, "G\r");
    EXPECT_EQ(Say(running, "L5]"), "LStopped at [0000]\r\n\r\nLoaded 1 bytes\r\n");
    EXPECT_EQ(Say(running, "WL\r"), "WL\r\n?\r\n");  // not at the start of the line

    Board debugged = Loaded();
    Say(debugged, "D\r");
    EXPECT_EQ(Say(debugged, "L5]"), "LStopped at [0000]\r\n\r\nLoaded 1 bytes\r\n");
}

TEST(BoardLoader, ABrokenLoadIsMendedByTheNextOne) {
    // The line broke in the middle; the next client sends what it always sends first.
    const std::string again = "X\rZ\rL" + kCounting + "\r";
    for (const std::string part : {"L", "L56,0", "L56,0,16\r\n", "L56,0,16\r\n53,"}) {
        Board board;
        Say(board, part);
        if (part.back() != '\n' && part != "L") Say(board, "]\r");
        EXPECT_THAT(Say(board, again), HasSubstr("Loaded 6 bytes")) << part;
        Board other;
        Say(other, part);
        EXPECT_THAT(Say(other, "]\rW\r\r"), HasSubstr("Kinetron")) << part;
        EXPECT_THAT(Say(other, again), HasSubstr("Loaded 6 bytes")) << part;
    }
}

/// A program that reads what others may have left, and then runs on where nothing was loaded.
TEST(BoardLoader, ANewProgramFindsNothingOfTheOneBefore) {
    // RANDOMIZE [0200], CALIBRATE JOYSTICK 1, PUSH WORD, MOVE BYTE to behind the program, END
    const std::string leaves =
        "59,2,0\r\n29,1,200,0,16\r\n25,0,0\r\n11,0,0,1,0\r\n11,0,0,127,255\r\n5\r\n]";
    // RECEIVE [0080], RANDOMIZE [0081], READ JOYSTICK ONE X [0082], MOVE BYTE [0100] and [7FFF],
    // JUMP [0100]
    const std::string finds =
        "14,0,128\r\n59,0,129\r\n27,88,0,130,0,131\r\n11,1,0,0,132\r\n11,127,255,0,133\r\n"
        "53,1,0\r\n]";
    Board first;
    Say(first, "L" + finds + "\rG\r");
    ASSERT_EQ(Peek(first, 128, 6), (Bytes{0, 0x3C, 128, 0, 0, 0}));
    for (const bool bySerialLine : {true, false}) {
        Board second;
        Say(second, "L" + leaves + "\rG\r");
        ASSERT_EQ(second.memory.Byte(0x100), 59);
        if (bySerialLine) {
            Say(second, "L" + finds + "\rG\r");
        } else {
            ASSERT_EQ(LoadObjectText(second, finds.substr(0, finds.size() - 1)), "");
            StartProgram(second);
            RunInstructions(second, 100'000);
        }
        RunInstructions(first, 100'000);
        RunInstructions(second, 100'000);
        EXPECT_EQ(second.processor, first.processor);
        EXPECT_TRUE(second.memory == first.memory);
        EXPECT_EQ(second.processor.fault, Fault::AddressOutsideMemory);
    }
}

TEST(BoardDebugMode, ShowsEachInstructionBeforeItsStep) {
    Board board = Loaded();
    EXPECT_EQ(Say(board, "D\r"), "D\r\n[0000] INCREMENT BYTE [0010]\r\n" + kPrompt);
    EXPECT_EQ(Say(board, "\r"), "\r\n[0003] JUMP [0000]\r\n" + kPrompt);
    EXPECT_EQ(board.memory.Byte(0x10), 1);
    EXPECT_EQ(Say(board, "\r"), "\r\n[0000] INCREMENT BYTE [0010]\r\n" + kPrompt);
    EXPECT_EQ(board.processor.steps, 2U);
}

TEST(BoardDebugMode, ReadsAltersAndJumps) {
    Board board = Loaded();
    Say(board, "D\r");
    const LineCase cases[] = {
        {"M0000", "[0000] 38 00 10 35 00 00 00 00\r\n" + kPrompt},
        {"M7FFC", "[7FFC] 00 00 00 00 FF FF FF FF\r\n" + kPrompt},
        {"MFFFF", "[FFFF] FF FF FF FF FF FF FF FF\r\n" + kPrompt},
        {"A0010 2f", kPrompt},
        {"M0010", "[0010] 2F 00 00 00 00 00 00 00\r\n" + kPrompt},
        {"A7FFF 0B", kPrompt},
        {"J7FFF", "[7FFF] MOVE BYTE\r\n" + kPrompt},  // its operands would be outside
        {"J0003", "[0003] JUMP [0000]\r\n" + kPrompt},
        {"R", "[0000] INCREMENT BYTE [0010]\r\n" + kPrompt},
        {"W", "Kinetron\r\n" + kPrompt},
        {"]", kPrompt},
        {"M10", "?\r\n" + kPrompt},
        {"M00100", "?\r\n" + kPrompt},
        {"M001G", "?\r\n" + kPrompt},
        {"A8000 00", "?\r\n" + kPrompt},
        {"A0010 100", "?\r\n" + kPrompt},
        {"A0010,10", "?\r\n" + kPrompt},
        {"A0010 1G", "?\r\n" + kPrompt},
        {"A00G0 10", "?\r\n" + kPrompt},
        {"J00G0", "?\r\n" + kPrompt},
        {"J8000", "?\r\n" + kPrompt},
        {"M1F045", "?\r\n" + kPrompt},
        {"Q", "?\r\n" + kPrompt},
    };
    for (const LineCase& row : cases) {
        EXPECT_EQ(Say(board, row.typed + "\r"), row.typed + "\r\n" + row.answer) << row.typed;
    }
    // What was altered is what runs: the JUMP becomes an END.
    Say(board, "A0003 05\r\r");
    EXPECT_EQ(Say(board, "\r"), "\r\nEnd at [0003]\r\n");
    EXPECT_EQ(Say(board, "W\r"), "W\r\nKinetron\r\n");
}

TEST(BoardDebugMode, IsLeftByGoExitAndStop) {
    Board board = Loaded();
    Say(board, "D\r");
    EXPECT_EQ(Say(board, "G\r"), "G\r\n");
    EXPECT_GT(board.processor.steps, 100U);
    EXPECT_THAT(Say(board, "X\r"), HasSubstr("Stopped at"));
    Say(board, "D\r");
    EXPECT_EQ(Say(board, "X\r"), "X\r\nStopped at [0000]\r\n");
    EXPECT_EQ(Say(board, "M1F001\r"), "M1F001\r\n");
    Say(board, "D\r");
    EXPECT_EQ(Say(board, "X\rZ\r\r"), "X\r\nStopped at [0000]\r\nZ\r\n\r\n");
    EXPECT_EQ(board.outputs, Outputs{});
    Say(board, "M1F001\rD\r");
    EXPECT_EQ(Say(board, "Z\r"), "Z\r\nStopped at [0000]\r\n");
    EXPECT_EQ(board.outputs, Outputs{});
}

TEST(BoardDebugMode, WaitsThroughAWaitAndStepsHandlersToo) {
    // SET EVENT WATCH 9, 30; ENABLE; WAIT [0020]; END. The handler is COMPLETE EVENT.
    Board board = Loaded("72,9,0,30,7,70,0,32,5]");
    Poke(board, 30, {75, 0, 0, 5});
    EXPECT_THAT(Say(board, "D\r\r\r"), HasSubstr("[0005] WAIT FOR TIME [0020]\r\n" + kPrompt));
    EXPECT_EQ(Say(board, "\r"), "\r\n");  // waits, no prompt
    RunTicks(board, 1, 100);
    Inputs inputs;
    inputs.buttons[0] = true;
    SetInputs(board, inputs);
    RunTicks(board, 1, 100);
    EXPECT_EQ(TakeOutput(board), "[001E] COMPLETE EVENT\r\n" + kPrompt);
    EXPECT_EQ(Say(board, "\r"), "\r\n");
    RunTicks(board, 3, 100);
    EXPECT_EQ(TakeOutput(board), "");
    RunTicks(board, 1, 100);
    EXPECT_EQ(TakeOutput(board), "[0008] END\r\n" + kPrompt);
    // A jump leaves the wait behind.
    Say(board, "J0005\r\r");
    EXPECT_EQ(Say(board, "J0008\r"), "J0008\r\n[0008] END\r\n" + kPrompt);
}

const std::string kReport =
    "Digital    0 1 0 0\r\n"
    "Buttons    0 0 0 0 0 0\r\n"
    "Analogue   0 0 0 0 0 200\r\n"
    "Timed      300 0 0 0\r\n"
    "Pulses     0 0 0 0\r\n"
    "Joysticks  128 128 128 9\r\n"
    "Battery    255\r\n"
    "Program    1\r\n";

TEST(BoardReport, ComesTenTimesASecondOverTheLastOne) {
    Board board;
    Inputs inputs;
    inputs.digital[1] = true;
    inputs.analog[5] = 200;
    inputs.timed[0] = 300;
    inputs.joysticks[1].y = 9;
    SetInputs(board, inputs);
    EXPECT_EQ(Say(board, "R\r"), "R\r\n" + kReport);
    RunTicks(board, 9, 100);
    EXPECT_EQ(TakeOutput(board), "");
    RunTicks(board, 1, 100);
    EXPECT_EQ(TakeOutput(board), "\x1b[8A" + kReport);
    // Not before the last one was taken, then at once.
    RunTicks(board, 35, 100);
    EXPECT_EQ(TakeOutput(board), "\x1b[8A" + kReport);
    RunTicks(board, 1, 100);
    EXPECT_EQ(TakeOutput(board), "\x1b[8A" + kReport);
    EXPECT_EQ(Say(board, "\r"), "\r\n");
    RunTicks(board, 50, 100);
    EXPECT_EQ(TakeOutput(board), "");
}

TEST(BoardReport, StartsBelowWhateverElseWasSaid) {
    Board board = Loaded("70,0,16,5]");  // WAIT FOR TIME [0010], END
    Poke(board, 16, {0, 15});
    Say(board, "G\rR\r");
    RunTicks(board, 10, 100);
    EXPECT_THAT(TakeOutput(board), StartsWith("\x1b[8A"));
    RunTicks(board, 8, 100);
    EXPECT_EQ(TakeOutput(board), "End at [0003]\r\n");
    RunTicks(board, 3, 100);
    EXPECT_THAT(TakeOutput(board), StartsWith("Digital"));
}

/// Brings a board into each state that it can be in.
struct StateCase {
    std::string name;
    std::string typed;
};

TEST(BoardSerialLine, GarbageDoesNoHarmInAnyState) {
    std::string garbage;
    for (int round = 0; round < 3; ++round) {
        for (int code = 0; code < 256; ++code) {
            garbage += static_cast<char>((code * 73 + round) & 0xFF);
        }
    }
    const StateCase states[] = {{"at rest", ""},           {"half a command", "M1F"},
                                {"running", "G\r"},        {"debug prompt", "D\r"},
                                {"debug, half", "D\rM00"}, {"reporting", "R\r"},
                                {"loading", "L53,"}};
    for (const StateCase& state : states) {
        Board board = Loaded();
        Say(board, state.typed);
        for (char character : garbage) {
            ReceiveCharacters(board, {&character, 1});
            RunTicks(board, 1, 100);
        }
        TakeOutput(board);
        Say(board, "]\rX\rZ\r");
        EXPECT_EQ(Say(board, "W\r"), "W\r\nKinetron\r\n") << state.name;
        EXPECT_THAT(Say(board, "L" + kCounting), HasSubstr("Loaded 6 bytes")) << state.name;
        EXPECT_EQ(Say(board, "G\r"), "G\r\n") << state.name;
        EXPECT_TRUE(board.processor.running) << state.name;
    }
}

}  // namespace
}  // namespace zentro
