#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "model/data_type.h"
#include "model/label.h"
#include "model/source_line.h"

namespace zentro {

enum class SymbolClass : std::uint8_t {
    Variable = 0,
    Constant = 1,
    Literal = 2,
    LineLabel = 3,
    Routine = 6,
    Event = 7,
};

/// The parent of everything that is not local to a routine or an event.
inline constexpr std::string_view kProgram = "Program";

/// A declared name with one place in memory: a variable, a data table, a routine or an event.
struct Symbol {
    std::string_view name;
    std::string_view parentName = kProgram;
    Label label;  ///< its name is the resolved name
    DataType type = DataType::Any;
    SymbolClass symbolClass = SymbolClass::Variable;
    Scope scope = Scope::Program;
    std::int32_t declareLineNo = 0;  ///< 0 for the compiler's own variables

    /// The initial value as a number or a text.
    std::optional<std::string_view> defaultValue;
    std::vector<std::uint8_t> tableBytes;  ///< the content of a data table

    std::string_view ResolvedName() const { return label.name; }
};

/// A value with a place in memory: a named constant, or a literal that the code uses. It is laid
/// out so that it can be read as a word at its W_ label and, if it fits one, as a byte at its B_
/// label: the high byte, which is 0, comes just before the byte.
struct Constant {
    std::string_view name;
    std::string_view value;  ///< a number or a text
    Label word;
    Label byte;  ///< without a name when the value does not fit a byte
    bool fitsByte = false;
};

}  // namespace zentro
