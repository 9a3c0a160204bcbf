#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <vector>

#include "board/decoded_instruction.h"

namespace zentro {

/// What has been decoded of a program, in the order in which it runs: behind each instruction
/// stands the one that follows if it does not jump. Steps are counted for a whole block of them, up
/// to one that may jump. NOPs and JUMPs take no time: they only add to the steps. Where that is
/// good for a long run without a jump, an instruction stands there more than once.
///
/// It follows from the bytes in memory, so it is no part of a board's state: a copy begins empty
/// and decodes what it runs. When a program writes over its instructions all are forgotten. They
/// can be read until the next call of Find or GoOn, because one of them may still be running, but
/// each then takes kNever steps.
class DecodedProgram {
  public:
    DecodedProgram() = default;
    DecodedProgram(const DecodedProgram&) {}
    DecodedProgram& operator=(const DecodedProgram&);
    ~DecodedProgram() = default;

    /// The instruction at an address, decoded if it was not yet.
    const DecodedInstruction* Find(const Memory& memory, std::uint32_t address);

    /// What to carry out at a place that was not decoded; null if there is nothing.
    const DecodedInstruction* GoOn(const Memory& memory, const DecodedInstruction* place);

    /// From now on a pair is carried out one by one.
    [[gnu::cold]] void TakeApart(const DecodedInstruction* pair);

    /// All instructions that were decoded; Find and GoOn move them. The first is none, and stands
    /// for all that are not decoded.
    const DecodedInstruction* Instructions() const { return tables_->instructions.data(); }

    /// For each address the index of what was decoded there, 0 if nothing was.
    const std::uint16_t* Indexes() const { return tables_->indexes.data(); }

    /// Nothing from this address on was decoded.
    std::uint32_t End() const { return end_; }

    /// A program stored a byte below End.
    [[gnu::cold]] void ByteWasWritten(std::size_t address);

    /// The bytes belong to another program.
    void Clear();

    /// Where an instruction may be looked for.
    static constexpr std::size_t kAddresses = kMemorySize + kMaxInstructionSize;

  private:
    struct Tables {
        std::vector<DecodedInstruction> instructions{1};
        std::array<std::uint16_t, kAddresses> indexes{};
        std::bitset<kAddresses> isCode;
        /// Code that the program has written over. It may as well be a variable, so it is decoded
        /// only when the program arrives there.
        std::bitset<kAddresses> isWritten;
        int shortRuns = 0;  ///< how many of the next runs are short
        bool isForgotten = false;
    };

    std::uint16_t Decode(const Memory& memory, std::uint32_t address);
    DecodedInstruction DecodeWithWay(const Memory& memory, std::uint32_t start);
    std::uint32_t DecodeRun(const Memory& memory, std::uint32_t address);
    void CountBlocks(std::size_t first);
    void FindPairs(std::size_t first);
    void ConnectJump(std::size_t jump);
    void AppendPlace(std::uint32_t address, std::size_t jump);
    void MarkAsCode(const DecodedInstruction& instruction);
    bool IsWritten(const DecodedInstruction& instruction) const;
    bool IsFull() const;
    void ForgetAll();
    void StartAgainIfForgotten();

    std::unique_ptr<Tables> tables_;
    std::uint32_t end_ = 0;
};

}  // namespace zentro
