#pragma once

#include "model/compilation.h"

namespace zentro {

/// The statement pass over one line: classifies it, checks how blocks nest and resolves what its
/// statement works on. The declaration pass has run over all lines before.
void ParseSourceLine(Compilation& compilation, SourceLine& line);

/// Whether a line of this compiler's programs can begin with the token's words. False also for
/// statements that the language lists and this compiler does not support.
bool IsSupportedStatement(Token token);

}  // namespace zentro
