// The names of the open programs and new names for them, without a window.
#include "desktop/rename.h"

#include <gtest/gtest.h>

#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

class RenameTest : public UiTest {
  protected:
    RenameTest() {
        settings->SaveSetting(SettingNumber::SourceFolder, folder_.path().toStdString() + "/");
    }

    /// An open file whose text is not saved.
    const OpenFile& Open(const QString& name, const QString& text) {
        texts_[name] = text;
        return *programs.File(
            programs.Add(folder_.path(), name, [this, name] { return texts_[name]; }));
    }
    ProgramIndex Index(const OpenFile& root) { return {configuration, root, *settings, programs}; }
    static const IndexedName& Named(const ProgramIndex& index, const QString& name) {
        for (const IndexedName& one : index.Names()) {
            if (one.name == name) return one;
        }
        throw std::runtime_error(name.toStdString() + " is no name");
    }
    /// What is said when a name of the program is to be called otherwise.
    QString Problem(const QString& text, const QString& name, const QString& newName) {
        Programs alone(*workbench->disk);
        const OpenFile root =
            *alone.File(alone.Add(folder_.path(), "main.txt", [&text] { return text; }));
        const ProgramIndex index(configuration, root, *settings, alone);
        return Rename(configuration, *settings, alone, root, index, Named(index, name))
            .ProblemWith(newName);
    }

    Programs programs{*workbench->disk};

  private:
    std::map<QString, QString> texts_;
};

TEST_F(RenameTest, ANameIsFoundAtEveryColumnOfItsPlaces) {
    const OpenFile& file =
        Open("main.txt", QString::fromUtf8("DEFINE BYTE Speed = 1 ; \u00e4\nBEGIN PROGRAM\n"
                                           "\u00e9 Speed=Speed\nEND PROGRAM\n"));
    const ProgramIndex index = Index(file);
    struct Case {
        int line;
        int column;
        bool isFound;
    };
    for (const Case& one : {Case{1, 11, false},
                            {1, 12, true},
                            {1, 17, true},
                            {1, 18, false},
                            {3, 1, false},
                            {3, 2, true},
                            {3, 7, true},
                            {3, 8, true},
                            {3, 13, true},
                            {3, 14, false},
                            {4, 2, false},
                            {9, 0, false}}) {
        const IndexedName* name = index.NameAt(file.key, one.line, one.column);
        EXPECT_EQ(name != nullptr, one.isFound) << one.line << ":" << one.column;
    }
    EXPECT_EQ(index.NameAt("other", 1, 12), nullptr);
}

TEST_F(RenameTest, TheIndexReadsUnsavedTextsAndKnowsWhenTheyChange) {
    WriteFile("part.txt", "DEFINE BYTE OnDisk = 1\n");
    const OpenFile part = Open("part.txt", "DEFINE BYTE Typed = 1\n");
    const OpenFile main = Open("main.txt", "INCLUDE \"part.txt\"\nBEGIN PROGRAM\nEND PROGRAM\n");
    const OpenFile other = Open("other.txt", "");
    const ProgramIndex index = Index(main);
    EXPECT_EQ(Named(index, "Typed").declaration, (TextPlace{part.key, 1, 12, 5}));
    EXPECT_EQ(index.IncludedAt(main.key, 1), part.key);
    EXPECT_EQ(index.IncludedAt(main.key, 2), "");
    programs.NoteEdited(other.id);
    EXPECT_TRUE(index.IsFresh(programs));
    programs.NoteEdited(part.id);
    EXPECT_FALSE(index.IsFresh(programs));
}

TEST_F(RenameTest, AFileThatIsIncludedTwiceHasEachPlaceOnce) {
    WriteFile("part.txt", "DEFINE BYTE Speed = 1\n");
    const OpenFile& main =
        Open("main.txt",
             "INCLUDE \"part.txt\"\nINCLUDE \"part.txt\"\nBEGIN PROGRAM\nSpeed = 2\n"
             "END PROGRAM\n");
    const ProgramIndex index = Index(main);
    EXPECT_EQ(Named(index, "Speed").places.size(), 2U);
    EXPECT_EQ(Named(index, "Speed").FileCount(), 2U);
}

