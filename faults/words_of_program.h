#pragma once

#include "config/command_catalogue.h"
#include "faults/program_words.h"

namespace zentro {

struct Compilation;

FlagWords FlagWordsOf(const CommandCatalogue& commands);

/// Copied from a compilation that has ended without errors.
ProgramWords WordsOf(const Compilation& compilation);

}  // namespace zentro
