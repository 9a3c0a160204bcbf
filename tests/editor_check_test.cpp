#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using testing::ElementsAre;
using testing::ElementsAreArray;

struct Case {
    const char* what;
    const char* text;
    std::vector<std::string> messages;  ///< "E24 3": code and line
};

std::vector<std::string> MessagesOf(const std::string& text) {
    Program program(text);
    program.CheckForEditor();
    std::vector<std::string> messages = program.Messages();
    for (std::string& message : messages) {
        const std::size_t name = message.find("main.txt:");
        if (name != std::string::npos) message.erase(name, std::string("main.txt:").size());
    }
    return messages;
}

const Case kMistakesOfTheirOwn[]{
    {"in a declaration and in statements",
     "DEFINE BYTE Speed = 300\n"
     "DEFINE BYTE Count = 0\n"
     "BEGIN PROGRAM\n"
     "    SET MOTOR 9, \"F\", Speed\n"
     "    Count = Cuont + 1\n"
     "    WAIT\n"
     "END PROGRAM\n",
     {"E24 1", "E68 4", "E64 5", "E31 6"}},
    {"in a constant and in lines that do not use it",
     "DEFINE CONSTANT Cruise = fast\n"
     "BEGIN PROGRAM\n"
     "    SET MOTOR 1, \"F\", Cruise\n"
     "    WAIT Later\n"
     "END PROGRAM\n",
     {"E64 1", "E64 4"}},
    {"in a line that uses a name with a mistake, and has one of its own",
     "DEFINE BITE Speed = 60\n"
     "BEGIN PROGRAM\n"
     "    SET MOTOR 9, \"F\", Speed\n"
     "END PROGRAM\n",
     {"E22 1", "E68 3"}},
    {"a name that is known all the same",
     "DEFINE BYTE Speed\n"
     "DEFINE BYTE Other = TRU\n"
     "BEGIN PROGRAM\n"
     "    Other = 300\n"
     "END PROGRAM\n",
     {"E500 1", "E64 2", "E24 2", "E53 4"}},
    {"local names do not count elsewhere",
     "DEFINE WORD Count = 0\n"
     "DEFINE ROUTINE Work()\n"
     "    DEFINE BYTE Xy = 1\n"
     "    Xy = 5\n"
     "END ROUTINE\n"
     "BEGIN PROGRAM\n"
     "    Xy = 5\n"
     "    CALL Work()\n"
     "END PROGRAM\n",
     {"E62 3", "E64 7"}},
    {"a table that is not ended",
     "DEFINE BYTE Speed = Fast\n"
     "DEFINE TABLE Tune = 1, 300\n"
     "    1, 2\n"
     "BEGIN PROGRAM\n"
     "    PLAY TUNE Tune\n"
     "END PROGRAM\n",
     {"E64 1", "E24 1", "E12 6", "E53 2"}},
    {"a table that the file's end ends", "DEFINE TABLE Tune\n    1, 2\n", {"E12 1"}},
    {"a routine that is not ended",
     "DEFINE ROUTINE One()\n"
     "    WAIT Later\n"
     "DEFINE ROUTINE Two()\n"
     "END ROUTINE\n",
     {"E4 3"}},
    {"a routine that the file's end ends",
     "DEFINE BYTE Count = 300\n"
     "DEFINE ROUTINE One()\n"
     "    WAIT Later\n",
     {"E24 1", "E64 3", "E13 2", "E26"}},
};

TEST(EditorCheck, GoesOnBehindMistakesInDeclarations) {
    for (const Case& c : kMistakesOfTheirOwn)
        EXPECT_THAT(MessagesOf(c.text), ElementsAreArray(c.messages)) << c.what;
}

