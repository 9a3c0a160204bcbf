#include <string>

#include "codegen/generate_object_lines.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

void AppendTable(Compilation& compilation, Symbol& table) {
    const std::vector<std::uint8_t>& bytes = table.table->bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        Label& label = i == 0 ? table.label
                              : compilation.AddLabel(compilation.texts.Concat(table.ResolvedName(),
                                                                              std::to_string(i)));
        compilation.objectLines.push_back(
            CreateVariableLocation(label, DataType::Byte, bytes[i], ObjectComment::TableByte));
    }
}

void AppendVariable(Compilation& compilation, Symbol& symbol) {
    if (symbol.type == DataType::Table) return AppendTable(compilation, symbol);
    compilation.objectLines.push_back(
        CreateVariableLocation(symbol.label, symbol.type, 0, ObjectComment::Variable));
}

void AppendConstant(Compilation& compilation, Constant& constant) {
    const auto append = [&](Label& label, DataType type, std::uint16_t value) {
        compilation.objectLines.push_back(
            CreateVariableLocation(label, type, value, ObjectComment::Constant));
    };
    const auto value = static_cast<std::uint16_t>(NumberOf(constant.value).value_or(0));
    if (!constant.fitsByte) return append(constant.word, DataType::Word, value);
    append(constant.word, DataType::Byte, 0);  // the high byte
    append(constant.byte, DataType::Byte, value);
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
