#pragma once

#include <cstdint>
#include <string_view>

#include "config/token.h"
#include "model/data_type.h"
#include "model/label.h"

namespace zentro {

struct Constant;

/// What kind of operand an element is.
enum class ElementClass : std::uint8_t {
    None = 0,        ///< a variable
    Constant = 1,    ///< a named constant
    Literal = 2,     ///< a value as written
    Comparison = 5,  ///< the comparison of a condition, or the kind of its call
    Call = 6,        ///< the called routine
};

/// How a line uses an element.
enum class ElementUse : std::uint8_t {
    None = 0,
    Read = 1,
    Written = 2,
};

/// One operand, target, comparison or call of a source line.
struct LineElement {
    DataType type = DataType::Any;
    ElementClass elementClass = ElementClass::None;
    ElementUse use = ElementUse::None;

    /// Comparison elements: the comparison word, or RoutineCall or Not for a call as condition.
    Token comparison = Token::None;
    /// Comparison elements of a call: the condition holds when the call gives FALSE.
    bool expectsFalse = false;

    /// Where the variable, the constant or the routine lies; nothing for comparisons.
    const Label* location = nullptr;
    /// The constant behind the location, for constants.
    const Constant* constant = nullptr;

    /// The name by which instructions and the listing know the operand. Comparisons have none.
    std::string_view Name() const { return location->name; }

    bool IsConstant() const { return constant != nullptr; }
};

}  // namespace zentro
