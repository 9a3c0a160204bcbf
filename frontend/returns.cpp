#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

/// What the routine of the line returns; nothing for events and routines that return nothing.
const LineElement* ReturnElement(Compilation& compilation, const SourceLine& line) {
    const Symbol* routine =
        compilation.symbols.FindOwn(compilation.symbols.NameOf(line.parent), ParentId::Program);
    // The header may have been refused, for a name that the compiler's own variables have.
    if (routine == nullptr || routine->declareLineNo == 0) return nullptr;
    return compilation.GetElement(compilation.GetSourceLine(routine->declareLineNo),
                                  ElementUse::Written);
}

}  // namespace

void ParseReturn(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    line.purpose = Purpose::Statement;
    const auto refuse = [&](MessageCode code) { compilation.diagnostics.PostError(code, &line); };
    if (line.parent == ParentId::Program) return refuse(MessageCode::ReturnOutsideRoutine);
    const LineElement* result = ReturnElement(compilation, line);
    if (arguments.empty()) {
        if (result != nullptr) refuse(MessageCode::WrongArgumentCount);
        return;
    }
    if (RefuseCall(compilation, arguments, line)) return;
    const SplitText value = SplitFirstWord(arguments, true);
    if (!value.rest.empty()) return refuse(MessageCode::UnexpectedText);
    if (result == nullptr) return refuse(MessageCode::NothingToReturn);
    AddOperand(compilation, value.first, line, {result->type});
}

}  // namespace zentro
