#include "compiler/symbols_file.h"

#include "config/encoding.h"

namespace zentro {

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
        text += kTypeNames[static_cast<std::size_t>(symbol.type)];
        text += '\t' + std::to_string(symbol.label.address);
        text += '\t' + std::to_string(SizeInMemory(symbol)) + '\n';
    }
    return text;
}

}  // namespace zentro
