#include <array>

#include "codegen/generators.h"

namespace zentro {

namespace {

/// The forms of an operation by the size of its target.
struct ArithmeticRow {
    Token token;
    Opcode byteForm;
    Opcode wordForm;
};

constexpr std::array kArithmetic{
    ArithmeticRow{Token::Plus, Opcode::AddByte, Opcode::AddWord},
    ArithmeticRow{Token::Minus, Opcode::SubtractByte, Opcode::SubtractWord},
    ArithmeticRow{Token::Multiply, Opcode::MultiplyByte, Opcode::MultiplyByte},
    ArithmeticRow{Token::And, Opcode::LogicalAnd, Opcode::LogicalAnd},
    ArithmeticRow{Token::Or, Opcode::LogicalOr, Opcode::LogicalOr},
};

}  // namespace

void GenerateMove(Compilation& compilation, SourceLine& line) {
    const LineElement& target = Target(compilation, line);
    Append(compilation, line, IsByteSized(target.type) ? Opcode::MoveByte : Opcode::MoveWord,
           ObjectComment::SourceLine, {Operand(compilation, line, 0).location, target.location});
}

void GenerateArithmetic(Compilation& compilation, SourceLine& line) {
    const LineElement& target = Target(compilation, line);
    for (const ArithmeticRow& row : kArithmetic) {
        if (row.token != line.token) continue;
        Append(compilation, line, IsByteSized(target.type) ? row.byteForm : row.wordForm,
               ObjectComment::SourceLine,
               {Operand(compilation, line, 0).location, Operand(compilation, line, 1).location,
                target.location});
    }
}

/// The board's division leaves the quotient in its first number and the remainder in its second, so
/// it works on copies.
void GenerateDivision(Compilation& compilation, SourceLine& line) {
    const bool isDivide = line.token == Token::Divide;
    const LineElement& target = Target(compilation, line);
    const bool isByte = IsByteSized(target.type);
    const Opcode move = isByte ? Opcode::MoveByte : Opcode::MoveWord;
    const Label* quotient = &compilation.symbols.ScratchOne();
    const Label* remainder = &compilation.symbols.ScratchTwo();
    const ObjectComment prepare =
        isDivide ? ObjectComment::PrepareDivide : ObjectComment::PrepareMod;
    Append(compilation, line, move, prepare, {Operand(compilation, line, 0).location, quotient});
    Append(compilation, line, move, prepare, {Operand(compilation, line, 1).location, remainder});
    Append(compilation, line, isByte ? Opcode::DivideByte : Opcode::DivideWord,
           ObjectComment::SourceLine, {quotient, remainder});
    Append(compilation, line, move,
           isDivide ? ObjectComment::CleanUpDivide : ObjectComment::CleanUpMod,
           {isDivide ? quotient : remainder, target.location});
}

void GenerateNot(Compilation& compilation, SourceLine& line) {
    const Label* target = Target(compilation, line).location;
    Append(compilation, line, Opcode::MoveByte, ObjectComment::StartOfNot,
           {Operand(compilation, line, 0).location, target});
    Append(compilation, line, Opcode::ComplimentByte, ObjectComment::SourceLine, {target});
}

}  // namespace zentro
