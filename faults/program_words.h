#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "faults/value_text.h"
#include "model/data_type.h"
#include "model/instruction.h"

namespace zentro {

/// A variable of the program.
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
    std::vector<std::size_t> variables = {};  ///< that it reads or writes, each once

    bool operator==(const StatementWords&) const = default;
};

/// An instruction as the compiler made it.
struct InstructionWords {
    std::vector<std::uint8_t> bytes;
    std::size_t statement = 0;  ///< its place among the statements
    bool preparesCall = false;  ///< puts something on the stack before a routine is called
    /// What the user calls the operands: "Count", "Local of Work", "7". What the compiler keeps in
    /// a scratch variable is called by what it put there. Empty: nothing that the user has named.
    std::array<std::string, kMaxArguments> operands;

    bool operator==(const InstructionWords&) const = default;
};

/// What the user calls the things of a compiled program. Copied from its compilation, so that it
/// can go with the program to a board. Empty: nothing is known.
struct ProgramWords {
    std::vector<StatementWords> statements;
    std::map<std::uint32_t, InstructionWords> instructions;  ///< by address
    std::vector<VariableWords> variables;
    FlagWords flagWords;

    /// Null: no instruction begins there.
    const InstructionWords* InstructionAt(std::uint32_t address) const;
    /// The statement of the instruction that ends before the address: for a return address, the one
    /// that has called. Null: it is not known.
    const StatementWords* StatementBefore(std::uint32_t address) const;
    /// Null: none lies there.
    const VariableWords* VariableAt(std::uint32_t address) const;

    bool operator==(const ProgramWords&) const = default;
};

}  // namespace zentro
