#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "compiler/resolve_labels.h"
#include "config/encoding.h"
#include "frontend/words.h"
#include "model/statement_text.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using testing::ElementsAre;

struct SplitRow {
    const char* text;
    const char* first;
    const char* rest;
    bool keepLeadingDelimiter = false;
};

TEST(Words, TheFirstWordEndsAtADelimiter) {
    for (const SplitRow& row : {SplitRow{"", "", ""},
                                {"   ", "", ""},
                                {"Count", "Count", ""},
                                {" Count = 5 ", "Count", "= 5"},
                                {"Name(3)", "Name", "3)"},
                                {"Name,", "Name", ""},
                                {"One,Two", "One", "Two"},
                                {") BYTE", "", "BYTE"},
                                {"(5) rest", "(5", "rest", true},
                                {"\" ,(\" rest", "\" ,(\"", "rest"},
                                {"\" \"", "\" \"", "", true},
                                {"Say\"a b\"", "Say", "\"a b\""}}) {
        const SplitText split = SplitFirstWord(row.text, row.keepLeadingDelimiter);
        EXPECT_EQ(split.first, row.first) << row.text;
        EXPECT_EQ(split.rest, row.rest) << row.text;
    }
}

TEST(Words, CommaListsKeepEmptyItemsAndQuotedCommas) {
    EXPECT_THAT(SplitCommaList(""), ElementsAre());
    EXPECT_THAT(SplitCommaList("a, b,,c"), ElementsAre("a", "b", "", "c"));
    EXPECT_THAT(SplitCommaList("1,"), ElementsAre("1", ""));
    EXPECT_THAT(SplitCommaList(","), ElementsAre("", ""));
    EXPECT_THAT(SplitCommaList("\"a,b\" , c"), ElementsAre("\"a,b\"", "c"));
}

TEST(Words, QuotesAndParentheses) {
    EXPECT_EQ(StripQuotes("\"ab\""), "ab");
    EXPECT_EQ(StripQuotes("\"ab"), "ab");
    EXPECT_EQ(StripQuotes("ab\""), "ab");
    EXPECT_EQ(StripQuotes("\"\""), "");
    EXPECT_TRUE(HasCallParenthesis("Name(\"a\")"));
    EXPECT_FALSE(HasCallParenthesis("\"(\""));
    EXPECT_FALSE(HasCallParenthesis("Name"));
    EXPECT_EQ(FindClosingParenthesis("A(B(\")\"))C)", 1), 8U);
}

struct LineRow {
    const char* source;
    const char* parsed;
};

TEST(SourceLine, IsNormalised) {
    const std::vector<LineRow> rows{
        {"", ""},
        {" \t ", ""},
        {"; only a comment", ""},
        {"A=B+1", "A = B + 1"},
        {"A  <=B", "A <= B"},
        {"A<>B", "A <> B"},
        {"A-B*C/D>E", "A - B * C / D > E"},
        {"A\t\x01  B", "A B"},
        {"A\t=\tB", "A = B"},
        {"Sp\xC3\xA9\xC3\xA9"
         "d = 1",
         "Sp d = 1"},
        {"A=\"x=y; \xC3\xA9  z\";c", "A = \"x=y; \xC3\xA9  z\""},
        {"A = 1;B=2", "A = 1"},
        {"=A", "= A"},
        {"A=", "A ="},
        {"A = \"open ; no comment", "A = \"open ; no comment\""},
        {"\x7F\x7F", ""},
    };
    std::string text;
    for (const LineRow& row : rows)
        text += std::string(row.source) + "\n";
    Program program(text);
    program.Check();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const SourceLine& line = program.compilation.sourceLines.at(i);
        EXPECT_EQ(ToUtf8(line.parsedLine), rows[i].parsed) << rows[i].source;
    }
}

constexpr const char* kBlocks = R"(BEGIN PROGRAM
REPEAT
IF 1 = 1 THEN
SELECT Small
CASE 1
CASE ELSE
END SELECT
ELSE
WHILE 1 = 1
END WHILE
END IF
UNTIL 1 = 1
END PROGRAM
DEFINE BYTE Small = 0
)";

TEST(Blocks, AreLinkedFromTheirFirstLineToTheirLast) {
    Program program(kBlocks);
    ASSERT_TRUE(program.Compile()) << program.output.log;
    struct Links {
        int line, opener, closer;
    };
    // Of an IF block the opener is not found: its first line is no block start to the search.
    for (const Links& row : {Links{2, 2, 12},
                             {12, 2, 12},
                             {3, 0, 11},
                             {8, 0, 11},
                             {11, 0, 11},
                             {4, 4, 7},
                             {5, 4, 7},
                             {6, 4, 7},
                             {7, 4, 7},
                             {9, 9, 10},
                             {10, 9, 10},
                             {14, 0, 0},
                             {0, 0, 0}}) {
        const SourceLine* opener = FindStructOpener(program.compilation, row.line);
        const SourceLine* closer = FindStructCloser(program.compilation, row.line);
        EXPECT_EQ(opener == nullptr ? 0 : opener->lineNumber, row.opener) << row.line;
        EXPECT_EQ(closer == nullptr ? 0 : closer->lineNumber, row.closer) << row.line;
    }
}

