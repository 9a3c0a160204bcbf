#include "codegen/generators.h"

namespace zentro {

namespace {

/// True for the first case of its block: no other case's statements end before it.
bool FollowsSelect(Compilation& compilation, const SourceLine& line) {
    return line.structPrevLineNo == line.structFirstLineNo &&
           compilation.GetSourceLine(line.structPrevLineNo).purpose == Purpose::BlockStart;
}

void JumpToEnd(Compilation& compilation, SourceLine& line) {
    const std::int32_t endLineNo =
        compilation.GetSourceLine(line.structFirstLineNo).structLastLineNo;
    Append(compilation, line, Opcode::Jump, "End of case block",
           {LineArgument(compilation, endLineNo)});
}

}  // namespace

void GenerateCase(Compilation& compilation, SourceLine& line) {
    if (!FollowsSelect(compilation, line)) JumpToEnd(compilation, line);
    const std::size_t operands = line.CountElements(ElementUse::Read);
    const LineElement& selector = Operand(line, 0);
    const bool isByte = IsByteSized(selector.type);
    const bool hasSeveralValues = operands > 2;
    Label* statements = hasSeveralValues
                            ? &compilation.AddLabel(compilation.texts.Concat(line.label->name, "a"))
                            : nullptr;
    for (std::size_t i = 1; i < operands; ++i) {
        const bool isLast = i + 1 == operands;
        const Opcode opcode = isLast ? (isByte ? Opcode::IfByteNotEqual : Opcode::IfWordNotEqual)
                                     : (isByte ? Opcode::IfByteEqual : Opcode::IfWordEqual);
        const ObjectArgument target = isLast ? LineArgument(compilation, line.structNextLineNo)
                                             : AddressArgument(*statements);
        ObjectLine& compare =
            Append(compilation, line, opcode, line.parsedLine,
                   {AddressArgument(selector), AddressArgument(Operand(line, i)), target});
        if (i == 1) compare.label = line.label;
    }
    if (hasSeveralValues) {
        Append(compilation, line, Opcode::Nop, "Mini Jump point to get the OR").label = statements;
    }
}

}  // namespace zentro