const Case kConsequences[]{
    {"a name that is too short",
     "DEFINE BYTE Xy = 1\n"
     "BEGIN PROGRAM\n"
     "    Xy = Xy + 1\n"
     "    IF Xy > 5 THEN\n"
     "    END IF\n"
     "    SELECT Xy\n"
     "        CASE 1\n"
     "    END SELECT\n"
     "    WAIT Xy\n"
     "    SET EVENT 3, Xy\n"
     "END PROGRAM\n",
     {"E62 1"}},
    {"letter case", "DEFINE BYTE Xy = 1\nBEGIN PROGRAM\n    WAIT XY\nEND PROGRAM\n", {"E62 1"}},
    {"a name declared twice",
     "DEFINE BYTE Count = 1\n"
     "DEFINE TABLE Count\n"
     "    1\n"
     "END TABLE\n"
     "BEGIN PROGRAM\n"
     "    PLAY TUNE Count\n"
     "END PROGRAM\n",
     {"E25 2"}},
    {"a word of the language as a name",
     "DEFINE BYTE Display = 1\nBEGIN PROGRAM\n    Display = 5\nEND PROGRAM\n",
     {"E70 1"}},
    {"a constant, and what is made of it",
     "DEFINE CONSTANT Base = oops\n"
     "DEFINE BYTE Count = Base\n"
     "DEFINE TABLE Tune\n"
     "    Base\n"
     "    RESERVE Base\n"
     "END TABLE\n"
     "BEGIN PROGRAM\n"
     "    Count = Base\n"
     "END PROGRAM\n",
     {"E64 1"}},
    {"a header with a mistake in its parameters",
     "DEFINE ROUTINE Drive(Left BITE, Right BYTE) RETURNS BYTE\n"
     "    RETURN Left\n"
     "END ROUTINE\n"
     "BEGIN PROGRAM\n"
     "    CALL Drive(1)\n"
     "END PROGRAM\n",
     {"E30 1"}},
    {"the name of a routine",
     "DEFINE ROUTINE Go()\n"
     "    RETURN\n"
     "END ROUTINE\n"
     "BEGIN PROGRAM\n"
     "    CALL Go()\n"
     "END PROGRAM\n",
     {"E62 1"}},
    {"a routine named as a variable of the compiler",
     "DEFINE ROUTINE %SysTemp1()\n    RETURN 5\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n",
     {"E41 1"}},
    {"a mistyped header, with all that belongs to it",
     "DEFINE ROUTIN Drive(Left BYTE)\n"
     "    DEFINE BYTE Half = 0\n"
     "    IF Left > 5 THEN\n"
     "        RETURN\n"
     "    END IF\n"
     "END ROUTINE\n"
     "BEGIN PROGRAM\n"
     "    CALL Drive(5)\n"
     "    WAIT Later\n"
     "END PROGRAM\n",
     {"E22 1", "E64 9"}},
    {"a mistyped table",
     "DEFIN TABLE Tune\n    1, 2\nEND TABLE\nBEGIN PROGRAM\n    PLAY TUNE Tune\nEND PROGRAM\n",
     {"E15 1"}},
    {"a mistyped first word",
     "DEFIN BYTE Speed = 60\nBEGIN PROGRAM\n    SET MOTOR 1, \"F\", Speed\nEND PROGRAM\n",
     {"E64 1", "E16 1"}},
    {"a mistyped end of a block",
     "DEFINE BYTE Count = 1\n"
     "BEGIN PROGRAM\n"
     "    IF Count > 1 THEN\n"
     "    END IFF\n"
     "    WAIT Later\n"
     "END PROGRAM\n",
     {"E22 4", "E64 5"}},
    {"a mistyped end of a routine",
     "DEFINE ROUTINE One()\nEND ROUTIN\nDEFINE ROUTINE Two()\nEND ROUTINE\n",
     {"E22 2"}},
    {"a mistyped end of the program", "BEGIN PROGRAM\nEND PROGRAMM\n", {"E22 2"}},
    {"a missing file, which may declare the names",
     "INCLUDE \"missing.txt\"\n"
     "DEFINE BYTE Speed = Cruise\n"
     "BEGIN PROGRAM\n"
     "    CALL Drive(Speed)\n"
     "    Speed = 300\n"
     "END PROGRAM\n",
     {"E60 1", "E53 5"}},
};

TEST(EditorCheck, HoldsBackWhatFollowsFromAnotherMistake) {
    for (const Case& c : kConsequences)
        EXPECT_THAT(MessagesOf(c.text), ElementsAreArray(c.messages)) << c.what;
}

