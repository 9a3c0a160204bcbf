#include "codegen/generators.h"
#include "model/statement.h"

namespace zentro {

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
    const StatementCode& code = FindStatement(line.token)->code;
    Append(compilation, line, isByte ? code.byteForm : code.wordForm, ObjectComment::SourceLine,
           {quotient, remainder});
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
