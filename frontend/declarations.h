#pragma once

#include <string_view>

#include "model/compilation.h"

namespace zentro {

// The declarations of one line. `arguments` is what follows the declaration's words. A symbol is
// entered even when its line has errors, so that later lines find it and do not report it again.

/// DEFINE BYTE name = value
void DeclareByte(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE WORD name = value
void DeclareWord(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE FLAG name = value
void DeclareFlag(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE POINTER name
void DeclarePointer(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE CONSTANT name = value
void DeclareNamedConstant(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE TABLE name
void DeclareTable(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE ROUTINE name(name TYPE, ...) RETURNS TYPE
void DeclareRoutine(Compilation& compilation, SourceLine& line, std::string_view arguments);
/// DEFINE EVENT name()
void DeclareEvent(Compilation& compilation, SourceLine& line, std::string_view arguments);

}  // namespace zentro
