#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "board/decoded_program.h"

namespace zentro {

/// The bytes of the board, and beside them what was decoded of them. Every store goes through this
/// class, so a program that writes into its own instructions runs what it wrote.
class Memory {
  public:
    /// The address must be below kMemorySize.
    std::uint8_t Byte(std::size_t address) const { return bytes_[address]; }

    /// The high byte stands first. The address must be below kMemorySize - 1.
    std::uint16_t Word(std::size_t address) const {
        std::uint16_t word = 0;
        std::memcpy(&word, &bytes_[address], sizeof word);
        return HighByteFirst(word);
    }

    /// Keeps the low eight bits of the value.
    void StoreByte(std::size_t address, unsigned value) {
        StoreByteBehindCode(address, value);
        if (address < decoded_.End()) [[unlikely]]
            decoded_.ByteWasWritten(address);
    }

    /// Keeps the low sixteen bits of the value.
    void StoreWord(std::size_t address, unsigned value) {
        StoreWordBehindCode(address, value);
        if (address < decoded_.End()) [[unlikely]] {
            decoded_.ByteWasWritten(address);
            decoded_.ByteWasWritten(address + 1);
        }
    }

    /// The same for addresses that are known to be at least Decoded().End().
    void StoreByteBehindCode(std::size_t address, unsigned value) {
        bytes_[address] = static_cast<std::uint8_t>(value);
    }
    void StoreWordBehindCode(std::size_t address, unsigned value) {
        const std::uint16_t word = HighByteFirst(static_cast<std::uint16_t>(value));
        std::memcpy(&bytes_[address], &word, sizeof word);
    }
    template <std::size_t kSize>
    void CopyBehindCode(std::size_t to, std::size_t from) {
        std::array<std::uint8_t, kSize> value;
        std::memcpy(value.data(), &bytes_[from], kSize);
        std::memcpy(&bytes_[to], value.data(), kSize);
    }
    template <std::size_t kSize>
    void ClearBehindCode(std::size_t address) {
        std::memset(&bytes_[address], 0, kSize);
    }

    /// Every byte is 0 again.
    void Clear();

    /// What was decoded of the bytes. It belongs to them: to decode more changes nothing.
    DecodedProgram& Decoded() { return decoded_; }
    const DecodedProgram& Decoded() const { return decoded_; }

    /// What was decoded is not compared: it follows from the bytes.
    bool operator==(const Memory& other) const { return bytes_ == other.bytes_; }

  private:
    /// Between the byte order of the machine that runs this and the board's: the same both ways. A
    /// word moves as a whole, because a machine reads back badly what it has just stored in pieces.
    static constexpr std::uint16_t HighByteFirst(std::uint16_t word) {
        if constexpr (std::endian::native == std::endian::big) return word;
        return std::rotl(word, 8);
    }

    std::array<std::uint8_t, kMemorySize> bytes_{};
    DecodedProgram decoded_;
};

}  // namespace zentro
