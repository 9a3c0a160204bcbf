#include "desktop/text_file.h"

#include <QDir>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "config/file.h"
#include "config/unfinished_write.h"
#include "desktop/file_watcher.h"
#include "desktop/text_difference.h"
#include "tests/ui/files/child_process.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

constexpr uid_t kNobody = 65534;

class TextFileTest : public UiTest {
  protected:
    /// Names of files in the test's folder, hidden ones too.
    QStringList Files(const char* pattern) const {
        QStringList files = QDir(folder_.path()).entryList({pattern}, QDir::Files | QDir::Hidden);
        files.removeIf([](const QString& name) { return name.startsWith("ZentroCompiler."); });
        return files;
    }

    QString path_ = FilePath("text.txt");
};

/// Entries of an access control list as Linux stores one: kind, rights, user or group.
struct AclEntry {
    std::uint16_t kind, rights;
    std::uint32_t id;
};
constexpr std::uint16_t kOwner = 0x01, kUser = 0x02, kGroup = 0x04, kMask = 0x10, kOthers = 0x20;

std::string Acl(const std::vector<AclEntry>& entries) {
    std::string bytes{'\2', '\0', '\0', '\0'};
    for (const AclEntry& entry : entries) {
        bytes.append(reinterpret_cast<const char*>(&entry), sizeof entry);
    }
    return bytes;
}

std::string Attribute(const std::string& path, const char* name) {
    std::array<char, 1000> value{};
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    return size < 0 ? "none" : std::string(value.data(), static_cast<std::size_t>(size));
}

TEST_F(TextFileTest, KeepsTheLineEndsAndReadsBothCharacterSets) {
    struct Case {
        std::string bytes, text, saved;
    };
    const std::vector<Case> cases{
        {"", "", "\n"},
        {"one", "one", "one\n"},
        {"a\r\nb\r\n", "a\nb", "a\r\nb\r\n"},
        {"a\nb\n", "a\nb", "a\nb\n"},
        {"a\rb\r", "a\nb", "a\rb\r"},
        {"a\r\nb\nc", "a\nb\nc", "a\r\nb\r\nc\r\n"},
        {"a\n\n", "a\n", "a\n\n"},
        {"\xE4\x80\n", "\xC3\xA4\xE2\x82\xAC", "\xC3\xA4\xE2\x82\xAC\n"},  // Windows-1252
        {"\xEF\xBB\xBF\xC3\xA4\n", "\xC3\xA4", "\xC3\xA4\n"},
    };
    for (const Case& row : cases) {
        WriteFile("text.txt", QByteArray::fromStdString(row.bytes));
        const LoadedText loaded = LoadText(path_);
        EXPECT_EQ(loaded.problem, "");
        EXPECT_EQ(loaded.file.text, row.text);
        EXPECT_EQ(SaveText(path_, loaded.file), "");
        EXPECT_EQ(ReadFile("text.txt").toStdString(), row.saved);
    }
    EXPECT_EQ(LoadText(FilePath("none.txt")).problem, "No such file or directory");
    EXPECT_EQ(LoadText(folder_.path()).problem, "Is a directory");
    EXPECT_EQ(SaveText(FilePath("no/text.txt"), {"x", "\n"}), "No such file or directory");
}

