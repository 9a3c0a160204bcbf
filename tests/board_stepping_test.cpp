// A board that runs at full speed must stay the same as one that is stepped: what is decoded ahead,
// counted together or forgotten may never show.
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <utility>

#include "board/trace.h"
#include "tests/support/board_support.h"

namespace zentro {
namespace {

constexpr std::uint64_t kTicks = 12;

/// How a board gets through the instructions of a tick; returns how many there were.
struct Way {
    std::string name;
    std::function<std::uint64_t(Board& board, std::uint64_t budget)> run;
};

std::uint64_t RunInPieces(Board& board, std::uint64_t budget,
                          const std::function<std::uint64_t(std::uint64_t done)>& piece) {
    std::uint64_t done = 0;
    while (done < budget) {
        const std::uint64_t now = RunInstructions(board, std::min(piece(done), budget - done));
        if (now == 0) break;
        done += now;
    }
    return done;
}

const Way kWays[] = {
    {"in pieces of every size",
     [](Board& board, std::uint64_t budget) {
         return RunInPieces(board, budget, [](std::uint64_t done) { return 1 + done * 7 % 61; });
     }},
    {"with copies that go on",
     [](Board& board, std::uint64_t budget) {
         return RunInPieces(board, budget, [&board](std::uint64_t) {
             const auto copy = std::make_unique<Board>(board);
             RunInstructions(board, 100);
             board = *copy;
             return std::uint64_t{50};
         });
     }},
    {"traced",
     [](Board& board, std::uint64_t budget) {
         std::uint64_t done = 0;
         while (done < budget && StepWithTrace(board))
             ++done;
         return done;
     }},
};

/// The world changes from tick to tick, so that events happen.
void PassTick(Board& board) {
    AdvanceTick(board);
    Inputs inputs = board.inputs;
    const auto tick = static_cast<std::size_t>(board.clock);
    inputs.digital[tick % 4] = !inputs.digital[tick % 4];
    inputs.buttons[tick % 6] = !inputs.buttons[tick % 6];
    inputs.analog[tick % 6] = static_cast<std::uint8_t>(tick * 50);
    inputs.pulses[tick % 4] = static_cast<std::uint16_t>(inputs.pulses[tick % 4] + 2);
    SetInputs(board, inputs);
    TakeOutput(board);
}

/// Runs a program at full speed and, beside it, in each of the ways and step by step.
void ExpectSameInAllWays(const Board& loaded, std::uint64_t stepsPerTick) {
    const auto fast = std::make_unique<Board>(loaded);
    const auto stepped = std::make_unique<Board>(loaded);
    std::vector<std::unique_ptr<Board>> others;
    for (std::size_t way = 0; way < std::size(kWays); ++way) {
        others.push_back(std::make_unique<Board>(loaded));
    }
    for (std::uint64_t tick = 0; tick < kTicks; ++tick) {
        const std::uint64_t done = RunInstructions(*fast, stepsPerTick);
        const std::uint64_t one = RunInPieces(*stepped, stepsPerTick, [](auto) { return 1; });
        ASSERT_EQ(done, one) << "tick " << tick;
        ASSERT_TRUE(*fast == *stepped) << "tick " << tick;
        for (std::size_t way = 0; way < std::size(kWays); ++way) {
            SCOPED_TRACE(kWays[way].name);
            ASSERT_EQ(kWays[way].run(*others[way], stepsPerTick), done) << "tick " << tick;
            ASSERT_TRUE(*others[way] == *fast) << "tick " << tick;
            PassTick(*others[way]);
        }
        PassTick(*fast);
        PassTick(*stepped);
    }
}

std::unique_ptr<Board> Loaded(const Bytes& program) {
    auto board = std::make_unique<Board>();
    Put(*board, 0, program);
    StartProgram(*board);
    return board;
}

struct ProgramCase {
    std::string name;
    Bytes program;
};

const ProgramCase kPrograms[] = {
    {"only NOPs, to the end of memory", Bytes(40, 0)},
    {"a jump to itself", {53, 0, 0}},
    {"jumps in a ring, longer than any count", {53, 0, 6, 53, 0, 0, 0, 53, 0, 3}},
    {"a condition that leads to itself", {0, 0, 80, 0, 0, 0, 0, 0, 0}},
    {"a jump into the middle of an instruction",
     {80, 0, 0, 0, 0, 0, 9, 11, 54, 65, 0, 40, 53, 0, 9}},
    // MOVE BYTE [12], [0]: the first NOP becomes an INCREMENT BYTE, and back
    {"an instruction ahead is overwritten",
     {64, 0, 31, 54, 0, 31, 0, 32, 0, 13, 0, 0, 0, 0, 0, 31, 0,
      53, 0, 0,  0,  0, 0,  0, 0,  0, 0,  0, 0, 0, 0, 0, 1}},
    {"an instruction overwrites itself", {11, 0, 7, 0, 0, 53, 0, 0, 56, 0, 20, 53, 0, 0}},
    {"the argument of a jump counts up", {0, 0, 56, 0, 7, 53, 0, 9, 0, 0, 0, 0, 0, 0, 0, 53, 0, 0}},
    {"a NOP on the way becomes a JUMP",
     {0, 0, 56, 0, 12, 61, 0, 0, 53, 0, 10, 0, 0, 0, 11, 0, 23, 0, 10, 53, 0, 0, 0, 53}},
    {"a word is stored across two instructions",
     {12, 0, 30, 0, 8, 0, 0, 0, 0, 0, 64, 0, 30, 53, 0, 0}},
    {"the stack grows into the running program", {23, 0, 0, 53, 0, 0}},
    {"calls that never return", {51, 0, 0}},
    {"calls that return to what was overwritten", {51, 0, 8, 0, 53, 0, 0, 0, 56, 0, 3, 52}},
    {"a variable behind a condition that always holds", {56, 0, 10, 80, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"an error routine", {71, 0, 16, 46, 0, 20, 0, 21, 56, 0, 22, 53, 0, 0, 0, 0, 56, 0, 23, 52}},
    {"a fault behind NOPs", {0, 0, 0, 53, 0, 6, 0, 0, 200}},
    {"a jump out of memory", {0, 0, 53, 0x80, 0}},
    // handlers for two inputs and for RAISE EVENT, in a loop
    {"events", {72, 3,  0, 29, 72, 4, 0,  29, 72, 9,  0, 33, 7,  74, 9, 0,  56, 0,  60, 78,
                0,  61, 0, 13, 53, 0, 13, 0,  0,  56, 0, 61, 75, 64, 0, 62, 22, 74, 9,  75}},
    {"waits, and a reset now and then",
     {70, 0, 20, 56, 0, 25, 80, 0, 25, 0, 24, 0, 16, 53, 0, 0, 61, 0, 25, 8, 0, 3, 0, 0, 4, 0}},
    {"sleep and random numbers",
     {72, 3, 0, 20, 7, 59, 0, 40, 4, 59, 0, 41, 67, 0, 42, 53, 0, 5, 0, 0, 75}},
};

TEST(BoardStepping, ProgramsRunTheSameAtFullSpeedAndStepByStep) {
    for (const ProgramCase& row : kPrograms) {
        SCOPED_TRACE(row.name);
        for (const std::uint64_t stepsPerTick : {15, 16, 17, 100, 3000}) {
            ExpectSameInAllWays(*Loaded(row.program), stepsPerTick);
        }
    }
}

/// Random numbers, the same in every run.
class Dice {
  public:
    explicit Dice(unsigned seed) : random_(seed) {}
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  private:
    std::mt19937 random_;
};

TEST(BoardStepping, RandomBytesRunTheSame) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        Bytes program;
        while (program.size() < 300)
            program.push_back(dice.Below(dice.Below(2) == 0 ? 256 : kInstructionCount));
        ExpectSameInAllWays(*Loaded(program), 400);
    }
}

/// An instruction whose addresses lie below `reach`, with some bytes chosen freely.
void AddInstruction(Bytes& program, Dice& dice, int reach) {
    const Instruction& row =
        InstructionTable()[static_cast<std::size_t>(dice.Below(kInstructionCount))];
    const bool wouldEnd = row.opcode == Opcode::End || row.opcode == Opcode::EmergencyStop ||
                          row.opcode == Opcode::PowerOff || row.opcode == Opcode::Escape;
    if (wouldEnd) return;
    program.push_back(static_cast<int>(row.opcode));
    for (std::size_t slot = 0; slot < row.ArgumentCount(); ++slot) {
        if (row.Argument(slot) == ArgumentType::Byte) {
            program.push_back(dice.Below(30));
        } else {
            const int address = dice.Below(reach);
            program.insert(program.end(), {address / 256, address % 256});
        }
    }
}

/// Most of such programs write into themselves sooner or later; with a longer reach, later.
TEST(BoardStepping, RandomInstructionsRunTheSame) {
    for (unsigned seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        Bytes program{71, 0, 3};
        const int reach = seed % 2 == 0 ? 250 : 2000;
        while (program.size() < 240)
            AddInstruction(program, dice, reach);
        ExpectSameInAllWays(*Loaded(program), 500);
    }
}

void AddWithAddress(Bytes& program, int opcode, int address) {
    program.insert(program.end(), {opcode, address / 256, address % 256});
}

/// An address for a variable: mostly of its own, now and then on the stack or in the code.
int PlaceForVariable(Dice& dice) {
    const int kind = dice.Below(40);
    if (kind == 0) return dice.Below(300);
    if (kind < 4) return static_cast<int>(kMemorySize) - 2 - dice.Below(40);
    return 400 + dice.Below(12);
}

/// What the compiler writes around calls: pushes, pops and clears, one after the other, and calls
/// and returns between them. A fault leads to an error routine, which is set anew all the time.
Bytes ProgramOfCalls(Dice& dice) {
    constexpr int kLines = 80;
    constexpr int kLineSize = 3;
    constexpr int kRuns[][3] = {
        {23, 25, 23}, {24, 26, 24}, {61, 66, 61}, {23, 51, 56}, {25, 52, 71}};
    const auto line = [&dice] { return kLineSize * dice.Below(kLines); };
    Bytes program;
    AddWithAddress(program, 71, 0);  // ON ERROR CALL
    while (program.size() < kLineSize * kLines) {
        const int* run = kRuns[dice.Below(static_cast<int>(std::size(kRuns)))];
        for (int length = 1 + dice.Below(4); length > 0; --length) {
            const int opcode = run[dice.Below(3)];
            const bool leads = opcode == 51 || opcode == 71;
            AddWithAddress(program, opcode, leads ? line() : PlaceForVariable(dice));
            if (opcode == 52) {  // RETURN takes no address
                program[program.size() - 2] = program.back() = 0;
            }
        }
    }
    AddWithAddress(program, 53, 0);  // JUMP
    return program;
}

/// In every fourth program the stack has little room, in the next it is never empty, and in the
/// next it grows into the code.
TEST(BoardStepping, RandomCallsRunTheSame) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Dice dice(seed);
        const auto board = Loaded(ProgramOfCalls(dice));
        Processor& processor = board->processor;
        if (seed % 4 == 0) processor.programSize = kMemorySize - 11;
        if (seed % 4 == 1) processor.stackTop -= 2000;
        if (seed % 4 == 2) processor.stackTop = std::exchange(processor.programSize, 3) + 20;
        ExpectSameInAllWays(*board, 400);
    }
}

