#include "compiler/line_starts.h"

#include <algorithm>

namespace zentro {

namespace {

bool LeadsToProgram(const Compilation& compilation, const ObjectLine& line) {
    return line.opcode == Opcode::Jump && line.arguments[0] == &compilation.programStart;
}

/// Whether the instruction only leads past something on the way to another line.
bool LeadsPast(const Compilation& compilation, const ObjectLine& line) {
    return line.comment == ObjectComment::EndOfIfBlock ||
           line.comment == ObjectComment::EndOfCase || LeadsToProgram(compilation, line);
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

std::uint16_t BehindJumpToProgram(const Compilation& compilation, std::uint16_t address) {
    const auto jump = std::ranges::find_if(compilation.objectLines, [&](const ObjectLine& line) {
        return line.purpose == ObjectPurpose::Instruction && LeadsToProgram(compilation, line);
    });
    const bool isJump = jump != compilation.objectLines.end() && jump->address == address;
    return isJump ? static_cast<std::uint16_t>(compilation.programStart.address) : address;
}

}  // namespace zentro
