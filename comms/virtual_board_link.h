#pragma once

#include <cstdint>
#include <memory>

#include "board/board.h"
#include "comms/link.h"

namespace zentro {

/// The port name under which the virtual board of this process is opened.
inline constexpr const char* kVirtualBoardPort = "VIRTUAL BOARD";

/// A way to a virtual board in this process, as fast as it goes. Time passes for the board only
/// when its owner lets it; characters are received at once.
class VirtualBoardLink : public Link {
  public:
    /// The board outlives the link.
    explicit VirtualBoardLink(Board& board) : board_(board) {}

    LinkOpening Open(const std::string& portName) override;
    LineSetup ConfigureLine() override { return LineSetup::Done; }
    bool SaveTimeouts() override { return true; }
    bool MakeReadsReturnAtOnce() override { return true; }
    bool RestoreTimeouts() override { return true; }
    std::optional<std::string> Read(std::size_t limit) override;
    std::size_t Write(std::string_view bytes) override;
    void Flush() override {}
    bool TakesTime() const override { return false; }
    bool Close() override;

    /// Whether somebody is connected. When nobody is, the owner throws away what the board says.
    bool IsOpen() const { return open_; }
    /// The cable is pulled: reads and writes fail until the next Open.
    void Unplug();

  private:
    Board& board_;
    bool open_ = false;
    bool unplugged_ = false;
};

}  // namespace zentro
