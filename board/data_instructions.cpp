#include "board/board.h"
#include "board/handlers.h"

namespace zentro::handle {

void RandomizeByte(Board& board, const DecodedInstruction& instruction) {
    // A linear congruential generator with the customary constants; its top bits are the best ones.
    board.random = board.random * 1664525U + 1013904223U;
    board.memory.StoreByte(instruction.a, board.random >> 24);
}

void ReadEeprom(Board& board, const DecodedInstruction& instruction) {
    board.memory.StoreByte(instruction.b, board.eeprom[board.memory.Byte(instruction.a)]);
}

void WriteEeprom(Board& board, const DecodedInstruction& instruction) {
    board.eeprom[board.memory.Byte(instruction.a)] = board.memory.Byte(instruction.b);
}

}  // namespace zentro::handle