TEST_F(TextFileTest, ASaveThatFailsLeavesTheFile) {
    WriteFile("text.txt", "the old text\n");
    const QStringList before = QDir(folder_.path()).entryList(QDir::Files);
    EXPECT_TRUE(InChild([&] {
        LimitFileSize(20'000);
        return SaveText(path_, {std::string(100'000, 'x'), "\n"}) == "File too large";
    }));
    EXPECT_EQ(ReadFile("text.txt"), "the old text\n");
    EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files), before);
}

TEST_F(TextFileTest, ASaveThatIsKilledLeavesOneOfTheTwoTexts) {
    constexpr qsizetype kSize = 200'000;
    std::mt19937 random(1);
    const int kills = qEnvironmentVariable("ZENTRO_KILLED_SAVES", "50").toInt();
    ASSERT_GT(kills, 0);
    // With a second name it is overwritten where it is.
    for (const char* otherName : {"", "other.txt"}) {
        WriteFile("text.txt", QByteArray(kSize, 'a') + '\n');
        const bool isLinked = *otherName != '\0';
        ASSERT_TRUE(!isLinked || link(path_.toUtf8().constData(), PathOf(otherName).c_str()) == 0);
        for (int round = 0; round < kills; ++round) {
            KillWhileWorking(
                [&](int i) {
                    const std::string text(kSize, static_cast<char>('a' + i % 26));
                    static_cast<void>(SaveText(path_, {text, "\n"}));
                },
                random);
            if (isLinked) MendUnfinishedWrites(folder_.path().toStdString());
            const QByteArray bytes = ReadFile("text.txt");
            ASSERT_EQ(bytes.size(), kSize + 1);
            ASSERT_EQ(bytes.count(bytes[0]), kSize);
            ASSERT_TRUE(!isLinked || bytes == ReadFile(otherName));
            MendUnfinishedWrites(folder_.path().toStdString());
            ASSERT_EQ(Files("*"), isLinked ? QStringList({"other.txt", "text.txt"})
                                           : QStringList({"text.txt"}));
        }
    }
}

TEST_F(TextFileTest, WhatAKilledSaveLeftIsMended) {
    const QByteArray old(10'000, 'o');
    for (const bool isLinked : {false, true}) {
        WriteFile("text.txt", old);
        ASSERT_TRUE(!isLinked || link(path_.toUtf8().constData(), PathOf("other").c_str()) == 0);
        EXPECT_TRUE(KillAtFileSize(20'000, [&] {
            static_cast<void>(SaveText(path_, {std::string(100'000, 'x'), "\n"}));
        }));
        EXPECT_EQ(ReadFile("text.txt") == old, !isLinked);
        EXPECT_EQ(Files(".zentro-*").size(), 1);
        EXPECT_TRUE(MendUnfinishedWrites(folder_.path().toStdString()));
        EXPECT_EQ(ReadFile("text.txt"), old);
        EXPECT_EQ(Files(".zentro-*").size(), 0);
        EXPECT_FALSE(MendUnfinishedWrites(folder_.path().toStdString()));
    }
    EXPECT_EQ(ReadFile("other"), old);
    EXPECT_EQ(SaveText(path_, {"new", "\n"}), "");
    EXPECT_EQ(ReadFile("other"), "new\n");
    EXPECT_EQ(Files("*"), QStringList({"other", "text.txt"}));
}

/// What somebody else wrote, or writes at this moment, is not touched.
TEST_F(TextFileTest, OnlyWhatAKilledSaveLeftIsMended) {
    const pid_t ended = EndedProcess();
    WriteFile("text.txt", "written later by another program\n");
    struct stat status {};
    ASSERT_EQ(stat(path_.toUtf8().constData(), &status), 0);
    const QString ofEarlierContent = QString::fromStdString(NameOfOldContent(ended, status.st_ino));
    const QStringList others{
        ofEarlierContent,
        QString::fromStdString(NameOfOldContent(ended, 1)),
        QString::fromStdString(NameOfNewContent(getpid(), 0)),
        QString::fromStdString(NameOfNewContent(getppid(), 0)),
        QString::fromStdString(NameOfNewContent(ended, 0)) + ".txt",
        "text.txt.new1",
        ".zentro-notes.new",
        ".zentro-1-.new",
        ".zentro-1-2x.new",
        ".zentro-1-2.new2",
    };
    for (const QString& name : others) {
        WriteFile(name, "mine\n");
    }
    const QString folder = QString::fromStdString(NameOfNewContent(ended, 1));
    ASSERT_TRUE(QDir(folder_.path()).mkdir(folder));
    // The file was written minutes after the save that was killed.
    const std::array<timespec, 2> earlier{timespec{0, UTIME_OMIT},
                                          timespec{status.st_mtim.tv_sec - 600, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, PathOf(ofEarlierContent).c_str(), earlier.data(), 0), 0);
    EXPECT_FALSE(MendUnfinishedWrites(folder_.path().toStdString()));
    for (const QString& name : others) {
        EXPECT_EQ(ReadFile(name), "mine\n") << name.toStdString();
    }
    EXPECT_TRUE(QFileInfo(FilePath(folder)).isDir());
    EXPECT_EQ(ReadFile("text.txt"), "written later by another program\n");

    // After a day nobody writes it any more, on whatever machine that was.
    const QString ofToday = QString::fromStdString(NameOfNewContent(getppid(), 0));
    const std::array<timespec, 2> longAgo{timespec{0, UTIME_OMIT},
                                          timespec{status.st_mtim.tv_sec - 90'000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, PathOf(ofToday).c_str(), longAgo.data(), 0), 0);
    EXPECT_TRUE(MendUnfinishedWrites(folder_.path().toStdString()));
    EXPECT_FALSE(QFileInfo::exists(FilePath(ofToday)));
}

TEST_F(TextFileTest, ASaveLeavesTheUnfinishedFileOfAnotherAlone) {
    const QString unfinished = QString::fromStdString(NameOfNewContent(getpid(), 0));
    for (const QString& name : {QString("text.txt"), unfinished})
        WriteFile(name, "old\n");
    EXPECT_EQ(SaveText(path_, {"new", "\n"}), "");
    EXPECT_EQ(ReadFile("text.txt"), "new\n");
    EXPECT_EQ(ReadFile(unfinished), "old\n");
    EXPECT_EQ(Files("*").size(), 2);
}

TEST_F(TextFileTest, EveryNameThatTheSystemTakesCanBeSaved) {
    for (const QString& name : {QString("a"), QString(255, 'n'), QString(".zentro-1-1.new")}) {
        for (const char* text : {"first", "second"}) {
            EXPECT_EQ(SaveText(FilePath(name), {text, "\n"}), "") << name.toStdString();
            EXPECT_EQ(ReadFile(name), QByteArray(text) + '\n');
        }
    }
    EXPECT_EQ(SaveText(FilePath(QString(256, 'n')), {"x", "\n"}), "File name too long");
    EXPECT_EQ(Files("*").size(), 3);
}

TEST_F(TextFileTest, ASaveKeepsThePermissionsAndTheOwner) {
    const bool isRoot = geteuid() == 0;
    for (const mode_t mode : {0640U, 0755U, 0600U, 0666U}) {
        WriteFile("text.txt", "old\n");
        const std::string path = path_.toStdString();
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        ASSERT_TRUE(!isRoot || chown(path.c_str(), kNobody, kNobody) == 0);
        EXPECT_EQ(SaveText(path_, {"new", "\n"}), "");
        struct stat saved {};
        ASSERT_EQ(stat(path.c_str(), &saved), 0);
        EXPECT_EQ(saved.st_mode & 07777, mode);
        EXPECT_EQ(saved.st_uid, isRoot ? kNobody : geteuid());
        EXPECT_EQ(ReadFile("text.txt"), "new\n");
    }
}

TEST_F(TextFileTest, ASaveKeepsTheAccessControlListAndNobodyGainsARight) {
    const auto acl = [](std::uint16_t ofUser) {
        return Acl({{kOwner, 6, ~0U},
                    {kUser, ofUser, kNobody},
                    {kGroup, 4, ~0U},
                    {kMask, 6, ~0U},
                    {kOthers, 0, ~0U}});
    };
    constexpr const char* kAccess = "system.posix_acl_access";
    constexpr const char* kDefault = "system.posix_acl_default";
    WriteFile("text.txt", "old\n");
    const std::string path = path_.toStdString();
    if (setxattr(path.c_str(), kAccess, acl(6).data(), acl(6).size(), 0) != 0)
        GTEST_SKIP() << "no access control lists here";
    ASSERT_EQ(setxattr(path.c_str(), "user.note", "mine", 4, 0), 0);
    EXPECT_EQ(SaveText(path_, {"new", "\n"}), "");
    EXPECT_EQ(ReadFile("text.txt"), "new\n");
    EXPECT_EQ(Attribute(path, kAccess), acl(6));
    EXPECT_EQ(Attribute(path, "user.note"), "mine");
    struct stat saved {};
    ASSERT_EQ(stat(path.c_str(), &saved), 0);
    EXPECT_EQ(saved.st_mode & 07777, 0660U);  // the mask stands for the group's rights

    // A folder that gives everything made in it a list: one without stays without.
    WriteFile("closed.txt", "old\n");
    const std::string closed = PathOf("closed.txt");
    ASSERT_EQ(chmod(closed.c_str(), 0640), 0);
    ASSERT_EQ(
        setxattr(folder_.path().toUtf8().constData(), kDefault, acl(7).data(), acl(7).size(), 0),
        0);
    EXPECT_EQ(SaveText(FilePath("closed.txt"), {"new", "\n"}), "");
    EXPECT_EQ(Attribute(closed, kAccess), "none");
    ASSERT_EQ(stat(closed.c_str(), &saved), 0);
    EXPECT_EQ(saved.st_mode & 07777, 0640U);
    EXPECT_EQ(SaveText(path_, {"again", "\n"}), "");
    EXPECT_EQ(Attribute(path, kAccess), acl(6));

    // An attribute that only the administrator can set: the file is written where it is.
    if (geteuid() != 0) return;
    ASSERT_EQ(setxattr(path.c_str(), "security.note", "x", 1, 0), 0);
    ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
    ASSERT_EQ(chmod(folder_.path().toUtf8().constData(), 0777), 0);
    EXPECT_TRUE(InChild([&] {
        return setuid(kNobody) == 0 && SaveText(path_, {"in place", "\n"}).empty();
    }));
    EXPECT_EQ(ReadFile("text.txt"), "in place\n");
    EXPECT_EQ(Attribute(path, "security.note"), "x");
    EXPECT_EQ(Attribute(path, kAccess), acl(6));
    EXPECT_EQ(Files(".zentro-*"), QStringList());
}

TEST_F(TextFileTest, ALinkStaysALink) {
    QDir(folder_.path()).mkdir("far");
    WriteFile("far/text.txt", "old\n");
    const std::array<std::pair<const char*, const char*>, 3> links{
        {{"far/text.txt", "one"}, {"one", "two"}, {"far/not yet.txt", "nowhere"}}};
    for (const auto& [target, link] : links) {
        ASSERT_EQ(symlink(target, FilePath(link).toUtf8().constData()), 0);
        EXPECT_EQ(SaveText(FilePath(link), {link, "\n"}), "");
        EXPECT_EQ(QFile::symLinkTarget(FilePath(link)), FilePath(target));
        EXPECT_EQ(ReadFile(link), QByteArray(link) + '\n');
    }
    EXPECT_EQ(ReadFile("far/text.txt"), "two\n");
    EXPECT_EQ(QDir(FilePath("far")).entryList(QDir::Files).size(), 2);
    ASSERT_EQ(symlink("round", FilePath("round").toUtf8().constData()), 0);
    EXPECT_EQ(SaveText(FilePath("round"), {"x", "\n"}), "Too many levels of symbolic links");
}

TEST_F(TextFileTest, WhereTheFolderTakesNoFileItsContentIsOverwritten) {
    QDir(folder_.path()).mkdir("shared");
    const QByteArray old(10'000, 'o');
    WriteFile("shared/open", old);
    WriteFile("shared/locked", old);
    for (const auto& [name, mode] : {std::pair{"", 0755U},
                                     {"shared", 0555U},
                                     {"shared/open", 0666U},
                                     {"shared/locked", 0444U}}) {
        ASSERT_EQ(chmod(FilePath(name).toUtf8().constData(), mode), 0);
    }
    const auto inChild = [&](const std::function<bool()>& work) {
        // The administrator may write everywhere.
        return InChild([&] { return (geteuid() != 0 || setuid(kNobody) == 0) && work(); });
    };
    EXPECT_TRUE(inChild([&] {
        return SaveText(FilePath("shared/new"), {"x", "\n"}) == "Permission denied";
    }));
    EXPECT_TRUE(inChild([&] {
        return SaveText(FilePath("shared/locked"), {"x", "\n"}) == "Permission denied";
    }));
    EXPECT_TRUE(inChild([&] {
        LimitFileSize(20'000);
        return SaveText(FilePath("shared/open"), {std::string(100'000, 'x'), "\n"}) ==
               "File too large";
    }));
    EXPECT_EQ(ReadFile("shared/open"), old);
    EXPECT_EQ(ReadFile("shared/locked"), old);
    EXPECT_TRUE(inChild([&] { return SaveText(FilePath("shared/open"), {"new", "\n"}).empty(); }));
    EXPECT_EQ(ReadFile("shared/open"), "new\n");
    EXPECT_EQ(QDir(FilePath("shared")).entryList(QDir::Files), QStringList({"locked", "open"}));
    chmod(FilePath("shared").toUtf8().constData(), 0755);
}

/// "=one -two +three ~": the signs of lines and their text; "~" stands for lines left out.
std::string Written(const std::vector<DifferenceLine>& lines) {
    std::string text;
    for (const DifferenceLine& line : lines) {
        text += std::string(text.empty() ? "" : " ") + "=-+~"[static_cast<int>(line.change)] +
                line.text.toStdString();
    }
    return text;
}

TEST(TextDifferenceTest, GivesTheFewestChanges) {
    const std::vector<std::array<const char*, 3>> cases{
        {"", "", ""},
        {"", "a", "+a"},
        {"a", "", "-a"},
        {"a\nb", "a\nb", "=a =b"},
        {"a\nc", "a\nb\nc", "=a +b =c"},
        {"a\nb\nc", "a\nc", "=a -b =c"},
        {"a\nb\nc", "a\nx\nc", "=a -b +x =c"},
        {"a\nb\nc\nd", "b\nc\nd\ne", "-a =b =c =d +e"},
        {"a\nb\nc\na\nb\nb\na", "c\nb\na\nb\na\nc", "-a -b =c +b =a =b -b =a +c"},
        {"a\na", "a\na\na", "=a =a +a"},
        {"x\ny", "p\nq", "-x -y +p +q"},
    };
    for (const auto& [before, after, expected] : cases) {
        EXPECT_EQ(Written(DifferenceOf(before, after)), expected) << before << " to " << after;
    }
}

TEST(TextDifferenceTest, TextsWithLittleInCommonAreDoneInTime) {
    QString before = "head\n";
    QString after = "head\n";
    for (int i = 0; i < 20'000; ++i) {
        before += "old " + QString::number(i) + '\n';
        after += "new " + QString::number(i) + '\n';
    }
    const std::vector<DifferenceLine> lines = DifferenceOf(before + "tail", after + "tail");
    ASSERT_EQ(lines.size(), 40'002U);
    EXPECT_EQ(lines.front(), (DifferenceLine{LineChange::Same, "head"}));
    EXPECT_EQ(lines[1], (DifferenceLine{LineChange::Removed, "old 0"}));
    EXPECT_EQ(lines[20'001], (DifferenceLine{LineChange::Added, "new 0"}));
    EXPECT_EQ(lines.back(), (DifferenceLine{LineChange::Same, "tail"}));
}

TEST(TextDifferenceTest, LeavesOutWhatIsFarFromChanges) {
    const auto lines = DifferenceOf("1\n2\n3\n4\n5\n6\n7", "1\n2\n3\nx\n5\n6\n7\ny");
    EXPECT_EQ(Written(AroundChanges(lines, 1)), "~ =3 -4 +x =5 ~ =7 +y");
    EXPECT_EQ(Written(AroundChanges(DifferenceOf("a", "a"), 1)), "~");
}

class FileWatcherTest : public TextFileTest {
  protected:
    FileWatcherTest() {
        QObject::connect(&watcher_, &FileWatcher::ChangedOnDisk,
                         [this](const QString& path) { told_ += path; });
        WriteFile("text.txt", "old\n");
        watcher_.Watch(path_);
    }
    bool IsTold(int times = 1) {
        const bool came = QTest::qWaitFor([&] { return told_.size() >= times; }, 5000);
        return came && told_.size() == times && told_.last() == path_;
    }

    Disk disk_;
    FileWatcher watcher_{disk_};
    QStringList told_;
};

TEST_F(FileWatcherTest, TellsOfEveryKindOfChangeOnce) {
    WriteFile("text.txt", "written over\n");
    EXPECT_TRUE(IsTold(1));
    EXPECT_EQ(SaveText(path_, {"replaced", "\n"}), "");
    EXPECT_TRUE(IsTold(2));
    // An editor that moves the old file away and writes a new one.
    EXPECT_TRUE(QFile::rename(path_, path_ + "~"));
    WriteFile("text.txt", "made anew\n");
    EXPECT_TRUE(IsTold(3));
    WriteFile("text.txt", "and written over\n");
    EXPECT_TRUE(IsTold(4));
    EXPECT_TRUE(QFile::remove(path_));
    EXPECT_TRUE(IsTold(5));
    WriteFile("text.txt", "back\n");
    EXPECT_TRUE(IsTold(6));
}

TEST_F(FileWatcherTest, IsQuietAboutOurOwnSavesAndTouches) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SaveText(path_, {std::to_string(i), "\n"}), "");
        watcher_.NoteSaved(path_);
        QTest::qWait(20);
    }
    WriteFile("text.txt", "2\n");
    WriteFile("other.txt", "not watched\n");
    QTest::qWait(400);
    watcher_.Unwatch(path_);
    WriteFile("text.txt", "not ours any more\n");
    QTest::qWait(400);
    EXPECT_EQ(told_, QStringList());
}

}  // namespace
}  // namespace zentro
