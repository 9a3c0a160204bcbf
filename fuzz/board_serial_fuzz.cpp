// Any characters on the serial line, at any time and in any state: the board must stay a board.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "board/board.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint64_t kStepsPerTick = 200;
    static zentro::Board board;  // too large for every stack; made new below
    board = {};
    for (std::size_t at = 0; at < size; ++at) {
        zentro::ReceiveCharacters(board, {reinterpret_cast<const char*>(data + at), 1});
        if (zentro::RunInstructions(board, kStepsPerTick) > kStepsPerTick) std::abort();
        zentro::AdvanceTick(board);
        if (at % 16 == 0) zentro::TakeOutput(board);
    }
    // Whatever came, this brings it back to its command line.
    zentro::ReceiveCharacters(board, "W]\rX\rZ\r");
    zentro::TakeOutput(board);
    zentro::ReceiveCharacters(board, "W\r");
    if (zentro::TakeOutput(board) != "W\r\nKinetron\r\n") std::abort();
    if (board.outputs != zentro::Outputs{}) std::abort();
    return 0;
}
