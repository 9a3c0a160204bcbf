// Work on files whose disk may hang: who asks goes on, and what is done is done in order.
#include "desktop/disk.h"

#include <QDir>
#include <QSignalSpy>
#include <atomic>
#include <optional>
#include <sys/stat.h>
#include <thread>

#include "config/file.h"
#include "desktop/file_watcher.h"
#include "desktop/live_check.h"
#include "desktop/recent_files.h"
#include "tests/desktop/hanging_disk.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

class DiskTest : public UiTest {
  protected:
    DiskTest() {
        EXPECT_TRUE(QDir(folder_.path()).mkdir("dead"));
        disk_.SetWaiter([this](const QString& path, const std::function<bool()>& isDone) {
            waited_ += path;
            if (whileWaiting_) whileWaiting_();
            while (keepsWaiting_ && !isDone())
                QTest::qWait(1);
        });
    }

    QString Dead(const QString& name) const { return FilePath("dead/" + name); }
    /// The number comes back as the answer about a file of the folder that hangs.
    std::optional<int> Ask(Patience patience, int number, const QString& name = "a.txt") {
        return disk_.Ask(Dead(name), patience, [number] { return number; });
    }

    HangingFolder hanging_{FilePath("dead")};
    Disk disk_{hanging_.Backend()};
    QStringList waited_;
    std::function<void()> whileWaiting_;
    bool keepsWaiting_ = true;
};

TEST_F(DiskTest, AnswersFromAnotherThread) {
    const auto here = std::this_thread::get_id();
    const auto there =
        disk_.Ask(FilePath("a.txt"), Patience::Short, [] { return std::this_thread::get_id(); });
    ASSERT_TRUE(there);
    EXPECT_NE(*there, here);
    EXPECT_EQ(Ask(Patience::WhileWanted, 7), 7);
    EXPECT_EQ(waited_, QStringList());
}

TEST_F(DiskTest, WhoNeedNotKnowGoesOnAndIsToldWhenTheDiskIsBack) {
    hanging_.Hang();
    QSignalSpy answered(&disk_, &Disk::Answered);
    EXPECT_EQ(Ask(Patience::Short, 1), std::nullopt);
    EXPECT_EQ(Ask(Patience::Short, 2), std::nullopt);
    EXPECT_EQ(disk_.Ask(FilePath("a.txt"), Patience::Short, [] { return 3; }), 3)
        << "other folders answer";
    EXPECT_TRUE(waited_.isEmpty());
    EXPECT_EQ(answered.count(), 0);
    hanging_.Answer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered.count() > 0; }));
    EXPECT_EQ(Ask(Patience::Short, 4), 4);
}

TEST_F(DiskTest, TheUserWaitsAsLongAsWanted) {
    hanging_.Hang();
    whileWaiting_ = [this] { hanging_.Answer(); };
    EXPECT_EQ(Ask(Patience::WhileWanted, 1), 1);
    EXPECT_EQ(waited_, QStringList{Dead("a.txt")});
    hanging_.Hang();
    whileWaiting_ = nullptr;
    keepsWaiting_ = false;
    EXPECT_EQ(Ask(Patience::WhileWanted, 2), std::nullopt);
    EXPECT_EQ(Ask(Patience::WhileWanted, 3, "b.txt"), std::nullopt);
    EXPECT_EQ(waited_, (QStringList{Dead("a.txt"), Dead("a.txt"), Dead("b.txt")}));
}

TEST_F(DiskTest, WhatHasBegunIsDoneInOrderAndNothingElse) {
    const auto done = std::make_shared<std::vector<int>>();
    const auto note = [&](Patience patience, int number) {
        return disk_.Ask(Dead("a.txt"), patience, [done, number] {
            done->push_back(number);
            return number;
        });
    };
    hanging_.Hang();
    keepsWaiting_ = false;
    EXPECT_FALSE(note(Patience::WhileWanted, 1));  // has begun
    EXPECT_FALSE(note(Patience::WhileWanted, 2));
    EXPECT_FALSE(note(Patience::Short, 3));
    keepsWaiting_ = true;
    whileWaiting_ = [this] { hanging_.Answer(); };
    EXPECT_EQ(note(Patience::WhileWanted, 4), 4);
    EXPECT_EQ(*done, (std::vector{1, 4}));
}

