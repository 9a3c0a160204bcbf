#pragma once

#include "compiler/compile.h"
#include "model/compilation.h"

namespace zentro {

/// Writes the listing: each object line with its address, label, instruction and comment.
void WriteListing(const Compilation& compilation, ListingSink& listing);

}  // namespace zentro
