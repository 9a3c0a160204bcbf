#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <memory_resource>
#include <random>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using test::Program;
using test::Split;
using testing::ElementsAre;
using testing::IsEmpty;

/// The examples by their paths below the folder, with the files that they include.
const std::map<std::string, std::string>& Examples() {
    static const auto* const examples = [] {
        auto* texts = new std::map<std::string, std::string>;
        const fs::path folder = ZENTRO_EXAMPLES_FOLDER;
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".txt") continue;
            (*texts)[fs::relative(entry.path(), folder)] = test::ReadFile(entry.path());
        }
        return texts;
    }();
    return *examples;
}

std::unique_ptr<Program> Compiled(const std::string& text) {
    auto program = std::make_unique<Program>(text);
    for (const auto& [name, included] : Examples()) {
        if (name.find('/') != std::string::npos) program->WithFile(name, included);
    }
    program->Compile();
    return program;
}

/// What holds for every text: an answer, and when there are no errors, as many bytes in the object
/// file as the program has addresses.
void ExpectSound(const Program& program, const std::string& name) {
    EXPECT_THAT(program.prompts.shown, testing::SizeIs(testing::Le(1))) << name;
    EXPECT_TRUE(program.output.pieces.back().first.starts_with("*** Compile Completed")) << name;
    if (program.compilation.diagnostics.ErrorCount() > 0) return;
    const std::string& object = program.object.text;
    const auto bytes = std::count(object.begin(), object.end(), ',') +
                       std::count(object.begin(), object.end(), '\n');
    const ObjectLine& last = program.compilation.objectLines.back();
    EXPECT_EQ(bytes, last.address + static_cast<std::int64_t>(last.Size())) << name;
}

TEST(Examples, CompileWithoutMessages) {
    int programs = 0;
    for (const auto& [name, text] : Examples()) {
        if (name.find('/') != std::string::npos) continue;
        ++programs;
        const auto program = Compiled(text);
        EXPECT_THAT(program->Messages(), IsEmpty()) << name;
        ExpectSound(*program, name);
    }
    EXPECT_GE(programs, 9);
}

// A program is half-typed most of its life. Short examples are cut at every byte, long ones at
// every line end and every eighth byte, other ones from line to line.
TEST(Examples, CanBeCutAnywhere) {
    constexpr std::size_t kShort = 2500;
    for (const auto& [name, text] : Examples()) {
        std::size_t line = 0;
        std::size_t lineStart = 0;
        for (std::size_t end = 0; end <= text.size(); ++end) {
            const bool isLineEnd = end > 0 && text[end - 1] == '\n';
            if (isLineEnd) {
                ++line;
                lineStart = end;
            }
            if (text.size() > kShort && !isLineEnd && (end - lineStart + line) % 8 != 0) continue;
            ExpectSound(*Compiled(text.substr(0, end)), name + " cut at " + std::to_string(end));
        }
    }
}

// A block loses its first or last line as soon as somebody edits it.
TEST(Examples, CanLoseAnyLine) {
    for (const auto& [name, text] : Examples()) {
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size() - 1) + 1;
            ExpectSound(*Compiled(text.substr(0, start) + text.substr(end)),
                        name + " without the line at " + std::to_string(start));
            start = end;
        }
    }
}

TEST(LineEnds, MakeNoDifference) {
    const std::string& text = Examples().at("explorer.txt");
    const std::string object = Compiled(text)->object.text;
    ASSERT_FALSE(object.empty());
    const auto replaced = [&](const std::string& lineEnd) {
        std::string other;
        for (const std::string& line : Split(text, '\n'))
            other += line + lineEnd;
        return other;
    };
    for (const std::string& other : {replaced("\r\n"), replaced("\r"), "\xEF\xBB\xBF" + text,
                                     text.substr(0, text.find_last_not_of('\n') + 1)}) {
        const auto program = Compiled(other);
        EXPECT_EQ(program->object.text, object);
        EXPECT_THAT(program->Messages(), IsEmpty());
    }
    Program program("BEGIN PROGRAM\r\n\r\nJUMP\n\rJUMP\rEND PROGRAM");
    program.Check();
    EXPECT_THAT(program.Messages(), ElementsAre("E15 main.txt:3", "E15 main.txt:5"));
}

