// What the board is doing, without a window.
#include "desktop/board_state.h"

#include <gtest/gtest.h>

#include "comms/virtual_board_link.h"
#include "tests/comms/board_fixture.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

using State = BoardActivity::State;
using Extent = HeldProgram::Extent;

class BoardStateTest : public UiTest {
  protected:
    void Connect(const QString& port = kVirtualBoardPort) {
        board.Begin(port).OpenConnection(port.toStdString());
    }
    bool Becomes(State state) {
        return QTest::qWaitFor([&] { return board.Activity().state == state; });
    }
    void Send(const QByteArray& objectText, bool runs) {
        WriteFile("program.obj", objectText);
        board.Send(FilePath("program.obj"), nullptr, runs);
        ASSERT_TRUE(QTest::qWaitFor([&] { return board.Program().extent != Extent::Half; }));
    }

    QStringList told;
    BoardState board{[this](const std::string& text) { told += QString::fromStdString(text); },
                     [] { return std::vector<PortDescription>(); }};
};

constexpr const char* kJumpsToItself = "53,0,0\r\n]";
constexpr const char* kEndsAtOnce = "2\r\n]";

TEST_F(BoardStateTest, FollowsAProgramFromItsLoadToItsEnd) {
    EXPECT_EQ(board.Kind(), BoardKind::None);
    EXPECT_EQ(board.Activity().state, State::Unknown);
    Connect();
    EXPECT_EQ(board.Connection(), ConnectionState::Connected);
    EXPECT_EQ(board.Kind(), BoardKind::Virtual);
    EXPECT_EQ(board.Program().extent, Extent::None);
    EXPECT_EQ(board.Activity().state, State::NoProgram);
    Send(kJumpsToItself, false);
    EXPECT_EQ(board.Program().extent, Extent::Whole);
    EXPECT_EQ(board.Program().name, "program.obj");
    EXPECT_TRUE(Becomes(State::Ready));
    board.VirtualBoard().Run();
    EXPECT_TRUE(Becomes(State::Running));
    EXPECT_FALSE(board.Activity().address) << "too fast to be followed";
    board.VirtualBoard().SetSpeed({BoardSpeed::Kind::SlowMotion, 1});
    EXPECT_EQ(board.Activity().address, 0);
    board.VirtualBoard().Pause();
    EXPECT_EQ(board.Activity().state, State::Held);
    EXPECT_EQ(board.Activity().address, 0);
    board.VirtualBoard().Stop();
    EXPECT_EQ(board.Activity().state, State::Ended);
    EXPECT_FALSE(board.Activity().address);
}

TEST_F(BoardStateTest, HoldsAProgramThatNobodySees) {
    board.VirtualBoard();
    board.SetVirtualBoardSeen(true);
    Connect();
    Send(kJumpsToItself, true);
    EXPECT_TRUE(Becomes(State::Running));
    board.End();
    EXPECT_EQ(board.Kind(), BoardKind::Virtual) << "its window is open";
    EXPECT_FALSE(board.VirtualBoard().IsPaused());
    board.SetVirtualBoardSeen(false);
    EXPECT_TRUE(board.VirtualBoard().IsPaused());
    EXPECT_EQ(board.Kind(), BoardKind::None);
    EXPECT_FALSE(board.CanReadNow());
}

TEST_F(BoardStateTest, KnowsThatADownloadWasBrokenOff) {
    Connect();
    QByteArray large;
    for (int line = 0; line < 9000; ++line)
        large += "0,0,0\r\n";
    WriteFile("large.obj", large + "]");
    board.Send(FilePath("large.obj"), nullptr, true);
    EXPECT_EQ(board.Program().extent, Extent::Half);
    ASSERT_TRUE(board.IsSending());
    QTest::qWait(20);
    board.CancelSending();
    EXPECT_FALSE(board.IsSending());
    EXPECT_EQ(board.Program().extent, Extent::Half);
    EXPECT_EQ(board.Program().name, "large.obj");
    EXPECT_NE(board.Activity().state, State::Running);
    // The board says that it has thrown away what it got.
    EXPECT_TRUE(QTest::qWaitFor([&] { return board.Program().extent == Extent::None; }));
    EXPECT_FALSE(board.VirtualBoard().HasProgram());
    Send(kEndsAtOnce, true);
    EXPECT_EQ(board.Program().extent, Extent::Whole);
    EXPECT_TRUE(Becomes(State::Ended));
    // A file that cannot be read leaves the board as it is.
    board.Send(FilePath("missing.obj"), nullptr, true);
    EXPECT_EQ(board.Program().extent, Extent::Whole);
    EXPECT_EQ(board.Program().name, "program.obj");
    EXPECT_EQ(told.size(), 1);
}

TEST_F(BoardStateTest, KnowsThatTheLineIsLostAndThatAnotherPortIsAnotherBoard) {
    Connect();
    Send(kEndsAtOnce, false);
    board.VirtualBoard().Link().Unplug();
    EXPECT_TRUE(QTest::qWaitFor([&] { return board.Connection() == ConnectionState::Lost; }));
    ScriptedBoard silent;
    silent.answer = [](const std::string&) { return std::string(); };
    Connect(QString::fromStdString(silent.PortName()));
    EXPECT_EQ(board.Kind(), BoardKind::Port);
    EXPECT_EQ(board.Connection(), ConnectionState::Connected);
    EXPECT_EQ(board.Program().extent, Extent::Unknown);
    EXPECT_FALSE(board.CanReadNow());
    // In debug mode the screen tells where it stands.
    board.Session()->WriteToScreen("[00A0] NOP\r\n" + std::string(kDebugPrompt));
    EXPECT_EQ(board.Activity().state, State::Held);
    EXPECT_EQ(board.Activity().address, 0xA0);
    board.Session()->WriteToScreen("\r\nrunning");
    EXPECT_EQ(board.Activity().state, State::Unknown);
    // Back at the virtual board, it still holds its program.
    Connect();
    EXPECT_EQ(board.Program().name, "program.obj");
}

}  // namespace
}  // namespace zentro
