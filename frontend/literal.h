#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// An operand that is no name of the program.
struct Literal {
    ElementClass elementClass = ElementClass::Literal;  ///< or Constant, or Call
    std::string_view name;   ///< the name of its place in memory; of a call the called name
    std::string_view value;  ///< a number or a text; lives as long as the compilation
    ConstantKind kind = ConstantKind::NamedOrNumber;
};

/// Reads a number, a text in quotes, a hexadecimal number (0 ... H), a constant of the language or
/// a call. Posts what is wrong against the line and returns nothing then.
std::optional<Literal> ParseLiteral(Compilation& compilation, std::string_view text,
                                    SourceLine& line);

/// True for a text that is written like a hexadecimal number: it begins with "0" and ends with "H".
bool IsHexadecimal(std::string_view text);

/// The number of such a text; nothing when its digits are not hexadecimal. Numbers beyond 16 bits
/// all come out as 65536.
std::optional<std::uint32_t> HexadecimalNumber(std::string_view text);

/// The decimal text of such a number, read as 16 bits with a sign: 0FFFFH is -1. Posts what is
/// wrong and returns nothing then.
std::optional<std::string_view> ParseHexadecimal(Compilation& compilation, std::string_view text,
                                                 SourceLine& line);

/// The value of a text without its quotes: the text, or the code of a quoted digit. Posts that a
/// number of several digits is no value and returns nothing then.
std::optional<std::string_view> ParseQuoted(Compilation& compilation, std::string_view inner,
                                            SourceLine& line);

/// The constant of the language with the name, or nothing.
const Command* FindCatalogueConstant(const Compilation& compilation, std::string_view name);

}  // namespace zentro
