#include "comms/download.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "board/board.h"
#include "board/loader.h"
#include "tests/support/compile_fixture.h"
#include "tests/support/heap.h"

namespace zentro {
namespace {

using namespace std::string_literals;
using std::chrono::duration;
using std::chrono::microseconds;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kHalf =
    "\r\nThe board does not hold the whole program.\r\n"
    "Please download it again before you run it.\r\n";
const std::string kLost =
    "\r\nThe connection was lost.\r\nThe board does not hold the program.\r\n"
    "Please download it again.\r\n";
const std::string kCleared =
    "\x1b"
    "cDownloading Program to Kinetron......";

/// A download in virtual time: what it wrote, showed and told, and how long it took.
class DownloadTest : public ::testing::Test {
  protected:
    DownloadTest()
        : path_(std::filesystem::temp_directory_path() /
                ("zentro-download-" + std::to_string(getpid()) + ".obj")) {}
    ~DownloadTest() override { std::filesystem::remove(path_); }

    void WriteFile(std::string_view content) { std::ofstream(path_, std::ios::binary) << content; }
    Download Start() { return Start(path_); }
    Download Start(const std::filesystem::path& path) {
        return Download(path.string(), std::nullopt,
                        {[this](std::string_view text) { return Write(text); },
                         [this](std::string_view text) { shown_ += text; },
                         [this](const std::string& text) { told_.push_back(text); }});
    }
    void Run(Download& download) {
        running_ = &download;
        while (download.IsSending())
            taken_ += download.Step();
        running_ = nullptr;
    }
    void Run(std::string_view content) {
        WriteFile(content);
        Download download = Start();
        Run(download);
    }

    std::size_t failing_ = std::string::npos;  ///< the write that fails, counted from 0
    bool staysLost_ = true;
    std::filesystem::path path_;
    std::vector<std::string> writes_;
    std::vector<std::string> lost_;
    std::vector<std::string> told_;
    std::string shown_;
    microseconds taken_{0};

  private:
    Download* running_ = nullptr;

