#pragma once

#include <initializer_list>

#include "model/compilation.h"

namespace zentro {

// One generator for each kind of statement. Each appends the line's instructions.

void GenerateBeginProgram(Compilation& compilation, SourceLine& line);
void GenerateEndProgram(Compilation& compilation, SourceLine& line);
void GenerateRoutineStart(Compilation& compilation, SourceLine& line);
void GenerateReturn(Compilation& compilation, SourceLine& line);
void GenerateCompleteEvent(Compilation& compilation, SourceLine& line);
void GenerateCall(Compilation& compilation, SourceLine& line);

void GenerateDivision(Compilation& compilation, SourceLine& line);
void GenerateNot(Compilation& compilation, SourceLine& line);

void GenerateIf(Compilation& compilation, SourceLine& line);
void GenerateWhile(Compilation& compilation, SourceLine& line);
void GenerateUntil(Compilation& compilation, SourceLine& line);
void GenerateElse(Compilation& compilation, SourceLine& line);
void GenerateEndWhile(Compilation& compilation, SourceLine& line);
void GenerateEndLoop(Compilation& compilation, SourceLine& line);
void GenerateJumpTarget(Compilation& compilation, SourceLine& line);
void GenerateSelect(Compilation& compilation, SourceLine& line);
void GenerateCase(Compilation& compilation, SourceLine& line);

void GenerateInstruction(Compilation& compilation, SourceLine& line);
void GenerateJoystick(Compilation& compilation, SourceLine& line);
void GenerateSetLeds(Compilation& compilation, SourceLine& line);
void GenerateComplement(Compilation& compilation, SourceLine& line);
void GenerateStopSound(Compilation& compilation, SourceLine& line);

// What the generators share.

/// Appends an instruction.
ObjectLine& Append(Compilation& compilation, const SourceLine& line, Opcode opcode,
                   ObjectComment comment, std::initializer_list<const Label*> arguments = {});

/// The line's target. The parsers see to it that a line that needs one has it, and the same goes
/// for the operands.
const LineElement& Target(const Compilation& compilation, const SourceLine& line);
/// The line's operands, from 0 on.
const LineElement& Operand(const Compilation& compilation, const SourceLine& line,
                           std::size_t index);

/// The label of the line with the number.
const Label* LabelOfLine(const Compilation& compilation, std::int32_t lineNumber);

}  // namespace zentro
