#include <algorithm>
#include <array>
#include <vector>

#include "config/text.h"
#include "frontend/operand.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

/// The ends of blocks. An end that is jumped to has a line label.
struct BlockEndRow {
    Token token;
    CompileState state;
    bool hasLabel;
};

constexpr std::array kBlockEnds{
    BlockEndRow{Token::EndRoutine, CompileState::Routine, false},
    BlockEndRow{Token::EndEvent, CompileState::Event, false},
    BlockEndRow{Token::EndTable, CompileState::Table, false},
    BlockEndRow{Token::EndProgram, CompileState::Program, false},
    BlockEndRow{Token::EndIf, CompileState::If, true},
    BlockEndRow{Token::EndWhile, CompileState::While, true},
    BlockEndRow{Token::EndSelect, CompileState::Select, true},
    BlockEndRow{Token::EndLoop, CompileState::Loop, false},
};

void RefuseText(Compilation& compilation, SourceLine& line, std::string_view text) {
    if (!text.empty()) compilation.diagnostics.PostError(MessageCode::UnexpectedText, &line);
}

/// A routine, an event or the program that begins inside an event: the event was not ended.
void WarnOfOpenEvent(Compilation& compilation, SourceLine& line) {
    if (compilation.states.Current() != CompileState::Event) return;
    compilation.diagnostics.PostError(MessageCode::EventNotEndedBefore, &line);
}

void OpenBlock(Compilation& compilation, SourceLine& line, Purpose purpose, CompileState state) {
    line.purpose = purpose;
    ChangeCompileState(compilation, state, line);
    compilation.RegisterLineLabel(line);
}

void ContinueBlock(Compilation& compilation, SourceLine& line, CompileState state) {
    line.purpose = Purpose::BlockMiddle;
    ContinueCompileState(compilation, state, line);
    compilation.RegisterLineLabel(line);
}

/// Whether a line that ends a block has found one to end.
enum class Closing { NothingOpen, Failed, Closed };

/// Leaves the block. Warns when there is none to leave.
Closing CloseBlock(Compilation& compilation, SourceLine& line, CompileState state) {
    if (compilation.states.Current() == CompileState::Outside) {
        line.purpose = Purpose::Unclassified;  // it ends nothing, so it does nothing
        compilation.diagnostics.PostError(MessageCode::NothingOpenToEnd, &line);
        return Closing::NothingOpen;
    }
    line.purpose = Purpose::BlockEnd;
    return ExitCompileState(compilation, state, line) ? Closing::Closed : Closing::Failed;
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
    OpenBlock(compilation, line, Purpose::BlockStart, CompileState::Program);
    if (!arguments.empty()) compilation.diagnostics.PostError(MessageCode::RestIgnored, &line);
}

void ParseRoutineHeader(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    WarnOfOpenEvent(compilation, line);
    compilation.currentParent = compilation.symbols.ParentWithName(SplitFirstWord(arguments).first);
    line.parent = compilation.currentParent;
    ChangeCompileState(
        compilation,
        line.token == Token::DefineRoutine ? CompileState::Routine : CompileState::Event, line);
}

void ParseBlockEnd(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const auto* row = std::find_if(kBlockEnds.begin(), kBlockEnds.end(),
                                   [&](const BlockEndRow& end) { return end.token == line.token; });
    const Closing closing = CloseBlock(compilation, line, row->state);
    if (row->hasLabel) compilation.RegisterLineLabel(line);
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
    const bool endsParent = row->state == CompileState::Routine ||
                            row->state == CompileState::Event ||
                            row->state == CompileState::Program;
    if (endsParent) compilation.currentParent = ParentId::Program;
}

void ParseLoopStart(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart,
              line.token == Token::Repeat ? CompileState::Repeat : CompileState::Loop);
    RefuseText(compilation, line, arguments);
}

void ParseIf(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::Statement, CompileState::If);
    ParseIfCondition(compilation, line, arguments);
}

void ParseElse(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    ContinueBlock(compilation, line, CompileState::If);
    const SourceLine* previous = PreviousInBlock(compilation, line);
    if (previous != nullptr && previous->token == Token::Else) {
        compilation.diagnostics.PostError(MessageCode::ElseMisplaced, &line);
    }
    RefuseText(compilation, line, arguments);
}

void ParseWhile(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart, CompileState::While);
    ParseLoopCondition(compilation, line, arguments);
}

void ParseUntil(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    if (CloseBlock(compilation, line, CompileState::Repeat) == Closing::NothingOpen) return;
    compilation.RegisterLineLabel(line);
    ParseLoopCondition(compilation, line, arguments);
}

void ParseSelect(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    OpenBlock(compilation, line, Purpose::BlockStart, CompileState::Select);
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
    ContinueBlock(compilation, line, CompileState::Select);
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
    ContinueBlock(compilation, line, CompileState::Select);
    RefuseCaseAfterElse(compilation, line);
    const SourceLine* previous = PreviousInBlock(compilation, line);
    if (previous != nullptr && previous->token == Token::Select) {
        compilation.diagnostics.PostError(MessageCode::ElseMisplaced, &line);
    }
    RefuseText(compilation, line, arguments);
}

}  // namespace zentro
