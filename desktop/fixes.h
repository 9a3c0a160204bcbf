#pragma once

#include <vector>

#include "desktop/program_report.h"

namespace zentro {

/// The fix of a line, from 1, of a file with these messages: that of the place, in characters from
/// 0, or else the line's first. Nothing: none is known.
const Fix* FixAt(const std::vector<LineMessage>& messages, int line, int column);

/// The fix of a line that writes the same text at the same column; nothing: there is none (any
/// more).
const Fix* SameFix(const std::vector<LineMessage>& messages, int line, const Fix& fix);

/// The fixes that mend the same mistake as this one, which none of them overlaps or repeats.
std::vector<Fix> FixesOfKind(const std::vector<LineMessage>& messages, const Fix& fix);

/// The line as it is with the fix.
QString FixedLine(const QString& line, const Fix& fix);

}  // namespace zentro
