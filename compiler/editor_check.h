#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compiler/compile.h"

namespace zentro {

/// What is wrong in a file and in the files that it includes itself, for the line that includes it.
struct IncludedMistakes {
    LineXref place;        ///< the line that includes the file
    std::string fileName;  ///< of the included file, UTF-8
    int errors = 0;
    int warnings = 0;
    PostedMessage first;  ///< the first error; the first warning where there are no errors
};

/// Checks a program for an editor, which marks every mistake at once: mistakes in declarations do
/// not keep the statements from being read. What is only the consequence of another mistake is held
/// back until that one is mended. The messages go to the compilation's output, each with its file;
/// without mistakes in declarations they are those of SyntaxCheck. A program without a message
/// against a line can still have an error: see the compilation's count. Returns what the included
/// files hold, in the order of the lines that include them. A compilation serves one run.
std::vector<IncludedMistakes> CheckForEditor(Compilation& compilation, const ProgramFiles& files);

}  // namespace zentro