TEST_F(DiskTest, CanBeAskedWhileItIsWaitedFor) {
    hanging_.Hang();
    std::optional<int> within;
    whileWaiting_ = [&] {
        within = disk_.Ask(FilePath("a.txt"), Patience::WhileWanted, [] { return 5; });
        hanging_.Answer();
    };
    EXPECT_EQ(Ask(Patience::WhileWanted, 1), 1);
    EXPECT_EQ(within, 5);
}

TEST_F(DiskTest, GoesThoughSomethingHangs) {
    const auto done = std::make_shared<std::atomic<int>>(0);
    HangingFolder hanging(folder_.path());
    hanging.Hang();
    {
        Disk disk(hanging.Backend());
        EXPECT_FALSE(disk.Ask(FilePath("a.txt"), Patience::Short, [done] { return *done = 1; }));
    }
    EXPECT_EQ(*done, 0);
    hanging.Answer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return *done == 1; })) << "what has begun is finished";
}

TEST_F(DiskTest, FilesThatDoNotAnswerStayAmongThoseUsedLast) {
    WriteFile("here.txt", "");
    hanging_.Hang();
    EXPECT_EQ(PresentFiles(disk_, {FilePath("here.txt"), FilePath("gone.txt"), Dead("a.txt")}),
              (QStringList{FilePath("here.txt"), Dead("a.txt")}));
}

TEST_F(DiskTest, AWatchedFileIsLookedAtWhenItsDiskIsBack) {
    WriteFile("dead/a.txt", "old");
    WriteFile("dead/late.txt", "old");
    FileWatcher watcher(disk_);
    QStringList told;
    QObject::connect(&watcher, &FileWatcher::ChangedOnDisk,
                     [&](const QString& path) { told += path; });
    watcher.Watch(Dead("a.txt"));
    hanging_.Hang();
    watcher.Watch(Dead("late.txt"));
    WriteFile("dead/a.txt", "new");
    watcher.CheckNow();
    EXPECT_EQ(told, QStringList());
    hanging_.Answer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == QStringList{Dead("a.txt")}; }));
    WriteFile("dead/late.txt", "new");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.contains(Dead("late.txt")); }));
}

/// While one types, an included file whose disk hangs is not waited for, and nothing else is said
/// of it; when it is back the program is checked again.
TEST_F(DiskTest, TheCheckGoesOnWithoutAFileAndComesBackToIt) {
    WriteFile("dead/part.txt", "DEFINE BYTE Part = 0\n");
    settings->SaveSetting(SettingNumber::SourceFolder, FilePath("dead").toStdString());
    Programs programs(disk_);
    LiveCheck check(configuration, *settings, programs);
    hanging_.Hang();
    const FileId id = programs.Add(folder_.path(), "main.txt", [] {
        return QString("INCLUDE \"part.txt\"\nBEGIN PROGRAM\nPart = 1\nEND PROGRAM\n");
    });
    check.CheckNow();
    auto messages = programs.MessagesOf(*programs.File(id));
    ASSERT_TRUE(messages);
    ASSERT_FALSE(messages->empty());
    EXPECT_EQ(messages->front().line, 1);
    EXPECT_TRUE(messages->front().text.endsWith(QString(kNoAnswer) + '.'))
        << messages->front().text.toStdString();
    hanging_.Answer();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        messages = programs.MessagesOf(*programs.File(id));
        return messages && messages->empty();
    }));
}

/// Links lead to an open file that did not answer when it was opened.
TEST_F(DiskTest, AFileIsKnownByItsLinksWhenItsDiskIsBack) {
    WriteFile("dead/a.txt", "");
    ASSERT_TRUE(QFile::link(FilePath("dead/a.txt"), FilePath("link.txt")));
    Programs programs(disk_);
    hanging_.Hang();
    const FileId id = programs.Add(FilePath("dead"), "../dead/a.txt", [] { return QString(); });
    EXPECT_EQ(programs.Find(Dead("a.txt")), programs.File(id));
    QSignalSpy answered(&disk_, &Disk::Answered);
    hanging_.Answer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered.count() > 0; }));
    EXPECT_EQ(programs.Find(FilePath("link.txt")), programs.File(id));
}

}  // namespace
}  // namespace zentro
