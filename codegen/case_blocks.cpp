#include "codegen/generators.h"

namespace zentro {

namespace {

/// True for the first case of its block: no other case's statements end before it.
bool FollowsSelect(const SourceLine& line) {
    return line.structPrevLineNo == line.structFirstLineNo;
}

void JumpToEnd(Compilation& compilation, SourceLine& line) {
    const std::int32_t endLineNo =
        compilation.GetSourceLine(line.structFirstLineNo).structLastLineNo;
    Append(compilation, line, Opcode::Jump, ObjectComment::EndOfCase,
           {LabelOfLine(compilation, endLineNo)});
}

}  // namespace

void GenerateCase(Compilation& compilation, SourceLine& line) {
    if (!FollowsSelect(line)) JumpToEnd(compilation, line);
    const auto operands = compilation.ElementsOf(line);
    const LineElement& selector = operands.front();
    const bool isByte = IsByteSized(selector.type);
    Label* join = nullptr;  // where several values come together
    if (operands.size() > 2) {
        join = &compilation.AddLabel(compilation.texts.Concat(line.label->name, "a"));
    }
    for (std::size_t i = 1; i < operands.size(); ++i) {
        const bool isLast = i + 1 == operands.size();
        const Opcode opcode = isLast ? (isByte ? Opcode::IfByteNotEqual : Opcode::IfWordNotEqual)
                                     : (isByte ? Opcode::IfByteEqual : Opcode::IfWordEqual);
        const Label* target = isLast ? LabelOfLine(compilation, line.structNextLineNo) : join;
        ObjectLine& compare = Append(compilation, line, opcode, ObjectComment::SourceLine,
                                     {selector.location, operands[i].location, target});
        if (i == 1) compare.label = line.label;
    }
    if (join != nullptr) {
        Append(compilation, line, Opcode::Nop, ObjectComment::CaseJoin).label = join;
    }
}

}  // namespace zentro
