#pragma once

#include "model/compilation.h"

namespace zentro {

/// Posts what is legal in a program but hardly meant, in the order of its lines. The program has
/// been parsed and has no errors. Nothing is said that is not certain: the lines of a program that
/// does what it should are to draw no advice.
void GiveAdvice(Compilation& compilation);

}  // namespace zentro
