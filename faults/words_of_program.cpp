#include "faults/words_of_program.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "compiler/symbols_file.h"
#include "config/encoding.h"
#include "config/text.h"
#include "model/compilation.h"

namespace zentro {

namespace {

constexpr std::size_t kLongestText = 48;
constexpr std::string_view kCut = "…";

using LabelWords = std::unordered_map<const Label*, std::string>;

bool IsOfCompiler(const Symbol& symbol) {
    return symbol.declareLineNo == 0;
}

std::string NameOf(const Compilation& compilation, const Symbol& symbol) {
    std::string name = ToUtf8(symbol.name);
    if (symbol.parent == ParentId::Program) return name;
    return name + " of " + ToUtf8(compilation.symbols.NameOf(symbol.parent));
}

LabelWords WordsOfLabels(const Compilation& compilation) {
    LabelWords words;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (!IsOfCompiler(symbol)) words.emplace(&symbol.label, NameOf(compilation, symbol));
    }
    for (const Constant& constant : compilation.symbols.Constants()) {
        words.emplace(&constant.word, ToUtf8(constant.name));
        words.emplace(&constant.byte, ToUtf8(constant.name));
    }
    return words;
}

std::string TextOf(const SourceLine& line) {
    std::string_view text = Trim(line.text.substr(0, FindComment(line.text)));
    const bool isLong = text.size() > kLongestText;
    if (isLong) text = Trim(text.substr(0, kLongestText));
    std::string shown = ToUtf8(text);
    if (isLong) shown += kCut;
    return shown;
}

/// Labels lead to the places of the variables among the words.
using VariablesByLabel = std::unordered_map<const Label*, std::size_t>;

VariablesByLabel AddVariables(const Compilation& compilation, ProgramWords& words) {
    VariablesByLabel places;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.symbolClass != SymbolClass::Variable || symbol.label.address < 0) continue;
        if (IsOfCompiler(symbol)) continue;
        places[&symbol.label] = words.variables.size();
        words.variables.push_back({NameOf(compilation, symbol),
                                   static_cast<std::uint32_t>(symbol.label.address), symbol.type,
                                   SizeInMemory(symbol)});
    }
    return places;
}

std::vector<std::size_t> VariablesOfStatement(const Compilation& compilation,
                                              const SourceLine& line,
                                              const VariablesByLabel& known) {
    std::vector<std::size_t> variables;
    for (const LineElement& element : compilation.ElementsOf(line)) {
        const auto found = known.find(element.location);
        if (found != known.end() && std::ranges::find(variables, found->second) == variables.end())
            variables.push_back(found->second);
    }
    return variables;
}

StatementWords WordsOfStatement(const Compilation& compilation, const SourceLine& line) {
    std::string place = "line " + std::to_string(line.fileLineNo);
    if (line.file != nullptr && line.file != &compilation.files.front())
        place += " of " + line.file->name;
    StatementWords words{std::move(place), TextOf(line)};
    if (line.parent != ParentId::Program)
        words.routine = ToUtf8(compilation.symbols.NameOf(line.parent));
    return words;
}

std::vector<std::uint8_t> BytesOf(const ObjectLine& line) {
    std::vector<std::uint8_t> bytes;
    const ObjectCodeText text(line);
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        std::uint8_t byte = 0;
        std::from_chars(rest.data(), rest.data() + end, byte);
        bytes.push_back(byte);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return bytes;
}

bool IsMove(const ObjectLine& line) {
    return line.opcode == Opcode::MoveByte || line.opcode == Opcode::MoveWord;
}

/// What the statement has put into a scratch variable before the instruction with this index.
const Label* PutInto(const Compilation& compilation, const Label* scratch, std::size_t index) {
    const auto& lines = compilation.objectLines;
    for (std::size_t i = index; i > 0 && lines[i - 1].sourceLineNo == lines[index].sourceLineNo;
         --i) {
        const ObjectLine& line = lines[i - 1];
        if (IsMove(line) && line.arguments[1] == scratch) return line.arguments[0];
    }
    return nullptr;
}

InstructionWords WordsOfInstruction(const Compilation& compilation, const LabelWords& labels,
                                    std::size_t index) {
    const ObjectLine& line = compilation.objectLines[index];
    const SymbolTable& symbols = compilation.symbols;
    InstructionWords words;
    words.bytes = BytesOf(line);
    words.preparesCall =
        line.comment == ObjectComment::PushArgument || line.comment == ObjectComment::SaveLocal;
    for (std::size_t slot = 0; slot < line.argCount; ++slot) {
        const Label* label = line.arguments[slot];
        if (label == &symbols.ScratchOne() || label == &symbols.ScratchTwo())
            label = PutInto(compilation, label, index);
        const auto found = labels.find(label);
        if (found != labels.end()) words.operands[slot] = found->second;
    }
    return words;
}

}  // namespace

FlagWords FlagWordsOf(const CommandCatalogue& commands) {
    FlagWords words;
    for (const Token token : {Token::True, Token::False}) {
        const Command* command = commands.ByToken(token);
        const auto value = command == nullptr ? std::nullopt : ParseNumber(command->description);
        if (value) words.emplace(*value, ToUtf8(command->command));
    }
    return words;
}

ProgramWords WordsOf(const Compilation& compilation) {
    const LabelWords labels = WordsOfLabels(compilation);
    ProgramWords words;
    words.flagWords = FlagWordsOf(compilation.configuration.commands);
    const VariablesByLabel variables = AddVariables(compilation, words);
    std::int32_t lineNo = 0;
    for (std::size_t i = 0; i < compilation.objectLines.size(); ++i) {
        const ObjectLine& line = compilation.objectLines[i];
        if (line.purpose != ObjectPurpose::Instruction || line.sourceLineNo == 0) continue;
        if (line.sourceLineNo != lineNo) {
            lineNo = line.sourceLineNo;
            const SourceLine& source = compilation.GetSourceLine(lineNo);
            words.statements.push_back(WordsOfStatement(compilation, source));
            words.statements.back().variables =
                VariablesOfStatement(compilation, source, variables);
        }
        InstructionWords& added = words.instructions[static_cast<std::uint32_t>(line.address)] =
            WordsOfInstruction(compilation, labels, i);
        added.statement = words.statements.size() - 1;
    }
    return words;
}

}  // namespace zentro
