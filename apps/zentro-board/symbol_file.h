#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "board/memory.h"

namespace zentro {

enum class VariableType : std::uint8_t { Byte, Word, Flag, Pointer, Table };

/// A variable of the program, as the compiler wrote it.
struct Variable {
    std::string name;
    VariableType type;
    std::uint32_t address;
    std::uint32_t size;  ///< in bytes
};

struct SymbolFile {
    std::vector<Variable> variables;
    std::string error;  ///< what is wrong with it, with the line; empty: nothing
};

/// Reads the compiler's list of variables: on each line name, type, address and size, with tabs
/// between.
SymbolFile ParseSymbolFile(std::string_view text);

/// "Speed", tab, "byte", tab, "60": a variable with its value in the board's memory.
std::string FormatVariable(const Memory& memory, const Variable& variable);

}  // namespace zentro
