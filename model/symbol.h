#pragma once

#include <cstdint>
#include <string_view>

#include "model/data_type.h"
#include "model/label.h"
#include "model/source_line.h"
#include "model/table_data.h"

namespace zentro {

enum class SymbolClass : std::uint8_t {
    Variable = 0,
    Constant = 1,
    Literal = 2,
    LineLabel = 3,
    Routine = 6,
    Event = 7,
};

/// The name of the parent of everything that is not local to a routine or an event.
inline constexpr std::string_view kProgram = "Program";

/// A declared name with one place in memory: a variable, a data table, a routine or an event.
struct Symbol {
    std::string_view name;
    Label label;  ///< its name is the resolved name
    ParentId parent = ParentId::Program;
    std::int32_t declareLineNo = 0;  ///< 0 for the compiler's own variables
    Symbol* nextOfParent = nullptr;  ///< what the same parent declares next
    TableData* table = nullptr;      ///< the content of a data table
    std::string_view defaultValue;   ///< a number or a text; empty without an initial value
    DataType type = DataType::Any;
    SymbolClass symbolClass = SymbolClass::Variable;
    Scope scope = Scope::Program;

    std::string_view ResolvedName() const { return label.name; }
    bool IsDefaulted() const { return !defaultValue.empty(); }
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
