#include "compiler/object_comments.h"

#include <string_view>

namespace zentro {

namespace {

std::string_view SizeWord(const ObjectLine& line) {
    switch (line.opcode) {
        case Opcode::PushByte:
        case Opcode::PopByte:
        case Opcode::MoveByte: return "Byte";
        default: return "Word";
    }
}

std::string_view VariableComment(DataType type) {
    switch (type) {
        case DataType::Byte: return "Byte Variable";
        case DataType::Word: return "Word Variable";
        case DataType::Flag: return "Boolean Variable";
        case DataType::Pointer: return "DataPointer Variable";
        case DataType::Any:
        case DataType::Table: break;
    }
    return "";
}

}  // namespace

ObjectComments::ObjectComments(const Compilation& compilation) : compilation_(compilation) {
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        symbols_.emplace(&symbol.label, &symbol);
    }
    for (const Constant& constant : compilation.symbols.Constants()) {
        constants_.emplace(&constant.word, &constant);
        constants_.emplace(&constant.byte, &constant);
    }
}

/// More than a listing shows: a line of many values has as many instructions.
constexpr std::size_t kMostShown = 80;

std::string ObjectComments::TextOf(const ObjectLine& line) const {
    const std::string size(SizeWord(line));
    const auto argument = [&](std::size_t index) { return line.arguments[index]; };
    const auto nameOf = [&](const Label* label) { return std::string(symbols_.at(label)->name); };
    switch (line.comment) {
        case ObjectComment::SourceLine:
            return std::string(
                compilation_.GetSourceLine(line.sourceLineNo).parsedLine.substr(0, kMostShown));
        case ObjectComment::None: return "";
        case ObjectComment::Default: return "Defaulting " + nameOf(argument(line.argCount - 1U));
        case ObjectComment::PopParameter:
            return "Pop " + size + " " + std::string(argument(0)->name);
        case ObjectComment::PushArgument:
            return "Push " + size + " " + std::string(argument(0)->name);
        case ObjectComment::SaveLocal: {
            const Symbol& variable = *symbols_.at(argument(0));
            return "Push " + std::string(compilation_.symbols.NameOf(variable.parent)) +
                   "'s Local " + size + " " + std::string(variable.name);
        }
        case ObjectComment::RestoreLocal: return "Pop Local " + size + " " + nameOf(argument(0));
        case ObjectComment::Return: return "Return";
        case ObjectComment::PrepareDivide: return "Prep for Divide " + size;
        case ObjectComment::CleanUpDivide: return "Cleanup after Divide " + size;
        case ObjectComment::PrepareMod: return "Prep for Mod " + size;
        case ObjectComment::CleanUpMod: return "Cleanup after Mod " + size;
        case ObjectComment::StartOfNot: return "Start of NOT code for Byte";
        case ObjectComment::EndOfIfBlock: return "End of If block - Jump around Else block";
        case ObjectComment::EndOfWhile: return "End of While - Jump Back to While";
        case ObjectComment::EndOfCase: return "End of case block";
        case ObjectComment::CaseJoin: return "Mini Jump point to get the OR";
        case ObjectComment::Variable:
        case ObjectComment::TableByte:
        case ObjectComment::Constant: return TextOfLocation(line);
    }
    return "";
}

std::string ObjectComments::TextOfLocation(const ObjectLine& line) const {
    if (line.comment == ObjectComment::Variable) return std::string(VariableComment(line.type));
    if (line.comment == ObjectComment::TableByte) return "DataTable Byte";
    const Constant& constant = *constants_.at(line.label);
    if (line.label == &constant.byte) return " Byte Constant (" + std::string(constant.value) + ")";
    return " Word Constant (" + (constant.fitsByte ? "0" : std::string(constant.value)) + ")";
}

}  // namespace zentro
