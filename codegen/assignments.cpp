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

/// How the board divides: both numbers are copied, because its instruction leaves the quotient in
/// the one and the remainder in the other.
struct DivisionRow {
    Token token;
    bool isByte;
    std::string_view prepare;
    std::string_view cleanUp;
};

constexpr std::array kDivisions{
    DivisionRow{Token::Divide, true, "Prep for Divide Byte", "Cleanup after Divide Byte"},
    DivisionRow{Token::Divide, false, "Prep for Divide Word", "Cleanup after Divide Word"},
    DivisionRow{Token::Mod, true, "Prep for Mod Byte", "Cleanup after Mod Byte"},
    DivisionRow{Token::Mod, false, "Prep for Mod Word", "Cleanup after Mod Word"},
};

}  // namespace

void GenerateMove(Compilation& compilation, SourceLine& line) {
    const LineElement& target = Target(line);
    Append(compilation, line, IsByteSized(target.type) ? Opcode::MoveByte : Opcode::MoveWord,
           line.parsedLine, {AddressArgument(Operand(line, 0)), AddressArgument(target)});
}

void GenerateArithmetic(Compilation& compilation, SourceLine& line) {
    const LineElement& target = Target(line);
    for (const ArithmeticRow& row : kArithmetic) {
        if (row.token != line.token) continue;
        Append(compilation, line, IsByteSized(target.type) ? row.byteForm : row.wordForm,
               line.parsedLine,
               {AddressArgument(Operand(line, 0)), AddressArgument(Operand(line, 1)),
                AddressArgument(target)});
    }
}

void GenerateDivision(Compilation& compilation, SourceLine& line) {
    const LineElement& target = Target(line);
    const bool isByte = IsByteSized(target.type);
    const Opcode move = isByte ? Opcode::MoveByte : Opcode::MoveWord;
    const ObjectArgument quotient = AddressArgument(compilation.symbols.ScratchOne());
    const ObjectArgument remainder = AddressArgument(compilation.symbols.ScratchTwo());
    for (const DivisionRow& row : kDivisions) {
        if (row.token != line.token || row.isByte != isByte) continue;
        Append(compilation, line, move, row.prepare, {AddressArgument(Operand(line, 0)), quotient});
        Append(compilation, line, move, row.prepare,
               {AddressArgument(Operand(line, 1)), remainder});
        Append(compilation, line, isByte ? Opcode::DivideByte : Opcode::DivideWord, line.parsedLine,
               {quotient, remainder});
        Append(compilation, line, move, row.cleanUp,
               {line.token == Token::Divide ? quotient : remainder, AddressArgument(target)});
    }
}

void GenerateNot(Compilation& compilation, SourceLine& line) {
    const ObjectArgument target = AddressArgument(Target(line));
    Append(compilation, line, Opcode::MoveByte, "Start of NOT code for Byte",
           {AddressArgument(Operand(line, 0)), target});
    Append(compilation, line, Opcode::ComplimentByte, line.parsedLine, {target});
}

}  // namespace zentro
