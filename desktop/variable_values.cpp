#include "desktop/variable_values.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <vector>

#include "compiler/symbols_file.h"
#include "config/encoding.h"
#include "config/text.h"

namespace zentro {

namespace {

struct ValueTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::VariableValues)
};

/// The number behind a constant of the language, such as TRUE.
std::optional<std::int32_t> ConstantValue(const CommandCatalogue& commands, Token token) {
    const Command* command = commands.ByToken(token);
    return command == nullptr ? std::nullopt : ParseNumber(command->description);
}

QString FlagText(unsigned value, const CommandCatalogue& commands) {
    for (const Token token : {Token::True, Token::False}) {
        if (ConstantValue(commands, token) == static_cast<std::int32_t>(value))
            return QString::fromStdString(ToUtf8(commands.GetCommandText(token)));
    }
    return QString::number(value);
}

QString TableText(std::span<const std::uint8_t> bytes, std::size_t size) {
    const std::size_t count = std::min(bytes.size(), kMostBytesShown);
    QStringList numbers;
    for (const std::uint8_t byte : bytes.first(count))
        numbers += QString::number(byte);
    const QString shown = numbers.join(", ");
    return count < size ? ValueTexts::tr("%1, ... (%2 bytes)").arg(shown).arg(size) : shown;
}

}  // namespace

QString ValueText(std::span<const std::uint8_t> bytes, DataType type, std::size_t size,
                  const CommandCatalogue& commands) {
    const auto at = [&](std::size_t index) { return index < bytes.size() ? bytes[index] : 0U; };
    switch (type) {
        case DataType::Table: return TableText(bytes, size);
        case DataType::Flag: return FlagText(at(0), commands);
        case DataType::Word:
        case DataType::Pointer: return QString::number(at(0) * 256 + at(1));
        case DataType::Any:
        case DataType::Byte: return QString::number(at(0));
    }
    return {};
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
