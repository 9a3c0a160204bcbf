// A second opinion on every program: random programs are compiled and run on the virtual board, and
// what they leave and what they do is compared with what this test works out by itself.

#include "tests/random_program.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "board/board.h"
#include "board/loader.h"
#include "frontend/parse_source_line.h"
#include "model/statement.h"
#include "tests/support/compile_fixture.h"

namespace zentro::test {
namespace {

std::string Described(const OutputChange& change) {
    const std::string number = std::to_string(change.number);
    const std::string value = std::to_string(change.value);
    switch (change.kind) {
        case OutputKind::Motor: return "motor " + number + " " + change.direction + " " + value;
        case OutputKind::Servo: return "servo " + number + " " + change.direction + " " + value;
        case OutputKind::Port: return "port " + number + " " + value;
        case OutputKind::Led: return "led " + number + " " + value;
        case OutputKind::Display:
            if (change.form == Display::Form::Dark) return "display dark";
            return (change.form == Display::Form::Hex ? "display hex " : "display number ") + value;
        case OutputKind::Note: return "note " + value + " " + std::to_string(change.length);
        case OutputKind::Transmit: break;
    }
    return "transmit " + value;
}

std::vector<std::string> ChangesOf(Board& board) {
    std::vector<std::string> changes;
    for (const OutputChange& change : TakeChanges(board))
        changes.push_back(Described(change));
    return changes;
}

/// A program that was compiled and has run to its end.
struct FinishedRun {
    Program program;
    Board board;

    explicit FinishedRun(const std::string& text) : program(text) {}

    std::uint32_t AddressOf(const std::string& name) const {
        const Symbol* symbol =
            program.compilation.symbols.FindOwn(std::string_view(name), ParentId::Program);
        return static_cast<std::uint32_t>(symbol->label.address);
    }

    unsigned ValueOf(const std::string& name, Type type) const {
        const std::uint32_t at = AddressOf(name);
        return IsByteSized(type) ? board.memory.Byte(at) : board.memory.Word(at);
    }

