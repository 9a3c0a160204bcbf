#include <array>
#include <string>

#include "codegen/generate_object_lines.h"
#include "config/text.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

struct VariableRow {
    DataType type;
    std::string_view comment;
    std::string_view value;  ///< before the program gives it another
};

constexpr std::array kVariables{
    VariableRow{DataType::Byte, "Byte Variable", "0"},
    VariableRow{DataType::Word, "Word Variable", "0,0"},
    VariableRow{DataType::Flag, "Boolean Variable", "0"},
    VariableRow{DataType::Pointer, "DataPointer Variable", "0,0"},
};

void AppendTable(Compilation& compilation, Symbol& table) {
    for (std::size_t i = 0; i < table.tableBytes.size(); ++i) {
        Label& label = i == 0 ? table.label
                              : compilation.AddLabel(compilation.texts.Concat(table.ResolvedName(),
                                                                              std::to_string(i)));
        const std::string_view value = compilation.texts.Store(std::to_string(table.tableBytes[i]));
        compilation.objectLines.push_back(
            CreateVariableLocation(label, value, 1, "DataTable Byte"));
    }
}

void AppendVariable(Compilation& compilation, Symbol& symbol) {
    if (symbol.type == DataType::Table) return AppendTable(compilation, symbol);
    for (const VariableRow& row : kVariables) {
        if (row.type != symbol.type) continue;
        compilation.objectLines.push_back(CreateVariableLocation(
            symbol.label, row.value, IsByteSized(row.type) ? 1 : 2, row.comment));
    }
}

void AppendConstant(Compilation& compilation, Constant& constant) {
    TextArena& texts = compilation.texts;
    const std::int32_t number = NumberOf(constant.value).value_or(0);
    if (constant.fitsByte) {
        compilation.objectLines.push_back(
            CreateVariableLocation(constant.word, "0", 1, " Word Constant (0)"));
        compilation.objectLines.push_back(
            CreateVariableLocation(constant.byte, texts.Store(std::to_string(number)), 1,
                                   texts.Concat(" Byte Constant (", constant.value, ")")));
        return;
    }
    const std::string bytes = std::to_string(number / 256) + "," + std::to_string(number % 256);
    compilation.objectLines.push_back(
        CreateVariableLocation(constant.word, texts.Store(bytes), 2,
                               texts.Concat(" Word Constant (", constant.value, ")")));
}

}  // namespace

void MakeDataArea(Compilation& compilation) {
    for (Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.symbolClass == SymbolClass::Variable) AppendVariable(compilation, symbol);
    }
    for (Constant& constant : compilation.symbols.Constants()) {
        AppendConstant(compilation, constant);
    }
}

}  // namespace zentro