TEST(Addresses, LeadToSourceLinesAndLabelsToAddresses) {
    Program program("BEGIN PROGRAM\nINCLUDE \"more.txt\"\nEND PROGRAM\nDEFINE BYTE Small = 5\n");
    program.WithFile("more.txt", "\nDISPLAY Small\nDISPLAY 6\n");
    ASSERT_TRUE(program.Compile()) << program.output.log;
    // NOP 0, CLEAR WORD 1 and 4, MOVE BYTE 7, DISPLAY 12 and 15, END 18, data from 19 on.
    const Compilation& compilation = program.compilation;
    struct Row {
        int address, line;
    };
    for (const Row& row : {Row{0, 1}, {7, 1}, {12, 4}, {15, 5}, {18, 6}, {13, 0}, {999, 0}}) {
        EXPECT_EQ(GetSourceLineNoForAddress(compilation, row.address), row.line) << row.address;
    }
    const LineXref place = XrefOf(compilation, 5);
    EXPECT_EQ(place.fileName, "more.txt");
    EXPECT_EQ(place.sourceLineNo, 3);
    EXPECT_EQ(place.address, 15);
    for (const int outside : {0, 8}) {
        EXPECT_EQ(XrefOf(compilation, outside).fileName, "");
    }
    EXPECT_EQ(XrefOf(compilation, 3).address, 0) << "a blank line";
    const LabelTable labels = BuildLabelTable(compilation);
    EXPECT_EQ(LookupLabel(labels, "begin program"), 0);
    EXPECT_EQ(LookupLabel(labels, "END PROGRAM"), 18);
    EXPECT_EQ(LookupLabel(labels, "PROGRAM_SMALL"), 23);
    EXPECT_EQ(LookupLabel(labels, "B_6"), 25);
    EXPECT_EQ(LookupLabel(labels, "B_5"), 27);
    EXPECT_EQ(LookupLabel(labels, "Nowhere"), std::nullopt);
}

TEST(SourceLine, TellsACallOfAFunctionFromOneOfARoutine) {
    Program program(
        "DEFINE BYTE Light = 0\nDEFINE ROUTINE Mean() RETURNS BYTE\nRETURN 1\nEND ROUTINE\n"
        "BEGIN PROGRAM\nLight = Mean()\nLight = ANALOG(1)\nLight = 5\nEND PROGRAM\n");
    ASSERT_TRUE(program.Compile()) << program.output.log;
    const Compilation& compilation = program.compilation;
    EXPECT_FALSE(compilation.GetSourceLine(6).IsSystemFunctionCall());
    EXPECT_TRUE(compilation.GetSourceLine(7).IsSystemFunctionCall());
    EXPECT_FALSE(compilation.GetSourceLine(8).IsSystemFunctionCall());
}

// Nothing of one compilation is seen by another, not even while both are alive.
TEST(Statements, SayWhatTheyTakeUnlessTheLanguageDoes) {
    struct Row {
        const char* record;
        const char* form;
        const char* meaning;
    };
    for (const Row& row : std::vector<Row>{
             {R"("s35","WATCH","runs lines")", "event 3 to 6 or 9 to 27, name", "runs lines"},
             {R"("s35","WATCH","number, lines: runs them")", "number, lines", "runs them"},
             {R"("F6","STICK","read: yes")", R"(STICK(joystick 1 or 2, axis "X" or "Y"))",
              "read: yes"},
             {R"("F6","STICK","Stick(which): read")", "Stick(which)", "read"},
             {R"("F1","POWER","the battery")", "POWER()", "the battery"},
             {R"("F2","HEAR","not available")", "", "not available"},
             {R"("s38","IF","a comparison")", "", "a comparison"},
         }) {
        InstructionConfiguration language;
        ASSERT_EQ(ParseInstructionConfig(row.record, language), "");
        const StatementText text = TextOf(language.commands.Entries().front());
        EXPECT_EQ(text.form, row.form) << row.record;
        EXPECT_EQ(text.meaning, row.meaning) << row.record;
    }
}

TEST(Compilations, LiveSideBySide) {
    Program one("DEFINE BYTE Small = 1\nBEGIN PROGRAM\nDISPLAY Small\nEND PROGRAM\n");
    Program two("DEFINE WORD Small = 1\nBEGIN PROGRAM\nDISPLAY Small\nEND PROGRAM\n");
    Program three("DEFINE BYTE Small = 1\nBEGIN PROGRAM\nDISPLAY Small\nEND PROGRAM\n");
    EXPECT_TRUE(one.Compile());
    EXPECT_FALSE(two.Compile());
    EXPECT_TRUE(three.Compile());
    EXPECT_THAT(one.Messages(), ElementsAre());
    EXPECT_THAT(two.Messages(), ElementsAre("E24 main.txt:3"));
    EXPECT_EQ(one.object.text, three.object.text);
    EXPECT_GT(one.progress.calls, 4 * 2);
}

}  // namespace
}  // namespace zentro
