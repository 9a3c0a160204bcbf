#include "desktop/variable_values.h"

#include <QCoreApplication>
#include <algorithm>
#include <vector>

#include "compiler/symbols_file.h"
#include "config/encoding.h"
#include "faults/words_of_program.h"

namespace zentro {

namespace {

struct ValueTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::VariableValues)
};

}  // namespace

QString ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                  const CommandCatalogue& commands) {
    return QString::fromStdString(ValueText(bytes, type, size, FlagWordsOf(commands)));
}

const Symbol* FindVariable(const Compilation& compilation, const std::string& name,
                           ParentId scope) {
    const Symbol* symbol = compilation.symbols.FindSymbol(std::string_view(name), scope);
    const bool isVariable = symbol != nullptr && symbol->symbolClass == SymbolClass::Variable &&
                            symbol->declareLineNo != 0 && symbol->label.address >= 0;
    return isVariable ? symbol : nullptr;
}

QString DescribeVariable(const Compilation& compilation, const Symbol& variable,
                         const ReadMemory& read) {
    const std::size_t size = SizeInMemory(variable);
    const std::string memory =
        read(static_cast<std::uint32_t>(variable.label.address), std::min(size, kMostBytesShown));
    const std::vector<std::uint8_t> bytes(memory.begin(), memory.end());
    const QString value = ValueText(bytes, variable.type, size, compilation.configuration.commands);
    const QString name = QString::fromStdString(ToUtf8(variable.name));
    if (variable.parent == ParentId::Program) return ValueTexts::tr("%1 = %2").arg(name, value);
    const QString routine =
        QString::fromStdString(ToUtf8(compilation.symbols.NameOf(variable.parent)));
    return ValueTexts::tr("%1 of %2 = %3").arg(name, routine, value);
}

}  // namespace zentro
