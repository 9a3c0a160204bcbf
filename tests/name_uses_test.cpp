// The places of names in a program: what is renamed, marked and gone to.
#include "compiler/name_uses.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "config/encoding.h"
#include "config/text.h"
#include "tests/support/compile_fixture.h"

namespace zentro::test {
namespace {

const ProgramFiles kFiles{"src", "main.txt", "src", "out", "main.obj"};

/// "Speed of Drive: 2:14 3:5", the declaration in brackets, for every name of the program.
std::vector<std::string> NamesIn(Program& program) {
    std::vector<std::string> texts;
    for (const UsedName& name : FindNameUses(program.compilation, kFiles).names) {
        std::string text(name.name);
        if (name.parent != ParentId::Program)
            text += " of " + std::string(program.compilation.symbols.NameOf(name.parent));
        text += ":";
        for (const NameUse& use : name.uses) {
            const SourceLine& line = program.compilation.GetSourceLine(use.lineNo);
            EXPECT_TRUE(EqualsIgnoreCase(line.text.substr(use.begin, use.length), name.name));
            const std::string place = (line.file->name == "main.txt" ? "" : line.file->name + ":") +
                                      std::to_string(line.fileLineNo) + ":" +
                                      std::to_string(use.begin + 1);
            const bool isDeclaration = &use == &name.Declaration();
            text += isDeclaration ? " [" + place + "]" : " " + place;
        }
        texts.push_back(text);
    }
    return texts;
}

struct UsesCase {
    const char* what;
    const char* source;
    std::vector<std::string> names;
};

TEST(NameUsesTest, FindsEveryPlaceOfANameAndNothingElse) {
    const std::vector<UsesCase> cases{
        {"letter case, comments and quotes",
         "DEFINE BYTE Speed = 1 ; Speed\nBEGIN PROGRAM\nSPEED=speed+Speed;Speed\n"
         "DISPLAY \"Speed\"\nEND PROGRAM\n",
         {"Speed: [1:13] 3:1 3:7 3:13"}},
        {"a parameter hides a variable",
         "DEFINE BYTE Speed = 1\nDEFINE ROUTINE Drive (Speed BYTE,Way WORD) RETURNS BYTE\n"
         "INCREMENT Speed\nWAIT Way\nRETURN Speed\nEND ROUTINE\nBEGIN PROGRAM\n"
         "Speed = Drive( Speed, 5 )\nEND PROGRAM\n",
         {"Speed: [1:13] 8:1 8:16", "Speed of Drive: [2:23] 3:11 5:8", "Way of Drive: [2:34] 4:6",
          "Drive: [2:16] 8:9"}},
        {"two routines with the same parameter",
         "DEFINE ROUTINE One(Way BYTE)\nDISPLAY Way\nEND ROUTINE\nDEFINE ROUTINE Two(Way BYTE)\n"
         "DISPLAY Way\nCALL One(Way)\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n",
         {"Way of One: [1:20] 2:9", "One: [1:16] 6:6", "Way of Two: [4:20] 5:9 6:10",
          "Two: [4:16]"}},
        {"shared parameters belong to the program",
         "DEFINE SHARED PARAMETERS ON\nDEFINE ROUTINE One(Way BYTE)\nDISPLAY Way\nEND ROUTINE\n"
         "BEGIN PROGRAM\nWay = 2\nEND PROGRAM\n",
         {"Way: [2:20] 3:9 6:1", "One: [2:16]"}},
        {"words of statements are no names",
         "DEFINE BYTE Motor = 1\nDEFINE BYTE Percent = 1\nBEGIN PROGRAM\n"
         "SET MOTOR 1, FORWARD, Motor\nSET SERVO PERCENT 1, \"F\", Percent\nMotor = 2\n"
         "END PROGRAM\n",
         {"Motor: [1:13] 4:23 6:1", "Percent: [2:13] 5:27"}},
        {"constants in defaults, tables and counts",
         "DEFINE CONSTANT Cruise = 45\nDEFINE CONSTANT Fast = Cruise\nDEFINE BYTE Speed = Cruise\n"
         "DEFINE TABLE Tune = 1,Cruise , Cruise control, \"Cruise\"\n  Cruise\nRESERVE Cruise\n"
         "END TABLE\nBEGIN PROGRAM\nPLAY TUNE Tune\nIF Speed=Cruise THEN\nEND IF\nEND PROGRAM\n",
         {"Speed: [3:13] 10:4", "Tune: [4:14] 9:11", "Cruise: [1:17] 2:24 3:21 4:23 5:3 6:9 10:10",
          "Fast: [2:17]"}},
        {"an event and its own variable",
         "DEFINE EVENT Bumped()\nDEFINE BYTE Bumps = 0\nINCREMENT Bumps\nEND EVENT\n"
         "BEGIN PROGRAM\nSET EVENT 3, Bumped\nEND PROGRAM\n",
         {"Bumped: [1:14] 6:14", "Bumps of Bumped: [2:13] 3:11"}},
        {"a called name is a routine, whatever hides it",
         "DEFINE ROUTINE Drive(Way BYTE)\nEND ROUTINE\nDEFINE ROUTINE Other(Drive BYTE)\n"
         "CALL Drive(Drive)\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n",
         {"Way of Drive: [1:22]", "Drive: [1:16] 4:6", "Drive of Other: [3:22] 4:12",
          "Other: [3:16]"}},
        {"lines with mistakes",
         "DEFINE BYTE Speed = 1\nDEFINE BYTE Speed = 2\nBEGIN PROGRAM\nSET MOTR 1, Speed\n"
         "IF (Speed = 1 THEN\nDISPLAY \"Speed\nSpeeds = 3\nEND PROGRAM\n",
         {"Speed: [1:13] 2:13 4:13 5:5"}},
        {"a header that is being typed",
         "DEFINE ROUTINE\nDEFINE ROUTINE Drive(Way\n",
         {"Drive: [2:16]"}},
        {"letters beyond A to Z cut words",
         "DEFINE BYTE Speed = 1\nBEGIN PROGRAM\n\xE9Speed\xE9=1\n"
         "END PROGRAM\n",
         {"Speed: [1:13] 3:2"}},
    };
    for (const UsesCase& one : cases) {
        Program program(one.source);
        EXPECT_EQ(NamesIn(program), one.names) << one.what;
    }
}

TEST(NameUsesTest, ReadsIncludedFilesAndNotTheirNames) {
    Program program(
        "DEFINE CONSTANT drive = 1\nINCLUDE \"drive.txt\"\nINCLUDE drive.txt\n"
        "BEGIN PROGRAM\nDISPLAY Drive\nCALL Back(Drive)\nEND PROGRAM\n");
    program.WithFile("drive.txt", "DEFINE ROUTINE Back(Way BYTE)\nDISPLAY drive\nEND ROUTINE\n");
    const std::vector<std::string> names = NamesIn(program);
    // The second include reads the file again, and its declarations count as repeated.
    EXPECT_EQ(names,
              (std::vector<std::string>{"Way of Back: [drive.txt:1:21] drive.txt:1:21",
                                        "Back: [drive.txt:1:16] drive.txt:1:16 6:6",
                                        "drive: [1:17] drive.txt:2:9 drive.txt:2:9 5:9 6:11"}));
}

TEST(NameUsesTest, TellsWhenSomethingWasNotRead) {
    Program open("DEFINE TABLE Tune = 1\nDEFINE BYTE Speed = 1\nBEGIN PROGRAM\nEND PROGRAM\n");
    EXPECT_FALSE(FindNameUses(open.compilation, kFiles).wasReadToTheEnd);
    Program whole("DEFINE TABLE Tune = 1\nEND TABLE\nBEGIN PROGRAM\nEND PROGRAM\n");
    EXPECT_TRUE(FindNameUses(whole.compilation, kFiles).wasReadToTheEnd);
}

/// The text with another name in place of one.
std::string Renamed(std::string text, const Compilation& compilation, const UsedName& name,
                    std::string_view newName) {
    for (auto use = name.uses.rbegin(); use != name.uses.rend(); ++use) {
        const SourceLine& line = compilation.GetSourceLine(use->lineNo);
        const auto begin = static_cast<std::size_t>(line.text.data() - line.file->text.data());
        text.replace(begin + use->begin, use->length, newName);
    }
    return text;
}

/// The board does the same whatever a name is called: the surest sign that all places were found
/// and no other.
TEST(NameUsesTest, ARenamedNameChangesNothingInTheObjectCode) {
    std::size_t renamed = 0;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(ZENTRO_EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".txt") continue;
        const std::string text = DecodeText(ReadFile(entry.path().string()));
        if (ContainsIgnoreCase(text, "INCLUDE ")) continue;
        Program before(text);
        if (!before.Compile()) continue;
        Program read(text);
        for (const UsedName& name : FindNameUses(read.compilation, kFiles).names) {
            Program after(Renamed(text, read.compilation, name, "Zyxw_9"));
            EXPECT_TRUE(after.Compile()) << entry.path() << ": " << name.name << "\n"
                                         << after.output.log;
            EXPECT_EQ(after.object.text, before.object.text) << entry.path() << ": " << name.name;
            ++renamed;
        }
    }
    EXPECT_GT(renamed, 50U);
}

}  // namespace
}  // namespace zentro::test