TEST_F(RenameTest, SaysWhyANameCannotBeTaken) {
    const QString program =
        "DEFINE CONSTANT Cruise = 60\nDEFINE BYTE Speed = 1\nDEFINE BYTE Other = 1\n"
        "DEFINE TABLE Tune = 1, 2\nEND TABLE\n"
        "DEFINE ROUTINE Drive(Power BYTE, Way BYTE)\nOther = Power\nWAIT Cruise\nEND ROUTINE\n"
        "DEFINE ROUTINE Turn(Power BYTE)\nDEFINE BYTE Angle = 0\nAngle = Power\nEND ROUTINE\n"
        "BEGIN PROGRAM\nCALL Drive(Speed, Other)\nCALL Turn(Speed)\nPLAY TUNE Tune\nEND PROGRAM\n";
    const QString taken = "is declared already, in line";
    struct Case {
        const char* name;
        const char* newName;
        QString problem;  ///< a part of it; empty: there is none
    };
    const std::vector<Case> cases{
        {"Speed", "Pace", ""},
        {"Speed", "SPEED", ""},
        {"Speed", "", "A name is missing"},
        {"Speed", "Go", "three"},
        {"Speed", "2Fast", "begins with a letter"},
        {"Speed", "My Speed", "begins with a letter"},
        {"Speed", "Caf\u00e9", "begins with a letter"},
        {"Speed", "Speed;x", "begins with a letter"},
        {"Speed", "Speed-x", "begins with a letter"},
        {"Speed", "wait", "kept for the language"},
        {"Speed", "Line7", "kept for the language"},
        {"Speed", "B_x", "kept for the language"},
        {"Speed", "other", "Other " + taken + " 3 of main.txt"},
        {"Speed", "Cruise", taken},
        {"Speed", "Drive", taken},
        {"Speed", "Tune", taken},
        // Names of routines hide those of the program, which matters only where both are used.
        {"Speed", "Power", ""},
        {"Other", "Power", taken},
        {"Other", "Angle", ""},
        {"Power", "Speed", ""},
        {"Power", "Other", taken},
        {"Power", "Way", taken},
        {"Angle", "Power", taken},
        {"Angle", "Way", ""},
        {"Angle", "Cruise", taken},
        {"Cruise", "Angle", taken},
        {"Cruise", "Power", taken},
        {"Drive", "Turn", taken},
        // Names that the board could not tell from each other.
        {"Speed", "Tune1", "with this name. Tune and Tune1 - These two names"},
    };
    for (const Case& one : cases) {
        const QString problem = Problem(program, one.name, QString::fromUtf8(one.newName));
        const bool isRight =
            one.problem.isEmpty() ? problem.isEmpty() : problem.contains(one.problem);
        EXPECT_TRUE(isRight) << one.name << " -> " << one.newName << ": " << problem.toStdString();
    }
}

TEST_F(RenameTest, NothingIsRenamedInAProgramThatCannotBeReadWhole) {
    const QString use = "BEGIN PROGRAM\nSpeed = 2\nEND PROGRAM\n";
    EXPECT_TRUE(Problem("DEFINE BYTE Speed = 1\nINCLUDE \"gone.txt\"\n" + use, "Speed", "Pace")
                    .contains("gone.txt"));
    EXPECT_TRUE(
        Problem("DEFINE BYTE Speed = 1\nDEFINE TABLE Tune = 1\nDEFINE BYTE Other = 1\n" + use,
                "Speed", "Pace")
            .contains("rest of the program"));
    // Other mistakes are no hindrance.
    EXPECT_EQ(Problem("DEFINE BYTE Speed = 1\nBEGIN PROGRAM\nSpeed = Sped\nEND PROGRAM\n", "Speed",
                      "Pace"),
              "");
}

}  // namespace
}  // namespace zentro