    std::vector<std::uint8_t> BytesOf(const std::string& table, std::size_t count) const {
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = 0; i < count; ++i)
            bytes.push_back(board.memory.Byte(AddressOf(table) + static_cast<std::uint32_t>(i)));
        return bytes;
    }
};

/// Where a pointer of the meaning stands on the board.
unsigned OnBoard(const FinishedRun& run, const RandomProgram& random, unsigned pointer) {
    return run.AddressOf(random.Tables()[pointer / kTableStep]) + pointer % kTableStep;
}

Inputs InputsOfAll() {
    Inputs inputs;
    inputs.battery = SteadyInputs::kBattery;
    inputs.programNumber = SteadyInputs::kProgramNumber;
    inputs.digital[3] = true;
    inputs.buttons[5] = true;
    inputs.analog[5] = SteadyInputs::kAnalog6;
    inputs.timed[3] = SteadyInputs::kTimed4;
    inputs.joysticks[0].x = SteadyInputs::kStick1X;
    inputs.joysticks[1].y = SteadyInputs::kStick2Y;
    inputs.pulses[2] = SteadyInputs::kPulses3;
    return inputs;
}

EndReason ReasonOf(Ending ending) {
    switch (ending) {
        case Ending::EndProgram: return EndReason::End;
        case Ending::EmergencyStop: return EndReason::EmergencyStop;
        case Ending::PowerOff: return EndReason::PowerOff;
        case Ending::Escape: return EndReason::Escape;
        case Ending::DivisionByZero: return EndReason::Fault;
    }
    return EndReason::None;
}

/// Only a program that waits lets time pass.
void RunToItsEnd(Board& board) {
    constexpr std::uint64_t kEnough = 50'000'000;
    for (;;) {
        RunInstructions(board, kEnough);
        if (!board.processor.running) return;
        ASSERT_EQ(board.processor.wait.kind, Wait::Kind::Time);
        AdvanceTick(board);
    }
}

void CompileAndRun(FinishedRun& run, const std::string& included) {
    run.program.WithFile("more.txt", included);
    ASSERT_TRUE(run.program.Compile()) << testing::PrintToString(run.program.Messages());
    ASSERT_EQ(run.program.Messages(), std::vector<std::string>{});
    ASSERT_EQ(LoadObjectText(run.board, run.program.object.text), "");
    SetInputs(run.board, InputsOfAll());
    TakeChanges(run.board);
    StartProgram(run.board);
    ASSERT_NO_FATAL_FAILURE(RunToItsEnd(run.board));
}

void Compare(const RandomProgram& random) {
    FinishedRun run(random.Text());
    ASSERT_NO_FATAL_FAILURE(CompileAndRun(run, random.IncludedText()));
    State expected = random.Run();
    EXPECT_EQ(run.board.processor.end, ReasonOf(expected.ending));
    EXPECT_EQ(run.board.processor.fault,
              expected.ending == Ending::DivisionByZero ? Fault::DivisionByZero : Fault::None);
    EXPECT_EQ(run.board.clock, expected.clock);
    EXPECT_EQ(run.board.droppedEvents, expected.dropped);
    EXPECT_EQ(ChangesOf(run.board), expected.changes);
    for (const auto& [name, type] : random.Globals()) {
        const unsigned value = expected.globals[name];
        EXPECT_EQ(run.ValueOf(name, type),
                  type == Type::Pointer ? OnBoard(run, random, value) : value)
            << name;
    }
    for (std::size_t i = 0; i < expected.tables.size(); ++i) {
        const std::string& name = random.Tables()[i];
        EXPECT_EQ(run.BytesOf(name, expected.tables[i].size()), expected.tables[i]) << name;
    }
}

/// How many programs are compared; ZENTRO_RANDOM_PROGRAMS asks for another number.
unsigned ProgramCount() {
    const char* asked = std::getenv("ZENTRO_RANDOM_PROGRAMS");
    return asked == nullptr ? 300 : static_cast<unsigned>(std::stoul(asked));
}

TEST(RandomProgramTest, BoardAndMeaningAgree) {
    const unsigned programs = ProgramCount();
    ASSERT_GT(programs, 0U);
    for (unsigned seed = 1; seed <= programs && !HasFailure(); ++seed) {
        const RandomProgram random(seed);
        Compare(random);
        if (HasFailure())
            FAIL() << "seed " << seed << "\n"
                   << random.Text() << "; more.txt\n"
                   << random.IncludedText();
    }
}

bool IsOfThisBoard(const Command& entry) {
    switch (entry.family) {
        case TokenFamily::Statement: return IsSupportedStatement(entry.id);
        case TokenFamily::Function: return FindFunction(entry.id) != nullptr;
        default: return entry.id != Token::KeywordList;
    }
}

// What is right may be warned of, but nobody guesses what was meant by it.
TEST(RandomProgramTest, DrawNoHint) {
    constexpr unsigned kPrograms = 2000;
    for (unsigned seed = 1; seed <= kPrograms && !testing::Test::HasFailure(); ++seed) {
        const RandomProgram random(seed);
        Program program(random.Text());
        program.WithFile("more.txt", random.IncludedText());
        program.Compile();
        for (const PostedMessage& message : program.output.messages)
            EXPECT_EQ(message.hint.text, "") << "seed " << seed << message.place.sourceLineNo;
    }
}

TEST(RandomProgramTest, HoldEveryWordOfTheLanguage) {
    std::string all;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const RandomProgram random(seed);
        all += random.Text() + random.IncludedText();
    }
    for (const Command& entry : ShippedLanguage().commands.Entries()) {
        if (IsOfThisBoard(entry)) {
            EXPECT_NE(all.find(entry.command), std::string::npos) << entry.command;
        }
    }
}

}  // namespace
}  // namespace zentro::test
