#pragma once

#include "model/compilation.h"

namespace zentro {

/// The statement pass over one line: classifies it, checks how blocks nest and resolves what its
/// statement works on. The declaration pass has run over all lines before.
void ParseSourceLine(Compilation& compilation, SourceLine& line);

}  // namespace zentro
