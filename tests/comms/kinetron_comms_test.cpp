// The six routines: their words, their results, and the real serial port behind them.
#include "comms/kinetron_comms.h"

#include <QTest>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <numeric>
#include <termios.h>
#include <unistd.h>
#include <vector>

#include "comms/serial_link.h"
#include "comms/virtual_board_link.h"
#include "tests/comms/board_fixture.h"
#include "tests/comms/faulty_link.h"

namespace zentro {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::string AllBytes() {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    return bytes;
}

/// The routines over one link, with what they told the user.
struct Port {
    explicit Port(Link& link)
        : comms(link, [this](const std::string& message) { messages.push_back(message); }) {}

    /// Opens and sets up as the terminal does. Whether that worked.
    bool Connect(const std::string& name) {
        handle = comms.OpenCommPort(name);
        return handle >= 1 && comms.ConfigCommPorts(handle) != 0 &&
               comms.ConfigCommTimeouts(handle, false, true) != 0;
    }
    std::int32_t Write(std::string_view text) { return comms.WriteCommPort(handle, text); }
    /// Reads once. "?" when that failed.
    std::string Read() {
        std::string text;
        std::int32_t count = -1;
        if (comms.ReadCommPort(handle, text, count) == 0) return "?";
        EXPECT_EQ(count, static_cast<std::int32_t>(text.size()));
        return text;
    }
    /// Reads until so many bytes are there, with or without an event loop that runs meanwhile.
    std::string ReadBytes(std::size_t wanted, bool eventLoop) {
        std::string all;
        const auto take = [&] {
            all += Read();
            return all.size() >= wanted;
        };
        if (eventLoop) {
            WaitUntil(take);
        } else {
            for (int look = 0; look < 2000 && !take(); ++look) {
                usleep(1000);
            }
        }
        return all;
    }

