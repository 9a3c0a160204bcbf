#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "model/compilation.h"
#include "model/statement.h"

namespace zentro {

/// What a statement expects of an operand.
struct Expectation {
    DataType type = DataType::Any;
    /// The type as which a constant is read where variables of any type may stand.
    DataType constantType = DataType::Any;
    /// In arithmetic a pointer can be combined with a word.
    bool inArithmetic = false;
    /// The operand becomes part of the instruction, so it has to be known beforehand.
    bool needsConstant = false;
    /// The only values that may stand here; empty: any value of the type.
    std::span<const std::string_view> allowedValues{};
};

/// What a statement expects of one of its values.
inline Expectation ExpectationOf(const StatementValue& value) {
    return {value.type, DataType::Any, false, value.kind == StatementValue::Kind::Constant,
            value.allowed};
}

/// What can be told about an operand without entering it anywhere.
struct OperandSketch {
    enum class Kind { Unknown, Variable, Constant };
    Kind kind = Kind::Unknown;
    DataType type = DataType::Any;  ///< of a constant the smaller type that holds it
};

/// Resolves an operand: a variable, a constant or a literal. A constant gets its place in the data
/// area. Posts what is wrong against the line and returns nothing then.
std::optional<LineElement> ParseOperand(Compilation& compilation, std::string_view text,
                                        SourceLine& line, const Expectation& expected);

/// ParseOperand, with the element appended to the line. Nothing when it failed. Like that of
/// AddTarget, the result is good until the next element comes.
const LineElement* AddOperand(Compilation& compilation, std::string_view text, SourceLine& line,
                              const Expectation& expected);

/// Resolves a variable that the line writes to and appends it to the line. Nothing when it failed.
const LineElement* AddTarget(Compilation& compilation, std::string_view text, SourceLine& line);

/// AddTarget for a variable that the statement reads as well: INCREMENT.
void AddChangedVariable(Compilation& compilation, std::string_view text, SourceLine& line);

/// Appends the name of an event as an operand.
void AddEventHandler(Compilation& compilation, std::string_view text, SourceLine& line);

/// A first look at an operand, without messages.
OperandSketch SketchOperand(const Compilation& compilation, std::string_view text,
                            const SourceLine& line);

/// True when something of the found type can stand where the expected type is needed.
bool TypeSuits(DataType expected, DataType found, bool inArithmetic = false);

/// Posts that a call stands where only a plain operand can, if the text holds a "(".
bool RefuseCall(Compilation& compilation, std::string_view text, SourceLine& line);

}  // namespace zentro
