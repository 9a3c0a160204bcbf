#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "config/token.h"
#include "frontend/operand.h"
#include "model/data_type.h"

namespace zentro {

/// What may stand in an argument of a statement or function.
struct ArgumentTemplate {
    enum class Kind : std::uint8_t {
        Operand,       ///< a variable or a constant
        Constant,      ///< a value that becomes part of the instruction
        Variable,      ///< a variable that the statement changes
        EventHandler,  ///< the name of an event
    };
    Kind kind = Kind::Operand;
    DataType type = DataType::Any;
    std::span<const std::string_view> allowedValues;

    Expectation AsExpectation() const {
        return {type, DataType::Any, false, kind == Kind::Constant, allowedValues};
    }
};

inline constexpr std::size_t kMaxTemplateArguments = 3;

/// The arguments of a statement, in order.
struct StatementTemplate {
    Token token;
    std::uint8_t count = 0;
    std::array<ArgumentTemplate, kMaxTemplateArguments> arguments{};

    std::span<const ArgumentTemplate> Arguments() const {
        return std::span(arguments).first(count);
    }
};

/// The arguments and the result of a function. A result of any type takes that of its target.
struct FunctionTemplate {
    Token token;
    DataType result;
    std::uint8_t count = 0;
    std::array<ArgumentTemplate, kMaxTemplateArguments> arguments{};

    std::span<const ArgumentTemplate> Arguments() const {
        return std::span(arguments).first(count);
    }
};

/// The template of a statement with a fixed list of arguments, or nothing for other tokens.
const StatementTemplate* FindStatementTemplate(Token token);

/// The template of a function; nothing for those that are not supported.
const FunctionTemplate* SystemFunctionTemplate(Token token);

}  // namespace zentro
