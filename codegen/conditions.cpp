#include <array>
#include <cassert>

#include "codegen/generators.h"

namespace zentro {

namespace {

/// The compare that jumps when a comparison does not hold.
struct NegatedRow {
    Token comparison;
    Opcode byteForm;
    Opcode wordForm;
};

constexpr std::array kNegated{
    NegatedRow{Token::Equal, Opcode::IfByteNotEqual, Opcode::IfWordNotEqual},
    NegatedRow{Token::NotEqual, Opcode::IfByteEqual, Opcode::IfWordEqual},
    NegatedRow{Token::GreaterOrLess, Opcode::IfByteEqual, Opcode::IfWordEqual},
    NegatedRow{Token::Less, Opcode::IfByteGreaterThanOrEqual, Opcode::IfWordGreaterThanOrEqual},
    NegatedRow{Token::Greater, Opcode::IfByteLessThanOrEqual, Opcode::IfWordLessThanOrEqual},
    NegatedRow{Token::GreaterOrEqual, Opcode::IfByteLessThan, Opcode::IfWordLessThan},
    NegatedRow{Token::EqualOrGreater, Opcode::IfByteLessThan, Opcode::IfWordLessThan},
    NegatedRow{Token::LessOrEqual, Opcode::IfByteGreaterThan, Opcode::IfWordGreaterThan},
    NegatedRow{Token::EqualOrLess, Opcode::IfByteGreaterThan, Opcode::IfWordGreaterThan},
};

const LineElement& Comparison(const Compilation& compilation, const SourceLine& line) {
    const LineElement* element = compilation.GetElement(line, ElementClass::Comparison);
    assert(element != nullptr);
    return *element;
}

/// first comparison second: the first operand decides how many bytes are compared.
void GenerateCompare(Compilation& compilation, SourceLine& line, Token comparison,
                     const Label* whenFalse) {
    const LineElement& first = Operand(compilation, line, 0);
    for (const NegatedRow& row : kNegated) {
        if (row.comparison != comparison) continue;
        Append(compilation, line, IsByteSized(first.type) ? row.byteForm : row.wordForm,
               ObjectComment::SourceLine,
               {first.location, Operand(compilation, line, 1).location, whenFalse});
    }
}

/// Jumps to the line with the number when the condition does not hold.
void GenerateCondition(Compilation& compilation, SourceLine& line, std::int32_t jumpLineNo) {
    const Label* whenFalse = LabelOfLine(compilation, jumpLineNo);
    const LineElement& comparison = Comparison(compilation, line);
    const Token kind = comparison.comparison;
    if (kind != Token::RoutineCall && kind != Token::Not) {
        GenerateCompare(compilation, line, kind, whenFalse);
        return;
    }
    if (kind == Token::RoutineCall) {
        GenerateCall(compilation, line);
    } else {
        GenerateNot(compilation, line);
    }
    Append(compilation, line, comparison.expectsFalse ? Opcode::IfFlagTrue : Opcode::IfFlagFalse,
           ObjectComment::SourceLine, {Target(compilation, line).location, whenFalse});
}

void AppendJump(Compilation& compilation, SourceLine& line, std::int32_t lineNumber,
                ObjectComment comment) {
    Append(compilation, line, Opcode::Jump, comment, {LabelOfLine(compilation, lineNumber)});
}

}  // namespace

void GenerateIf(Compilation& compilation, SourceLine& line) {
    GenerateCondition(compilation, line, line.structNextLineNo);
}

void GenerateWhile(Compilation& compilation, SourceLine& line) {
    GenerateJumpTarget(compilation, line);
    GenerateCondition(compilation, line, line.structNextLineNo);
}

void GenerateUntil(Compilation& compilation, SourceLine& line) {
    GenerateCondition(compilation, line, line.structPrevLineNo);
}

void GenerateElse(Compilation& compilation, SourceLine& line) {
    AppendJump(compilation, line, line.structNextLineNo, ObjectComment::EndOfIfBlock);
    GenerateJumpTarget(compilation, line);
}

void GenerateEndWhile(Compilation& compilation, SourceLine& line) {
    AppendJump(compilation, line, line.structPrevLineNo, ObjectComment::EndOfWhile);
    GenerateJumpTarget(compilation, line);
}

void GenerateEndLoop(Compilation& compilation, SourceLine& line) {
    AppendJump(compilation, line, line.structPrevLineNo, ObjectComment::None);
}

void GenerateJumpTarget(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::Nop, ObjectComment::SourceLine).label = line.label;
}

void GenerateSelect(Compilation& compilation, SourceLine& line) {
    Append(compilation, line, Opcode::Nop, ObjectComment::SourceLine);
}

}  // namespace zentro
