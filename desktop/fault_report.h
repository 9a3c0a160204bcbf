#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "board/memory.h"

namespace zentro {

struct Board;

/// What stands at an address of the program: "Count". Empty when nothing is known; the function
/// itself may be empty.
using NameOfAddress = std::function<std::string(std::uint32_t address)>;

/// Why the board stopped a program.
struct FaultReport {
    Fault fault = Fault::None;
    std::uint32_t address = 0;  ///< of the instruction that failed; may lie just behind memory
    std::uint8_t opcode = 0;    ///< the byte there
    std::string text;           ///< a sentence for the user, UTF-8, without a full stop
};

/// Puts the last fault of the board into plain words, with the values that led to it: "Division by
/// zero at [0010]: DIVIDE BYTE by Count, which holds 0".
FaultReport DescribeFault(const Board& board, const NameOfAddress& nameOf);

}  // namespace zentro
