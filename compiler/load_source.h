#pragma once

#include <string>
#include <string_view>

#include "compiler/compile.h"
#include "model/compilation.h"

namespace zentro {

/// Reads the source file, and the files that it includes, into the compilation's lines and runs the
/// declaration pass over each line. False when the main file could not be read.
bool LoadSourceFiles(Compilation& compilation, const ProgramFiles& program);

}  // namespace zentro
