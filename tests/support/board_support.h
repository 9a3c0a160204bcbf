#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/board.h"

namespace zentro {

using Bytes = std::vector<int>;

/// Stores bytes as a part of the loaded program.
inline void Put(Board& board, std::uint32_t address, const Bytes& bytes) {
    for (int byte : bytes) {
        board.memory.StoreByte(address++, static_cast<unsigned>(byte));
    }
    board.processor.programSize = std::max(board.processor.programSize, address);
}

/// The same for data behind the program, where the stack may grow.
inline void Poke(Board& board, std::uint32_t address, const Bytes& bytes) {
    const std::uint32_t size = board.processor.programSize;
    Put(board, address, bytes);
    board.processor.programSize = size;
}

inline Bytes Peek(const Board& board, std::uint32_t address, std::size_t count) {
    Bytes bytes;
    for (std::size_t offset = 0; offset < count; ++offset) {
        bytes.push_back(board.memory.Byte(address + static_cast<std::uint32_t>(offset)));
    }
    return bytes;
}

/// What is on the data stack, what was pushed first standing first.
inline Bytes Pushed(const Board& board) {
    Bytes bytes;
    for (std::uint32_t at = kMemorySize; at-- > board.processor.stackTop;) {
        bytes.push_back(board.memory.Byte(at));
    }
    return bytes;
}

/// What the board answers to typed characters at once and in the instructions that follow.
inline std::string Say(Board& board, std::string_view characters) {
    ReceiveCharacters(board, characters);
    RunInstructions(board, 1000);
    return TakeOutput(board);
}

}  // namespace zentro
