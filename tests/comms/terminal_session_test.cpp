#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <string>
#include <unistd.h>
#include <vector>

#include "comms/serial_link.h"
#include "tests/comms/faulty_link.h"
#include "tests/comms/recording_link.h"
#include "tests/comms/terminal_fixture.h"

namespace zentro {
namespace {

using std::chrono::seconds;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Le;
using ::testing::SizeIs;

constexpr const char* kInDebugMode = "KineTron in Debug Mode and cannot alter hardware";
const std::string kSixEnds = "5\r\n5\r\n5\r\n5\r\n5\r\n5\r\n";
constexpr const char* kLoop = "56,0,6\r\n53,0,0\r\n0\r\n";  // INCREMENT BYTE [0006], JUMP [0000]

class TerminalSessionTest : public BoardFixture {
  protected:
    std::string PathOf(const char* name) const { return folder_.filePath(name).toStdString(); }
    std::string FileWith(std::string_view content) const {
        std::ofstream(PathOf("program.obj"), std::ios::binary) << content;
        return PathOf("program.obj");
    }
    std::string Log() const {
        std::ifstream file(PathOf("a.Log"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// A board whose port has the same name each time.
    void PlugIn() { StartBoard({"--link", QString::fromStdString(PathOf("board"))}); }
    void Connect() {
        PlugIn();
        session_.OpenConnection(PathOf("board"));
        ASSERT_TRUE(terminal_.Shows("Kinetron\r\n"));
    }
    void Download(std::string_view content) {
        const int before = terminal_.finished;
        session_.DownloadSource(FileWith(content));
        ASSERT_TRUE(WaitUntil([&] { return terminal_.finished > before; }));
    }

    QTemporaryDir folder_;
    SerialLink link_;
    Terminal terminal_{link_};
    TerminalSession& session_ = terminal_.session;
};

TEST_F(TerminalSessionTest, DownloadsAndRunsAProgram) {
    ASSERT_EQ(session_.StartLog(PathOf("a.Log"), "today"), "");
    session_.Reopen();  // no connection was lost
    EXPECT_FALSE(session_.IsConnected());
    Connect();
    EXPECT_EQ(terminal_.opened, 1);
    Download("5\r\n");
    EXPECT_EQ(terminal_.outcome, DownloadOutcome::Whole);
    EXPECT_EQ(session_.LastDownload().verdict, "Loaded 1 bytes");
    EXPECT_EQ(session_.LastDownload().path, PathOf("program.obj"));
    ASSERT_TRUE(terminal_.Shows("Loaded 1 bytes"));
    EXPECT_THAT(terminal_.Shown(), HasSubstr("Downloading Program to Kinetron......"));
    EXPECT_THAT(terminal_.Shown(), HasSubstr("Download Complete. Sent 1 Lines in total. "));
    for (const char key : {'g', '\r'})
        session_.PressKey(key);
    EXPECT_TRUE(terminal_.Shows("End at ["));
    const std::string screen = terminal_.Shown();
    session_.CloseConnection();
    EXPECT_THAT(Log(), HasSubstr("Log Started today\r\n]\r\nW\r\nKinetron\r\n"));
    EXPECT_THAT(Log(), EndsWith(screen + "\r\n"));
    EXPECT_FALSE(session_.IsLogging());
    EXPECT_THAT(terminal_.told, IsEmpty());
    EXPECT_EQ(terminal_.lost, 0);
}

struct PulledCable {
    const char* name;
    int atLine;  ///< of the download; 0: no download runs
    bool whileWriting;
};
void PrintTo(const PulledCable& row, std::ostream* out) {
    *out << row.name;
}
class PulledCableTest : public TerminalSessionTest,
                        public ::testing::WithParamInterface<PulledCable> {
  protected:
    void PullDuringDownload(int line) {
        const auto pull = QObject::connect(&session_, &TerminalSession::DownloadProgress,
                                           [this, line](double, int sent) {
                                               if (sent >= line) ClosePort();
                                           });
        Download(kSixEnds);
        QObject::disconnect(pull);
    }
};

TEST_P(PulledCableTest, TheSessionGoesOnWhenItIsBack) {
    ASSERT_EQ(session_.StartLog(PathOf("a.Log"), "today"), "");
    Connect();
    if (GetParam().atLine > 0) {
        PullDuringDownload(GetParam().atLine);
        EXPECT_THAT(terminal_.Shown(), HasSubstr("Download Complete. Sent 6 Lines in total. "));
        EXPECT_THAT(terminal_.Shown(), HasSubstr("The board does not hold the program."));
        EXPECT_EQ(session_.LastDownload().outcome, DownloadOutcome::LineLost);
    } else {
        ClosePort();
        if (GetParam().whileWriting) session_.SendCmd("W\r");
    }
    ASSERT_TRUE(WaitUntil([&] { return terminal_.lost > 0; }));
    EXPECT_TRUE(session_.LinkFailed());
    EXPECT_FALSE(session_.IsConnected());
    EXPECT_THAT(terminal_.told, Each(std::string(kWriteError)));
    EXPECT_THAT(terminal_.told, SizeIs(AllOf(Ge(GetParam().whileWriting ? 1U : 0U), Le(1U))));
    EXPECT_FALSE(session_.CanReopen());
    terminal_.told.clear();

    PlugIn();
    ASSERT_TRUE(WaitUntil([&] { return terminal_.back == 1; }, seconds(5)));
    session_.Reopen();
    EXPECT_EQ(terminal_.opened, 2);
    EXPECT_EQ(session_.LastDownload().MayLeavePart(), GetParam().atLine > 0);
    Download(kSixEnds);
    EXPECT_TRUE(session_.LastDownload().IsWhole());
    EXPECT_TRUE(terminal_.Shows("Loaded 6 bytes"));
    session_.EndLog();
    EXPECT_THAT(Log(), HasSubstr("Log Started today\r\n]\r\nW\r\nKinetron\r\n"));
    EXPECT_THAT(Log(), HasSubstr("Loaded 6 bytes"));
    EXPECT_THAT(terminal_.told, IsEmpty());
}
INSTANTIATE_TEST_SUITE_P(Places, PulledCableTest,
                         ::testing::Values(PulledCable{"idle", 0, false},
                                           PulledCable{"while writing", 0, true},
                                           PulledCable{"at the first line", 1, false},
                                           PulledCable{"in the middle", 3, false},
                                           PulledCable{"at the last line", 6, false}));

TEST_F(TerminalSessionTest, ADownloadKeepsOthersOutAndCanBeCancelled) {
    Connect();
    session_.DownloadSource(FileWith(kSixEnds));
    session_.PressKey('Q');
    session_.DownloadSource(FileWith(kLoop));
    EXPECT_THAT(terminal_.told, ElementsAre("A download is already running."));
    ASSERT_TRUE(terminal_.Shows("Downloading Program"));
    session_.CancelDownload();
    EXPECT_EQ(terminal_.finished, 1);
    EXPECT_EQ(session_.LastDownload().outcome, DownloadOutcome::Cancelled);
    EXPECT_FALSE(session_.IsDownloading());
    EXPECT_THAT(terminal_.Shown(), HasSubstr("\r\nDownload Cancelled. Sent "));
    for (const char key : {'W', '\r'})
        session_.PressKey(key);
    EXPECT_TRUE(terminal_.Shows("Kinetron\r\n"));
    EXPECT_EQ(terminal_.Shown().find('Q'), std::string::npos);
}

/// What a broken-off load has left is known as soon as the board says it.
TEST_F(TerminalSessionTest, WhatIsLeftOfABrokenLoadIsWhatTheBoardSays) {
    Connect();
    session_.DownloadSource(FileWith(kSixEnds));
    ASSERT_TRUE(terminal_.Shows("Downloading Program"));
    session_.CancelDownload();
    EXPECT_TRUE(session_.LastDownload().MayLeavePart()) << "until the board has said something";
    ASSERT_TRUE(terminal_.Shows("Not loaded"));
    EXPECT_TRUE(WaitUntil([this] { return !session_.LastDownload().MayLeavePart(); }));
    // Somebody sends a program and is killed: the loader still waits for its lines.
    session_.SendCmd("L");
    session_.SendCmd("5\r\n5\r\n");
    session_.OpenConnection(PathOf("board"));
    EXPECT_TRUE(terminal_.Shows("KineTron holds only a part of a program.\r\n"));
    EXPECT_TRUE(session_.LastDownload().MayLeavePart());
    Download("5\r\n");
    EXPECT_FALSE(session_.LastDownload().MayLeavePart());
    // Whoever types a program has broken nothing off.
    session_.OpenConnection(PathOf("board"));
    for (const char key : std::string_view("L5\r]"))
        session_.PressKey(key);
    EXPECT_TRUE(WaitUntil([this] { return terminal_.Shown().ends_with("Loaded 1 bytes\r\n"); }));
    EXPECT_FALSE(session_.LastDownload().MayLeavePart());
}

/// A board behind a line that loses what the test orders.
class FaultyLineTest : public TerminalSessionTest {
  protected:
    void SetUp() override {
        Connect();
        session_.CloseConnection();
    }
    void DownloadOver(FaultyLink& line, Terminal& terminal) {
        terminal.session.OpenConnection(PathOf("board"));
        ASSERT_TRUE(terminal.Shows("Kinetron\r\n"));
        terminal.session.DownloadSource(FileWith(kSixEnds));
        ASSERT_TRUE(WaitUntil([&] { return terminal.finished == 1; }));
        line.Mend();
    }
    SerialLink serial_;
    FaultyLink line_{&serial_};
    Terminal faulty_{line_};
};

/// Before the program go "]" CR "W" CR CR, "X" CR "Z" CR and "L"; each line has three characters.
constexpr std::size_t kBeforeProgram = 10;

TEST_F(FaultyLineTest, ALostLineIsFoundByTheCountOfBytes) {
    line_.DropByte(Direction::ToBoard, kBeforeProgram + 3);
    DownloadOver(line_, faulty_);
    EXPECT_EQ(faulty_.outcome, DownloadOutcome::WrongCount);
    EXPECT_EQ(faulty_.session.LastDownload().bytesLoaded, 5U);
    EXPECT_TRUE(faulty_.Shows("The board holds 5 bytes of the program's 6."));
}

TEST_F(FaultyLineTest, ACableThatIsCutBeforeTheVerdictIsALostLine) {
    QObject::connect(&faulty_.session, &TerminalSession::DownloadProgress, [&] {
        if (!faulty_.session.IsDownloading()) line_.FailAt(LinkStep::Read);
    });
    DownloadOver(line_, faulty_);
    EXPECT_EQ(faulty_.outcome, DownloadOutcome::LineLost);
    EXPECT_EQ(faulty_.lost, 1);
    EXPECT_TRUE(faulty_.Shows("The connection was lost.\r\nThe board does not hold the program."));
}

TEST_F(TerminalSessionTest, AFileThatIsMissingIsToldAndAsksNothingOfTheBoard) {
    Connect();
    const std::string before = terminal_.Shown();
    session_.DownloadSource(PathOf("none.obj"));
    EXPECT_EQ(terminal_.outcome, DownloadOutcome::FileUnreadable);
    EXPECT_THAT(terminal_.told,
                ElementsAre("Error Dowloading file. Error text is: No such file or directory"));
    EXPECT_EQ(terminal_.Shown(), before);
}

TEST_F(TerminalSessionTest, KnowsTheDebugMode) {
    Connect();
    Download(kLoop);
    ASSERT_TRUE(terminal_.Shows("Loaded 7 bytes"));
    EXPECT_FALSE(session_.IsDebugging());
    session_.SendCmd("D\r");
    ASSERT_TRUE(WaitUntil([&] { return session_.IsDebugging(); }));
    session_.ChkForDebugB4SendCmd("M1F045\r");
    EXPECT_THAT(terminal_.told, ElementsAre(kInDebugMode));

    const std::string shown = terminal_.Shown();
    const std::size_t bracket = shown.find("[0006]");
    ASSERT_NE(bracket, std::string::npos);
    for (std::size_t position = bracket - 1; position <= bracket + 6; ++position) {
        session_.DoubleClickAt(position);
    }
    session_.DoubleClickAt(shown.size() + 9);
    EXPECT_EQ(terminal_.addresses, std::vector<std::uint16_t>(6, 6));

    session_.SetScreenOff(true);
    session_.SendCmd("M0006\r");
    ASSERT_TRUE(WaitUntil([&] { return terminal_.received.find("->") != std::string::npos; }));
    EXPECT_THAT(terminal_.received, HasSubstr("[0006] 00 00"));
    EXPECT_EQ(terminal_.Shown(), shown);
    EXPECT_TRUE(session_.IsDebugging());

    session_.SetScreenOff(false);
    session_.WriteToScreen(
        "\x1b"
        "c*debug mode*  GO,exit,Mem,Reset,Alter,Jump or <cr> to Step ->");
    EXPECT_TRUE(session_.IsDebugging());
    session_.WriteToScreen(" ");
    EXPECT_FALSE(session_.IsDebugging());
}

/// A board that judges an earlier load while a program is sent to it, over a line that is fast.
class LateLink : public RecordingLink {
  public:
    bool TakesTime() const override { return false; }
    std::size_t Write(std::string_view bytes) override {
        if (bytes == "1\r\n") toRead = "X\r\nZ\r\nL\r\nLoaded 1 bytes\r\n";
        if (bytes == "]\r") toRead += "\r\nNot loaded: line 1 is bad\r\n";
        return RecordingLink::Write(bytes);
    }
};

TEST(TerminalSessionVerdictTest, IsNoneThatCameBeforeTheLastLine) {
    const std::string path = ::testing::TempDir() + "zentro-late-" + std::to_string(getpid());
    std::ofstream(path, std::ios::binary) << "1\n";
    LateLink link;
    Terminal terminal(link);
    terminal.session.OpenConnection("port");
    terminal.session.DownloadSource(path);
    ASSERT_TRUE(WaitUntil([&] { return terminal.finished == 1; }));
    EXPECT_EQ(terminal.outcome, DownloadOutcome::Refused);
    std::filesystem::remove(path);
}

}  // namespace
}  // namespace zentro
