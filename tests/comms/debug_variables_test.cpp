// What the debug windows show: values, variables, and the source of an address.
#include "comms/debug_variables.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "comms/debug_address.h"
#include "compiler/source_of_address.h"
#include "model/address.h"
#include "tests/comms/examples_support.h"

namespace zentro {
namespace {

using test::CompileExample;
using test::ExampleNames;
using test::Program;
using testing::ElementsAre;

TEST(DebugAddressOn, IsTheLastInstructionShownAndNoMemory) {
    const struct {
        std::string screen;
        std::optional<std::uint16_t> address;
    } rows[] = {
        {"", {}},
        {"Kinetron\r\n", {}},
        {"[0000] INCREMENT BYTE [0010]\r\n*Debug Mode*", 0},
        {"[0000] NOP\r\n[00a1] END\r\nM0010\r\n[0010] 2A 00 FF\r\n->", 0xA1},
        {"[0000] ADD BYTE [0001]", 0},  // "AD" is a pair, "ADD" is not
        {"x [0000] NOP\r\n[00G0] NOP\r\n[0000]", {}},
        {"[0000]: NOP\r\n[0000x NOP", {}},
        {"[00A0] OR", 0xA0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(DebugAddressOn(row.screen), row.address) << row.screen;
    }
}

TEST(FormatDebugValue, ShowsTheDataBehindTheFirstBracketByType) {
    const std::string prompt = "\r\n*Debug Mode*  Go,eXit ->  ] 77 \x1b[D";
    const struct {
        DataType type;
        std::string reply;
        std::string value;
    } rows[] = {
        {DataType::Byte, "M0010\r\n[0010] 2A 01 00 00 00 00 00 00" + prompt, "42\t(2Ah)"},
        {DataType::Byte, "[0010] 05 01", "5\t(05h)"},
        {DataType::Flag, "[0010] FF 01 00 00 00 00 00 00" + prompt, "255\t(FFh)"},
        {DataType::Flag, "[0010] 00 01 00 00 00 00 00 00" + prompt, "0\t(00h)"},
        {DataType::Word, "[0010] 01 02 FF 00 00 00 00 00" + prompt, "258\t(0102h)"},
        {DataType::Word, "[0010] FF FF 00 00 00 00 00 00" + prompt, "65535\t(FFFFh)"},
        {DataType::Pointer, "[0010]\t00\t1a\t00 00 00 00 00 00" + prompt, "26\t(001Ah)"},
        // As read, but trimmed and no more than eight.
        {DataType::Table, "M0010\r\n[0010]  01 02\t03 ff 05 06 07 08 " + prompt,
         "01 02\t03 ff 05 06 07 08(1st 8 bytes only)"},
        {DataType::Table, "[0010] 01 02 03 04 05 06 07 08 09 0A" + prompt,
         "01 02 03 04 05 06 07 08(1st 8 bytes only)"},
        // What cannot be read, or is not there, counts as 0.
        {DataType::Byte, "[0010] XY 01" + prompt, "0\t(00h)"},
        {DataType::Byte, "[0010] 123 01" + prompt, "0\t(00h)"},
        {DataType::Byte, "[0010] -1 01" + prompt, "0\t(00h)"},
        {DataType::Word, "[0010] 0G 07" + prompt, "7\t(0007h)"},
        {DataType::Word, "[0010] 07" + prompt, "1792\t(0700h)"},
        {DataType::Byte, "[0010]", "0\t(00h)"},
        {DataType::Table, "[0010]", "(1st 8 bytes only)"},
        {DataType::Byte, "M0010\r\n?\r\n-> \x1b[D", ""},
        {DataType::Word, "", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FormatDebugValue(row.reply, row.type), row.value) << row.reply;
}

DebugVariable Named(std::string name, std::string parent, std::string resolvedName) {
    DebugVariable variable;
    variable.name = std::move(name);
    variable.parentName = std::move(parent);
    variable.resolvedName = std::move(resolvedName);
    variable.debugValue = "5\t(05h)";
    return variable;
}

TEST(VariableLines, PutsNamesAtTheRightAndRoutinesAtTheLeft) {
    // The longest resolved name has 12 characters: names end at column 15.
    EXPECT_THAT(
        VariableLines({Named("Count", "PROGRAM", "Count"), Named("Distance", "Far", "Far_Distance"),
                       Named("X", "GoAhead", "GoAhead_X")}),
        ElementsAre("          Count\t5\t(05h)",  //
                    "Far()  Distance\t5\t(05h)",  //
                    "GoAhead()     X\t5\t(05h)"));
    // Where a routine's name has no room it is cut; a name too long loses its beginning.
    EXPECT_THAT(VariableLines({Named("Abcdef", "VeryLongRoutine", "Short"),
                               Named("NineteenCharacters_", "Program", "x")}),
                ElementsAre("VeAbcdef\t5\t(05h)", "racters_\t5\t(05h)"));
    EXPECT_THAT(VariableLines({}), ElementsAre());
}

TEST(VariablesOf, NamesEachVariableWithItsPlace) {
    Program program(
        "DEFINE TABLE Notes = 1,2,3,4,5\n6,7,8,9,10\nEND TABLE\n"
        "DEFINE WORD Far\n"
        "DEFINE ROUTINE Drive()\nDEFINE FLAG Fast\nFast = TRUE\nEND ROUTINE\n"
        "BEGIN PROGRAM\nFar = 2\nCALL Drive()\nEND PROGRAM\n");
    ASSERT_TRUE(program.Compile()) << program.output.log;
    const std::vector<DebugVariable> variables = VariablesOf(program.compilation);
    std::vector<std::string> described;
    for (const DebugVariable& variable : variables) {
        described.push_back(variable.parentName + " " + variable.name + " " +
                            std::to_string(static_cast<int>(variable.type)) + " " +
                            std::to_string(variable.size));
        // The listing shows the label behind the address.
        const std::string label = variable.resolvedName.substr(0, 19) + ":";
        const auto line =
            ListingLineOfAddress(program.compilation, static_cast<std::uint16_t>(variable.address));
        ASSERT_TRUE(line) << label;
        EXPECT_EQ(program.listing.lines.at(*line - 1).substr(12, label.size()), label);
    }
    EXPECT_THAT(described, ElementsAre("Program %SysTemp 2 2", "Program %SysTemp2 2 2",
                                       "Program Notes 5 10", "Program Far 2 2", "Drive Fast 3 1"));
}

TEST(VariablesOf, GivesNoVariablesOfAProgramWithoutCode) {
    Program program("DEFINE BYTE Count\nBEGIN PROGRAM\nCount = \nEND PROGRAM\n");
    ASSERT_FALSE(program.Compile());
    EXPECT_TRUE(VariablesOf(program.compilation).empty());
}

/// A0 of "[00A0]/0160".
std::uint16_t ShownAddress(const std::string& listed) {
    return ParseAddress(listed.substr(1, kAddressDigits)).value();
}

TEST(SourceOfAddress, FindsTheLineOfEveryInstructionOfTheExamples) {
    std::size_t instructions = 0;
    for (const std::string& name : ExampleNames()) {
        const auto program = CompileExample(name);
        const Compilation& compilation = program->compilation;
        const std::vector<std::string>& listed = program->listing.lines;
        std::vector<std::int32_t> lineNumbers;  // of every line of the listing
        for (const ObjectLine& line : compilation.objectLines)
            lineNumbers.insert(lineNumbers.end(), line.LineCount(), line.sourceLineNo);
        ASSERT_EQ(listed.size(), lineNumbers.size());
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const std::uint16_t address = ShownAddress(listed[i]);
            EXPECT_EQ(ListingLineOfAddress(compilation, address), i + 1) << listed[i];
            const auto place = SourceOfAddress(compilation, address);
            const std::int32_t lineNumber = lineNumbers[i];
            if (lineNumber == 0) {
                EXPECT_FALSE(place) << listed[i];
                continue;
            }
            ++instructions;
            ASSERT_TRUE(place) << listed[i];
            const SourceLine& line = compilation.GetSourceLine(lineNumber);
            EXPECT_EQ(place->fileName, line.file->name);
            EXPECT_EQ(place->sourceLineNo, line.fileLineNo) << listed[i];
            EXPECT_EQ(place->address, address);
            // Where the place leads in the file stands the text of that line.
            const auto texts =
                test::Split(program->files.texts.at(place->pathName + "/" + place->fileName), '\n');
            EXPECT_EQ(test::Split(line.text, '\r').front(),
                      test::Split(texts.at(static_cast<std::size_t>(place->sourceLineNo) - 1), '\r')
                          .front());
        }
    }
    EXPECT_GT(instructions, 500U);
}

TEST(SourceOfAddress, FindsNothingBetweenInstructionsAndInNonsense) {
    Program program("DEFINE BYTE Count\nBEGIN PROGRAM\nCount = 7\nEND PROGRAM\n");
    ASSERT_TRUE(program.Compile());
    // NOP, two CLEAR WORD of three bytes each, then MOVE BYTE of five.
    ASSERT_TRUE(SourceOfAddress(program.compilation, 7));
    EXPECT_EQ(SourceOfAddress(program.compilation, 7)->sourceLineNo, 3);
    for (const auto wrong : std::to_array<std::uint16_t>({8, 0x7FFF, 0xFFFF})) {
        EXPECT_FALSE(SourceOfAddress(program.compilation, wrong)) << wrong;
        EXPECT_FALSE(ListingLineOfAddress(program.compilation, wrong)) << wrong;
    }
}

TEST(Address, IsFourHexadecimalDigitsWhereverItIsShownOrRead) {
    EXPECT_EQ(FormatAddress(0xA0), "[00A0]");
    EXPECT_EQ(AddressDigits(0x1ABCD), "ABCD");
    EXPECT_EQ(ParseAddress("00aF"), 0xAF);
    EXPECT_EQ(ParseAddress("FFFF"), 0xFFFF);
    for (const char* wrong : {"", "1", "00001", "000G", "-007", "+007", "0x07", " 007"})
        EXPECT_FALSE(ParseAddress(wrong)) << wrong;
}

}  // namespace
}  // namespace zentro
