#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "model/instruction.h"

namespace zentro {

/// The board's memory in bytes; addresses run from 0 to one less.
inline constexpr std::uint32_t kMemorySize = 32768;

/// The longest instruction in bytes.
inline constexpr std::uint32_t kMaxInstructionSize = 7;

/// Why a program was stopped by the board.
enum class Fault : std::uint8_t {
    None,
    UnknownOpcode,
    AddressOutsideMemory,
    DataStackOverflow,
    DataStackUnderflow,
    ReturnStackOverflow,
    ReturnStackUnderflow,
    DivisionByZero,
    NoEventToComplete,
};

/// Stands in a decoded instruction's opcode where memory has not been decoded yet.
inline constexpr Opcode kNotDecoded{254};
/// Stands there when the bytes are no instruction that could run: `a` is then the Fault and `b` the
/// number of bytes to skip.
inline constexpr Opcode kFaulty{255};

/// An instruction ready to run: its operands are taken apart, and every address among them was
/// found to lie in memory with all the bytes that the instruction uses there.
struct DecodedInstruction {
    std::uint16_t a = 0;
    std::uint16_t b = 0;
    std::uint16_t c = 0;
    Opcode opcode = kNotDecoded;
};

/// The bytes of the board, and beside them the instructions that were decoded from them. Every
/// store goes through this class, so a program that writes into its own instructions runs what it
/// wrote.
class Memory {
  public:
    /// The address must be below kMemorySize.
    std::uint8_t Byte(std::uint32_t address) const { return bytes_[address]; }

    /// The high byte stands first. The address must be below kMemorySize - 1.
    std::uint16_t Word(std::uint32_t address) const {
        std::uint16_t word = 0;
        std::memcpy(&word, &bytes_[address], sizeof word);
        return HighByteFirst(word);
    }

    /// Keeps the low eight bits of the value.
    void StoreByte(std::uint32_t address, unsigned value) {
        bytes_[address] = static_cast<std::uint8_t>(value);
        if (isCode_[address] != 0) [[unlikely]]
            ForgetInstructionsOver(address);
    }

    /// Keeps the low sixteen bits of the value.
    void StoreWord(std::uint32_t address, unsigned value) {
        const std::uint16_t word = HighByteFirst(static_cast<std::uint16_t>(value));
        std::memcpy(&bytes_[address], &word, sizeof word);
        std::uint16_t codeMarks = 0;
        std::memcpy(&codeMarks, &isCode_[address], sizeof codeMarks);
        if (codeMarks != 0) [[unlikely]] {
            ForgetInstructionsOver(address);
            ForgetInstructionsOver(address + 1);
        }
    }

    /// Every byte is 0 again.
    void Clear();

    /// What was decoded at an address, kNotDecoded if nothing was. Running on from the last byte of
    /// memory leads at most kMaxInstructionSize bytes further.
    const DecodedInstruction& DecodedAt(std::uint32_t address) const { return decoded_[address]; }

    /// Decodes the instruction at an address, which has the bounds of DecodedAt.
    void Decode(std::uint32_t address);

    /// What was decoded is not compared: it follows from the bytes.
    bool operator==(const Memory& other) const { return bytes_ == other.bytes_; }

  private:
    /// Between the byte order of the machine that runs this and the board's: the same both ways. A
    /// word moves as a whole, because a machine reads back badly what it has just stored in pieces.
    static constexpr std::uint16_t HighByteFirst(std::uint16_t word) {
        if constexpr (std::endian::native == std::endian::big) return word;
        return static_cast<std::uint16_t>(word << 8 | word >> 8);
    }

    void ForgetInstructionsOver(std::uint32_t address);

    std::array<std::uint8_t, kMemorySize> bytes_{};
    std::array<std::uint8_t, kMemorySize> isCode_{};  ///< 1 where a decoded instruction covers it
    std::array<DecodedInstruction, kMemorySize + kMaxInstructionSize> decoded_{};
};

}  // namespace zentro
