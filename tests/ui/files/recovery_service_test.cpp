#include "desktop/recovery_service.h"

#include <QThread>
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <mutex>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

#include "tests/ui/ui_fixture.h"

namespace {

std::mutex writtenThroughMutex;
std::vector<std::string> writtenThrough;  // what fsync was called for
std::mutex disk;                          // a test that holds it has a disk that hangs

}  // namespace

/// Takes the place of the system's, which it calls.
extern "C" int fsync(int descriptor) {
    const std::scoped_lock lock(disk, writtenThroughMutex);
    std::error_code gone;
    writtenThrough.push_back(
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), gone));
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace zentro {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class RecoveryServiceTest : public UiTest {
  protected:
    RecoveryServiceTest() { writtenThrough.clear(); }

    static std::vector<QString> TextsOf(const std::vector<RecoveryCopy>& copies) {
        std::vector<QString> texts;
        std::ranges::transform(copies, std::back_inserter(texts), &RecoveryCopy::text);
        return texts;
    }

    QString store_ = FilePath("data/recovery");
    QString path_ = FilePath("robot.txt");
};

TEST_F(RecoveryServiceTest, WritesCopiesThroughWithEveryFolderOnTheWay) {
    RecoveryService service(store_);
    service.Keep("1", path_, "text");
    EXPECT_EQ(service.Flush(), "");
    const std::string folder = folder_.path().toStdString();
    for (const char* entry :
         {"", "/data", "/data/recovery", "/data/recovery/copies", "/data/recovery/sessions"}) {
        EXPECT_THAT(writtenThrough, Contains(folder + entry));
    }
    const auto isOf = [](const std::string& part) { return Contains(HasSubstr(part)); };
    EXPECT_THAT(writtenThrough, isOf("/sessions/" + std::to_string(getpid()) + "-"));
    // The last: the copy, then the entry of its folder.
    ASSERT_GE(writtenThrough.size(), 2U);
    const std::string& copyFolder = writtenThrough.back();
    EXPECT_THAT(copyFolder, HasSubstr("/copies/robot-"));
    EXPECT_THAT(writtenThrough[writtenThrough.size() - 2], HasSubstr(copyFolder + "/"));
}

TEST_F(RecoveryServiceTest, NobodyWaitsForADiskThatHangsAndNothingIsOutOfOrder) {
    std::vector<Qt::HANDLE> threads;
    {
        RecoveryService service(store_);
        QObject::connect(&service, &RecoveryService::Finished,
                         [&] { threads.push_back(QThread::currentThreadId()); });
        std::unique_lock hangs(disk);
        for (const char* text : {"1", "2", "3"}) {
            service.Keep("1", path_, text);
        }
        service.Keep("2", "NewFile1", "closed");
        EXPECT_TRUE(service.IsBusy());
        service.Forget("2");
        hangs.unlock();
        EXPECT_THAT(TextsOf(service.Copies("1", path_)), ElementsAre("3", "2", "1"));
        EXPECT_THAT(service.Copies("2", "NewFile1"), IsEmpty());
        EXPECT_FALSE(service.IsBusy());
        EXPECT_THAT(threads, IsEmpty());
        EXPECT_TRUE(QTest::qWaitFor([&] { return threads.size() == 4; }));
        EXPECT_THAT(threads, ::testing::Each(QThread::currentThreadId()));
        service.Keep("1", path_, "4");
    }
    // The last one was written before the service went away.
    RecoveryService next(store_);
    const std::vector<UnsavedText> unsaved = next.Unsaved();
    ASSERT_EQ(unsaved.size(), 1U);
    EXPECT_EQ(unsaved[0].copy.text, "4");
    next.Restore(unsaved[0], "7", "present");
    EXPECT_THAT(TextsOf(next.Copies("7", path_)), ElementsAre("4", "present", "4", "3", "2", "1"));
    EXPECT_THAT(next.Unsaved(), IsEmpty());
}

TEST_F(RecoveryServiceTest, AFailureIsToldOnce) {
    WriteFile("data", "");
    RecoveryService service(store_);
    QStringList told;
    QObject::connect(&service, &RecoveryService::Finished,
                     [&](const QString& problem) { told += problem; });
    service.Keep("1", path_, "text");
    EXPECT_TRUE(QTest::qWaitFor([&] { return told.size() == 1; }));
    EXPECT_TRUE(told.value(0).startsWith("Could not keep a recovery copy."));
    EXPECT_EQ(service.Flush(), "");
    service.Keep("1", path_, "text");
    EXPECT_EQ(service.Flush(), told.value(0));
    QTest::qWait(1);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(RecoveryServiceTest, AfterItsEndWindowsThatCloseChangeNothing) {
    {
        RecoveryService service(store_);
        service.Keep("1", "NewFile1", "not saved");
        EXPECT_EQ(service.FlushAndStop(), "");
        service.Forget("1");
        service.Keep("2", path_, "too late");
    }
    const std::vector<UnsavedText> unsaved = RecoveryService(store_).Unsaved();
    ASSERT_EQ(unsaved.size(), 1U);
    EXPECT_EQ(unsaved[0].copy.text, "not saved");
}

}  // namespace
}  // namespace zentro
