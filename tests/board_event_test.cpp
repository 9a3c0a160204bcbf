// Events, waits, faults and the whole state as something that can be kept and compared.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/loader.h"
#include "tests/support/board_support.h"

namespace zentro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kData = 0x1000;

constexpr int kSleep = 4, kEnd = 5, kDisable = 6, kEnable = 7, kDefer = 22, kComplete = 75;

/// Two handlers that push 1 and 2 on the data stack, and a main program. Data byte n holds n.
Board WithHandlers(const Bytes& program) {
    Board board;
    Put(board, 0, {53, 0, 0x40});
    Put(board, 0x10, {23, 16, 1, kComplete});
    Put(board, 0x20, {23, 16, 2, kComplete});
    Put(board, 0x40, program);
    Poke(board, kData, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    StartProgram(board);
    return board;
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

const Bytes kWatch9{72, 9, 0, 0x10};    // SET EVENT WATCH 9, the handler that pushes 1
const Bytes kWatch10{72, 10, 0, 0x20};  // SET EVENT WATCH 10, the handler that pushes 2
const Bytes kRaise9{74, 9};
const Bytes kRaise10{74, 10};
const Bytes kMark{23, 16, 9};  // PUSH BYTE: pushes 9

struct EventCase {
    std::string rule;
    Bytes program;
    Bytes pushed;
};

const EventCase kEventCases[] = {
    {"disabled at the start: lost", Join({kWatch9, kRaise9, {kEnable}, kMark, {kEnd}}), {9}},
    {"disabled again: lost",
     Join({kWatch9, {kEnable, kDisable}, kRaise9, {kEnable}, kMark, {kEnd}}),
     {9}},
    {"enabled: before the next instruction",
     Join({kWatch9, {kEnable}, kRaise9, kMark, {kEnd}}),
     {1, 9}},
    {"deferred: waits for ENABLE",
     Join({kWatch9, {kDefer}, kRaise9, kMark, {kEnable}, {kEnd}}),
     {9, 1}},
    {"DISABLE leaves those that wait",
     Join({kWatch9, {kDefer}, kRaise9, {kDisable}, kRaise9, kMark, {kEnable}, {kEnd}}),
     {9, 1}},
    {"not watched: nothing", Join({{kEnable}, kRaise9, kWatch9, kMark, {kEnd}}), {9}},
    {"first come, first served, and the same one twice",
     Join({kWatch9, kWatch10, {kDefer}, kRaise10, kRaise9, kRaise10, {kEnable}, {kEnd}}),
     {2, 1, 2}},
    {"the handler that watches when its turn comes",
     Join({kWatch9, {kDefer}, kRaise9, {72, 9, 0, 0x20}, {kEnable}, {kEnd}}),
     {2}},
    {"none watches any more: forgotten, and the next one is taken",
     Join({kWatch9, kWatch10, {kDefer}, kRaise9, kRaise10, {73, 16, 9}, {kEnable}, {kEnd}}),
     {2}},
    {"any number can be watched and raised",
     Join({{72, 200, 0, 0x10}, {kEnable}, {74, 200}, {kEnd}}),
     {1}},
};

TEST(BoardEvents, FollowTheirMode) {
    for (const EventCase& row : kEventCases) {
        Board board = WithHandlers(row.program);
        RunInstructions(board, 1000);
        EXPECT_EQ(board.processor.end, EndReason::End) << row.rule;
        EXPECT_EQ(Pushed(board), row.pushed) << row.rule;
    }
}

TEST(BoardEvents, HandlersAreNotInterruptedAndModesChangeAfterThem) {
    // Handler 9: ENABLE or DISABLE, RAISE 10, push 1. The event it raises waits in any case.
    for (const int mode : {kEnable, kDisable, kDefer}) {
        Board board = WithHandlers(
            Join({kWatch10, {72, 9, 0, 0x80}, {kEnable}, kRaise9, kMark, {kEnable}, {kEnd}}));
        Put(board, 0x80, Join({{mode}, kRaise10, {23, 16, 1, kComplete}}));
        RunInstructions(board, 1000);
        const Bytes expected = mode == kEnable ? Bytes{1, 2, 9} : Bytes{1, 9, 2};
        EXPECT_EQ(Pushed(board), expected) << mode;
    }
}

TEST(BoardEvents, KeepTheInterruptedPlaceApartFromTheReturnStack) {
    // The handler calls a routine; the main program is interrupted inside one.
    Board board = WithHandlers(Join({{72, 9, 0, 0x80}, {kEnable}, {51, 0, 0x70}, kMark, {kEnd}}));
    Put(board, 0x70, Join({kRaise9, {23, 16, 3}, {52}}));
    Put(board, 0x80, {51, 0, 0x90, kComplete});
    Put(board, 0x90, {23, 16, 1, 52});
    RunInstructions(board, 1000);
    EXPECT_THAT(Pushed(board), ElementsAre(1, 3, 9));
    EXPECT_EQ(board.processor.returnDepth, 0);
}

TEST(BoardEvents, AtMost32WaitAndTheRestIsCounted) {
    for (const int raised : {31, 32, 33, 35}) {
        // Raise 9 so many times: LOOP UNTIL ZERO counts data byte 20.
        Board board = WithHandlers(Join({kWatch9, {kDefer}, kRaise9, {50, 16, 20, 0, 0x45}}));
        Put(board, 0x4C, {kEnable, kEnd});
        Poke(board, kData + 20, {raised});
        RunInstructions(board, 10'000);
        EXPECT_EQ(Pushed(board).size(), static_cast<std::size_t>(std::min(raised, 32)));
        EXPECT_EQ(board.droppedEvents, static_cast<std::uint32_t>(std::max(raised - 32, 0)));
    }
}

TEST(BoardEvents, StartingAHandlerIsNoStep) {
    Board board = WithHandlers(Join({kWatch9, {kEnable}, kRaise9, {kEnd}}));
    RunInstructions(board, 1000);
    EXPECT_EQ(board.processor.steps, 7U);  // JUMP, SET, ENABLE, RAISE, PUSH, COMPLETE, END
}

TEST(BoardEvents, AreForgottenWhenTheProgramEnds) {
    Board board = WithHandlers(Join({kWatch9, {kDefer}, kRaise9, {kEnd}}));
    RunInstructions(board, 1000);
    Put(board, 0x40, Join({{kEnable}, kMark, {kEnd}}));
    StartProgram(board);
    RunInstructions(board, 1000);
    EXPECT_THAT(Pushed(board), ElementsAre(9));
}

struct InputEventCase {
    int number;
    std::function<void(Inputs&)> change;
    std::size_t times;
};

TEST(BoardEvents, HappenWhenInputsChange) {
    const InputEventCase cases[] = {
        {3, [](Inputs& in) { in.digital[0] = true; }, 1},
        {6, [](Inputs& in) { in.digital[3] = false; }, 1},
        {9, [](Inputs& in) { in.buttons[0] = true; }, 1},
        {14, [](Inputs& in) { in.buttons[5] = false; }, 0},
        {15, [](Inputs& in) { in.analog[0] = 108; }, 0},
        {15, [](Inputs& in) { in.analog[0] = 109; }, 1},
        {20, [](Inputs& in) { in.analog[5] = 91; }, 1},
        {21, [](Inputs& in) { in.pulses[0] = 3; }, 3},
        {24, [](Inputs& in) { in.pulses[3] = 0; }, 1},  // the running count wraps
    };
    for (const InputEventCase& row : cases) {
        Board board = WithHandlers({72, row.number, 0, 0x10, kEnable, 53, 0, 0x45});
        Inputs inputs;
        inputs.digital[3] = true;
        inputs.buttons[5] = true;
        inputs.analog.fill(100);
        inputs.pulses[3] = 65535;
        SetInputs(board, inputs);
        StartProgram(board);
        RunInstructions(board, 10);
        row.change(inputs);
        SetInputs(board, inputs);
        SetInputs(board, inputs);
        RunInstructions(board, 50);
        EXPECT_EQ(Pushed(board).size(), row.times) << row.number;
    }
}

TEST(BoardEvents, SlowAnalogChangesAddUp) {
    Board board = WithHandlers({72, 15, 0, 0x10, kEnable, 53, 0, 0x45});
    RunInstructions(board, 10);
    Inputs inputs;
    for (int value = 1; value <= 20; ++value) {
        inputs.analog[0] = static_cast<std::uint8_t>(value);
        SetInputs(board, inputs);
        RunInstructions(board, 10);
    }
    EXPECT_EQ(Pushed(board).size(), 2U);  // at 9 and at 18
}

TEST(BoardEvents, HappenWithTime) {
    Board board = WithHandlers(
        {72, 25, 0, 0x10, 72, 26, 0, 0x20, 72, 27, 0, 0x80, kEnable, kSleep, 53, 0, 0x4D});
    Put(board, 0x80, {23, 16, 3, kComplete});
    RunTicks(board, 6001, 100);
    const Bytes pushed = Pushed(board);
    EXPECT_EQ(std::ranges::count(pushed, 1), 60);
    EXPECT_EQ(std::ranges::count(pushed, 2), 6);
    EXPECT_EQ(std::ranges::count(pushed, 3), 1);
}

TEST(BoardTime, WaitGoesOnToItsEndWhileHandlersRun) {
    for (const int handlerWaits : {2, 20}) {
        // WAIT 10, then note the clock. An event comes at tick 3; its handler waits as well.
        Board board =
            WithHandlers(Join({{72, 9, 0, 0x80}, {kEnable}, {70, 16, 16}, {67, 16, 32}, {kEnd}}));
        Put(board, 0x80, {70, 16, 18, 23, 16, 1, kComplete});
        Poke(board, kData + 16, {0, 10, 0, handlerWaits});
        RunTicks(board, 3, 100);
        Inputs inputs;
        inputs.buttons[0] = true;
        SetInputs(board, inputs);
        RunTicks(board, 30, 100);
        EXPECT_THAT(Pushed(board), ElementsAre(1));
        EXPECT_EQ(Peek(board, kData + 32, 2), (Bytes{0, std::max(10, 3 + handlerWaits)}));
        EXPECT_EQ(board.processor.end, EndReason::End);
    }
}

TEST(BoardTime, SleepEndsWithTheNextWatchedEvent) {
    for (const int mode : {kEnable, kDisable, kDefer}) {
        Board board = WithHandlers(Join({kWatch9, {mode, kSleep}, kMark, {kEnd}}));
        Inputs inputs;
        inputs.buttons[1] = true;  // not watched
        RunTicks(board, 5, 100);
        SetInputs(board, inputs);
        RunTicks(board, 5, 100);
        EXPECT_THAT(Pushed(board), IsEmpty()) << mode;
        inputs.buttons[0] = true;
        SetInputs(board, inputs);
        RunTicks(board, 1, 100);
        EXPECT_EQ(Pushed(board), mode == kEnable ? (Bytes{1, 9}) : Bytes{9}) << mode;
    }
}

TEST(BoardTime, OneTickCarriesOutNoMoreThanItsBudget) {
    Board board = WithHandlers({53, 0, 0x40});
    EXPECT_EQ(RunInstructions(board, 12'345), 12'345U);
    EXPECT_EQ(board.processor.steps, 12'345U);
    // A handler that raises its own event again leaves the program its turn only by the budget.
    Board storm = WithHandlers(Join({{72, 9, 0, 0x80}, {kEnable}, kRaise9, {kEnd}}));
    Put(storm, 0x80, Join({kRaise9, {kComplete}}));
    EXPECT_EQ(RunInstructions(storm, 1000), 1000U);
}

struct FaultCase {
    std::uint32_t address;
    Bytes code;
    std::string line;
};

const FaultCase kFaultCases[] = {
    {0xA0, {101}, "Fault: unknown opcode at [00A0]"},
    {0xA0, {255}, "Fault: unknown opcode at [00A0]"},
    {0xA0, {11, 128, 0, 16, 0}, "Fault: address outside memory at [00A0]"},
    {0xA0, {12, 16, 0, 127, 255}, "Fault: address outside memory at [00A0]"},
    {0xA0, {53, 128, 0}, "Fault: address outside memory at [00A0]"},
    {0xA0, {80, 16, 1, 16, 2, 128, 0}, "Fault: address outside memory at [00A0]"},
    {0xA0, {16, 16, 16, 16, 0}, "Fault: address outside memory at [00A0]"},
    {0xA0, {19, 16, 18, 16, 0}, "Fault: address outside memory at [00A0]"},
    {0x7FFE, {12, 0}, "Fault: address outside memory at [7FFE]"},
    {0x7FFF, {0}, "Fault: address outside memory at [8000]"},
    {0xA0, {24, 16, 0}, "Fault: data stack underflow at [00A0]"},
    {0xA0, {26, 16, 0}, "Fault: data stack underflow at [00A0]"},
    {0xA0, {23, 16, 0, 26, 16, 0}, "Fault: data stack underflow at [00A3]"},
    {0xA0, {25, 16, 0, 53, 0, 0xA0}, "Fault: data stack overflow at [00A0]"},
    {0xA0, {23, 16, 0, 53, 0, 0xA0}, "Fault: data stack overflow at [00A0]"},
    {0xA0, {51, 0, 0xA0}, "Fault: return stack overflow at [00A0]"},
    {0xA0, {52}, "Fault: return stack underflow at [00A0]"},
    {0xA0, {46, 16, 1, 16, 0}, "Fault: division by zero at [00A0]"},
    {0xA0, {47, 16, 1, 16, 32}, "Fault: division by zero at [00A0]"},
    {0xA0, {75}, "Fault: COMPLETE EVENT outside an event at [00A0]"},
};

TEST(BoardFaults, StopTheProgramWithTheirNameAndAddress) {
    for (const FaultCase& row : kFaultCases) {
        Board board;
        Put(board, 0, Bytes(0xC0, 0));  // the stack must not grow into the case's code
        Poke(board, row.address, row.code);
        Poke(board, kData, {0, 1});
        Poke(board, kData + 16, {0x80, 0x00, 0x7F, 0xFF});
        StartProgram(board);
        board.processor.address = row.address;
        RunInstructions(board, 1'000'000);
        EXPECT_EQ(TakeOutput(board), row.line + "\r\n");
        EXPECT_EQ(board.processor.end, EndReason::Fault) << row.line;
    }
}

TEST(BoardFaults, StacksHoldExactlyWhatTheyShould) {
    // Push until the fault: the stack has grown down to the end of the program.
    Board board;
    Put(board, 0, {23, 0, 0, 53, 0, 0});
    StartProgram(board);
    RunInstructions(board, 1'000'000);
    EXPECT_EQ(Pushed(board).size(), 32'768U - 6U);
    Put(board, 0, {51, 0, 0});
    StartProgram(board);
    RunInstructions(board, 1'000'000);
    EXPECT_EQ(board.processor.steps, 257U);
    EXPECT_EQ(board.processor.returnDepth, 256);
}

TEST(BoardFaults, CallTheErrorRoutineOnce) {
    // DIVIDE BYTE by 0, an unknown opcode, MOVE BYTE to where no memory is, COMPLETE EVENT.
    const Bytes failing[] = {{46, 16, 1, 16, 0}, {200}, {11, 16, 1, 255, 0}, {kComplete}};
    const char* const end[] = {"000B", "0007", "000B", "0007"};
    for (std::size_t row = 0; row < std::size(end); ++row) {
        // ON ERROR CALL 20; what fails; push 9; RETURN (a fault). The routine pushes 1.
        Board board;
        Put(board, 0, Join({{71, 0, 0x20}, failing[row], {23, 16, 9, 52}}));
        Put(board, 0x20, {23, 16, 1, 52});
        Poke(board, kData, {0, 1, 0, 0, 0, 0, 0, 0, 0, 9});
        StartProgram(board);
        RunInstructions(board, 100);
        EXPECT_THAT(Pushed(board), ElementsAre(1, 9)) << row;
        EXPECT_EQ(TakeOutput(board),
                  std::string("Fault: return stack underflow at [") + end[row] + "]\r\n");
    }
}

/// A program that uses much of the board: events, waits, stack, random numbers, outputs, a loop.
Board BusyBoard() {
    Board board = WithHandlers(Join({kWatch9,
                                     {72, 25, 0, 0x20},
                                     {kEnable},
                                     {59, 17, 0},
                                     {21, 1, 70, 17, 0},
                                     {70, 16, 1},
                                     {48, 60, 3},
                                     {44, 17, 0},
                                     {13, 17, 0},
                                     {53, 0, 0x49}}));
    Poke(board, kData + 1, {0, 3});
    return board;
}

void PressNowAndThen(Board& board, std::uint64_t ticks, std::uint64_t stepsPerTick) {
    for (std::uint64_t tick = 0; tick < ticks; ++tick) {
        Inputs inputs = board.inputs;
        inputs.buttons[0] = board.clock % 7 == 0;
        SetInputs(board, inputs);
        if (board.clock % 50 == 0) ReceiveCharacters(board, "R\r");
        RunTicks(board, 1, stepsPerTick);
    }
}

TEST(BoardState, CanBeRewoundAndRepeated) {
    Board board = BusyBoard();
    PressNowAndThen(board, 130, 1000);
    const Board kept = board;
    PressNowAndThen(board, 500, 1000);
    Board again = kept;
    EXPECT_FALSE(board == again);
    PressNowAndThen(again, 500, 1000);
    EXPECT_TRUE(board == again);
    EXPECT_FALSE(board.changes.empty());
}

TEST(BoardState, DoesNotDependOnHowInstructionsAreSliced) {
    Board whole = BusyBoard();
    Board sliced = BusyBoard();
    for (int tick = 0; tick < 300; ++tick) {
        RunInstructions(whole, 1000);
        while (RunInstructions(sliced, 1) > 0) {
        }
        AdvanceTick(whole);
        AdvanceTick(sliced);
        ASSERT_TRUE(whole == sliced) << tick;
    }
}

}  // namespace
}  // namespace zentro
