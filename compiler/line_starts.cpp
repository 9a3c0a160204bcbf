#include "compiler/line_starts.h"

namespace zentro {

namespace {

/// Whether the instruction only leads past something on the way to another line.
bool LeadsPast(const Compilation& compilation, const ObjectLine& line) {
    return line.comment == ObjectComment::EndOfIfBlock ||
           line.comment == ObjectComment::EndOfCase ||
           (line.opcode == Opcode::Jump && line.arguments[0] == &compilation.programStart);
}

}  // namespace

std::vector<LineStart> LineStartsOf(const Compilation& compilation) {
    std::vector<LineStart> starts;
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.purpose != ObjectPurpose::Instruction || line.sourceLineNo == 0) continue;
        if (line.address < 0 || static_cast<std::uint32_t>(line.address) > kLargestAddress)
            continue;
        if (LeadsPast(compilation, line)) continue;
        if (!starts.empty() && starts.back().lineNumber == line.sourceLineNo) continue;
        starts.push_back({line.sourceLineNo, static_cast<std::uint16_t>(line.address)});
    }
    return starts;
}

}  // namespace zentro
