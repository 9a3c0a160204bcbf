#pragma once

#include <cstdint>
#include <span>
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
    std::uint32_t size = 1;           ///< in bytes; of a table all of it
    std::string debugValue;           ///< as read last; empty before the first read
    std::vector<std::uint8_t> bytes;  ///< the same as bytes, those that were read
    std::size_t readableBytes = 0;    ///< of them, those before the first that could not be read
    bool isOfCompiler = false;        ///< the program does not declare it
};

/// A board answers a memory read with so many bytes.
inline constexpr std::size_t kBytesInReply = 8;

/// The variables of a compiled program in the order of its symbol table, with their addresses from
/// the label table. Without those that have no place in memory: after a compilation that ended with
/// errors there may be none.
std::vector<DebugVariable> VariablesOf(const Compilation& compilation);

/// The bytes in a board's reply to a memory read: pairs of hexadecimal digits with blanks or tabs
/// between, after the reply's first "]", at most kBytesInReply. A pair that cannot be read is 0.
std::vector<std::uint8_t> ReplyBytes(std::string_view reply);

/// How many of those pairs can be read, up to the first that cannot.
std::size_t CountReadablePairs(std::string_view reply);

/// The value in a board's reply, formatted by the variable's type, in UTF-8. A byte that is missing
/// counts as 0; a reply without "]" has no value and gives an empty text.
std::string FormatDebugValue(std::string_view reply, DataType type);

/// The same of bytes that are at hand; those that are missing count as 0.
std::string FormatBytes(std::span<const std::uint8_t> bytes, DataType type);

/// One line of the variables window for each variable: the name at the right of its column, with
/// its routine at the left, a tab, and the value.
std::vector<std::string> VariableLines(const std::vector<DebugVariable>& variables);

}  // namespace zentro