    std::vector<std::string> messages;
    KineTronComms comms;
    std::int32_t handle = -1;
};

struct FailureCase {
    const char* name;
    std::function<void(FaultyLink&)> order;
    std::function<std::int32_t(KineTronComms&)> act;
    std::int32_t result;
    const char* message;  ///< empty: none
};

std::int32_t Open(KineTronComms& comms) {
    return comms.OpenCommPort("COM7");
}
std::int32_t Configure(KineTronComms& comms) {
    return comms.ConfigCommPorts(1);
}
std::int32_t SetTimeouts(KineTronComms& comms) {
    return comms.ConfigCommTimeouts(1, false, true);
}
std::int32_t Close(KineTronComms& comms) {
    comms.CloseCommPort(1, true);
    return 0;
}
std::int32_t ConnectAndClose(KineTronComms& comms) {
    SetTimeouts(comms);
    return Close(comms);
}

std::function<void(FaultyLink&)> OpenCode(std::int32_t code) {
    return [code](FaultyLink& link) { link.FailToOpen(code); };
}
std::function<void(FaultyLink&)> Fail(LinkStep step) {
    return [step](FaultyLink& link) { link.FailAt(step); };
}
std::function<void(FaultyLink&)> Throw(LinkStep step) {
    return [step](FaultyLink& link) { link.ThrowAt(step, "odd"); };
}

TEST(KineTronCommsTest, EveryFailureHasItsWordsAndItsResult) {
    const std::vector<FailureCase> cases{
        {"not found", OpenCode(-1), Open, -1,
         "Failed to open 'COM7' - Specified port was not found"},
        {"in use", OpenCode(-2), Open, -2,
         "Failed to open 'COM7' - Specified port is already opened for another application"},
        {"cannot", OpenCode(-3), Open, -3,
         "Failed to open 'COM7' - Specified port can not be opend"},
        {"memory", OpenCode(-4), Open, -4,
         "Failed to open 'COM7' - Not enough memory. Please close some applications and try again"},
        {"default 5", OpenCode(-5), Open, -5,
         "Failed to open 'COM7' - Error in Default Parameters for this port."},
        {"silent 6", OpenCode(-6), Open, -6, ""},
        {"silent 9", OpenCode(-9), Open, -9, ""},
        {"hardware", OpenCode(-10), Open, -10,
         "Failed to open 'COM7' - PC device Hardware not present, connected or switched on"},
        {"default 11", OpenCode(-11), Open, -11,
         "Failed to open 'COM7' - Error in Default Parameters for this port."},
        {"default 12", OpenCode(-12), Open, -12,
         "Failed to open 'COM7' - Error in Default Parameters for this port."},
        {"beyond", OpenCode(-13), Open, -13, ""},
        {"null", OpenCode(0), Open, 0, ""},
        {"advice", [](FaultyLink& link) { link.FailToOpen(-1, "Plug it in."); }, Open, -1,
         "Failed to open 'COM7' - Specified port was not found\n\nPlug it in."},
        {"open throws", Throw(LinkStep::Open), Open, 0,
         "Error Opening Comm Port odd: Input/output error"},
        {"unreadable",
         [](FaultyLink& link) { link.FailToConfigure(LineSetup::SettingsUnreadable); }, Configure,
         0, "System Error obtaining Comm Port Configuration settings"},
        {"refused", [](FaultyLink& link) { link.FailToConfigure(LineSetup::SettingsRefused); },
         Configure, 0, "System Error Setting Comm Port Configuration settings"},
        {"configure throws", Throw(LinkStep::ConfigureLine), Configure, 0,
         "Error Err occurred in ConfigCommPorts. Message reads: odd: Input/output error"},
        {"time-outs unreadable", Fail(LinkStep::SaveTimeouts), SetTimeouts, 0,
         "System Error Occurred Getting Comm port timeout values"},
        {"time-outs unreadable, silently", Fail(LinkStep::SaveTimeouts),
         [](KineTronComms& comms) { return comms.ConfigCommTimeouts(1, false, false); }, 0, ""},
        {"time-outs refused", Fail(LinkStep::MakeReadsReturnAtOnce), SetTimeouts, 0, ""},
        {"time-outs throw", Throw(LinkStep::SaveTimeouts), SetTimeouts, 0,
         "Error 5 occurred in ConfigCommTimeouts. Error message reads odd: Input/output error"},
        {"configure without a port", [](FaultyLink&) {},
         [](KineTronComms& comms) { return comms.ConfigCommPorts(-1); }, 0,
         "System Error obtaining Comm Port Configuration settings"},
        {"time-outs without a port", [](FaultyLink&) {},
         [](KineTronComms& comms) { return comms.ConfigCommTimeouts(-1, false, true); }, 0,
         "System Error Occurred Getting Comm port timeout values"},
        {"nothing to restore", [](FaultyLink&) {},
         [](KineTronComms& comms) { return comms.ConfigCommTimeouts(1, true, true); }, -1,
         "Error. Attempt to restore comm port timeouts before they we read successfully"},
        {"close before time-outs", [](FaultyLink&) {}, Close, 0,
         "Error. Attempt to restore comm port timeouts before they we read successfully"},
        {"close fails", Fail(LinkStep::Close), ConnectAndClose, 0,
         "System Error Closing Comm Port"},
        {"close fails, silently", Fail(LinkStep::Close),
         [](KineTronComms& comms) {
             comms.CloseCommPort(1, false);
             return 0;
         },
         0, ""},
        {"close without a port", [](FaultyLink&) {},
         [](KineTronComms& comms) {
             SetTimeouts(comms);
             comms.CloseCommPort(-1, true);
             return comms.ConfigCommTimeouts(-1, true, true);
         },
         0, "System Error Closing Comm Port"},
        {"flush throws", Throw(LinkStep::Flush), ConnectAndClose, 0, ""},
        {"close throws", Throw(LinkStep::Close), ConnectAndClose, 0,
         "System Error Closing Comm Port"},
        {"write fails", Fail(LinkStep::Write),
         [](KineTronComms& comms) { return comms.WriteCommPort(1, "x"); }, 0,
         "CommPort Write Error. Operating System returned 0"},
        {"write throws", Throw(LinkStep::Write),
         [](KineTronComms& comms) { return comms.WriteCommPort(1, "x"); }, 0,
         "CommPort Write Error. Operating System returned 0"},
        {"write nothing", Fail(LinkStep::Write),
         [](KineTronComms& comms) { return comms.WriteCommPort(1, ""); }, 0, ""},
        {"write without a port", Fail(LinkStep::Write),
         [](KineTronComms& comms) { return comms.WriteCommPort(-1, "x"); }, 0, ""},
    };
    for (const FailureCase& row : cases) {
        SCOPED_TRACE(row.name);
        FaultyLink link;
        row.order(link);
        Port port(link);
        EXPECT_EQ(row.act(port.comms), row.result);
        std::string told;
        for (const std::string& message : port.messages) {
            told += message;
        }
        EXPECT_EQ(told, row.message);
    }
}

TEST(KineTronCommsTest, AFailedReadLeavesTextAndCount) {
    const std::vector<std::pair<std::function<void(FaultyLink&)>, std::vector<std::string>>> cases{
        {Fail(LinkStep::Read), {}},
        {Throw(LinkStep::Read),
         {"An Error has occurred while attempting to read from the comm port. Error text is: odd: "
          "Input/output error"}}};
    for (const auto& [order, messages] : cases) {
        FaultyLink link;
        order(link);
        Port port(link);
        std::string text = "kept";
        std::int32_t count = 99;
        EXPECT_EQ(port.comms.ReadCommPort(1, text, count), 0);
        EXPECT_EQ(text, "kept");
        EXPECT_EQ(count, 99);
        EXPECT_EQ(port.messages, messages);
        EXPECT_EQ(port.comms.ReadCommPort(-1, text, count), 0);
        EXPECT_EQ(link.Calls(LinkStep::Read), 1U);
    }
}

TEST(KineTronCommsTest, ClosingTriesEveryStep) {
    FaultyLink link;
    Port port(link);
    ASSERT_TRUE(port.Connect("any"));
    link.ThrowAt(LinkStep::Flush, "odd");
    link.FailAt(LinkStep::RestoreTimeouts);
    port.comms.CloseCommPort(port.handle, true);
    EXPECT_EQ(link.Calls(LinkStep::RestoreTimeouts), 1U);
    EXPECT_EQ(link.Calls(LinkStep::Close), 1U);
    EXPECT_THAT(port.messages, IsEmpty());
}

TEST(KineTronCommsTest, ALostLineIsToldOnceForEachOpening) {
    FaultyLink link;
    Port port(link);
    for (std::size_t opening = 1; opening <= 2; ++opening) {
        ASSERT_TRUE(port.Connect("any"));
        link.CutAt(Direction::ToBoard, 3);
        EXPECT_EQ(port.Write("abcd"), 3);
        for (int line = 0; line < 300; ++line) {
            EXPECT_EQ(port.Write("line"), 0);
        }
        EXPECT_EQ(port.messages.size(), opening);
    }
}

class SerialPortTest : public BoardFixture {
  protected:
    SerialLink link_;
    Port port_{link_};
};

TEST_F(SerialPortTest, TheBoardAnswers) {
    StartBoard();
    for (const bool eventLoop : {false, true}) {
        ASSERT_TRUE(port_.Connect(PortName()));
        EXPECT_EQ(port_.Read(), "");
        EXPECT_EQ(port_.Write("W\r"), 2);
        EXPECT_EQ(port_.ReadBytes(13, eventLoop), "W\r\nKinetron\r\n");
        EXPECT_EQ(port_.Read(), "");
        port_.comms.CloseCommPort(port_.handle, true);
        EXPECT_EQ(port_.Read(), "?");
        EXPECT_EQ(port_.Write(""), 0);
    }
    EXPECT_THAT(port_.messages, IsEmpty());
}

TEST_F(SerialPortTest, EveryByteComesThroughBothWays) {
    ScriptedBoard board;
    for (const bool eventLoop : {false, true}) {
        ASSERT_TRUE(port_.Connect(board.PortName()));
        board.Send(AllBytes());
        EXPECT_EQ(port_.ReadBytes(256, eventLoop), AllBytes());
        board.SendSlowly("slow", std::chrono::milliseconds(2));
        EXPECT_EQ(port_.ReadBytes(4, true), "slow");
        const std::size_t before = board.Received().size();
        EXPECT_EQ(port_.Write(AllBytes()), 256);
        EXPECT_EQ(board.Received().substr(before), AllBytes());
        port_.comms.CloseCommPort(port_.handle, true);
    }
}

TEST_F(SerialPortTest, AFloodIsTakenInPieces) {
    ScriptedBoard board;
    ASSERT_TRUE(port_.Connect(board.PortName()));
    std::string flood;
    for (int i = 0; i < 100'000; ++i) {
        flood += static_cast<char>(i % 251);
    }
    board.Send(flood);
    std::string all;
    EXPECT_TRUE(WaitUntil([&] {
        const std::string piece = port_.Read();
        EXPECT_LE(piece.size(), kMaxRead);
        all += piece;
        return all.size() >= flood.size();
    }));
    EXPECT_TRUE(all == flood);
}

TEST_F(SerialPortTest, WhatABoardDoesNotTakeAtOnceStillLeaves) {
    ScriptedBoard board;
    ASSERT_TRUE(port_.Connect(board.PortName()));
    const std::string text(50'000, 'x');
    EXPECT_EQ(port_.Write(text), 50'000);
    EXPECT_TRUE(WaitUntil([&] { return board.Received().size() == text.size(); }));
}

TEST_F(SerialPortTest, AnUnpluggedLineFailsAndCanBeOpenedAgain) {
    for (const bool eventLoop : {false, true}) {
        for (const bool writesFirst : {false, true}) {
            port_.messages.clear();
            StartBoard();
            ASSERT_TRUE(port_.Connect(PortName()));
            ClosePort();
            if (writesFirst) {
                EXPECT_EQ(port_.Write("X\r"), 0);
            }
            const auto isLost = [&] { return port_.Read() == "?"; };
            EXPECT_TRUE(eventLoop ? WaitUntil(isLost) : isLost());
            EXPECT_EQ(port_.Write("X\r"), 0);
            EXPECT_EQ(port_.Write("X\r"), 0);
            EXPECT_THAT(port_.messages,
                        ElementsAre("CommPort Write Error. Operating System returned 0"));
            port_.comms.CloseCommPort(port_.handle, true);
            EXPECT_EQ(port_.messages.size(), 1U);
        }
    }
}

TEST_F(SerialPortTest, AHungUpLineLetsTheEventLoopRest) {
    ScriptedBoard board;
    ASSERT_TRUE(port_.Connect(board.PortName()));
    board.HangUp();
    EXPECT_EQ(port_.Write("x"), 0);
    const clock_t before = clock();
    QTest::qWait(300);
    EXPECT_LT(clock() - before, CLOCKS_PER_SEC / 10);
}

TEST_F(SerialPortTest, APortIsUsedByOneAtATime) {
    StartBoard();
    ASSERT_TRUE(port_.Connect(PortName()));
    SerialLink secondLink;
    Port second(secondLink);
    EXPECT_LT(second.comms.OpenCommPort(PortName()), 1);
    ASSERT_EQ(second.messages.size(), 1U);
    const std::string& message = second.messages[0];
    EXPECT_THAT(message, HasSubstr("Failed to open '" + PortName() +
                                   "' - Specified port was not found\n\n" + PortName()));
    EXPECT_THAT(message,
                HasSubstr("in use by comms_tests (process " + std::to_string(getpid()) + ")"));
    // The first one goes on, and when it has closed the second gets the port.
    port_.Write("W\r");
    EXPECT_EQ(port_.ReadBytes(13, false), "W\r\nKinetron\r\n");
    port_.comms.CloseCommPort(port_.handle, true);
    EXPECT_TRUE(second.Connect(PortName()));
}

TEST_F(SerialPortTest, ClosingPutsTheLineBackAsItWas) {
    ScriptedBoard board;
    // Somebody else's settings, kept by a descriptor of theirs.
    const int other = open(board.PortName().c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(other, 0);
    termios before{};
    tcgetattr(other, &before);
    cfsetspeed(&before, B38400);
    before.c_cflag |= PARENB | CSTOPB | CRTSCTS;
    before.c_iflag |= IXON | IXOFF;
    before.c_lflag |= ECHO;
    before.c_cc[VMIN] = 3;
    before.c_cc[VTIME] = 7;
    tcsetattr(other, TCSANOW, &before);
    tcgetattr(other, &before);

    ASSERT_TRUE(port_.Connect(board.PortName()));
    termios during{};
    tcgetattr(other, &during);
    EXPECT_EQ(cfgetospeed(&during), static_cast<speed_t>(B9600));
    EXPECT_EQ(during.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(during.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP), 0U);
    EXPECT_EQ(during.c_lflag & (ECHO | ICANON | ISIG), 0U);
    port_.comms.CloseCommPort(port_.handle, true);

    termios after{};
    tcgetattr(other, &after);
    EXPECT_EQ(after.c_cflag, before.c_cflag);
    EXPECT_EQ(after.c_iflag, before.c_iflag);
    EXPECT_EQ(after.c_lflag, before.c_lflag);
    EXPECT_EQ(after.c_oflag, before.c_oflag);
    EXPECT_EQ(cfgetospeed(&after), cfgetospeed(&before));
    EXPECT_EQ(after.c_cc[VMIN], 3);
    EXPECT_EQ(after.c_cc[VTIME], 7);
    close(other);
}

TEST(VirtualBoardLinkTest, IsABoardInThisProcess) {
    Board board;
    VirtualBoardLink link(board);
    Port port(link);
    EXPECT_FALSE(port.Connect("COM1"));
    EXPECT_EQ(link.Read(1), std::nullopt);
    EXPECT_EQ(link.Write("W\r"), 0U);
    board.output = "said to nobody";
    ASSERT_TRUE(port.Connect(kVirtualBoardPort));
    EXPECT_FALSE(Port(link).Connect(kVirtualBoardPort));
    EXPECT_EQ(port.Write("W\r"), 2);
    EXPECT_EQ(port.Read(), "W\r\nKinetron\r\n");
    EXPECT_EQ(port.Read(), "");
    link.Unplug();
    EXPECT_EQ(port.Read(), "?");
    EXPECT_EQ(port.Write("W\r"), 0);
    port.comms.CloseCommPort(port.handle, true);
    EXPECT_FALSE(link.IsOpen());
    EXPECT_TRUE(port.Connect(kVirtualBoardPort));
}

}  // namespace
}  // namespace zentro