TEST(EditorCheck, TellsWhatIncludedFilesHold) {
    Program program(
        "INCLUDE \"one.txt\"\nINCLUDE \"good.txt\"\nINCLUDE \"warned.txt\"\n"
        "BEGIN PROGRAM\n    WAIT Later\nEND PROGRAM\n");
    program.WithFile("one.txt", "DEFINE BYTE Half\nINCLUDE \"two.txt\"\nDEFINE BYTE Whole = 300\n");
    program.WithFile("two.txt", "\nDEFINE BYTE Full = 400\n");
    program.WithFile("good.txt", "DEFINE BYTE Good = 1\n");
    program.WithFile("warned.txt", "DEFINE BYTE Warned\n");
    std::vector<std::string> found;
    for (const IncludedMistakes& mistakes : program.CheckForEditor()) {
        const PostedMessage& first = mistakes.first;
        found.push_back(
            mistakes.place.fileName + ":" + std::to_string(mistakes.place.sourceLineNo) + " " +
            mistakes.fileName + " " + std::to_string(mistakes.errors) + " " +
            std::to_string(mistakes.warnings) + " " + MessageCodeText(first.code) + " " +
            first.place.fileName + ":" + std::to_string(first.place.sourceLineNo));
    }
    EXPECT_THAT(found, ElementsAre("main.txt:1 one.txt 2 1 E24 two.txt:2",
                                   "one.txt:2 two.txt 1 0 E24 two.txt:2",
                                   "main.txt:3 warned.txt 0 1 E500 warned.txt:1"));
    EXPECT_EQ(program.compilation.diagnostics.ErrorCount(), 3);
}

/// The programs that the messages of the compiler are tested with.
std::vector<std::string> BrokenPrograms() {
    std::vector<std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_TESTS_FOLDER "/messages")) {
        if (entry.path().extension() == ".txt") texts.push_back(test::ReadFile(entry.path()));
    }
    std::ranges::sort(texts);
    return texts;
}

/// Whether a syntax check gets to the statements.
bool ReadsStatements(const Program& program) {
    return std::ranges::any_of(program.output.messages, [](const PostedMessage& message) {
        return message.code == MessageCode::ParseStarts;
    });
}

// Any beginning of a program is checked as a whole one is, and where the declarations are in order
// the editor marks what a syntax check tells.
TEST(EditorCheck, AgreesWithTheSyntaxCheckWhenTheDeclarationsAreInOrder) {
    int agreeing = 0;
    for (const std::string& text : BrokenPrograms()) {
        int lines = 0;
        for (std::size_t end = text.find('\n'); end != std::string::npos;
             end = text.find('\n', end + 1)) {
            constexpr int kStep = 11;
            if (++lines % kStep != 0) continue;
            const std::string beginning = text.substr(0, end + 1);
            Program checked(beginning);
            checked.Check();
            Program edited(beginning);
            edited.CheckForEditor();
            if (!ReadsStatements(checked)) continue;
            ++agreeing;
            EXPECT_EQ(edited.Messages(), checked.Messages()) << beginning;
        }
    }
    EXPECT_GT(agreeing, 20);
}

// Nothing that a user may have typed so far ends it or lasts long, and the answer is always the
// same.
TEST(EditorCheck, TakesAnyText) {
    std::mt19937 random(7);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (const std::string& text : BrokenPrograms()) {
        for (int i = 0; i < 10; ++i) {
            std::vector<std::string> lines = test::Split(text, '\n');
            for (int change = 0; change < 3; ++change) {
                std::string& line = lines[below(lines.size())];
                if (line.empty()) continue;
                line.erase(below(line.size()), 1 + below(6));
                std::swap(lines[below(lines.size())], lines[below(lines.size())]);
            }
            std::string changed;
            for (const std::string& line : lines)
                changed += line + '\n';
            EXPECT_EQ(MessagesOf(changed), MessagesOf(changed)) << changed;
        }
    }
}

}  // namespace
}  // namespace zentro
