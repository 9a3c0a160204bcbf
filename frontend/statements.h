#pragma once

#include <optional>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

// The parsers of the statement pass. `arguments` is what follows the statement's words. Each sets
// the line's purpose and appends the operands that it resolves.

/// A statement whose words stand alone: STOP MOTORS. What follows them is not looked at.
void ParsePlainStatement(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// A statement with a fixed list of arguments: SET MOTOR 1, "F", Speed
void ParseArguments(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// CALL name(argument, ...)
void ParseCallStatement(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// RETURN value
void ParseReturn(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// Statements of the board that this compiler does not support.
void ParseUnsupported(Compilation& compilation, SourceLine& line, std::string_view arguments);

/// BEGIN PROGRAM
void ParseBeginProgram(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// The header of a routine or an event, whose names and parameters are known by now.
void ParseRoutineHeader(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// The end of any block but a REPEAT.
void ParseBlockEnd(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// REPEAT, LOOP
void ParseLoopStart(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// IF condition THEN
void ParseIf(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// ELSE
void ParseElse(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// WHILE condition
void ParseWhile(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// UNTIL condition
void ParseUntil(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// SELECT value
void ParseSelect(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// CASE value, ...
void ParseCase(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// CASE ELSE
void ParseCaseElse(Compilation& compilation, SourceLine& line, std::string_view arguments);

/// DEFINE TABLE name = data, or with the data on the lines below
void ParseTableHeader(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// RESERVE count
void ParseReserve(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// A line of data inside a table.
void ParseDataLine(Compilation& compilation, SourceLine& line);
/// Posts that the table has no data, against the line that ends it.
void CheckTableEnd(Compilation& compilation, SourceLine& line);

/// target = value
void ParseAssignment(Compilation& compilation, SourceLine& line);

/// The conditions of blocks. That of an IF is closed by THEN.
void ParseIfCondition(Compilation& compilation, SourceLine& line, std::string_view text);
void ParseLoopCondition(Compilation& compilation, SourceLine& line, std::string_view text);

/// What a call is part of.
enum class CallRole {
    Assignment,  ///< target = name(...)
    Statement,   ///< CALL name(...)
    Condition,   ///< IF name(...) THEN
};

/// Parses the call at the start of a text. The line's target is there already, but for the call
/// statement, which has none. Returns what follows the closing ")"; nothing when no call could be
/// made out, and then a message has been posted.
std::optional<std::string_view> ParseCall(Compilation& compilation, SourceLine& line,
                                          std::string_view text, CallRole role);

}  // namespace zentro
