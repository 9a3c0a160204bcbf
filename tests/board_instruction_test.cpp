// Every instruction of the board, one step at a time. The bytes are typed by hand: a wrong row in
// the table that the compiler and the board share would fool both.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/text.h"
#include "board/trace.h"
#include "tests/support/board_support.h"

namespace zentro {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t kCode = 0x0010;
constexpr std::uint32_t kData = 0x0100;  // an operand "1,n" is byte n of the data

Board BoardAt(const Bytes& code, const Bytes& data) {
    Board board;
    Put(board, kCode, code);
    Put(board, kData, data);
    StartProgram(board);
    board.processor.address = kCode;
    return board;
}

struct MemoryCase {
    std::string name;
    Bytes code;
    Bytes before;
    Bytes after;
    std::uint32_t next;
};

const MemoryCase kMemoryCases[] = {
    {"NOP", {0}, {}, {}, 0x11},
    {"Reserved 10", {10}, {}, {}, 0x11},
    {"Reserved 92", {92}, {}, {}, 0x11},
    {"Reserved 93", {93}, {}, {}, 0x11},
    {"Reserved 94", {94}, {}, {}, 0x11},
    {"Reserved 97", {97}, {}, {}, 0x11},
    {"Reserved 98", {98}, {}, {}, 0x11},
    {"Reserved 99", {99}, {}, {}, 0x11},
    {"MOVE BYTE", {11, 1, 0, 1, 1}, {7, 9}, {7, 7}, 0x15},
    {"MOVE WORD", {12, 1, 0, 1, 2}, {1, 2, 3, 4}, {1, 2, 1, 2}, 0x15},
    {"MOVE WORD onto itself, shifted", {12, 1, 0, 1, 1}, {1, 2, 3}, {1, 1, 2}, 0x15},
    {"SET DATA POINTER", {15, 1, 0, 1, 44}, {0, 0}, {1, 44}, 0x15},
    {"READ DATA BYTE", {16, 1, 0, 1, 3}, {1, 2, 77, 0}, {1, 2, 77, 77}, 0x15},
    {"WRITE DATA BYTE", {17, 1, 0, 1, 3}, {1, 2, 0, 88}, {1, 2, 88, 88}, 0x15},
    {"READ DATA WORD", {18, 1, 0, 1, 4}, {1, 2, 5, 6, 0, 0}, {1, 2, 5, 6, 5, 6}, 0x15},
    {"WRITE DATA WORD", {19, 1, 0, 1, 4}, {1, 2, 0, 0, 5, 6}, {1, 2, 5, 6, 5, 6}, 0x15},
    {"CONVERT BYTE", {42, 1, 0, 1, 1}, {200, 9, 9}, {200, 0, 200}, 0x15},
    {"CONVERT WORD", {43, 1, 0, 1, 2, 1, 3}, {18, 52, 0, 0}, {18, 52, 52, 18}, 0x17},
    {"DIVIDE BYTE", {46, 1, 0, 1, 1}, {255, 10}, {25, 5}, 0x15},
    {"DIVIDE BYTE by itself", {46, 1, 0, 1, 0}, {9}, {0}, 0x15},
    {"DIVIDE WORD", {47, 1, 0, 1, 2}, {255, 255, 0, 100}, {2, 143, 0, 35}, 0x15},
    {"LOOP UNTIL ZERO goes on", {50, 1, 0, 1, 0}, {2}, {1}, 0x0100},
    {"LOOP UNTIL ZERO ends", {50, 1, 0, 1, 0}, {1}, {0}, 0x15},
    {"LOOP UNTIL ZERO from 0", {50, 1, 0, 1, 0}, {0}, {255}, 0x0100},
    {"CALL", {51, 2, 3}, {}, {}, 0x0203},
    {"JUMP", {53, 2, 3}, {}, {}, 0x0203},
    {"ADD BYTE", {54, 1, 0, 1, 1, 1, 2}, {3, 4, 0}, {3, 4, 7}, 0x17},
    {"ADD BYTE wraps", {54, 1, 0, 1, 1, 1, 2}, {255, 2, 0}, {255, 2, 1}, 0x17},
    {"SUBTRACT BYTE", {55, 1, 0, 1, 1, 1, 2}, {9, 4, 0}, {9, 4, 5}, 0x17},
    {"SUBTRACT BYTE wraps", {55, 1, 0, 1, 1, 1, 2}, {0, 1, 0}, {0, 1, 255}, 0x17},
    {"INCREMENT BYTE", {56, 1, 0}, {7}, {8}, 0x13},
    {"INCREMENT BYTE wraps", {56, 1, 0}, {255}, {0}, 0x13},
    {"DECREMENT BYTE", {57, 1, 0}, {7}, {6}, 0x13},
    {"DECREMENT BYTE wraps", {57, 1, 0}, {0}, {255}, 0x13},
    {"MULTIPLY BYTE", {58, 1, 0, 1, 1, 1, 2}, {255, 255, 0, 0}, {255, 255, 254, 1}, 0x17},
    {"COMPLIMENT BYTE", {60, 1, 0}, {15}, {240}, 0x13},
    {"CLEAR BYTE", {61, 1, 0}, {7, 7}, {0, 7}, 0x13},
    {"ADD WORD", {62, 1, 0, 1, 2, 1, 4}, {0, 255, 0, 1, 9, 9}, {0, 255, 0, 1, 1, 0}, 0x17},
    {"ADD WORD wraps", {62, 1, 0, 1, 2, 1, 0}, {255, 255, 0, 3}, {0, 2, 0, 3}, 0x17},
    {"SUBTRACT WORD", {63, 1, 0, 1, 2, 1, 4}, {1, 0, 0, 1, 9, 9}, {1, 0, 0, 1, 0, 255}, 0x17},
    {"SUBTRACT WORD wraps", {63, 1, 0, 1, 2, 1, 0}, {0, 0, 0, 1}, {255, 255, 0, 1}, 0x17},
    {"INCREMENT WORD", {64, 1, 0}, {0, 255}, {1, 0}, 0x13},
    {"INCREMENT WORD wraps", {64, 1, 0}, {255, 255}, {0, 0}, 0x13},
    {"DECREMENT WORD", {65, 1, 0}, {1, 0}, {0, 255}, 0x13},
    {"DECREMENT WORD wraps", {65, 1, 0}, {0, 0}, {255, 255}, 0x13},
    {"CLEAR WORD", {66, 1, 0}, {7, 7, 7}, {0, 0, 7}, 0x13},
    {"SET FLAG TRUE", {76, 1, 0}, {0}, {255}, 0x13},
    {"SET FLAG FALSE", {77, 1, 0}, {255}, {0}, 0x13},
    {"LOGICAL AND", {95, 1, 0, 1, 1, 1, 2}, {12, 10, 0}, {12, 10, 8}, 0x17},
    {"LOGICAL OR", {96, 1, 0, 1, 1, 1, 2}, {12, 10, 0}, {12, 10, 14}, 0x17},
    {"ON ERROR CALL", {71, 2, 0}, {}, {}, 0x13},
    {"READ EEPROM, erased", {68, 1, 0, 1, 1}, {3, 0}, {3, 255}, 0x15},
    {"an opcode's operands at the last byte", {11, 1, 0, 127, 255}, {5}, {5}, 0x15},
};

TEST(BoardInstruction, ChangesMemoryAndGoesOn) {
    for (const MemoryCase& row : kMemoryCases) {
        Board board = BoardAt(row.code, row.before);
        EXPECT_EQ(RunInstructions(board, 1), 1U) << row.name;
        EXPECT_EQ(Peek(board, kData, row.after.size()), row.after) << row.name;
        EXPECT_EQ(board.processor.address, row.next) << row.name;
        EXPECT_TRUE(board.processor.running) << row.name;
    }
}

struct CompareCase {
    int opcode;
    bool less, equal, greater;  ///< whether it jumps for the first operand so to the second
};

TEST(BoardInstruction, ComparesUnsignedAndJumpsWhenItHolds) {
    const CompareCase bytes[] = {{80, false, true, false}, {81, true, false, true},
                                 {82, true, false, false}, {83, false, false, true},
                                 {84, true, true, false},  {85, false, true, true}};
    for (const CompareCase& row : bytes) {
        const auto jumps = [](int opcode, const Bytes& data, int second) {
            Board board = BoardAt({opcode, 1, 0, 1, second, 3, 4}, data);
            RunInstructions(board, 1);
            const std::uint32_t next = board.processor.address;
            EXPECT_TRUE(next == 0x0304 || next == 0x0017) << opcode;
            return next == 0x0304;
        };
        EXPECT_EQ(jumps(row.opcode, {127, 128}, 1), row.less) << row.opcode;
        EXPECT_EQ(jumps(row.opcode, {128, 128}, 1), row.equal) << row.opcode;
        EXPECT_EQ(jumps(row.opcode, {255, 0}, 1), row.greater) << row.opcode;
        const int word = row.opcode + 6;
        EXPECT_EQ(jumps(word, {127, 255, 128, 0}, 2), row.less) << word;
        EXPECT_EQ(jumps(word, {128, 1, 128, 1}, 2), row.equal) << word;
        EXPECT_EQ(jumps(word, {255, 255, 0, 1}, 2), row.greater) << word;
    }
    for (const int flag : {0, 1, 255}) {
        Board ifTrue = BoardAt({78, 1, 0, 3, 4}, {flag});
        Board ifFalse = BoardAt({79, 1, 0, 3, 4}, {flag});
        RunInstructions(ifTrue, 1);
        RunInstructions(ifFalse, 1);
        EXPECT_EQ(ifTrue.processor.address, flag != 0 ? 0x0304U : 0x0015U) << flag;
        EXPECT_EQ(ifFalse.processor.address, flag != 0 ? 0x0015U : 0x0304U) << flag;
    }
}

TEST(BoardInstruction, StackKeepsBytesAndWordsHighByteFirst) {
    // PUSH BYTE [0100], PUSH WORD [0101], POP BYTE [0104], POP WORD [0105]
    Board board = BoardAt({23, 1, 0, 25, 1, 1, 24, 1, 4, 26, 1, 5}, {1, 2, 3, 0, 0, 0, 0});
    RunInstructions(board, 2);
    EXPECT_THAT(Pushed(board), ElementsAre(1, 3, 2));
    RunInstructions(board, 2);
    EXPECT_THAT(Peek(board, kData, 7), ElementsAre(1, 2, 3, 0, 2, 3, 1));
    EXPECT_TRUE(Pushed(board).empty());
}

TEST(BoardInstruction, ReturnGoesBackBehindTheCall) {
    Board board = BoardAt({51, 0, 0x20}, {});
    Put(board, 0x20, {52});
    RunInstructions(board, 2);
    EXPECT_EQ(board.processor.address, 0x13U);
}

TEST(BoardInstruction, AFullReturnStackHasNoRoomForTheErrorRoutine) {
    // ON ERROR CALL 0200, then CALL 0013, which is itself
    Board board = BoardAt({71, 2, 0, 51, 0, 0x13}, {});
    RunInstructions(board, 1000);
    EXPECT_FALSE(board.processor.running);
    EXPECT_EQ(board.processor.fault, Fault::ReturnStackOverflow);
}

struct OutputCase {
    Bytes code;
    Bytes data;
    std::vector<std::string> changes;
};

const OutputCase kOutputCases[] = {
    {{21, 4, 70, 1, 0}, {60}, {"0 motor4 F 60"}},
    {{21, 1, 66, 1, 0}, {255}, {"0 motor1 B 255"}},
    {{21, 5, 70, 1, 0}, {60}, {}},
    {{21, 0, 70, 1, 0}, {60}, {}},
    {{21, 1, 65, 1, 0}, {60}, {}},
    {{100, 1, 0, 1, 1, 1, 2}, {2, 66, 30}, {"0 motor2 B 30"}},
    {{40, 1, 66, 1, 0}, {90}, {"0 servo1 B 90"}},
    {{41, 2, 70, 1, 0}, {50}, {"0 servo2 F 45"}},
    {{30, 3, 1}, {}, {"0 port3 1"}},
    {{30, 3, 0}, {}, {}},
    {{30, 4, 1}, {}, {}},
    {{30, 0, 1}, {}, {}},
    {{38, 1, 0}, {0xA5}, {"0 displayhex A5"}},
    {{39, 1, 0}, {0}, {"0 display 0"}},
    {{44, 1, 0}, {1}, {"0 leftled 1"}},
    {{45, 1, 0}, {255}, {"0 rightled 1"}},
    {{48, 60, 30}, {}, {"0 note 60 30"}},
    {{48, 60, 0}, {}, {}},
    {{49, 1, 0}, {64, 40, 0, 0}, {"0 note 64 40"}},
    {{49, 1, 0}, {0, 40}, {}},
    {{13, 1, 0}, {65}, {"0 transmit 65"}},
};

std::vector<std::string> Changes(Board& board) {
    std::vector<std::string> lines;
    for (const OutputChange& change : TakeChanges(board)) {
        lines.push_back(FormatChange(change));
    }
    return lines;
}

TEST(BoardInstruction, DrivesOutputs) {
    for (const OutputCase& row : kOutputCases) {
        Board board = BoardAt(row.code, row.data);
        RunInstructions(board, 1);
        EXPECT_EQ(Changes(board), row.changes) << row.code[0];
        EXPECT_TRUE(board.processor.running) << row.code[0];
    }
}

struct InputCase {
    Bytes code;
    std::function<void(Inputs&)> set;
    Bytes after;
};

TEST(BoardInstruction, ReadsInputs) {
    const InputCase cases[] = {
        {{9, 1, 0}, [](Inputs& in) { in.battery = 190; }, {190}},
        {{34, 1, 0}, [](Inputs& in) { in.programNumber = 3; }, {3}},
        {{31, 4, 1, 0}, [](Inputs& in) { in.digital[3] = true; }, {255}},
        {{31, 3, 1, 0}, [](Inputs& in) { in.digital[3] = true; }, {0}},
        {{31, 5, 1, 0}, [](Inputs& in) { in.buttons.fill(true); }, {0}},
        {{35, 0, 1, 0}, [](Inputs& in) { in.digital.fill(true); }, {0}},
        {{32, 0, 1, 0}, [](Inputs& in) { in.buttons.fill(true); }, {0}},
        {{32, 7, 1, 0}, [](Inputs& in) { in.timed.fill(0x0101); }, {0}},
        {{32, 6, 1, 0}, [](Inputs& in) { in.analog[5] = 201; }, {201}},
        {{35, 1, 1, 0}, [](Inputs& in) { in.buttons[0] = true; }, {255}},
        {{33, 2, 1, 0, 1, 1}, [](Inputs& in) { in.timed[1] = 300; }, {44, 1}},
        {{36, 1, 1, 0}, [](Inputs& in) { in.pulses[0] = 258; }, {2}},
        {{27, 88, 1, 0, 1, 1}, [](Inputs& in) { in.joysticks[0].x = 200; }, {200, 0}},
        {{27, 89, 1, 0, 1, 1}, [](Inputs& in) { in.joysticks[0].y = 10; }, {10, 0}},
        {{28, 89, 1, 0, 1, 1}, [](Inputs& in) { in.joysticks[1].y = 11; }, {11, 0}},
    };
    for (const InputCase& row : cases) {
        Board board = BoardAt(row.code, {99, 99});
        Inputs inputs;
        row.set(inputs);
        SetInputs(board, inputs);
        RunInstructions(board, 1);
        EXPECT_EQ(Peek(board, kData, row.after.size()), row.after) << row.code[0];
    }
}

TEST(BoardInstruction, CalibratedJoystickRestsInTheMiddle) {
    // CALIBRATE JOYSTICK 2, 100, [0100], then READ JOYSTICK TWO "X" and "Y"
    Board board =
        BoardAt({29, 2, 100, 1, 0, 28, 88, 1, 1, 1, 3, 28, 89, 1, 2, 1, 3}, {200, 9, 9, 9});
    Inputs inputs;
    inputs.joysticks[1] = {100, 10};
    SetInputs(board, inputs);
    RunInstructions(board, 3);
    EXPECT_THAT(Peek(board, kData + 1, 2), ElementsAre(128, 0));
    // There are two of them.
    for (const int joystick : {0, 3}) {
        board = BoardAt({29, joystick, 100, 1, 0}, {200});
        RunInstructions(board, 1);
        EXPECT_EQ(board.devices, Board().devices);
    }
}

TEST(BoardInstruction, TimedPulseCountIsThatOfTheLastWholeSecond) {
    Board board = BoardAt({37, 2, 1, 0, 37, 2, 1, 1, 37, 2, 1, 2}, {9, 9, 9});
    Inputs inputs;
    inputs.pulses[1] = 300;
    SetInputs(board, inputs);
    RunInstructions(board, 1);
    for (int tick = 0; tick < 100; ++tick) {
        AdvanceTick(board);
    }
    RunInstructions(board, 1);
    inputs.pulses[1] += 7;
    SetInputs(board, inputs);
    for (int tick = 0; tick < 100; ++tick) {
        AdvanceTick(board);
    }
    RunInstructions(board, 1);
    EXPECT_THAT(Peek(board, kData, 3), ElementsAre(0, 255, 7));
}

TEST(BoardInstruction, ClockCountsTicksInAWord) {
    Board board = BoardAt({67, 1, 0}, {9, 9});
    board.clock = 65536 + 258;
    RunInstructions(board, 1);
    EXPECT_THAT(Peek(board, kData, 2), ElementsAre(1, 2));
}

TEST(BoardInstruction, RandomBytesFollowFromTheSeed) {
    // The generator: state = state * 1664525 + 1013904223, of which the top byte is taken.
    Board board = BoardAt({59, 1, 0, 59, 1, 1}, {0, 0});
    board.random = 1;
    RunInstructions(board, 2);
    EXPECT_THAT(Peek(board, kData, 2), ElementsAre(0x3C, 0x5E));
}

TEST(BoardInstruction, EepromKeepsWhatWasWrittenOverPrograms) {
    Board board = BoardAt({69, 1, 0, 1, 1, 5}, {255, 42, 0});
    RunInstructions(board, 2);
    Put(board, 0, {68, 1, 0, 1, 2, 5});
    StartProgram(board);
    RunInstructions(board, 2);
    EXPECT_THAT(Peek(board, kData, 3), ElementsAre(255, 42, 42));
}

TEST(BoardInstruction, ReceiveTakesTheLastCharacterOnce) {
    Board board = BoardAt({14, 1, 0, 14, 1, 1}, {9, 9});
    ReceiveCharacters(board, "ab");
    RunInstructions(board, 2);
    EXPECT_THAT(Peek(board, kData, 2), ElementsAre('b', 0));
}

TEST(BoardInstruction, TransmitWaitsWhileNobodyTakesItsCharacters) {
    Board board = BoardAt({13, 1, 0, 53, 0, kCode}, {'x'});
    RunTicks(board, 3, 100'000);
    EXPECT_EQ(TakeOutput(board), std::string(kOutputLimit, 'x'));
    RunTicks(board, 2, 100'000);
    EXPECT_EQ(TakeOutput(board), std::string(kOutputLimit, 'x'));
}

TEST(BoardInstruction, StopMotorsAndEmergencyStopPutToRest) {
    Board board =
        BoardAt({21, 1, 66, 1, 0, 44, 1, 0, 20, 21, 2, 70, 1, 0, 40, 1, 66, 1, 0, 1}, {9});
    RunInstructions(board, 3);
    EXPECT_EQ(board.outputs.motors[0], Drive{});
    EXPECT_TRUE(board.outputs.leds[0]);
    RunInstructions(board, 3);
    EXPECT_EQ(board.outputs, Outputs{});
    EXPECT_EQ(board.processor.end, EndReason::EmergencyStop);

    Board busy = BoardAt({1}, {});
    busy.outputs.motors.fill({kBackward, 9});
    busy.outputs.servos.fill({kBackward, 9});
    busy.outputs.ports.fill(true);
    busy.outputs.leds.fill(true);
    busy.outputs.display = {Display::Form::Hex, 9};
    busy.outputs.note = 60;
    RunInstructions(busy, 1);
    EXPECT_EQ(busy.outputs, Outputs{});
}

TEST(BoardInstruction, ResetStartsAgainWithMemoryAsItIs) {
    Board board;
    Put(board, 0, {56, 1, 0, 23, 1, 0, 51, 0, 9, 8});  // INCREMENT, PUSH, CALL the RESET at 9
    RunInstructions(board, 1);
    StartProgram(board);
    RunInstructions(board, 8);
    EXPECT_EQ(Peek(board, kData, 1), Bytes{2});
    EXPECT_EQ(board.processor.address, 0U);
    EXPECT_EQ(board.processor.returnDepth, 0);
    EXPECT_TRUE(Pushed(board).empty());
}

TEST(BoardInstruction, TuneGoesOnByItselfAndAnyOtherNoteEndsIt) {
    Board board = BoardAt({49, 1, 0, 0, 48, 30, 5}, {64, 2, 65, 0, 66, 200, 67, 1, 0, 0});
    RunInstructions(board, 1);
    for (int tick = 0; tick < 4; ++tick) {
        AdvanceTick(board);
    }
    RunInstructions(board, 2);
    for (int tick = 0; tick < 6; ++tick) {
        AdvanceTick(board);
    }
    EXPECT_THAT(Changes(board), ElementsAre("0 note 64 2", "2 note 65 1", "3 note 66 200",
                                            "4 note 30 5", "9 note 0 0"));

    // A tune that ends with the memory.
    Board last = BoardAt({49, 0x7F, 0xFE}, {});
    Poke(last, kMemorySize - 2, {64, 1});
    RunInstructions(last, 1);
    AdvanceTick(last);
    EXPECT_THAT(Changes(last), ElementsAre("0 note 64 1", "1 note 0 0"));
    Board half = BoardAt({49, 0x7F, 0xFF}, {});
    Poke(half, kMemorySize - 1, {64});
    RunInstructions(half, 1);
    EXPECT_THAT(Changes(half), ElementsAre());
}

TEST(BoardInstruction, RunsWhatAProgramWroteIntoItself) {
    // INCREMENT BYTE [0100]; INCREMENT BYTE [0002], which moves the first one on; JUMP 0
    Board board;
    Put(board, 0, {56, 1, 0, 56, 0, 2, 53, 0, 0});
    StartProgram(board);
    RunInstructions(board, 9);
    EXPECT_THAT(Peek(board, kData, 4), ElementsAre(1, 1, 1, 0));

    // MOVE BYTE, MOVE WORD, WRITE DATA BYTE and the stack write over instructions that have run.
    const Bytes writers[] = {{11, 1, 0, 0, 0x40}, {12, 1, 0, 0, 0x3F}, {17, 1, 2, 1, 0}};
    for (const Bytes& writer : writers) {
        Board other = BoardAt(writer, {5, 5, 0, 0x40});
        Put(other, 0x40, {0, 0, 5});
        other.processor.address = 0x40;
        RunInstructions(other, 1);
        other.processor.address = kCode;
        RunInstructions(other, 1);
        other.processor.address = 0x40;
        EXPECT_EQ(RunInstructions(other, 2), 1U) << writer[0];
        EXPECT_EQ(other.processor.end, EndReason::End) << writer[0];
    }
}

TEST(BoardInstruction, NoticesAChangeOfAnyOfItsBytes) {
    for (std::uint32_t offset = 0; offset < 7; ++offset) {
        const Bytes data{1, 2, 0};
        Board ran = BoardAt({54, 1, 0, 1, 1, 1, 2}, data);
        Board fresh = ran;
        RunInstructions(ran, 1);
        Put(ran, kData, data);
        ran.processor = fresh.processor;
        for (Board* board : {&ran, &fresh}) {
            board->memory.StoreByte(kCode + offset, 3);
            RunInstructions(*board, 1);
        }
        EXPECT_TRUE(ran == fresh) << offset;
    }
}

TEST(BoardInstruction, TraceTellsTheEffect) {
    struct Row {
        Bytes code;
        std::string line;
    };
    const Row rows[] = {
        {{62, 1, 0, 1, 0, 1, 2}, "[0010] ADD WORD [0100], [0100], [0102] : [0102] = 516"},
        {{46, 1, 0, 1, 1}, "[0010] DIVIDE BYTE [0100], [0101] : [0100] = 0; [0101] = 1"},
        {{17, 1, 0, 1, 1}, "[0010] WRITE DATA BYTE [0100], [0101] : [0102] = 2"},
        {{25, 1, 0}, "[0010] PUSH WORD [0100] : stack 2 bytes"},
        {{53, 0, 160}, "[0010] JUMP [00A0] : to [00A0]"},
        {{21, 1, 70, 1, 0}, "[0010] SET MOTOR 1, 70, [0100]"},
        {{101}, "[0010] unknown opcode 101"},
        {{53, 255, 0}, "[0010] JUMP [FF00]"},
        // Through pointers to the last byte, to the last word, and beyond.
        {{17, 1, 4, 1, 1}, "[0010] WRITE DATA BYTE [0104], [0101] : [7FFF] = 2"},
        {{17, 1, 8, 1, 1}, "[0010] WRITE DATA BYTE [0108], [0101]"},
        {{19, 1, 6, 1, 0}, "[0010] WRITE DATA WORD [0106], [0100] : [7FFE] = 258"},
        {{19, 1, 4, 1, 0}, "[0010] WRITE DATA WORD [0104], [0100]"},
    };
    for (const Row& row : rows) {
        Board board = BoardAt(row.code, {1, 2, 0, 0, 0x7F, 0xFF, 0x7F, 0xFE, 0x80, 0x00});
        EXPECT_EQ(StepWithTrace(board), row.line);
    }
    // An instruction that ends with the memory has its argument.
    Board board = BoardAt({0}, {});
    Poke(board, kMemorySize - 3, {53, 0, 160});
    board.processor.address = kMemorySize - 3;
    EXPECT_EQ(StepWithTrace(board), "[7FFD] JUMP [00A0] : to [00A0]");
}

}  // namespace
}  // namespace zentro
