#include <vector>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"
#include "model/statement.h"

namespace zentro {

namespace {

/// The block at whose edge a line stands.
CompileState BlockOf(const SourceLine& line) {
    return FindStatement(line.token)->edge.block;
}

/// Whether a line above jumps to the end of the block, which needs a label then.
bool IsEndJumpedTo(CompileState block) {
    return block == CompileState::If || block == CompileState::While ||
           block == CompileState::Select;
}

void RefuseText(Compilation& compilation, SourceLine& line, std::string_view text) {
    if (!text.empty()) compilation.diagnostics.PostError(MessageCode::UnexpectedText, &line);
}

/// A routine, an event or the program that begins inside an event: the event was not ended.
void WarnOfOpenEvent(Compilation& compilation, SourceLine& line) {
    if (compilation.states.Current() != CompileState::Event) return;
    compilation.diagnostics.PostError(MessageCode::EventNotEndedBefore, &line);
}

void OpenBlock(Compilation& compilation, SourceLine& line, Purpose purpose) {
    line.purpose = purpose;
    ChangeCompileState(compilation, BlockOf(line), line);
    compilation.RegisterLineLabel(line);
}

void ContinueBlock(Compilation& compilation, SourceLine& line) {
    line.purpose = Purpose::BlockMiddle;
    ContinueCompileState(compilation, BlockOf(line), line);
    compilation.RegisterLineLabel(line);
}

/// Whether a line that ends a block has found one to end.
enum class Closing { NothingOpen, Failed, Closed };

/// Leaves the block. Warns when there is none to leave.
Closing CloseBlock(Compilation& compilation, SourceLine& line) {
    if (compilation.states.Current() == CompileState::Outside) {
        line.purpose = Purpose::Unclassified;  // it ends nothing, so it does nothing
        compilation.diagnostics.PostError(MessageCode::NothingOpenToEnd, &line);
        return Closing::NothingOpen;
    }
    line.purpose = Purpose::BlockEnd;
    return ExitCompileState(compilation, BlockOf(line), line) ? Closing::Closed : Closing::Failed;
}

/// The line before this one in its block, or nothing.
SourceLine* PreviousInBlock(Compilation& compilation, const SourceLine& line) {
    return line.structPrevLineNo == 0 ? nullptr : &compilation.GetSourceLine(line.structPrevLineNo);
}

/// A CASE ELSE that another case follows.
void RefuseCaseAfterElse(Compilation& compilation, const SourceLine& line) {
    SourceLine* previous = PreviousInBlock(compilation, line);
    if (previous == nullptr || previous->token != Token::CaseElse) return;
    const SourceLine& before = compilation.GetSourceLine(previous->structPrevLineNo);
    const bool isReported = before.token == Token::Select;
    if (!isReported) compilation.diagnostics.PostError(MessageCode::ElseMisplaced, previous);
}

void CheckSelector(Compilation& compilation, SourceLine& line, std::string_view text) {
    const Symbol* symbol = compilation.symbols.FindSymbol(text, line.parent);
    const bool isTable = symbol != nullptr && symbol->type == DataType::Table;
    const auto selector = isTable ? std::nullopt : ParseOperand(compilation, text, line, {});
    const bool suits =
        selector && (selector->type == DataType::Byte || selector->type == DataType::Word);
    if (suits) {
        compilation.AddElement(line, *selector);
    } else if (isTable || selector) {
        compilation.diagnostics.PostError(MessageCode::SelectNeedsByteOrWord, &line);
    }
}

}  // namespace

void ParseBeginProgram(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    WarnOfOpenEvent(compilation, line);
    compilation.currentParent = ParentId::Program;
    line.parent = ParentId::Program;
    OpenBlock(compilation, line, Purpose::BlockStart);
    if (!arguments.empty()) compilation.diagnostics.PostError(MessageCode::RestIgnored, &line);
}

void ParseRoutineHeader(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    WarnOfOpenEvent(compilation, line);
    compilation.currentParent = compilation.symbols.ParentWithName(SplitFirstWord(arguments).first);
    line.parent = compilation.currentParent;
    ChangeCompileState(compilation, BlockOf(line), line);
}

void ParseBlockEnd(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const CompileState block = BlockOf(line);
    const Closing closing = CloseBlock(compilation, line);
    if (IsEndJumpedTo(block)) compilation.RegisterLineLabel(line);
    if (closing == Closing::Closed && line.token == Token::EndTable) {
        CheckTableEnd(compilation, line);
    }
    if (line.token == Token::EndSelect) {
        const SourceLine* previous = PreviousInBlock(compilation, line);
        if (previous != nullptr && previous->token == Token::Select) {
            compilation.diagnostics.PostError(MessageCode::BeforeFirstCase, &line);
        }
    }
    if (!arguments.empty()) compilation.diagnostics.PostError(MessageCode::RestIgnored, &line);
    const bool endsParent = !IsInner(block) && block != CompileState::Table;
    if (endsParent) compilation.currentParent = ParentId::Program;
}

void ParseLoopStart(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart);
    RefuseText(compilation, line, arguments);
}

void ParseIf(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::Statement);
    ParseIfCondition(compilation, line, arguments);
}

void ParseElse(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    ContinueBlock(compilation, line);
    const SourceLine* previous = PreviousInBlock(compilation, line);
    if (previous != nullptr && previous->token == Token::Else) {
        compilation.diagnostics.PostError(MessageCode::ElseMisplaced, &line);
    }
    RefuseText(compilation, line, arguments);
}

void ParseWhile(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart);
    ParseLoopCondition(compilation, line, arguments);
}

void ParseUntil(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    if (CloseBlock(compilation, line) == Closing::NothingOpen) return;
    compilation.RegisterLineLabel(line);
    ParseLoopCondition(compilation, line, arguments);
}

void ParseSelect(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart);
    if (arguments.empty()) {
        compilation.diagnostics.PostError(MessageCode::WrongArgumentCount, &line);
        return;
    }
    if (RefuseCall(compilation, arguments, line)) return;
    const SplitText split = SplitFirstWord(arguments, true);
    CheckSelector(compilation, line, split.first);
    RefuseText(compilation, line, split.rest);
}

void ParseCase(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const bool wasAborted = compilation.states.Current() == CompileState::Aborted;
    ContinueBlock(compilation, line);
    if (compilation.states.Current() == CompileState::Aborted) {
        if (wasAborted) compilation.diagnostics.PostError(MessageCode::CaseWithoutSelect, &line);
        return;
    }
    RefuseCaseAfterElse(compilation, line);
    if (arguments.empty()) {
        compilation.diagnostics.PostError(MessageCode::UnexpectedText, &line);
        return;
    }
    if (RefuseCall(compilation, arguments, line)) return;
    Expectation expected;
    const SourceLine& opener = compilation.GetSourceLine(line.structFirstLineNo);
    if (const LineElement* selector = compilation.GetElement(opener, ElementUse::Read)) {
        expected.type = selector->type;
        compilation.AddElement(line, LineElement(*selector));
    }
    for (const std::string_view value : SplitCommaList(arguments)) {
        AddOperand(compilation, value, line, expected);
    }
}

void ParseCaseElse(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    ContinueBlock(compilation, line);
    RefuseCaseAfterElse(compilation, line);
    const SourceLine* previous = PreviousInBlock(compilation, line);
    if (previous != nullptr && previous->token == Token::Select) {
        compilation.diagnostics.PostError(MessageCode::ElseMisplaced, &line);
    }
    RefuseText(compilation, line, arguments);
}

}  // namespace zentro
