#include "compiler/symbols_file.h"

#include <string_view>

#include "config/encoding.h"

namespace zentro {

namespace {

std::string_view TypeName(DataType type) {
    switch (type) {
        case DataType::Byte: return "byte";
        case DataType::Word: return "word";
        case DataType::Flag: return "flag";
        case DataType::Pointer: return "pointer";
        case DataType::Table: return "table";
        case DataType::Any: break;
    }
    return "unknown";
}

}  // namespace

std::size_t SizeInMemory(const Symbol& variable) {
    if (variable.type == DataType::Table) return variable.table->Size();
    return IsByteSized(variable.type) ? 1 : 2;
}

std::string SymbolsFileText(const Compilation& compilation) {
    std::string text;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.symbolClass != SymbolClass::Variable) continue;
        text += ToUtf8(symbol.ResolvedName());
        text += '\t';
        text += TypeName(symbol.type);
        text += '\t' + std::to_string(symbol.label.address);
        text += '\t' + std::to_string(SizeInMemory(symbol)) + '\n';
    }
    return text;
}

}  // namespace zentro
