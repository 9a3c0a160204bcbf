#include "ui/shell/program_folders.h"

#include <QTemporaryDir>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/ui/files/child_process.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;

class PortableCopy : public testing::Test {
  protected:
    PortableCopy() {
        fs::create_directories(Folder("old"));
        std::ofstream(Folder("old") / "ZentroCompiler.cfg") << "language";
    }
    fs::path Folder(const char* name) const { return fs::path(place_.path().toStdString()) / name; }

    /// The settings after a start of the program in a folder.
    std::string Start(const char* name, SettingNumber number, const std::string& userPath = {}) {
        const ProgramFolders folders{Folder(name), Folder(name), {}, {}};
        SettingsStore settings(folders.settings, folders.program, {});
        FollowMovedProgram(settings, folders);
        if (!userPath.empty()) settings.SaveSetting(number, userPath);
        return AsText(settings.GetSetting(number));
    }

  private:
    QTemporaryDir place_;
};

TEST_F(PortableCopy, FindsItsFilesWhereItWasMovedTo) {
    Start("old", SettingNumber::ObjectFolder, "/home/pupil/robot/");
    Start("old", SettingNumber::SourceFolder, (Folder("old") / "lesson" / "").string());
    fs::rename(Folder("old"), Folder("new"));

    EXPECT_EQ(Start("new", SettingNumber::InstructionFile), Folder("new") / "ZentroCompiler.cfg");
    EXPECT_EQ(Start("new", SettingNumber::HelpFile), Folder("new") / "ZentroCodeHelp.htm");
    EXPECT_EQ(Start("new", SettingNumber::SourceFolder), Folder("new") / "lesson" / "");
    EXPECT_EQ(Start("new", SettingNumber::ObjectFolder), "/home/pupil/robot/");
}

/// A language file of the user's own that is missing is for the user to put right.
TEST_F(PortableCopy, KeepsAnotherLanguageFile) {
    Start("old", SettingNumber::InstructionFile, "/nowhere/own.cfg");
    EXPECT_EQ(Start("old", SettingNumber::InstructionFile), "/nowhere/own.cfg");
}

/// A copy of a folder that is still there goes on with the first one's files.
TEST_F(PortableCopy, KeepsAFolderThatIsStillThere) {
    Start("old", SettingNumber::HelpFile);
    fs::copy(Folder("old"), Folder("new"));
    EXPECT_EQ(Start("new", SettingNumber::HelpFile), Folder("old") / "ZentroCodeHelp.htm");
}

/// Whoever can write into the package's folder is the administrator, whose settings are not
/// everybody's.
TEST(SettingsPlace, IsTheUsersForAnInstalledProgramAndTheFolderOfAPortableCopy) {
    QTemporaryDir place;
    const fs::path root(place.path().toStdString());
    const fs::path user = root / "config";
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(user.string()));
    const auto isUsers = [&](const fs::path& folder) {
        return folder.string().starts_with(user.string());
    };
    const auto make = [](const fs::path& file) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << "";
    };
    make(root / "usr/share/zentrocompiler/ZentroCompiler.cfg");
    make(root / "usr/bin/zentro");
    make(root / "damaged/bin/zentro");
    make(root / "stick/ZentroCompiler.cfg");
    make(root / "own/ZentroCompiler.dfv");

    const ProgramFolders installed = FindProgramFolders(root / "usr/bin");
    EXPECT_EQ(installed.program, root / "usr/share/zentrocompiler");
    EXPECT_TRUE(isUsers(installed.settings)) << installed.settings;
    EXPECT_TRUE(isUsers(FindProgramFolders(root / "damaged/bin").settings));
    EXPECT_FALSE(installed.data.string().starts_with((root / "usr").string())) << installed.data;
    EXPECT_EQ(FindProgramFolders(root / "stick").settings, root / "stick");
    EXPECT_EQ(FindProgramFolders(root / "stick").data, root / "stick");
    EXPECT_EQ(FindProgramFolders(root / "own").settings, root / "own");

    // Where another user's copies lie, ours do not.
    fs::create_directory(root / "stick/recovery");
    fs::permissions(root / "stick/recovery", fs::perms::owner_read | fs::perms::owner_exec);
    fs::permissions(root, fs::perms::all);
    fs::permissions(root / "stick", fs::perms::all);
    EXPECT_TRUE(InChild([&] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && setuid(kNobody) != 0) return false;
        const ProgramFolders folders = FindProgramFolders(root / "stick");
        return folders.settings == root / "stick" && folders.data != root / "stick";
    }));
    // Nor can settings be saved over another user's that are for reading only.
    make(root / "stick/ZentroCompiler.dfv");
    fs::permissions(root / "stick/ZentroCompiler.dfv", fs::perms::owner_read);
    EXPECT_TRUE(InChild([&] {
        constexpr uid_t kNobody = 65534;
        if (geteuid() == 0 && setuid(kNobody) != 0) return false;
        return isUsers(FindProgramFolders(root / "stick").settings);
    }));
    qunsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace zentro
