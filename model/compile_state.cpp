#include "model/compile_state.h"

#include <array>
#include <cassert>
#include <cstddef>
#include <optional>

#include "model/compilation.h"

namespace zentro {

namespace {

constexpr auto kStateCount = static_cast<std::size_t>(CompileState::Aborted) + 1;

/// The blocks by how they nest.
enum class Nesting : std::uint8_t { Outside, Table, RoutineOrEvent, Program, Inner };

using Violation = std::optional<MessageCode>;
constexpr Violation kAllowed = std::nullopt;

/// What may not open inside a block, by what is to be opened.
struct NestingRow {
    Violation table, routineOrEvent, program, inner;
};
constexpr NestingRow kOutside{kAllowed, kAllowed, kAllowed, MessageCode::BlockOutside};
constexpr NestingRow kInTable{MessageCode::TableInTable, MessageCode::TableInBlock,
                              MessageCode::BlockOutside, MessageCode::BlockOutside};
constexpr NestingRow kInEvent{MessageCode::TableInBlock, kAllowed, kAllowed, kAllowed};
constexpr NestingRow kInBlock{MessageCode::TableInBlock, MessageCode::RoutineInBlock,
                              MessageCode::ProgramInBlock, kAllowed};

struct StateRow {
    CompileState state;
    Nesting asNew;             ///< the kind of block that it opens
    const NestingRow& inside;  ///< while it is the innermost open block
    MessageCode notEnded{};    ///< when something else ends while it is open
};

constexpr std::array<StateRow, kStateCount> kStates{{
    {CompileState::Outside, Nesting::Outside, kOutside, MessageCode::NothingToEnd},
    {CompileState::Table, Nesting::Table, kInTable, MessageCode::TableNotEnded},
    {CompileState::Routine, Nesting::RoutineOrEvent, kInBlock, MessageCode::RoutineNotEnded},
    {CompileState::Event, Nesting::RoutineOrEvent, kInEvent, MessageCode::EventNotEnded},
    {CompileState::Program, Nesting::Program, kInBlock, MessageCode::ProgramNotEnded},
    {CompileState::If, Nesting::Inner, kInBlock, MessageCode::IfNotEnded},
    {CompileState::While, Nesting::Inner, kInBlock, MessageCode::WhileNotEnded},
    {CompileState::Repeat, Nesting::Inner, kInBlock, MessageCode::RepeatNotEnded},
    {CompileState::Select, Nesting::Inner, kInBlock, MessageCode::SelectNotEnded},
    {CompileState::Loop, Nesting::Inner, kInBlock, MessageCode::LoopNotEnded},
    {CompileState::Aborted, Nesting::Outside, kInBlock, MessageCode::NothingToEnd},
}};

constexpr bool RowsFollowTheStates() {
    for (std::size_t row = 0; row < kStateCount; ++row) {
        if (static_cast<std::size_t>(kStates[row].state) != row) return false;
    }
    return true;
}
static_assert(RowsFollowTheStates(), "every block needs one row, in order");

const StateRow& RowOf(CompileState state) {
    return kStates[static_cast<std::size_t>(state)];
}

Violation FindViolation(CompileState current, CompileState state) {
    const NestingRow& row = RowOf(current).inside;
    switch (RowOf(state).asNew) {
        case Nesting::Table: return row.table;
        case Nesting::RoutineOrEvent: return row.routineOrEvent;
        case Nesting::Program: return row.program;
        case Nesting::Inner: return row.inner;
        case Nesting::Outside: return kAllowed;
    }
    return kAllowed;
}

void Abort(Compilation& compilation, const SourceLine& line) {
    compilation.states.Push({CompileState::Aborted, line.lineNumber, line.lineNumber});
}

void LinkToChain(Compilation& compilation, SourceLine& line) {
    const CompileStates::Block& block = compilation.states.Innermost();
    SourceLine& previous = compilation.GetSourceLine(block.lastLineNo);
    previous.structNextLineNo = line.lineNumber;
    line.structPrevLineNo = previous.lineNumber;
    line.structFirstLineNo = block.firstLineNo;
    compilation.GetSourceLine(block.firstLineNo).structLastLineNo = line.lineNumber;
}

}  // namespace

bool IsInner(CompileState state) {
    return RowOf(state).asNew == Nesting::Inner;
}

MessageCode NotEndedMessage(CompileState state) {
    return RowOf(state).notEnded;
}

void ChangeCompileState(Compilation& compilation, CompileState state, SourceLine& line) {
    const CompileState current = compilation.states.Current();
    if (current == CompileState::Aborted) return;
    assert(state != CompileState::Outside);
    if (const Violation violation = FindViolation(current, state)) {
        compilation.diagnostics.PostError(*violation, &line);
        Abort(compilation, line);
        return;
    }
    if (state == CompileState::Program) {
        if (compilation.mainBlockSeen) {
            compilation.diagnostics.PostError(MessageCode::SecondProgram, &line);
        }
        compilation.mainBlockSeen = true;
    }
    if (state == CompileState::Aborted) {
        Abort(compilation, line);
        return;
    }
    if (IsInner(state)) line.structFirstLineNo = line.lineNumber;
    compilation.states.Push({state, line.lineNumber, line.lineNumber});
}

bool ExitCompileState(Compilation& compilation, CompileState state, SourceLine& line) {
    const CompileState current = compilation.states.Current();
    if (current == CompileState::Outside || current == CompileState::Aborted) return false;
    if (state != current) {
        compilation.diagnostics.PostError(NotEndedMessage(current), &line);
        Abort(compilation, line);
        return false;
    }
    if (IsInner(state)) LinkToChain(compilation, line);
    if (state == CompileState::Program || IsInner(state)) {
        compilation.states.Pop();
    } else {
        compilation.states.Clear();  // tables, routines and events end whatever is around them
    }
    return true;
}

void ContinueCompileState(Compilation& compilation, CompileState state, SourceLine& line) {
    const std::int32_t firstLineNo =
        compilation.states.Current() == state ? compilation.states.Innermost().firstLineNo : 0;
    if (ExitCompileState(compilation, state, line)) {
        compilation.states.Push({state, firstLineNo, line.lineNumber});
        return;
    }
    ChangeCompileState(compilation, state, line);
}

void PostOpenBlock(Compilation& compilation) {
    const CompileState state = compilation.states.Current();
    if (state == CompileState::Outside || state == CompileState::Aborted) return;
    const std::int32_t firstLineNo = compilation.states.Innermost().firstLineNo;
    compilation.diagnostics.PostError(NotEndedMessage(state),
                                      &compilation.GetSourceLine(firstLineNo));
}

}  // namespace zentro
