#include <gtest/gtest.h>
#include <utility>

#include "config/text.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using test::Split;

/// What the rows of statements work on. Line 1 begins the program, so a row's lines are numbered
/// from 2 on, and its first label is Line2.
constexpr const char* kDeclarations = R"(
DEFINE BYTE Small = 0
DEFINE BYTE Other = 0
DEFINE WORD Wide = 0
DEFINE WORD Broad = 0
DEFINE FLAG Lost = FALSE
DEFINE FLAG Found = FALSE
DEFINE POINTER Reader
DEFINE POINTER Writer
DEFINE CONSTANT Cruise = 45
DEFINE CONSTANT Far = 1000
DEFINE CONSTANT Letter = "q"
DEFINE TABLE Tune = 1, 2
END TABLE
DEFINE EVENT Bumped()
END EVENT
DEFINE ROUTINE Halt()
END ROUTINE
DEFINE ROUTINE Drive(First BYTE, Second WORD)
END ROUTINE
DEFINE ROUTINE Mean(First BYTE, Second FLAG) RETURNS BYTE
    RETURN First
END ROUTINE
DEFINE ROUTINE Total() RETURNS WORD
    RETURN Wide
END ROUTINE
DEFINE ROUTINE IsLost() RETURNS FLAG
    RETURN Lost
END ROUTINE
DEFINE ROUTINE Place() RETURNS POINTER
    RETURN Reader
END ROUTINE
)";

/// The rows of a file: "source => instructions", "|" between lines, and "~" for the code
/// "Program_".
struct FileRow {
    std::string source;
    std::string expected;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

std::vector<FileRow> RowsOf(const std::string& file) {
    std::vector<FileRow> rows;
    std::string pending;
    for (const std::string& line : Split(test::ReadFile(file), '\n')) {
        if (line.empty() || line.starts_with('#')) continue;
        const std::size_t arrow = line.rfind(" => ");
        EXPECT_NE(arrow, std::string::npos) << line;
        if (arrow == std::string::npos) continue;
        const std::size_t end = line.find_last_not_of(' ', arrow);
        rows.push_back(
            {line.substr(0, end + 1), Replaced(line.substr(arrow + 4), "~", "Program_")});
    }
    return rows;
}

TEST(Codegen, StatementsOfTheMainProgram) {
    for (const FileRow& row : RowsOf("data/statements.txt")) {
        SCOPED_TRACE(row.source);
        const auto lines = static_cast<int>(Split(row.source, '|').size());
        Program program("BEGIN PROGRAM\n" + Replaced(row.source, "|", "\n") + "\nEND PROGRAM\n" +
                        kDeclarations);
        EXPECT_TRUE(program.Compile()) << program.output.log;
        EXPECT_EQ(program.Code(2, lines + 1), row.expected);
    }
}

/// The text behind the mark, without blanks around it; empty when the mark is not there.
std::string TextBehind(const std::string& line, const std::string& mark) {
    const std::size_t at = line.find(mark);
    if (at == std::string::npos) return {};
    return Replaced(std::string(Trim(line.substr(at + mark.size()))), "~", "Program_");
}

class WholePrograms : public testing::TestWithParam<std::string> {};

// Every line of a program in programs/ that becomes code says so: "; => instructions".
TEST_P(WholePrograms, BecomeTheInstructionsInTheirComments) {
    const std::string text = test::ReadFile("programs/" + GetParam());
    Program program(text);
    ASSERT_TRUE(program.Compile()) << program.output.log;
    int lineNo = 0;
    for (const std::string& line : Split(text, '\n')) {
        EXPECT_EQ(program.Code(++lineNo), TextBehind(line, "; =>")) << line;
        const std::string data = TextBehind(line, "; data =>");
        if (data.empty()) continue;
        EXPECT_EQ(program.DataArea(), data);
    }
}

INSTANTIATE_TEST_SUITE_P(All, WholePrograms,
                         testing::Values("recursion.txt", "shared_parameters.txt", "defaults.txt",
                                         "routine_ends.txt", "nothing_open.txt"),
                         [](const auto& info) {
                             return info.param.substr(0, info.param.size() - 4);
                         });

TEST(Codegen, ObjectFileAndListingOfOneProgram) {
    Program program(test::ReadFile("data/whole_program.txt"));
    ASSERT_TRUE(program.Compile()) << program.output.log;
    EXPECT_EQ(program.object.path, "out/main.obj");
    EXPECT_EQ(Split(program.object.text, '\n'),
              Split(test::ReadFile("data/whole_program.object"), '\n'));
    EXPECT_EQ(program.listing.lines, Split(test::ReadFile("data/whole_program.lst"), '\n'));
}

TEST(Codegen, TheJumpToTheProgramComesOnlyBeforeOtherCode) {
    const std::string declarations = "DEFINE BYTE Small = 1\nDEFINE TABLE Tune = 1\nEND TABLE\n";
    for (const auto& [rest, isJump] :
         {std::pair{"BEGIN PROGRAM\nEND PROGRAM\nDEFINE ROUTINE Halt()\nEND ROUTINE\n", false},
          {"DEFINE ROUTINE Halt()\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n", true}}) {
        Program program(declarations + rest);
        ASSERT_TRUE(program.Compile());
        EXPECT_EQ(program.object.text.starts_with("53,"), isJump) << rest;
    }
}

TEST(Listing, CommentsAreCutBeyond40CharactersAndAddressesShowFourHexadecimalDigits) {
    // With its ";" the first line's comment has 40 characters, the second's 41.
    Program program("BEGIN PROGRAM\n" + std::string("DISPLAY ") + std::string(30, '0') +
                    "7\nDISPLAY " + std::string(31, '0') + "7\nEND PROGRAM\n" +
                    "DEFINE TABLE Large\nRESERVE 20000\nRESERVE 20000\nRESERVE 20000\nRESERVE "
                    "10000\nEND TABLE\n");
    program.Compile();
    const auto& lines = program.listing.lines;
    EXPECT_TRUE(lines.at(3).ends_with("\t\t\t;DISPLAY " + std::string(30, '0') + "7")) << lines[3];
    EXPECT_TRUE(lines.at(4).ends_with("\t\t\t;DISPLAY " + std::string(28, '0') + "..."))
        << lines[4];
    // 14 bytes of code, 4 of scratch variables: the table begins at 18.
    EXPECT_EQ(lines.at(8 + 65535 - 18),
              "[FFFF]/65535 Program_Large65517:  0                        ;DataTable Byte");
    EXPECT_EQ(lines.at(8 + 65536 - 18),
              "[0000]/65536 Program_Large65518:  0                        ;DataTable Byte");
}

}  // namespace
}  // namespace zentro
