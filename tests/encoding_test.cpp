#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "compiler/object_file.h"
#include "model/instruction.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using test::Split;
using testing::Contains;

/// A row of the table of instructions that was typed by hand.
struct ByHand {
    std::string number;
    std::string arguments;  ///< a letter for each
    std::string name;
};

std::vector<ByHand> InstructionsByHand() {
    std::vector<ByHand> rows;
    for (const std::string& line : Split(test::ReadFile("data/instructions.txt"), '\n')) {
        if (line.starts_with('#')) continue;
        const std::size_t first = line.find(' ');
        const std::size_t second = line.find(' ', first + 1);
        rows.push_back({line.substr(0, first), line.substr(first + 1, second - first - 1),
                        line.substr(second + 1)});
    }
    return rows;
}

TEST(Encoding, TheInstructionTableIsTheOneTypedByHand) {
    const std::vector<ByHand> rows = InstructionsByHand();
    ASSERT_EQ(rows.size(), InstructionTable().size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Instruction& instruction = InstructionTable()[i];
        EXPECT_EQ(rows[i].number, std::to_string(static_cast<int>(instruction.opcode)));
        EXPECT_EQ(rows[i].name, instruction.name);
        if (rows[i].arguments == "x") {
            EXPECT_NE(instruction.support, InstructionSupport::Available) << rows[i].name;
            continue;
        }
        std::string arguments;
        for (std::size_t slot = 0; slot < instruction.ArgumentCount(); ++slot) {
            const ArgumentType type = instruction.Argument(slot);
            arguments += type == ArgumentType::Byte ? 'B' : 'A';
        }
        EXPECT_EQ(rows[i].arguments, arguments.empty() ? "-" : arguments) << rows[i].name;
    }
}

std::string InTwoBytes(int number) {
    return std::to_string(number / 256) + "," + std::to_string(number % 256);
}

/// The byte that the listing's text for an argument stands for.
std::string ByteOf(std::string shown) {
    if (shown.starts_with("B_")) shown.erase(0, 2);
    if (shown == "ON") return "1";
    if (shown == "FALSE") return "0";
    const bool isNumber = shown.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? shown : std::to_string(shown.front());
}

/// Works out the object code of a program from its listing and the table typed by hand.
std::string ObjectCodeByHand(const std::vector<std::string>& listing) {
    std::map<std::string, int> addresses;
    for (const std::string& line : listing) {
        const std::string label = line.substr(12, line.find(": ", 12) - 12);
        addresses[label] = std::stoi(line.substr(7));
    }
    std::map<std::string, ByHand> byName;
    for (const ByHand& row : InstructionsByHand())
        byName[row.name.substr(0, 28)] = row;
    std::string text;
    for (const std::string& line : listing) {
        const std::size_t tabs = line.find("\t\t\t");
        if (tabs == std::string::npos) {
            text += line.substr(33, line.find(' ', 33) - 33) + "\r\n";
            continue;
        }
        const std::string column = line.substr(33, 29);
        const ByHand& row = byName.at(column.substr(0, column.find_last_not_of(' ') + 1));
        text += row.number;
        std::size_t start = 62;
        for (const char kind : row.arguments) {
            if (kind == '-') break;
            const std::size_t end = std::min(line.find(", ", start), tabs);
            const std::string shown = line.substr(start, end - start);
            text += "," + (kind == 'B' ? ByteOf(shown) : InTwoBytes(addresses.at(shown)));
            start = end + 2;
        }
        text += "\r\n";
    }
    return text;
}

TEST(Encoding, EveryStatementGivesTheBytesOfItsListing) {
    std::string everything =
        "DEFINE BYTE Small = 0\nDEFINE WORD Wide = 0\nDEFINE FLAG Lost = TRUE\n"
        "DEFINE POINTER Reader\nDEFINE TABLE Tune = 1\nEND TABLE\n"
        "DEFINE EVENT Bumped()\nEND EVENT\nBEGIN PROGRAM\n";
    for (const std::string& line : Split(test::ReadFile("data/every_statement.txt"), '\n')) {
        everything += line + "\n";
    }
    Program program(everything + "END PROGRAM\n");
    ASSERT_TRUE(program.Compile()) << program.output.log;
    const std::string byHand = ObjectCodeByHand(program.listing.lines);
    EXPECT_EQ(Split(program.object.text, '\n'), Split(byHand, '\n'));
}

