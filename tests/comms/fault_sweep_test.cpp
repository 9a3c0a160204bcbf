// Every fault of a line at every character of a download: the download ends, and the next one over
// a sound line puts things right.
#include <QTemporaryDir>
#include <fstream>
#include <gtest/gtest.h>

#include "board/board.h"
#include "comms/download.h"
#include "comms/terminal_screen.h"
#include "comms/virtual_board_link.h"
#include "tests/comms/faulty_link.h"

namespace zentro {
namespace {

/// INCREMENT BYTE [0020], three times; END; the bytes behind it.
constexpr std::string_view kProgram =
    "56,0,20\r\n56,0,20\r\n56,0,20\r\n5\r\n0,0,0,0,0\r\n0,0,0,0,0\r\n7\r\n";
constexpr std::uint32_t kCounted = 20;

enum class FaultKind : std::uint8_t { Drop, Garble, Delay, Cut };

/// A board behind a line that fails, and what a terminal shows of it.
class Workplace {
  public:
    Workplace() {
        EXPECT_TRUE(folder_.isValid());
        std::ofstream(path_, std::ios::binary) << kProgram;
        EXPECT_EQ(line_.Open(kVirtualBoardPort).handle, 1);
    }

    void Order(FaultKind kind, Direction direction, std::size_t at) {
        switch (kind) {
            case FaultKind::Drop: line_.DropByte(direction, at); break;
            case FaultKind::Garble: line_.GarbleByte(direction, at); break;
            case FaultKind::Delay: line_.DelayByte(direction, at, 4); break;
            case FaultKind::Cut: line_.CutAt(direction, at); break;
        }
    }

    DownloadOutcome Download() {
        constexpr int kMoreThanEnough = 100;
        bool isLost = false;
        const auto write = [&](std::string_view bytes) {
            written_ += bytes.size();
            isLost = line_.Write(bytes) != bytes.size() || isLost;
            return !isLost;
        };
        zentro::Download download(
            path_, std::nullopt,
            {write, [&](std::string_view text) { screen_.ProcessScreenText(text); },
             [](const std::string& text) { ADD_FAILURE() << text; }});
        for (int step = 0; !download.IsOver() && step < kMoreThanEnough; ++step) {
            download.Step();
            LetTimePass();
            const std::optional<std::string> heard = Show();
            if (!heard) download.LoseLine();
            download.Hear(heard.value_or(""));
        }
        download.Cancel();  // unless the board has said what it holds
        Show();
        return download.Result().outcome;
    }

    /// The line is sound again and the port opened anew.
    void Mend() {
        line_.Mend();
        line_.Close();
        ASSERT_EQ(line_.Open(kVirtualBoardPort).handle, 1);
    }

    bool ProgramRuns() {
        line_.Write("G\r");
        LetTimePass();
        Show();
        return board_.processor.end == EndReason::End && board_.memory.Byte(kCounted) == 10;
    }

    std::uint32_t BytesOnBoard() const { return board_.processor.programSize; }
    std::size_t Written() const { return written_; }
    std::size_t Read() const { return read_; }
    const TerminalScreen& Screen() const { return screen_; }

  private:
    void LetTimePass() {
        RunInstructions(board_, 1000);
        AdvanceTick(board_);
    }

    /// Nothing when the line is lost.
    std::optional<std::string> Show() {
        constexpr std::size_t kAtOnce = 16;
        const std::optional<std::string> bytes = line_.Read(kAtOnce);
        read_ += bytes.value_or("").size();
        screen_.ProcessScreenText(bytes.value_or(""));
        return bytes;
    }

    QTemporaryDir folder_;
    std::string path_ = folder_.filePath("program.obj").toStdString();
    Board board_;
    VirtualBoardLink inner_{board_};
    FaultyLink line_{&inner_};
    TerminalScreen screen_;
    std::size_t written_ = 0;
    std::size_t read_ = 0;
};

TEST(FaultSweep, TheNextDownloadPutsRightWhatAnyFaultOfOneByteSpoilt) {
    Workplace sound;
    ASSERT_EQ(sound.Download(), DownloadOutcome::Whole);
    ASSERT_TRUE(sound.ProgramRuns());
    int faults = 0;
    for (const Direction direction : {Direction::ToBoard, Direction::FromBoard}) {
        const bool toBoard = direction == Direction::ToBoard;
        const std::size_t length = toBoard ? sound.Written() : sound.Read();
        for (std::size_t at = 0; at < length; ++at) {
            for (const FaultKind kind :
                 {FaultKind::Drop, FaultKind::Garble, FaultKind::Delay, FaultKind::Cut}) {
                const std::string fault = std::string(toBoard ? "to" : "from") + " the board, " +
                                          std::to_string(static_cast<int>(kind)) + " at " +
                                          std::to_string(at);
                Workplace workplace;
                workplace.Order(kind, direction, at);
                const DownloadOutcome outcome = workplace.Download();
                if (toBoard && kind == FaultKind::Cut) {
                    EXPECT_EQ(outcome, DownloadOutcome::LineLost) << fault;
                }
                // A file whose bytes are fewer or more on the board is never called whole.
                if (outcome == DownloadOutcome::Whole) {
                    EXPECT_EQ(workplace.BytesOnBoard(), sound.BytesOnBoard()) << fault;
                }
                EXPECT_LE(workplace.Screen().Text().size(), kMaxScreenText);
                workplace.Mend();
                EXPECT_EQ(workplace.Download(), DownloadOutcome::Whole) << fault;
                EXPECT_TRUE(workplace.ProgramRuns()) << fault;
                ++faults;
            }
        }
    }
    RecordProperty("faults", faults);
    std::cout << faults << " faults injected and survived\n";
}

}  // namespace
}  // namespace zentro
