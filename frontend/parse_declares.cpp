#include "frontend/parse_declares.h"

#include <algorithm>
#include <array>

#include "config/text.h"
#include "frontend/declarations.h"
#include "frontend/line_normalizer.h"
#include "frontend/words.h"

namespace zentro {

namespace {

using Parser = void (*)(Compilation&, SourceLine&, std::string_view);

/// The declarations of variables and constants: they open no block.
struct DeclarationRow {
    Token token;
    Purpose purpose;
    Parser parse;
};

constexpr std::array kDeclarations{
    DeclarationRow{Token::DefineByte, Purpose::ByteDeclaration, DeclareByte},
    DeclarationRow{Token::DefineWord, Purpose::WordDeclaration, DeclareWord},
    DeclarationRow{Token::DefineConstant, Purpose::ConstantDeclaration, DeclareNamedConstant},
    DeclarationRow{Token::DefineFlag, Purpose::FlagDeclaration, DeclareFlag},
    DeclarationRow{Token::DefinePointer, Purpose::PointerDeclaration, DeclarePointer},
};

/// The declarations that open a block, and the lines that end it.
struct BlockRow {
    Token opener;
    Purpose purpose;
    CompileState state;
    Parser parse;
    Token end;
};

constexpr std::array kBlocks{
    BlockRow{Token::DefineTable, Purpose::DataTableHeader, CompileState::Table, DeclareTable,
             Token::EndTable},
    BlockRow{Token::DefineRoutine, Purpose::RoutineHeader, CompileState::Routine, DeclareRoutine,
             Token::EndRoutine},
    BlockRow{Token::DefineEvent, Purpose::EventHeader, CompileState::Event, DeclareEvent,
             Token::EndEvent},
};

/// The blocks whose ends begin like those above but are met in the statement pass only.
constexpr std::array kEndsOfStatementBlocks{Token::EndProgram, Token::EndIf, Token::EndWhile,
                                            Token::EndSelect, Token::EndLoop};

bool IsInRoutine(const Compilation& compilation) {
    const CompileState current = compilation.states.Current();
    return current == CompileState::Routine || current == CompileState::Event;
}

void SetSharedParameters(Compilation& compilation, std::string_view arguments) {
    compilation.sharedParameters = !ContainsIgnoreCase(arguments, "off");
    if (compilation.sharedParameters) {
        compilation.diagnostics.PostInfo(MessageCode::SharedParametersOn);
    }
}

/// The included file's name. Without quotes it counts as it stands in the file, since the
/// normaliser would put blanks around its signs.
std::string_view IncludedName(const SourceLine& line, const Command& command,
                              std::string_view arguments) {
    if (arguments.starts_with('"')) return StripQuotes(arguments);
    std::string_view name = line.text.substr(0, line.text.find(';'));
    const auto words = std::count(command.command.begin(), command.command.end(), ' ') + 1;
    for (auto word = 0; word < words; ++word) {
        while (!name.empty() && IsBlank(name.front()))
            name.remove_prefix(1);
        while (!name.empty() && !IsBlank(name.front()))
            name.remove_prefix(1);
    }
    return TrimBlanks(name);
}

void OpenBlock(Compilation& compilation, SourceLine& line, const BlockRow& row,
               std::string_view arguments) {
    line.purpose = row.purpose;
    ChangeCompileState(compilation, row.state, line);
    row.parse(compilation, line, arguments);
    if (row.state != CompileState::Table) compilation.RegisterLineLabel(line);
}

void CloseBlock(Compilation& compilation, SourceLine& line, const BlockRow& row) {
    line.purpose = Purpose::BlockEnd;
    ExitCompileState(compilation, row.state, line);
    if (row.state != CompileState::Table) compilation.currentParent = ParentId::Program;
}

void Dispatch(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    for (const DeclarationRow& row : kDeclarations) {
        if (row.token != line.token) continue;
        line.purpose = row.purpose;
        if (IsInRoutine(compilation)) line.scope = Scope::Local;
        return row.parse(compilation, line, arguments);
    }
    for (const BlockRow& row : kBlocks) {
        if (row.opener == line.token) return OpenBlock(compilation, line, row, arguments);
        if (row.end == line.token) return CloseBlock(compilation, line, row);
    }
    const auto* const end = kEndsOfStatementBlocks.end();
    if (std::find(kEndsOfStatementBlocks.begin(), end, line.token) != end) return;
    compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
}

}  // namespace

bool MayDeclare(const Compilation& compilation, std::string_view text) {
    constexpr std::array kBeginnings{Token::DefinePrefix, Token::EndPrefix, Token::Include};
    return std::any_of(kBeginnings.begin(), kBeginnings.end(), [&](Token token) {
        const std::string_view words = compilation.GetCommandText(token);
        return !words.empty() && StartsWithIgnoreCase(text, words);
    });
}

std::optional<std::string_view> ParseDeclares(Compilation& compilation, SourceLine& line) {
    PrepareLine(compilation, line);
    line.parent = compilation.currentParent;
    if (line.parsedLine.empty()) return std::nullopt;
    const Command* command = compilation.FindCommand(line.parsedLine);
    if (command == nullptr) return std::nullopt;
    line.token = command->id;
    if (!MayDeclare(compilation, line.parsedLine)) return std::nullopt;

    const bool mayStandInTable = line.token == Token::EndTable || line.token == Token::Include;
    if (compilation.states.Current() == CompileState::Table && !mayStandInTable) {
        compilation.diagnostics.PostError(MessageCode::TableNotEnded, &line);
        ChangeCompileState(compilation, CompileState::Aborted, line);
        return std::nullopt;
    }
    const std::string_view arguments = Trim(line.parsedLine.substr(command->command.size()));
    if (line.token == Token::Include) return IncludedName(line, *command, arguments);
    if (line.token == Token::SharedParameters) {
        SetSharedParameters(compilation, arguments);
    } else {
        Dispatch(compilation, line, arguments);
    }
    return std::nullopt;
}

}  // namespace zentro
