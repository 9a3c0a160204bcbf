#pragma once

#include <cstdint>
#include <string>

#include "board/memory.h"
#include "faults/program_words.h"

namespace zentro {

struct Board;

/// Why the board stopped a program.
struct FaultReport {
    Fault fault = Fault::None;
    std::uint32_t address = 0;  ///< of the instruction that failed; may lie just behind memory
    std::uint8_t opcode = 0;    ///< the byte there
    std::string text;           ///< a sentence for the user, UTF-8, without a full stop
    /// Of the variables in that line, "Total = 9, Count = 0", and which calls led there, "Mean was
    /// called in line 9, Work in line 20"; empty: there are none, or they are not known.
    std::string values = {};
    std::string calls = {};

    /// All of it in sentences.
    std::string WholeText() const;
};

/// Puts the last fault of the board into plain words, with the values that led to it: "Division by
/// zero in line 14, Mean = Total / Count: Count is 0 when Total is divided by it". Of a program
/// that the words are not about it names the instruction: "Division by zero at [0010]: DIVIDE BYTE
/// divides by [0020], which holds 0".
FaultReport DescribeFault(const Board& board, const ProgramWords& words);

}  // namespace zentro
