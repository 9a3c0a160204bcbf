#include <algorithm>
#include <array>
#include <span>

#include "config/encoding.h"
#include "config/text.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"

namespace zentro {

namespace {

bool IsAboutOpenBlocks(MessageCode code) {
    switch (code) {
        case MessageCode::TableInBlock:
        case MessageCode::RoutineInBlock:
        case MessageCode::ProgramInBlock:
        case MessageCode::IfNotEnded:
        case MessageCode::WhileNotEnded:
        case MessageCode::RepeatNotEnded:
        case MessageCode::SelectNotEnded:
        case MessageCode::TableNotEnded:
        case MessageCode::RoutineNotEnded:
        case MessageCode::ProgramNotEnded:
        case MessageCode::LoopNotEnded:
        case MessageCode::EventNotEndedBefore:
        case MessageCode::EventNotEnded: return true;
        default: return false;
    }
}

/// A line in the middle or at the end of a block, and what begins and ends the block.
struct BlockRow {
    CompileState state;
    Token line;
    Token opener;
    bool ends = true;
};

constexpr std::array kBlocks{
    BlockRow{CompileState::If, Token::EndIf, Token::If},
    BlockRow{CompileState::If, Token::Else, Token::If, false},
    BlockRow{CompileState::While, Token::EndWhile, Token::While},
    BlockRow{CompileState::Repeat, Token::Until, Token::Repeat},
    BlockRow{CompileState::Select, Token::EndSelect, Token::Select},
    BlockRow{CompileState::Select, Token::CaseElse, Token::Select, false},
    BlockRow{CompileState::Select, Token::Case, Token::Select, false},
    BlockRow{CompileState::Loop, Token::EndLoop, Token::Loop},
    BlockRow{CompileState::Routine, Token::EndRoutine, Token::DefineRoutine},
    BlockRow{CompileState::Table, Token::EndTable, Token::DefineTable},
    BlockRow{CompileState::Event, Token::EndEvent, Token::DefineEvent},
    BlockRow{CompileState::Program, Token::EndProgram, Token::BeginProgram},
};

bool IsProgramOrRoutine(CompileState state) {
    return state == CompileState::Program || state == CompileState::Routine ||
           state == CompileState::Event;
}

/// END LOOP and ELSE where only the program or a routine is open
std::optional<Hint> FindMissingOpener(const HintQuestion& question) {
    if (!IsProgramOrRoutine(question.compilation.states.Current())) return std::nullopt;
    const auto* row = std::ranges::find(kBlocks, question.line.token, &BlockRow::line);
    if (row == kBlocks.end() || IsProgramOrRoutine(row->state)) return std::nullopt;
    return MakeHint(question, MessageCode::OpenerMissing,
                    {ToUtf8(question.compilation.GetCommandText(row->line)),
                     ToUtf8(question.compilation.GetCommandText(row->opener))});
}

Hint HintOfOpener(const HintQuestion& question, const SourceLine& opener) {
    const CompileState state = question.compilation.states.Current();
    const bool isRoutine =
        question.code == MessageCode::RoutineInBlock && state == CompileState::Program;
    const std::string number = std::to_string(opener.fileLineNo);
    Hint hint = isRoutine ? MakeHint(question, MessageCode::RoutineInsideProgram, {number})
                          : MakeHint(question, MessageCode::BlockStillOpen,
                                     {number, ToUtf8(ShownStatement(opener))});
    if (question.line.file == nullptr) LeadTo(hint, opener);
    return hint;
}

/// Blocks inside of the routine that is open.
bool HasBlocks(const Compilation& compilation) {
    const auto first = static_cast<std::size_t>(compilation.states.Innermost().firstLineNo);
    const auto lines = std::span(compilation.sourceLines).subspan(first);
    return std::ranges::any_of(lines, [](const SourceLine& line) {
        return line.token == Token::If || line.token == Token::While || line.token == Token::Loop ||
               line.token == Token::Select;
    });
}

/// END alone, while something is open that it could end
std::optional<Hint> FindPlainEnd(const HintQuestion& question) {
    const Compilation& compilation = question.compilation;
    const std::string_view statement = StatementOf(question.line);
    const bool isEnd = question.code == MessageCode::NotUnderstood &&
                       EqualsIgnoreCase(statement, compilation.GetCommandText(Token::EndPrefix));
    if (!isEnd) return std::nullopt;
    const CompileState state = compilation.states.Current();
    const bool isKnown = state == CompileState::Routine || state == CompileState::Event ||
                         state == CompileState::Table;
    if (!isKnown) return MakeHint(question, MessageCode::PlainEnd, {});
    const auto row = std::ranges::find_if(
        kBlocks, [&](const BlockRow& one) { return one.ends && one.state == state; });
    // Lines inside of a routine are not known to be those of blocks yet.
    if (row == kBlocks.end()) return std::nullopt;
    if (state != CompileState::Table && HasBlocks(compilation))
        return MakeHint(question, MessageCode::PlainEnd, {});
    return RewriteStatement(question, std::string(compilation.GetCommandText(row->line)));
}

}  // namespace

std::optional<Hint> FindFirstToRun(const HintQuestion& question) {
    if (question.code != MessageCode::NoProgram) return std::nullopt;
    const auto& lines = question.compilation.sourceLines;
    const auto first = std::ranges::find_if(lines, [](const SourceLine& line) {
        const bool runs =
            line.purpose == Purpose::Statement || line.purpose == Purpose::Assignment ||
            line.purpose == Purpose::FunctionAssignment || line.purpose == Purpose::BlockStart;
        return runs && line.parent == ParentId::Program;
    });
    if (first == lines.end()) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::ProgramBegins,
                         {std::to_string(first->fileLineNo), ToUtf8(ShownStatement(*first))});
    LeadTo(hint, *first);
    return hint;
}

std::optional<Hint> FindOpenBlock(const HintQuestion& question) {
    if (std::optional<Hint> end = FindPlainEnd(question)) return end;
    const Compilation& compilation = question.compilation;
    const CompileState state = compilation.states.Current();
    const bool isOpen = state != CompileState::Outside && state != CompileState::Aborted;
    if (!isOpen || !IsAboutOpenBlocks(question.code)) return std::nullopt;
    if (std::optional<Hint> opener = FindMissingOpener(question)) return opener;
    const SourceLine& opener =
        compilation.GetSourceLine(compilation.states.Innermost().firstLineNo);
    const bool isHere = question.line.file == nullptr || question.line.file == opener.file;
    if (!isHere) return std::nullopt;
    if (&opener == &question.line) {
        const auto row = std::ranges::find_if(
            kBlocks, [&](const BlockRow& one) { return one.ends && one.state == state; });
        return MakeHint(question, MessageCode::EndMissing,
                        {ToUtf8(compilation.GetCommandText(row->line))});
    }
    return HintOfOpener(question, opener);
}

}  // namespace zentro
