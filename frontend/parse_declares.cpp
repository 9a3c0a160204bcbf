#include "frontend/parse_declares.h"

#include <algorithm>
#include <array>

#include "config/text.h"
#include "frontend/declarations.h"
#include "frontend/line_normalizer.h"
#include "frontend/words.h"
#include "model/statement.h"

namespace zentro {

namespace {

using Parser = void (*)(Compilation&, SourceLine&, std::string_view);

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

void Declare(Compilation& compilation, SourceLine& line, std::string_view arguments,
             Purpose purpose, Parser parse) {
    line.purpose = purpose;
    if (IsInRoutine(compilation)) line.scope = Scope::Local;
    parse(compilation, line, arguments);
}

void OpenBlock(Compilation& compilation, SourceLine& line, std::string_view arguments,
               Purpose purpose, Parser parse) {
    const CompileState block = FindStatement(line.token)->edge.block;
    line.purpose = purpose;
    ChangeCompileState(compilation, block, line);
    parse(compilation, line, arguments);
    if (block != CompileState::Table) compilation.RegisterLineLabel(line);
}

/// The ends of other blocks begin with the same word, but are met in the statement pass only.
void CloseBlock(Compilation& compilation, SourceLine& line) {
    const CompileState block = FindStatement(line.token)->edge.block;
    if (!IsDeclaredBlock(block)) return;
    line.purpose = Purpose::BlockEnd;
    ExitCompileState(compilation, block, line);
    if (block != CompileState::Table) compilation.currentParent = ParentId::Program;
}

void ReadDeclaration(Compilation& compilation, SourceLine& line, Reading reading,
                     std::string_view arguments) {
    const auto declare = [&](Purpose purpose, Parser parse) {
        Declare(compilation, line, arguments, purpose, parse);
    };
    const auto open = [&](Purpose purpose, Parser parse) {
        OpenBlock(compilation, line, arguments, purpose, parse);
    };
    switch (reading) {
        case Reading::ByteDeclaration: return declare(Purpose::ByteDeclaration, DeclareByte);
        case Reading::WordDeclaration: return declare(Purpose::WordDeclaration, DeclareWord);
        case Reading::ConstantDeclaration:
            return declare(Purpose::ConstantDeclaration, DeclareNamedConstant);
        case Reading::FlagDeclaration: return declare(Purpose::FlagDeclaration, DeclareFlag);
        case Reading::PointerDeclaration:
            return declare(Purpose::PointerDeclaration, DeclarePointer);
        case Reading::TableHeader: return open(Purpose::DataTableHeader, DeclareTable);
        case Reading::RoutineHeader: return open(Purpose::RoutineHeader, DeclareRoutine);
        case Reading::EventHeader: return open(Purpose::EventHeader, DeclareEvent);
        case Reading::SharedParameters: return SetSharedParameters(compilation, arguments);
        case Reading::BlockEnd: return CloseBlock(compilation, line);
        case Reading::Include:
        case Reading::TableRoom:
        case Reading::ProgramStart:
        case Reading::LoopStart:
        case Reading::If:
        case Reading::Else:
        case Reading::While:
        case Reading::Until:
        case Reading::Select:
        case Reading::Case:
        case Reading::CaseElse:
        case Reading::Call:
        case Reading::Return:
        case Reading::Words:
        case Reading::Values:
        case Reading::Unsupported:
        case Reading::Assignment:
        case Reading::RoutineCall:
        case Reading::Function:
        case Reading::UnsupportedFunction:
            compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
    }
}

}  // namespace

bool IsDeclaredBlock(CompileState block) {
    return block == CompileState::Table || block == CompileState::Routine ||
           block == CompileState::Event;
}

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
    if (const Statement* statement = FindStatement(line.token)) {
        ReadDeclaration(compilation, line, statement->reading, arguments);
    } else {
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
    }
    return std::nullopt;
}

}  // namespace zentro
