#include "comms/virtual_board_link.h"

#include <algorithm>

namespace zentro {

namespace {

constexpr std::int32_t kHandle = 1;
constexpr std::int32_t kNotFound = -1;
constexpr std::int32_t kAlreadyOpen = -2;

}  // namespace

LinkOpening VirtualBoardLink::Open(const std::string& portName) {
    if (portName != kVirtualBoardPort) return {kNotFound, {}};
    if (open_) return {kAlreadyOpen, {}};
    // What the board said while nobody listened is lost, as on a real line.
    TakeOutput(board_);
    open_ = true;
    unplugged_ = false;
    return {kHandle, {}};
}

std::optional<std::string> VirtualBoardLink::Read(std::size_t limit) {
    if (!open_ || unplugged_) return std::nullopt;
    // What is not read stays with the board, which sees from it how busy the line is.
    const std::size_t count = std::min(limit, board_.output.size());
    std::string bytes = board_.output.substr(0, count);
    board_.output.erase(0, count);
    return bytes;
}

std::size_t VirtualBoardLink::Write(std::string_view bytes) {
    if (!open_ || unplugged_) return 0;
    ReceiveCharacters(board_, bytes);
    return bytes.size();
}

bool VirtualBoardLink::Close() {
    const bool wasOpen = open_;
    open_ = false;
    return wasOpen;
}

void VirtualBoardLink::Unplug() {
    unplugged_ = true;
}

}  // namespace zentro
