#include "comms/session_log.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "comms/terminal_screen.h"

namespace zentro {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kHead = "Log Started Wednesday, 31 January 2024\r\n";
constexpr const char* kDate = "Wednesday, 31 January 2024";

/// While it lives no file of this process grows beyond `bytes`: the disk is full.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) {
        old_ = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit small{bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &limit_);
        static_cast<void>(signal(SIGXFSZ, old_));
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    rlimit limit_{};
    void (*old_)(int) = nullptr;
};

class SessionLogTest : public ::testing::Test {
  protected:
    SessionLogTest()
        : path_(std::filesystem::temp_directory_path() /
                ("zentro-log-" + std::to_string(getpid()) + ".Log")) {}
    ~SessionLogTest() override { std::filesystem::remove(path_); }

    std::string Content() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path path_;
    std::vector<std::string> told_;
    SessionLog log_{[this](const std::string& text) { told_.push_back(text); }};
};

TEST_F(SessionLogTest, HoldsTheConversation) {
    log_.Write("before it starts");
    std::ofstream(path_) << "an old log that is longer than the new one will ever come to be: "
                         << std::string(500, 'x');
    EXPECT_EQ(log_.Start(path_, kDate), "");
    EXPECT_EQ(Content(), kHead);
    log_.Write("caf\xe9\r\n");
    EXPECT_EQ(Content(), std::string(kHead) + "caf\xe9\r\n");
    EXPECT_EQ(log_.LogFilePath(), path_);
    EXPECT_EQ(log_.End("on the screen"), "");
    EXPECT_FALSE(log_.IsOpen());
    log_.Write("after its end");
    EXPECT_EQ(log_.End("again"), "");
    EXPECT_EQ(Content(), std::string(kHead) + "caf\xe9\r\non the screen\r\n");
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(SessionLogTest, IsNotStartedWhereNothingCanBeWritten) {
    EXPECT_EQ(log_.Start("/no/such/folder/a.Log", kDate),
              "Error writing the session log /no/such/folder/a.Log. Error text is: No such file or "
              "directory");
    EXPECT_FALSE(log_.IsOpen());
    EXPECT_THAT(log_.Start("/dev/full", kDate), HasSubstr("No space left on device"));
    EXPECT_FALSE(log_.IsOpen());
    ASSERT_EQ(mkfifo(path_.c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_THAT(log_.Start(path_, kDate), HasSubstr("a pipe")) << "nobody reads it";
    EXPECT_FALSE(log_.IsOpen());
    std::filesystem::remove(path_);
    EXPECT_EQ(log_.Start(path_, kDate), "") << "elsewhere it can";
}

TEST_F(SessionLogTest, KeepsWhatFindsNoRoom) {
    ASSERT_EQ(log_.Start(path_, kDate), "");
    for (int time = 1; time <= 2; ++time) {
        {
            const FullDisk disk(Content().size() + 3);
            log_.Write("12345");
            log_.Write("67890");
            EXPECT_THAT(told_, SizeIs(static_cast<std::size_t>(time))) << "once until it can write";
        }
        log_.Write("\r\n");
    }
    EXPECT_EQ(Content(), std::string(kHead) + "1234567890\r\n1234567890\r\n");
    EXPECT_EQ(log_.End(""), "");
}

TEST_F(SessionLogTest, TellsHowMuchIsMissing) {
    ASSERT_EQ(log_.Start(path_, kDate), "");
    {
        const FullDisk disk(Content().size());
        log_.Write(std::string(kMaxUnwritten, 'a'));
        log_.Write("bcd");
    }
    EXPECT_THAT(log_.End(""), HasSubstr("is not complete.\n3 characters are missing."));
    EXPECT_EQ(Content(), kHead + std::string(kMaxUnwritten - 3, 'a') + "bcd\r\n");

    ASSERT_EQ(log_.Start(path_, kDate), "");
    const FullDisk disk(Content().size());
    EXPECT_THAT(log_.End("screen"), HasSubstr("File too large\n8 characters are missing."));
}

TEST_F(SessionLogTest, OutlivesTheProgram) {
    const pid_t child = fork();
    if (child == 0) {
        const bool started = log_.Start(path_, kDate).empty();
        TerminalScreen screen([&](std::string_view text) { log_.Write(text); });
        for (int line = 1; started && line <= 100; ++line) {
            screen.ProcessScreenText(std::to_string(line) + "\r\n");
        }
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    std::string expected = kHead;
    for (int line = 1; line <= 100 - kScreenLines; ++line)
        expected += std::to_string(line) + "\r\n";
    EXPECT_EQ(Content(), expected);
}

TEST(SessionLogFileNameTest, CarriesTheDate) {
    EXPECT_EQ(SessionLogFileName(2024, 1, 31), "KineTronLog20240131.Log");
}

}  // namespace
}  // namespace zentro
