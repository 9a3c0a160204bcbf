#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "config/command_catalogue.h"
#include "model/data_type.h"
#include "model/instruction.h"

namespace zentro {

struct Compilation;

/// A variable that a statement works on.
struct VariableWords {
    std::string name;  ///< "Count", "Local of Work"
    std::uint32_t address = 0;
    DataType type = DataType::Byte;
    std::size_t size = 1;  ///< in bytes

    bool operator==(const VariableWords&) const = default;
};

/// A statement of the source. Texts are UTF-8.
struct StatementWords {
    std::string place;         ///< "line 14", in an included file "line 3 of motors.txt"
    std::string text;          ///< "Mean = Total / Count", a long one cut
    std::string routine = {};  ///< the routine or event that it belongs to; empty: none
    std::vector<VariableWords> variables = {};  ///< that it reads or writes, each once
};

/// An instruction as the compiler made it.
struct InstructionWords {
    std::vector<std::uint8_t> bytes;
    std::size_t statement = 0;  ///< its place among the statements
    bool preparesCall = false;  ///< puts something on the stack before a routine is called
    /// What the user calls the operands: "Count", "Local of Work", "7". What the compiler keeps in
    /// a scratch variable is called by what it put there. Empty: nothing that the user has named.
    std::array<std::string, kMaxArguments> operands;
};

/// What the user calls the things of a compiled program. Copied from its compilation, so that it
/// can go with the program to a board. Empty: nothing is known.
struct ProgramWords {
    std::vector<StatementWords> statements;
    std::map<std::uint32_t, InstructionWords> instructions;  ///< by address
    std::map<std::uint32_t, std::string> variables;          ///< by address

    /// Gives the words for values; null while nothing is known. It outlives these words.
    const CommandCatalogue* commands = nullptr;

    /// Null: no instruction begins there.
    const InstructionWords* InstructionAt(std::uint32_t address) const;
    /// The statement of the instruction that ends before the address: for a return address, the one
    /// that has called. Null: it is not known.
    const StatementWords* StatementBefore(std::uint32_t address) const;
};

ProgramWords WordsOf(const Compilation& compilation);

}  // namespace zentro
