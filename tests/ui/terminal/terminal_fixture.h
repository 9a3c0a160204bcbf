#pragma once

#include <QTimer>
#include <string>
#include <vector>

#include "board/board.h"
#include "comms/terminal_session.h"
#include "comms/virtual_board_link.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {

/// A virtual board whose line takes the time of a serial one.
class PacedLink : public VirtualBoardLink {
  public:
    using VirtualBoardLink::VirtualBoardLink;
    bool TakesTime() const override { return true; }
};

/// A board that runs while the event loop does, with a terminal session that is not connected yet.
class TerminalTest : public UiTest {
  protected:
    TerminalTest() {
        host_.setInterval(1);
        QObject::connect(&host_, &QTimer::timeout, [this] { RunTicks(board, 1, 1000); });
        host_.start();
    }

    void Unplug() {
        link.Unplug();
        present_ = false;
    }
    void PlugIn() { present_ = true; }

    bool Shows(std::string_view text) const {
        return session.Screen().Text().find(text) != std::string::npos;
    }
    /// Puts bytes into the board's memory from address 0 on, as its program.
    void Load(const std::string& numbers) { ReceiveCharacters(board, "L" + numbers + "]\r"); }

    Board board;
    PacedLink link{board};
    TerminalSession session{
        link,
        [this](const std::string& message) { dialogs.shown += QString::fromStdString(message); },
        [this] {
            return present_ ? std::vector<PortDescription>{{kVirtualBoardPort, "", {}}}
                            : std::vector<PortDescription>{};
        }};

  private:
    QTimer host_;
    bool present_ = true;
};

}  // namespace zentro
