#include "frontend/parse_source_line.h"

#include <algorithm>
#include <array>
#include <vector>

#include "config/text.h"
#include "frontend/parse_declares.h"
#include "frontend/statements.h"
#include "model/foreign_characters.h"
#include "model/statement_table.h"

namespace zentro {

namespace {

using Parser = void (*)(Compilation&, SourceLine&, std::string_view);

void ParseNothing(Compilation&, SourceLine&, std::string_view) {}

/// How the statement pass reads a line; null for what begins none.
constexpr Parser ParserOf(Reading reading) {
    switch (reading) {
        case Reading::Include:
        case Reading::SharedParameters:
        case Reading::ByteDeclaration:
        case Reading::WordDeclaration:
        case Reading::ConstantDeclaration:
        case Reading::FlagDeclaration:
        case Reading::PointerDeclaration: return ParseNothing;
        case Reading::TableHeader: return ParseTableHeader;
        case Reading::RoutineHeader:
        case Reading::EventHeader: return ParseRoutineHeader;
        case Reading::TableRoom: return ParseReserve;
        case Reading::ProgramStart: return ParseBeginProgram;
        case Reading::BlockEnd: return ParseBlockEnd;
        case Reading::LoopStart: return ParseLoopStart;
        case Reading::If: return ParseIf;
        case Reading::Else: return ParseElse;
        case Reading::While: return ParseWhile;
        case Reading::Until: return ParseUntil;
        case Reading::Select: return ParseSelect;
        case Reading::Case: return ParseCase;
        case Reading::CaseElse: return ParseCaseElse;
        case Reading::Call: return ParseCallStatement;
        case Reading::Return: return ParseReturn;
        case Reading::Words: return ParsePlainStatement;
        case Reading::Values: return ParseArguments;
        case Reading::Unsupported: return ParseUnsupported;
        case Reading::Assignment:
        case Reading::RoutineCall:
        case Reading::Function:
        case Reading::UnsupportedFunction: return nullptr;
    }
    return nullptr;
}

/// The parsers by token, so that a line needs no search.
constexpr std::array<Parser, kTokenCount> MakeParserTable() {
    std::array<Parser, kTokenCount> parsers{};
    for (const Statement& row : kStatementTable)
        parsers[static_cast<std::size_t>(row.token)] = ParserOf(row.reading);
    return parsers;
}
constexpr std::array<Parser, kTokenCount> kParsers = MakeParserTable();

/// Statements that are carried out, not counting those that open or close a block.
bool IsExecutable(Parser parse) {
    return parse == ParsePlainStatement || parse == ParseArguments || parse == ParseCallStatement ||
           parse == ParseReturn || parse == ParseUnsupported;
}

/// A line that begins with a word that begins no statement.
void RefuseWord(Compilation& compilation, SourceLine& line, TokenFamily family) {
    const auto post = [&](MessageCode code) { compilation.diagnostics.PostError(code, &line); };
    switch (family) {
        case TokenFamily::Function: return post(MessageCode::FunctionAsStatement);
        case TokenFamily::Reserved: return post(MessageCode::NotUnderstood);
        case TokenFamily::Constant: return post(MessageCode::ConstantAsStatement);
        case TokenFamily::Operator:
        case TokenFamily::Declaration:
        case TokenFamily::Directive:
        case TokenFamily::Statement:
        case TokenFamily::Unknown: return post(MessageCode::OperatorLine);
    }
}

/// A declaration whose words do not begin as those of the language must was not read as one.
void RefuseUndeclared(Compilation& compilation, SourceLine& line, const Command& command) {
    const bool declares =
        command.family == TokenFamily::Declaration || command.id == Token::SharedParameters;
    if (declares && !MayDeclare(compilation, line.parsedLine))
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
}

void ParseStatement(Compilation& compilation, SourceLine& line, const Command& command) {
    line.parent = compilation.currentParent;
    const Parser parse = kParsers[static_cast<std::size_t>(command.id)];
    if (parse == nullptr) return RefuseWord(compilation, line, command.family);
    if (compilation.states.Current() == CompileState::Table && IsExecutable(parse)) {
        compilation.diagnostics.PostError(MessageCode::TableNotEnded, &line);
        return;
    }
    RefuseUndeclared(compilation, line, command);
    parse(compilation, line, Trim(line.parsedLine.substr(command.command.size())));
}

/// A line that begins with no word of the language.
void ParseOtherLine(Compilation& compilation, SourceLine& line) {
    line.parent = compilation.currentParent;
    const std::string_view equal = compilation.GetCommandText(Token::Equal);
    if (!equal.empty() && ContainsIgnoreCase(line.parsedLine, equal)) {
        ParseAssignment(compilation, line);
        return;
    }
    const bool hasParenthesis = line.parsedLine.find('(') != std::string_view::npos;
    compilation.diagnostics.PostError(
        hasParenthesis ? MessageCode::UnknownCall : MessageCode::UnknownStatement, &line);
}

/// Where a line stands, as far as it decides whether the line is ever reached.
struct Place {
    bool isOutside = false;
    bool isBeforeFirstCase = false;
};

Place PlaceOf(Compilation& compilation) {
    const CompileState current = compilation.states.Current();
    if (current != CompileState::Select) return {current == CompileState::Outside, false};
    const auto& select = compilation.states.Innermost();
    return {false, compilation.GetSourceLine(select.lastLineNo).token == Token::Select};
}

/// Warns of statements that compile but are never carried out.
void WarnOfUnreached(Compilation& compilation, SourceLine& line, const Place& place) {
    const bool isStatement = line.purpose == Purpose::Statement ||
                             line.purpose == Purpose::Assignment ||
                             line.purpose == Purpose::FunctionAssignment;
    const bool opensBlock = line.token == Token::If || line.purpose == Purpose::BlockStart;
    if (place.isOutside && isStatement && !opensBlock) {
        compilation.diagnostics.PostError(MessageCode::NeverRuns, &line);
    }
    if (place.isBeforeFirstCase && (isStatement || opensBlock)) {
        compilation.diagnostics.PostError(MessageCode::BeforeFirstCase, &line);
    }
}

/// Warns of what gets lost of a line that is understood; else there is a message already. The name
/// of an included file may hold any character.
void WarnOfForeignCharacters(Compilation& compilation, SourceLine& line) {
    if (!line.mayBeForeign || line.hasErrors || line.token == Token::Include) return;
    const std::vector<ForeignCharacter> characters = ForeignCharactersIn(line);
    const auto warn = [&](MessageCode code, auto isMeant) {
        const auto found = std::ranges::find_if(characters, isMeant);
        if (found == characters.end()) return;
        compilation.diagnostics.PostShown(code, line, ShownCharacter(found->character));
    };
    warn(MessageCode::CharacterNotOnBoard,
         [](const ForeignCharacter& one) { return one.isReplaced; });
    warn(MessageCode::CharacterIgnored,
         [](const ForeignCharacter& one) { return one.IsIgnored(); });
}

/// The entry that begins the line; the declaration pass has found its token.
const Command* CommandOf(const Compilation& compilation, const SourceLine& line) {
    if (line.token == Token::Other) return compilation.FindCommand(line.parsedLine);
    return compilation.configuration.commands.ByToken(line.token);
}

/// Whether the first value of a table's line is a number with a sign, which stands apart: - 1, 2
bool BeginsWithSignedNumber(std::string_view text) {
    std::string_view number = text.substr(0, text.find(','));
    const bool hasSign = number.starts_with('-') || number.starts_with('+');
    if (!hasSign) return false;
    number = Trim(number.substr(1));
    return !number.empty() && IsDigit(number.front()) && IsNumeric(number);
}

/// Whether a line of a table holds values although it begins with a word of the language.
bool HoldsData(const SourceLine& line, const Command& command) {
    return command.family == TokenFamily::Constant ||
           (command.family == TokenFamily::Operator && BeginsWithSignedNumber(line.parsedLine));
}

void ParseLine(Compilation& compilation, SourceLine& line) {
    const bool isInTable = compilation.states.Current() == CompileState::Table;
    const Command* command = CommandOf(compilation, line);
    if (isInTable && (command == nullptr || HoldsData(line, *command))) {
        line.token = Token::None;
        ParseDataLine(compilation, line);
    } else if (command != nullptr) {
        ParseStatement(compilation, line, *command);
    } else {
        ParseOtherLine(compilation, line);
    }
}

}  // namespace

bool IsSupportedStatement(Token token) {
    const Parser parse = kParsers[static_cast<std::size_t>(token)];
    return parse != nullptr && parse != ParseUnsupported;
}

void ParseSourceLine(Compilation& compilation, SourceLine& line) {
    if (line.parsedLine.empty()) {
        line.purpose = Purpose::Blank;
        return WarnOfForeignCharacters(compilation, line);
    }
    const Place place = PlaceOf(compilation);
    ParseLine(compilation, line);
    if (compilation.states.Current() == CompileState::Table && line.hasErrors) {
        compilation.currentTableHasErrors = true;
    }
    WarnOfUnreached(compilation, line, place);
    WarnOfForeignCharacters(compilation, line);
}

}  // namespace zentro
