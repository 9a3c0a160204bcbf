#include "codegen/generate_object_lines.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

void AppendTable(Compilation& compilation, Symbol& table) {
    if (table.table->Size() == 0) return;
    compilation.objectLines.push_back(CreateTableLocation(table.label, *table.table));
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