/// Each call leads to an instruction of its own and from there to what all share, which is decoded
/// again behind each: far more than is kept.
TEST(BoardStepping, MoreThanCanBeKeptRunsTheSame) {
    constexpr int kCalls = 3500;
    constexpr int kRoutines = 3 * kCalls + 1;
    constexpr int kShared = kRoutines + 6 * kCalls;
    constexpr int kSharedSteps = 20;
    constexpr int kVariable = kShared + 3 * kSharedSteps + 1;
    Bytes program;
    for (int call = 0; call < kCalls; ++call)
        AddWithAddress(program, 51, kRoutines + 6 * call);  // CALL
    program.push_back(5);                                   // END
    for (int call = 0; call < kCalls; ++call) {
        AddWithAddress(program, 56, kVariable);  // INCREMENT BYTE
        AddWithAddress(program, 53, kShared);    // JUMP
    }
    for (int step = 0; step < kSharedSteps; ++step)
        AddWithAddress(program, 56, kVariable);
    program.push_back(52);  // RETURN

    const auto fast = Loaded(program);
    const auto stepped = Loaded(program);
    const std::uint64_t done = RunInstructions(*fast, 1'000'000);
    EXPECT_EQ(done, std::uint64_t{kCalls} * (kSharedSteps + 4) + 1);
    EXPECT_EQ(RunInPieces(*stepped, done + 1, [](auto) { return 1; }), done);
    EXPECT_TRUE(*fast == *stepped);
    EXPECT_EQ(fast->processor.end, EndReason::End);
}

TEST(BoardStepping, ACopyIsSmall) {
    EXPECT_LE(sizeof(Board), 40'000U);
}

}  // namespace
}  // namespace zentro
