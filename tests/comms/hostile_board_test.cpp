#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "comms/serial_link.h"
#include "tests/comms/faulty_link.h"
#include "tests/comms/terminal_fixture.h"

namespace zentro {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kProgram = "53,0,0\r\n5\r\n";
constexpr std::chrono::milliseconds kShortLimit{50};

class ScriptedBoardTest : public ::testing::Test {
  protected:
    void SetUp() override {
        terminal_.session.OpenConnection(board_.PortName());
        ASSERT_EQ(terminal_.opened, 1);
        ASSERT_TRUE(WaitUntil([&] { return board_.Received() == "]\rW\r\r"; }));
    }

    QTemporaryDir folder_;
    ScriptedBoard board_;
    SerialLink link_;
    Terminal terminal_{link_, [] { return std::vector<PortDescription>(); }, kShortLimit};
};

TEST_F(ScriptedBoardTest, SendsOneByteAtATime) {
    board_.SendSlowly(
        "\x1b"
        "cKept\r\nOne\r\nTwo\r\n\x1b[2A1\r\n2x\x1b[D\r\n",
        std::chrono::milliseconds(3));
    EXPECT_TRUE(WaitUntil([&] { return terminal_.Shown() == "Kept\r\n1\r\n2\r\n"; }));
}

TEST_F(ScriptedBoardTest, NeverAnswers) {
    const std::string path = folder_.filePath("program.obj").toStdString();
    std::ofstream(path, std::ios::binary) << kProgram;
    terminal_.session.DownloadSource(path);
    std::filesystem::remove(path);
    ASSERT_TRUE(WaitUntil([&] { return terminal_.finished == 1; }));
    EXPECT_EQ(terminal_.outcome, DownloadOutcome::NoVerdict);
    const std::string sent = "X\rZ\rL" + std::string(kProgram) + "]\r";
    EXPECT_TRUE(WaitUntil([&] { return board_.Received() == "]\rW\r\r" + sent; }));
    EXPECT_TRUE(terminal_.session.IsConnected());
    EXPECT_THAT(terminal_.told, IsEmpty());
}

TEST_F(ScriptedBoardTest, FloodsTheScreen) {
    const std::string path = folder_.filePath("a.Log").toStdString();
    ASSERT_EQ(terminal_.session.StartLog(path, "today"), "");
    std::string flood;
    for (int line = 0; line < 30'000; ++line)
        flood += std::to_string(line) + " is\r\n";
    board_.Send(flood);
    ASSERT_TRUE(terminal_.Shows(" is\r\n"));
    terminal_.session.PressKey('q');
    ASSERT_TRUE(terminal_.Shows("29999 is\r\n"));
    EXPECT_EQ(board_.Received(), "]\rW\r\rq");
    EXPECT_EQ(terminal_.session.Screen().ScreenLineCount(), kScreenLines);
    terminal_.session.EndLog();
    std::ifstream file(path, std::ios::binary);
    const std::string log{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(log == "Log Started today\r\n" + flood + "\r\n");
}

TEST_F(ScriptedBoardTest, SendsEveryCharacter) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    std::string expected = all;
    expected.replace(13, 1, "\r\n");
    expected.erase(10, 1);
    expected.erase(0, 1);
    board_.Send(all);
    EXPECT_TRUE(WaitUntil([&] { return terminal_.Shown() == expected; }));
}

TEST(TerminalSessionSetupTest, AFailureClosesTheTerminal) {
    FaultyLink link;
    Terminal terminal(link);
    const auto fails = [&](const std::string& message) {
        const int before = terminal.closing;
        terminal.told.clear();
        terminal.session.OpenConnection("COM9");
        EXPECT_EQ(terminal.closing, before + 1);
        EXPECT_FALSE(terminal.session.IsConnected());
        EXPECT_THAT(terminal.told, ElementsAre(message));
        link.Mend();
    };
    link.FailToOpen(-1);
    fails("Failed to open 'COM9' - Specified port was not found");
    link.FailToConfigure(LineSetup::SettingsRefused);
    fails("System Error Setting Comm Port Configuration settings");
    link.FailToConfigure(LineSetup::SettingsUnreadable);
    fails("System Error obtaining Comm Port Configuration settings");
    EXPECT_EQ(link.Calls(LinkStep::Close), 2U);
    EXPECT_EQ(terminal.opened, 0);
    terminal.session.OpenConnection("COM9");
    EXPECT_EQ(terminal.opened, 1);
    EXPECT_FALSE(terminal.session.LinkFailed());
}

/// The name of the lost port is taken by another one before it comes back itself.
TEST(TerminalSessionReopenTest, OnlyTheSameUsbPortIsBack) {
    constexpr std::uint16_t kVendor = 0x0403;
    const PortDescription mine{"/dev/null", "", UsbIdentity{kVendor, 1, "A1"}};
    const PortDescription other{"/dev/null", "", UsbIdentity{kVendor, 1, "B2"}};
    const PortDescription moved{"/dev/zero", "", UsbIdentity{kVendor, 1, "A1"}};
    std::vector<PortDescription> present{mine};
    int looks = 0;
    FaultyLink link;
    Terminal terminal(link, [&] {
        ++looks;
        return present;
    });
    terminal.session.OpenConnection("/dev/null");
    present = {other};
    link.FailAt(LinkStep::Read);
    ASSERT_TRUE(WaitUntil([&] { return terminal.lost > 0; }));
    looks = 0;
    ASSERT_TRUE(WaitUntil([&] { return looks > 0; }));
    EXPECT_FALSE(terminal.session.CanReopen());
    EXPECT_EQ(terminal.lost, 1);
    EXPECT_EQ(link.Calls(LinkStep::Close), 1U);
    present = {other, moved};
    ASSERT_TRUE(WaitUntil([&] { return terminal.back == 1; }));
    link.Mend();
    link.FailToOpen(-2);
    terminal.session.Reopen();
    EXPECT_THAT(terminal.told, ElementsAre("Failed to open '/dev/zero' - Specified port is already "
                                           "opened for another application"));
    EXPECT_EQ(terminal.closing, 0);
    EXPECT_TRUE(terminal.session.CanReopen());
    link.Mend();
    terminal.session.Reopen();
    EXPECT_TRUE(terminal.session.IsConnected());
    EXPECT_FALSE(terminal.session.CanReopen());
}

TEST(TerminalSessionSetupTest, ALostLinkIsClosedWithoutFurtherMessages) {
    FaultyLink link;
    Terminal terminal(link);
    terminal.session.OpenConnection("COM9");
    link.FailAt(LinkStep::Write);
    link.FailAt(LinkStep::Close);
    link.FailAt(LinkStep::RestoreTimeouts);
    terminal.session.SendKeyStroke('x');
    EXPECT_EQ(terminal.lost, 1);
    terminal.session.CloseConnection();
    EXPECT_THAT(terminal.told, ElementsAre(kWriteError));
    EXPECT_EQ(link.Calls(LinkStep::Close), 1U);
}

}  // namespace
}  // namespace zentro
