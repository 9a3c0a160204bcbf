// A day at the terminal in the board's own time: nothing that the session keeps may grow.
#include <QTemporaryDir>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <unistd.h>

#include "board/board.h"
#include "board/loader.h"
#include "tests/comms/recording_link.h"
#include "tests/comms/terminal_fixture.h"
#include "tests/support/heap.h"

namespace zentro {
namespace {

/// TRANSMIT of "A" to "C" and a line end; WAIT FOR TIME 7; JUMP to the start.
constexpr std::string_view kTalking =
    "13,0,21\r\n13,0,22\r\n13,0,23\r\n13,0,24\r\n13,0,25\r\n70,0,26\r\n53,0,0\r\n"
    "65,66,67,13,10\r\n0,7\r\n";

constexpr std::uint64_t kTicksPerMinute = 60 * kTicksPerSecond;

std::size_t ResidentBytes() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    statistics >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The session at one end of a line and the board at the other.
class Conversation {
  public:
    Conversation() {
        EXPECT_EQ(LoadObjectText(board_, kTalking), "");
        terminal_.session.OpenConnection("board");
        EXPECT_EQ(terminal_.opened, 1);
        EXPECT_EQ(terminal_.session.StartLog(folder_.filePath("day.Log").toStdString(), "today"),
                  "");
    }

    /// Reports, steps or a program that talks, by turns.
    void LiveThroughMinute(std::uint64_t minute) {
        static constexpr std::array<std::string_view, 3> kOccupations{"R", "D", "G"};
        const bool steps = minute % kOccupations.size() == 1;
        Type(kOccupations[minute % kOccupations.size()]);
        Type("\r");
        for (std::uint64_t tick = 0; tick < kTicksPerMinute; ++tick) {
            if (steps && tick % 10 == 0) Type("\r");
            RunInstructions(board_, 100);
            AdvanceTick(board_);
            TakeChanges(board_);
            PassOn();
        }
        Type(minute % kOccupations.size() == 0 ? "\r" : "X\r");
    }

    const TerminalScreen& Screen() const { return terminal_.session.Screen(); }
    std::size_t CharactersSent() const { return charactersSent_; }
    const Terminal& Told() const { return terminal_; }

  private:
    void Type(std::string_view keys) {
        for (const char key : keys)
            terminal_.session.PressKey(key);
        ReceiveCharacters(board_, std::exchange(link_.written, {}));
        PassOn();
    }

    void PassOn() {
        const std::string sent = TakeOutput(board_);
        charactersSent_ += sent.size();
        if (!sent.empty()) terminal_.session.WriteToScreen(sent);
    }

    QTemporaryDir folder_;
    Board board_;
    RecordingLink link_;
    Terminal terminal_{link_};
    std::size_t charactersSent_ = 0;
};

/// ZENTRO_TERMINAL_HOURS asks for another length; a day has 24.
std::uint64_t Hours() {
    const char* asked = std::getenv("ZENTRO_TERMINAL_HOURS");
    return asked == nullptr ? 1 : std::stoul(asked);
}

TEST(TerminalTraffic, KeepsNoMoreAfterADayThanAfterItsFirstHour) {
    constexpr std::size_t kAllowedGrowth = std::size_t{64} << 10;
    const std::uint64_t minutes = Hours() * 60;
    ASSERT_GT(minutes, 0U);
    Conversation conversation;
    std::size_t heap = 0;
    std::size_t resident = 0;
    for (std::uint64_t minute = 0; minute < minutes; ++minute) {
        conversation.LiveThroughMinute(minute);
        ASSERT_LE(conversation.Screen().Text().size(), kMaxScreenText);
        ASSERT_LE(conversation.Screen().ScreenLineCount(), kScreenLines);
        ASSERT_LE(conversation.Screen().PendingEscape().size(), kMaxHeldEscape);
        // Of a shorter time the first sixth stands for the first hour.
        if (minute + 1 != std::min<std::uint64_t>(60, minutes / 6)) continue;
        heap = HeapInUse();
        resident = ResidentBytes();
    }
    EXPECT_GT(conversation.CharactersSent(), minutes * 30'000);
    EXPECT_TRUE(conversation.Told().told.empty());
    std::cout << Hours() << " h, " << conversation.CharactersSent() << " characters; resident kB "
              << resident / 1024 << " then " << ResidentBytes() / 1024 << ", heap " << heap / 1024
              << " then " << HeapInUse() / 1024 << "\n";
    EXPECT_LE(HeapInUse(), heap + kAllowedGrowth);
}

}  // namespace
}  // namespace zentro
