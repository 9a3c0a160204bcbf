// The open programs, without a window.
#include "desktop/programs.h"

#include <gtest/gtest.h>

#include "desktop/compile_service.h"
#include "desktop/live_check.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

class ProgramsTest : public UiTest {
  protected:
    FileId Add(const QString& name, const QString& text) {
        texts[name] = text;
        return programs.Add(folder_.path(), name, [this, name] { return texts[name]; });
    }
    FileId AddSaved(const QString& name, const QString& text) {
        WriteFile(name, text.toUtf8());
        return Add(name, text);
    }
    void Edit(FileId id, const QString& text) {
        texts[programs.File(id)->name] = text;
        programs.NoteEdited(id);
    }
    bool IsChanged(FileId id) { return programs.File(id)->IsChanged(); }

    Programs programs{*workbench->disk};
    std::map<QString, QString> texts;
};

TEST_F(ProgramsTest, AFileIsChangedUntilTextAndDiskAreTheSame) {
    const FileId id = Add("a.txt", "; a");
    EXPECT_FALSE(IsChanged(id));
    programs.NoteEdited(id);
    EXPECT_TRUE(IsChanged(id));
    programs.NoteAtSavedText(id);  // undone
    EXPECT_FALSE(IsChanged(id));
    for (const DiskState state : {DiskState::Gone, DiskState::Differs}) {
        programs.SetDisk(id, state);
        EXPECT_TRUE(IsChanged(id));
        programs.NoteAtSavedText(id);
        EXPECT_TRUE(IsChanged(id)) << "undoing brings no file back";
        programs.NoteSaved(id, folder_.path(), "a.txt");
        EXPECT_FALSE(IsChanged(id));
    }
}

TEST_F(ProgramsTest, TheNextTabComesToTheFrontAndTheMainFileIsForgotten) {
    const FileId a = Add("a.txt", "");
    const FileId b = Add("b.txt", "");
    const FileId c = Add("c.txt", "");
    EXPECT_EQ(programs.Front()->id, c);
    programs.SetFront(b);
    programs.SetMain(b);
    programs.Remove(b);
    EXPECT_EQ(programs.Front()->id, c);
    EXPECT_EQ(programs.Main(), nullptr);
    programs.Remove(c);
    EXPECT_EQ(programs.Front()->id, a);
    programs.Remove(a);
    EXPECT_EQ(programs.Front(), nullptr);
    programs.SetFront(a);  // it is gone
    EXPECT_EQ(programs.Front(), nullptr);
}

TEST_F(ProgramsTest, AFileIsFoundUnderEverySpellingOfItsPath) {
    const FileId id = AddSaved("a.txt", "; a");
    ASSERT_TRUE(QFile::link(FilePath("a.txt"), FilePath("link.txt")));
    for (const QString& path :
         {FilePath("a.txt"), folder_.path() + "/./a.txt",
          folder_.path() + "/../" + QFileInfo(folder_.path()).fileName() + "/a.txt",
          FilePath("link.txt")}) {
        ASSERT_NE(programs.Find(path), nullptr) << path.toStdString();
        EXPECT_EQ(programs.Find(path)->id, id);
        EXPECT_EQ(programs.OpenText(path), "; a");
    }
    EXPECT_EQ(programs.Find(FilePath("b.txt")), nullptr);
}

TEST_F(ProgramsTest, MessagesBelongToTheTextThatTheyWereFoundIn) {
    const FileId id = Add("a.txt", "BEGIN PROGRAM\nWrong = 1\nEND PROGRAM\n");
    LiveCheck check(configuration, *settings, programs);
    check.CheckNow();
    const auto messages = [&] { return programs.MessagesOf(*programs.File(id)); };
    ASSERT_TRUE(messages());
    ASSERT_EQ(messages()->size(), 1U);
    EXPECT_EQ(messages()->front().line, 2);
    // Another text has none until it is checked, and a new name takes none along.
    Edit(id, "\nBEGIN PROGRAM\nWrong = 1\nEND PROGRAM\n");
    EXPECT_FALSE(messages());
    check.CheckNow();
    EXPECT_EQ(messages()->front().line, 3);
    programs.NoteSaved(id, folder_.path(), "b.txt");
    texts["a.txt"] = texts["b.txt"] = texts["a.txt"];
    check.CheckNow();
    EXPECT_EQ(messages()->front().line, 3);
    check.SetLiveCheck(false);
    EXPECT_FALSE(messages());
}

TEST_F(ProgramsTest, AnIncludedFileIsCheckedInItsProgram) {
    settings->SaveSetting(SettingNumber::SourceFolder, "");
    const FileId main =
        AddSaved("main.txt", "INCLUDE \"part.txt\"\nBEGIN PROGRAM\n    CALL Rest()\nEND PROGRAM\n");
    const FileId part = AddSaved("part.txt", "DEFINE ROUTINE Rest()\n    WAIT 1\nEND ROUTINE\n");
    LiveCheck check(configuration, *settings, programs);
    check.CheckNow();  // the part is in front
    EXPECT_EQ(programs.RootOf(*programs.File(part)), programs.File(main)->key);
    const auto messages = programs.MessagesOf(*programs.File(part));
    ASSERT_TRUE(messages);
    EXPECT_TRUE(messages->empty()) << messages->front().text.toStdString();
    // Without the line that includes it, it is a program of its own, which is not one yet.
    Edit(main, "BEGIN PROGRAM\nEND PROGRAM\n");
    check.CheckNow();
    EXPECT_EQ(programs.RootOf(*programs.File(part)), programs.File(part)->key);
}

TEST_F(ProgramsTest, ManyEditsAreToldOnceAndNothingElseIsHeldBack) {
    const FileId id = Add("a.txt", "");
    int told = 0;
    QObject::connect(&programs, &Programs::Changed, [&] { ++told; });
    const Revision before = programs.File(id)->revision;
    for (int i = 0; i < 100; ++i)
        programs.NoteEdited(id);
    EXPECT_EQ(programs.File(id)->revision, before + 100);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == 1; }));
    programs.SetMain(id);
    EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace zentro
