#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// A variable of the program as the variables window shows it. Texts are UTF-8.
struct DebugVariable {
    std::string name;
    std::string resolvedName;
    std::string parentName;  ///< "Program" for a program-wide one
    DataType type = DataType::Byte;
    std::uint32_t address = 0;
    std::uint32_t size = 1;  ///< in bytes; of a table all of it
    std::string debugValue;  ///< as read last; empty before the first read
};

/// The variables of a compiled program in the order of its symbol table, with their addresses from
/// the label table.
std::vector<DebugVariable> VariablesOf(const Compilation& compilation);

/// The value in a board's reply to a memory read: the data after the reply's first "]", formatted
/// by the variable's type.
std::string FormatDebugValue(std::string_view reply, DataType type);

/// One line of the variables window for each variable: the name at the right of its column, with
/// its routine at the left, a tab, and the value.
std::vector<std::string> VariableLines(const std::vector<DebugVariable>& variables);

}  // namespace zentro