    bool Write(std::string_view text) {
        const std::size_t number = writes_.size() + lost_.size();
        const bool fails = staysLost_ ? number >= failing_ : number == failing_;
        (fails ? lost_ : writes_).emplace_back(text);
        if (fails && running_ != nullptr) running_->LoseLine();  // as the session tells it
        return !fails;
    }
};

TEST_F(DownloadTest, SendsEveryLineWhateverEndsIt) {
    Run("1,2\r\n3\n\n4\r5\r\n\r\n6");
    EXPECT_THAT(writes_, ElementsAre("X\rZ\r", "L", "1,2\r\n", "3\r\n", "\r\n", "4\r\n", "5\r\n",
                                     "\r\n", "6\r\n", "]\r"));
    EXPECT_EQ(shown_, kCleared + "\r\nDownload Complete. Sent 7 Lines in total. ");
    EXPECT_THAT(told_, IsEmpty());
}

TEST_F(DownloadTest, SendsContentUnread) {
    Run("any \xe9\0\x1b thing\x1a\n"s);
    EXPECT_THAT(writes_, ElementsAre("X\rZ\r", "L", "any \xe9\0\x1b thing\x1a\r\n"s, "]\r"));
}

TEST_F(DownloadTest, AnEmptyFileIsADownloadToo) {
    Run("");
    EXPECT_THAT(writes_, ElementsAre("X\rZ\r", "L", "]\r"));
    EXPECT_EQ(shown_, kCleared + "\r\nDownload Complete. Sent 0 Lines in total. ");
}

TEST_F(DownloadTest, TellsItsProgressEvery25Lines) {
    std::string content;
    for (int line = 0; line < 50; ++line)
        content += "0\r\n";
    Run(content);
    EXPECT_EQ(shown_, kCleared +
                          "\r\nWorking.... 25  Lines Sent  \r\nWorking.... 50  Lines Sent  "
                          "\r\nDownload Complete. Sent 50 Lines in total. ");
}

TEST_F(DownloadTest, AFileThatCannotBeReadSendsNothing) {
    Download missing = Start();
    Run(missing);
    EXPECT_THAT(writes_, IsEmpty());
    EXPECT_EQ(shown_, "");
    EXPECT_THAT(told_,
                ElementsAre("Error Dowloading file. Error text is: No such file or directory"));
    Download folder = Start(std::filesystem::temp_directory_path());
    Run(folder);
    EXPECT_THAT(writes_, IsEmpty());
    EXPECT_THAT(told_.back(), HasSubstr("Error Dowloading file. Error text is: "));
}

/// Of "1 2 3" the writes are: 0 the first commands, 1 "L", 2 to 4 the lines, 5 the end.
TEST_F(DownloadTest, EndsAtALostLineOnlyBeforeTheProgram) {
    const std::string whole = "\r\nDownload Complete. Sent 3 Lines in total. ";
    for (const bool staysLost : {true, false}) {
        for (std::size_t failing = 0; failing <= 5; ++failing) {
            SCOPED_TRACE(failing);
            failing_ = failing;
            staysLost_ = staysLost;
            writes_.clear();
            lost_.clear();
            shown_.clear();
            Run("1\n2\n3\n");
            EXPECT_EQ(writes_.size() + lost_.size(), failing < 2 ? failing + 1 : 6);
            EXPECT_EQ(shown_, (failing == 0   ? ""
                               : failing == 1 ? kCleared
                                              : kCleared + whole) +
                                  kLost);
        }
    }
}

TEST_F(DownloadTest, NobodyWaitsForABoardThatNothingReaches) {
    const std::string content = "1\n2\n3\n4\n5\n6\n";
    WriteFile(content);
    Download sound = Start();
    while (sound.LinesSent() < 2)
        taken_ += sound.Step();
    const microseconds untilTheLoss = std::exchange(taken_, {});
    writes_.clear();
    failing_ = 4;  // the third line
    Run(content);
    EXPECT_EQ(taken_, untilTheLoss);
}

struct BoardSays {
    const char* content;
    const char* words;  ///< in pieces, "|" between
    DownloadOutcome outcome;
    std::optional<std::size_t> bytesInFile;
    std::optional<std::size_t> bytesLoaded;
    const char* further;
};

TEST_F(DownloadTest, IsWhatTheBoardSaysOfIt) {
    using enum DownloadOutcome;
    const BoardSays rows[] = {
        {"1,2\n3", "\r\nLoaded 3 bytes\r\n\r\n", Whole, 3, 3, ""},
        {"1,2\n3", "\r\nLoa|ded 3 by|tes\r|\n", Whole, 3, 3, ""},
        {"", "\r\nLoaded 0 bytes\r\n", Whole, 0, 0, ""},
        {"1 2,,\t3\n\n255\n", "\r\nLoaded 4 bytes\r\n", Whole, 4, 4, ""},
        {"REM\n1\n", "\r\nLoaded 1 bytes\r\n", Whole, {}, 1, ""},
        {"1,2\n3", "\r\nLoaded 2 bytes\r\n", WrongCount, 3, 2,
         "\r\nThe board holds 2 bytes of the program's 3.\r\nPlease download it again.\r\n"},
        {"1,2\n3", "\r\nLoaded 33 bytes\r\n", WrongCount, 3, 33,
         "\r\nThe board holds 33 bytes of the program's 3.\r\nPlease download it again.\r\n"},
        {"1",
         "\r\nNot loaded: line 1 is bad\r\n",
         Refused,
         1,
         {},
         "\r\nThe board does not hold the program.\r\n"
         "Please download it again, or compile it once more.\r\n"},
        {"1",
         "hello\r\nLoaded 1 bytes",
         NoVerdict,
         1,
         {},
         "\r\nThe board has not said whether it holds the program.\r\n"},
    };
    for (const bool isEchoed : {true, false}) {
        for (const BoardSays& row : rows) {
            SCOPED_TRACE(row.words);
            WriteFile(row.content);
            Download download = Start();
            Run(download);
            shown_.clear();
            if (isEchoed) {
                download.Hear("\r\nLoaded 77 bytes\r\n\r\nX\r\nZ");  // the first of one before
                download.Hear("\r\nL");
            }
            std::istringstream pieces(row.words);
            for (std::string piece; std::getline(pieces, piece, '|');)
                download.Hear(piece);
            EXPECT_EQ(download.IsOver(), isEchoed && row.outcome != NoVerdict);
            download.Cancel();  // nobody waits any longer
            EXPECT_EQ(download.Result().outcome, row.outcome);
            EXPECT_EQ(download.Result().bytesInFile, row.bytesInFile);
            EXPECT_EQ(download.Result().bytesLoaded, row.bytesLoaded);
            EXPECT_EQ(download.Result().path, path_.string());
            EXPECT_EQ(download.Result().MayLeavePart(), row.outcome == WrongCount);
            EXPECT_EQ(shown_, row.further);
        }
    }
}

/// What has arrived before the last line leaves waits to be looked at, and is heard as what it is.
TEST_F(DownloadTest, TakesNothingThatCameBeforeItsLastLineForItsVerdict) {
    WriteFile("1\n");
    Download* current = nullptr;
    // Of an earlier load, and of this one.
    std::vector<std::string> waiting{"X\r\nZ\r\nL\r\nLoaded 1 bytes\r\n",
                                     "X\r\nZ\r\nL\r\nNot loaded: line 7 is bad\r\n"};
    Download download(
        path_.string(), std::nullopt,
        {[&](std::string_view) { return true; }, [](std::string_view) {}, [](const std::string&) {},
         [&] {
             current->Hear(waiting.back());
             waiting.pop_back();
         }});
    current = &download;
    while (download.IsSending())
        download.Step();
    EXPECT_FALSE(download.IsOver());
    download.Hear("\r\nNot loaded: line 1 is bad\r\n");
    EXPECT_EQ(download.Result().outcome, DownloadOutcome::Refused);
}

/// Such a file ends the load itself, and the rest of its lines are commands to the board.
TEST_F(DownloadTest, WhatComesAfterAnEarlyEndIsNotGathered) {
    WriteFile("1,2\n]\n" + std::string(600, '\n'));
    Download download = Start();
    while (download.LinesSent() < 2)
        download.Step();
    download.Hear("X\r\nZ\r\nL\r\nLoaded 2 bytes\r\n");
    const std::string noise(std::size_t{1} << 20, '.');
    const std::size_t heap = HeapInUse();
    while (download.IsSending()) {
        download.Hear(noise);
        download.Hear("\r\nLoaded 9 bytes\r\n");
        download.Step();
    }
    EXPECT_LT(HeapInUse(), heap + 2 * noise.size());
    EXPECT_EQ(download.Result().verdict, "Loaded 2 bytes");
    EXPECT_TRUE(download.IsOver());
}

TEST_F(DownloadTest, TellsWhatIsLeftOnTheBoard) {
    WriteFile("1\n2\n");
    for (int steps = 0; steps <= 5; ++steps) {
        for (const bool isLost : {true, false}) {
            SCOPED_TRACE(std::to_string(steps) + (isLost ? " lost" : " cancelled"));
            Download download = Start();
            for (int step = 0; step < steps; ++step)
                download.Step();
            if (isLost) download.LoseLine();
            download.Cancel();
            const bool isSent = steps == 5;
            EXPECT_EQ(download.Result().outcome, isLost   ? DownloadOutcome::LineLost
                                                 : isSent ? DownloadOutcome::NoVerdict
                                                          : DownloadOutcome::Cancelled);
            EXPECT_EQ(download.Result().replacedProgram, steps >= 2);
            EXPECT_EQ(download.Result().MayLeavePart(), steps >= 2 && (isLost || !isSent));
        }
    }
}

TEST_F(DownloadTest, TheFileMayChangeOrGoMeanwhile) {
    for (const bool goes : {true, false}) {
        writes_.clear();
        WriteFile("1\n2\n3\n");
        Download download = Start();
        EXPECT_DOUBLE_EQ(download.Fraction(), 0.0);
        while (download.LinesSent() == 0)
            download.Step();
        EXPECT_DOUBLE_EQ(download.Fraction(), 1.0 / 3);
        if (goes) {
            std::filesystem::remove(path_);
        } else {
            WriteFile("9\n9\n9\n9\n");
        }
        Run(download);
        EXPECT_THAT(writes_, ElementsAre("X\rZ\r", "L", "1\r\n", "2\r\n", "3\r\n", "]\r"));
        EXPECT_DOUBLE_EQ(download.Fraction(), 1.0);
    }
}

TEST_F(DownloadTest, ACancelledLoadIsEnded) {
    WriteFile("1\n2\n3\n");
    Download download = Start();
    while (download.LinesSent() < 2)
        download.Step();
    download.Cancel();
    download.Cancel();
    EXPECT_TRUE(download.IsOver());
    download.Step();
    EXPECT_THAT(writes_, ElementsAre("X\rZ\r", "L", "1\r\n", "2\r\n", "\x18]\r"));
    EXPECT_EQ(shown_, kCleared + "\r\nDownload Cancelled. Sent 2 Lines. " + kHalf);
    Board board;
    ReceiveCharacters(board, "L53,0,0]");
    for (const std::string& text : writes_)
        ReceiveCharacters(board, text);
    TakeOutput(board);
    ReceiveCharacters(board, "G\r");
    EXPECT_EQ(TakeOutput(board), "G\r\nNo program\r\n");
}

/// As short as the lines of a robot's program are: on the average 7.6 characters with their end.
TEST_F(DownloadTest, TakesLittleLongerThanTheWire) {
    test::Program explorer(test::ReadFile(ZENTRO_EXAMPLES_FOLDER "/explorer.txt"));
    ASSERT_TRUE(explorer.Compile());
    Run(explorer.object.text);
    std::size_t characters = 0;
    for (const std::string& text : writes_)
        characters += text.size();
    constexpr double kCharactersPerSecond = 960;
    const double wire = static_cast<double>(characters) / kCharactersPerSecond;
    EXPECT_GE(duration<double>(taken_).count(), wire);
    EXPECT_LE(duration<double>(taken_).count(), 1.2 * wire);
}

/// Each example, sent while something else runs in the board's debug mode.
TEST_F(DownloadTest, EveryExampleReachesTheBoard) {
    int examples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZENTRO_EXAMPLES_FOLDER)) {
        if (entry.path().extension() != ".txt") continue;
        SCOPED_TRACE(entry.path());
        test::Program program(test::ReadFile(entry.path()));
        for (const auto& part :
             std::filesystem::directory_iterator(ZENTRO_EXAMPLES_FOLDER "/patrol")) {
            program.WithFile("patrol/" + part.path().filename().string(),
                             test::ReadFile(part.path()));
        }
        ASSERT_TRUE(program.Compile());
        writes_.clear();
        Run(program.object.text);

        Board expected;
        ASSERT_TRUE(LoadObjectText(expected, program.object.text).empty());
        Board board;
        ReceiveCharacters(board, "L53,0,0]\rD\r");
        for (const std::string& text : writes_)
            ReceiveCharacters(board, text);
        EXPECT_TRUE(board.memory == expected.memory);
        EXPECT_THAT(TakeOutput(board), HasSubstr("\r\nLoaded "));
        ReceiveCharacters(board, "G\r");
        EXPECT_GT(RunInstructions(board, 100), 0U);
        ++examples;
    }
    EXPECT_GE(examples, 11);
}

}  // namespace
}  // namespace zentro
