// The mistakes of beginners in tests/mistakes/; README.md there says how they are written.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "board/board.h"
#include "board/loader.h"
#include "config/text.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using test::Program;
using test::Split;

const std::string kFolder = ZENTRO_TESTS_FOLDER "/mistakes/";

struct Mistake {
    std::string name;
    int line = 0;
    std::string code;
    std::string hint;  ///< a piece of it; empty: there is none
};

/// How a test that fails shows it.
void PrintTo(const Mistake& mistake, std::ostream* out) {
    *out << mistake.name;
}

std::vector<Mistake> Mistakes() {
    constexpr std::size_t kFewestColumns = 3;
    std::vector<Mistake> mistakes;
    for (const std::string& row : Split(test::ReadFile(kFolder + "mistakes.table"), '\n')) {
        if (row.empty() || row.starts_with(';')) continue;
        std::vector<std::string> columns;
        for (const std::string& column : Split(row, '|'))
            columns.emplace_back(TrimBlanks(column));
        if (columns.size() < kFewestColumns) throw std::runtime_error(row);
        columns.resize(kFewestColumns + 1);
        mistakes.push_back({columns[0], std::stoi(columns[1]), columns[2], columns[3]});
    }
    return mistakes;
}

/// What is told about the program itself: errors, warnings and advice, not the stages of the run.
std::vector<PostedMessage> MessagesOf(const Program& program) {
    std::vector<PostedMessage> messages;
    std::ranges::copy_if(program.output.messages, std::back_inserter(messages),
                         [](const PostedMessage& message) {
                             return message.code > MessageCode::StageFailed &&
                                    message.code < MessageCode::LoadStarts;
                         });
    return messages;
}

class Mistaken : public testing::TestWithParam<Mistake> {};

TEST_P(Mistaken, ProgramIsToldWhatItsTableSays) {
    const Mistake& mistake = GetParam();
    Program program(test::ReadFile(kFolder + mistake.name + ".txt"));
    program.Compile();
    const std::vector<PostedMessage> messages = MessagesOf(program);
    ASSERT_FALSE(messages.empty());
    const PostedMessage& first = messages.front();
    EXPECT_EQ(MessageCodeText(first.code), mistake.code) << first.text;
    EXPECT_EQ(first.place.sourceLineNo, mistake.line) << first.text;
    EXPECT_THAT(first.hint.text, testing::HasSubstr(mistake.hint));
    EXPECT_EQ(first.hint.text.empty(), mistake.hint.empty()) << first.hint.text;
}

TEST_P(Mistaken, ProgramThatIsMendedRuns) {
    constexpr int kTicks = 500;
    constexpr std::uint64_t kInstructions = 200;  // in a tick
    Program program(test::ReadFile(kFolder + GetParam().name + ".mended.txt"));
    ASSERT_TRUE(program.Compile()) << program.output.log;
    EXPECT_THAT(MessagesOf(program), testing::IsEmpty()) << program.output.log;
    Board board;
    ASSERT_EQ(LoadObjectText(board, program.object.text), "");
    StartProgram(board);
    for (int tick = 0; tick < kTicks; ++tick) {
        RunInstructions(board, kInstructions);
        AdvanceTick(board);
    }
    EXPECT_EQ(board.processor.fault, Fault::None);
}

INSTANTIATE_TEST_SUITE_P(All, Mistaken, testing::ValuesIn(Mistakes()),
                         [](const auto& info) { return info.param.name; });

TEST(MistakesFolder, HoldsTwoProgramsForEachLineOfTheTable) {
    std::multiset<std::string> expected{"README.md", "mistakes.table"};
    for (const Mistake& mistake : Mistakes()) {
        expected.insert(mistake.name + ".txt");
        expected.insert(mistake.name + ".mended.txt");
    }
    std::multiset<std::string> found;
    for (const auto& entry : fs::directory_iterator(kFolder))
        found.insert(entry.path().filename().string());
    EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace zentro