struct AddressRow {
    int address;
    const char* bytes;
};

TEST(Encoding, AddressesAreTwoBytesHighByteFirst) {
    // A table before a variable moves it to the address that we want.
    // NOP, two CLEAR WORD, INCREMENT BYTE and END take 11 bytes, the scratch variables 4.
    constexpr int kBefore = 15;
    for (const AddressRow& row : {AddressRow{17, "0,17"},
                                  {255, "0,255"},
                                  {256, "1,0"},
                                  {1000, "3,232"},
                                  {16000, "62,128"}}) {
        Program program("DEFINE TABLE Space\nRESERVE " + std::to_string(row.address - kBefore) +
                        "\nEND TABLE\nDEFINE BYTE Small\nBEGIN PROGRAM\nINCREMENT Small\n"
                        "END PROGRAM\n");
        ASSERT_TRUE(program.Compile()) << program.output.log;
        EXPECT_THAT(Split(program.object.text, '\n'),
                    Contains("56," + std::string(row.bytes) + "\r"));
    }
}

TEST(Encoding, AProgramBeyondTheMemoryIsReportedOnceAndStillWritten) {
    // As above; Small is the last byte, so the program's size is its address and one.
    const auto compiled = [](int address) {
        auto program = std::make_unique<Program>(
            "DEFINE TABLE Space\nRESERVE 20000\nRESERVE " + std::to_string(address - 20015) +
            "\nEND TABLE\nDEFINE BYTE Small\nBEGIN PROGRAM\nINCREMENT Small\nEND PROGRAM\n");
        program->Compile();
        return program;
    };
    const auto fits = compiled(32767);
    EXPECT_THAT(fits->Messages(), testing::ElementsAre("E500 main.txt:5"));
    EXPECT_THAT(Split(fits->object.text, '\n'), Contains("56,127,255\r"));
    const auto tooLarge = compiled(32768);
    EXPECT_THAT(tooLarge->Messages(), testing::ElementsAre("E500 main.txt:5", "E74"));
    EXPECT_THAT(tooLarge->output.log, testing::HasSubstr("32769"));
    EXPECT_THAT(Split(tooLarge->object.text, '\n'), Contains("56,0,0\r"));
}

TEST(Encoding, TheCautionComesBeyond21000) {
    // The last object line is the table's last byte.
    for (const auto& [lastAddress, cautions] : {std::pair{21000, 0U}, {21001, 1U}}) {
        Program program("BEGIN PROGRAM\nEND PROGRAM\nDEFINE TABLE Space\nRESERVE 20000\nRESERVE " +
                        std::to_string(lastAddress + 1 - 20000 - 12) + "\nEND TABLE\n");
        ASSERT_TRUE(program.Compile());
        EXPECT_EQ(program.prompts.shown.size(), cautions);
    }
}

TEST(ObjectFile, LinesOf256CharactersAreCutAtTheirCommas) {
    const std::string piece(84, '1');
    const std::string last(82, '2');
    const std::string uncut = piece + "," + piece + "," + last + "000";
    ASSERT_EQ(uncut.size(), 255U);
    std::pmr::string text;
    WriteObjectFileLine(uncut, text);
    EXPECT_EQ(std::string_view(text), uncut + "\r\n");
    text.clear();
    WriteObjectFileLine(", " + piece + " ," + piece + "," + last + ",", text);
    EXPECT_EQ(std::string_view(text), "\r\n" + piece + "\r\n" + piece + "\r\n" + last + "\r\n\r\n");
}

}  // namespace
}  // namespace zentro