TEST(HugeInput, LinesOfTenMegabytesGetAMessage) {
    for (const std::string unit :
         {"0", "(", ")", ",", "\"", "+", "A", "A ", " ", ";", "1,", "AND ", "\xC3\xA9", "A("}) {
        for (const std::string start : {"DISPLAY ", "CALL Abc", "Small = ", "IF ", ""}) {
            const std::size_t count = start.empty() ? 10'000'000 : 500'000;
            std::string line = start;
            while (line.size() < count)
                line += unit;
            Program program("DEFINE BYTE Small = 0\nBEGIN PROGRAM\n" + line + "\nEND PROGRAM\n");
            program.Compile();
            ExpectSound(program, start + unit);
            for (const PostedMessage& message : program.output.messages) {
                EXPECT_LT(message.text.size(), 1000U) << start << unit;
            }
        }
    }
}

TEST(HugeInput, AMillionLines) {
    std::string text = "DEFINE BYTE Small = 0\nBEGIN PROGRAM\n";
    for (int i = 0; i < 1'000'000; ++i)
        text += "\n";
    text += "JUMP\n";
    for (int i = 0; i < 50'000; ++i)
        text += "INCREMENT Small\n";
    Program program(text + "END PROGRAM\n");
    EXPECT_FALSE(program.Check());
    EXPECT_THAT(program.Messages(), ElementsAre("E15 main.txt:1000003"));
}

TEST(HugeInput, TenThousandNestedBlocks) {
    struct Block {
        const char* first;
        const char* last;
        const char* notEnded;
    };
    for (const Block& block : {Block{"IF Small = 1 THEN\n", "END IF\n", "E8"},
                               {"WHILE Small = 1\n", "END WHILE\n", "E9"},
                               {"REPEAT\n", "UNTIL Small = 1\n", "E10"},
                               {"SELECT Small\nCASE 1\n", "END SELECT\n", "E11"},
                               {"LOOP\n", "END LOOP\n", "E51"}}) {
        std::string first = "DEFINE BYTE Small = 0\nBEGIN PROGRAM\n";
        std::string last;
        for (int i = 0; i < 10'000; ++i) {
            first += block.first;
            last += block.last;
        }
        Program closed(first + last + "END PROGRAM\n");
        closed.Compile();
        const auto messages = closed.Messages();
        // Only the size of the deepest nests is a fault.
        EXPECT_TRUE(messages.empty() || messages == std::vector<std::string>{"E74"}) << block.first;
        Program open(first);
        EXPECT_FALSE(open.Check());
        ASSERT_EQ(open.Messages().size(), 1U) << block.first;
        EXPECT_TRUE(open.Messages()[0].starts_with(block.notEnded));
    }
}

TEST(HugeInput, ACaseOf65536ValuesComparesAll) {
    constexpr std::size_t kValues = 65536;
    std::string text = "DEFINE BYTE Small = 0\nBEGIN PROGRAM\nSELECT Small\nCASE 1";
    for (std::size_t i = 1; i < kValues; ++i)
        text += ",1";
    Program program(text + "\nEND SELECT\nEND PROGRAM\n");
    program.Compile();
    EXPECT_THAT(program.Messages(), ElementsAre("E74"));
    const auto compares =
        std::ranges::count_if(program.compilation.objectLines, [](const ObjectLine& line) {
            return line.opcode == Opcode::IfByteEqual || line.opcode == Opcode::IfByteNotEqual;
        });
    EXPECT_EQ(static_cast<std::size_t>(compares), kValues);
}

/// Counts what a compilation keeps.
class CountedMemory : public std::pmr::memory_resource {
  public:
    CountedMemory() : before_(std::pmr::set_default_resource(this)) {}
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;
    ~CountedMemory() override { std::pmr::set_default_resource(before_); }
    std::size_t Bytes() const { return bytes_; }

  private:
    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        bytes_ += bytes;
        return before_->allocate(bytes, alignment);
    }
    void do_deallocate(void* place, std::size_t bytes, std::size_t alignment) override {
        before_->deallocate(place, bytes, alignment);
    }
    bool do_is_equal(const memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::pmr::memory_resource* before_;
    std::size_t bytes_ = 0;
};

std::string Repeated(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// One short line can ask for more than the board has, and one long name can stand in every label.
TEST(HugeInput, MemoryFollowsTheTextAndNotWhatItAsksFor) {
    struct Row {
        std::string text;
        std::size_t tables;
        std::vector<std::string> messages;
    };
    const std::string name(100'000, 'n');
    const std::string end = "END TABLE\nBEGIN PROGRAM\nEND PROGRAM\n";
    std::string routine = "DEFINE ROUTINE " + name + "()\n";
    for (int i = 0; i < 500; ++i)
        routine += "DEFINE BYTE Abc" + std::to_string(i) + " = 0\n";
    routine += "END ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n";
    for (const Row& row : {
             Row{"DEFINE TABLE Tune\n" + Repeated(500, "RESERVE 20000\n") + end, 1, {"E74"}},
             {"DEFINE TABLE " + name + "\nRESERVE 20000\n" + end, 1, {}},
             {"DEFINE TABLE " + name + "\n" + Repeated(100, "1,2,3,4,5,6,7,8,9\n") + end, 1, {}},
             {routine, 0, {}},
         }) {
        const CountedMemory memory;
        Program program(row.text);
        program.Compile();
        EXPECT_EQ(program.Messages(), row.messages);
        const auto lines = static_cast<std::size_t>(std::ranges::count(row.text, '\n'));
        const std::size_t most = 1024 * lines + 65536 * row.tables + 4 * row.text.size();
        EXPECT_LT(memory.Bytes(), most) << row.text.substr(0, 60);
        EXPECT_LT(program.object.text.size(), std::size_t{1} << 20);
        EXPECT_LT(program.listing.lines.size(), 140'000U);
    }
}

TEST(Garbage, IsAnsweredLikeAnyProgram) {
    std::mt19937 random(1);  // NOLINT(bugprone-random-generator-seed): the same bytes each time
    const std::string& example = Examples().at("traffic_light.txt");
    for (int round = 0; round < 300; ++round) {
        std::string bytes(random() % 600, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random() % (round % 2 == 0 ? 256 : 128));
        ExpectSound(*Compiled(bytes), "bytes " + std::to_string(round));
        std::string damaged = example;
        for (int change = 0; change < 5; ++change) {
            damaged[random() % damaged.size()] = static_cast<char>(random() % 256);
        }
        ExpectSound(*Compiled(damaged), "damage " + std::to_string(round));
    }
    Program nul(std::string("BEGIN PROGRAM\nSTOP\0MOTORS\nDISPLAY \"\0\"\nEND PROGRAM\0\0\n", 49));
    EXPECT_TRUE(nul.Compile()) << nul.output.log;
    EXPECT_THAT(nul.Messages(), IsEmpty());
}

TEST(Includes, MayBe255FilesDeep) {
    Program program("INCLUDE \"2.txt\"\nBEGIN PROGRAM\nEND PROGRAM\n");
    for (int depth = 2; depth <= 256; ++depth) {
        program.WithFile(std::to_string(depth) + ".txt",
                         "INCLUDE \"" + std::to_string(depth + 1) + ".txt\"\nSTOP\n");
    }
    program.Check();
    EXPECT_THAT(program.Messages(), ElementsAre("E61 255.txt:1"));
    // 254 included files of two lines each, and the main file.
    EXPECT_EQ(program.compilation.sourceLines.size(), 254U * 2 + 3);
    EXPECT_THAT(program.TextOf("E61"), testing::HasSubstr("256.txt"));
}

TEST(Includes, ThatAllIncludeEachOtherComeToAnEnd) {
    constexpr int kFiles = 12;  // there are more than a hundred million ways through them
    std::string all;
    for (int i = 0; i < kFiles; ++i)
        all += "INCLUDE \"" + std::to_string(i) + ".txt\"\n";
    Program circles(all);
    Program doubling("INCLUDE \"0.txt\"\n");
    for (int i = 0; i < 40; ++i) {
        const std::string next = "INCLUDE \"" + std::to_string(i + 1) + ".txt\"\n";
        doubling.WithFile(std::to_string(i) + ".txt", next + next);
        circles.WithFile(std::to_string(i) + ".txt", all);
    }
    doubling.WithFile("40.txt", "");
    for (Program* program : {&circles, &doubling}) {
        EXPECT_FALSE(program->Check());
        EXPECT_THAT(program->Messages(), testing::Each(testing::StartsWith("E61 ")));
        EXPECT_LE(program->files.asked.size(), 10000U);
    }
}

TEST(Includes, AMissingFileIsAskedForUntilThereIsOne) {
    Program program("INCLUDE \"lost.txt\"\nBEGIN PROGRAM\nEND PROGRAM\n");
    program.files.texts["/picked/found.txt"] = "DEFINE BYTE AB = 1\n";
    program.prompts.answers = {"/picked/wrong.txt", "/picked/found.txt"};
    program.Check();
    const std::string question = "Cannot Find lost.txt|src|lost.txt";
    EXPECT_THAT(program.prompts.questions, ElementsAre(question, question));
    EXPECT_THAT(program.files.asked, ElementsAre("src/main.txt", "src/lost.txt",
                                                 "/picked/wrong.txt", "/picked/found.txt"));
    EXPECT_THAT(program.Messages(), ElementsAre("E62 lost.txt:1"));
}

TEST(Includes, AFileThatCannotBeReadIsNotAskedFor) {
    Program program("INCLUDE \"/far/away.txt\" ; a name that says where the file is\n");
    program.files.unreadable.insert("/far/away.txt");
    program.Check();
    EXPECT_THAT(program.prompts.questions, IsEmpty());
    EXPECT_THAT(program.files.asked, ElementsAre("src/main.txt", "/far/away.txt"));
    EXPECT_THAT(program.Messages(), ElementsAre("E60 main.txt:1"));
    EXPECT_THAT(program.TextOf("E60"), testing::EndsWith(" Permission denied."));
}

TEST(Includes, AFileIsNamedAsItIsWritten) {
    Program missing("INCLUDE \"prüfung.txt\"\n");
    missing.Check();
    EXPECT_THAT(missing.TextOf("E60"), testing::StartsWith("prüfung.txt - "));
    Program circle("");
    circle.files.texts.clear();
    circle.WithFile("main.txt", "INCLUDE \"prüfung.txt\"\n");
    circle.WithFile("prüfung.txt", "INCLUDE \"prüfung.txt\"\n");
    circle.Check();
    EXPECT_THAT(circle.TextOf("E61"), testing::StartsWith("prüfung.txt - "));
}

TEST(MainFile, MissingIsE60WithoutALine) {
    Program program("");
    program.files.texts.clear();
    EXPECT_FALSE(program.Compile());
    EXPECT_THAT(program.Messages(), ElementsAre("E60"));
    EXPECT_EQ(program.prompts.questions.size(), 1U);
}

TEST(ObjectFile, ThatCannotBeWrittenEndsTheRun) {
    Program program(
        "BEGIN PROGRAM\nEND PROGRAM\nDEFINE TABLE Space\nRESERVE 20000\nRESERVE 2000\nEND TABLE\n");
    program.object.problem = "No space left on device";
    EXPECT_FALSE(program.Compile());
    EXPECT_THAT(program.Messages(), ElementsAre("E3003"));
    EXPECT_THAT(program.prompts.shown, IsEmpty());
}

}  // namespace
}  // namespace zentro
