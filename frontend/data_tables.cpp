#include <algorithm>
#include <optional>

#include "config/text.h"
#include "frontend/data_list.h"
#include "frontend/literal.h"
#include "frontend/statements.h"
#include "frontend/words.h"

namespace zentro {

namespace {

constexpr std::int32_t kLargestReserve = 20000;

TableData& CurrentData(Compilation& compilation) {
    if (compilation.currentTable == nullptr) return compilation.undeclaredTable;
    return *compilation.currentTable->table;
}

/// A header that the declaration pass did not take for one: the language's words are not in order.
void TellUndeclaredTable(Compilation& compilation, const SourceLine& line) {
    if (compilation.currentTable != nullptr || line.purpose == Purpose::DataTableHeader) return;
    compilation.environment.prompts.ShowMessage(
        "Compiler error. DataTable Data encountered for unknown Data Table");
}

/// The number that a count is written as; nothing when it is none.
std::optional<std::int64_t> CountFrom(const Compilation& compilation, std::string_view text) {
    constexpr std::int64_t kTooLarge = 1LL << 40;
    std::string_view value = text;
    if (IsHexadecimal(text)) {
        const auto number = HexadecimalNumber(text);
        return number ? std::optional<std::int64_t>(*number) : std::nullopt;
    }
    if (const Constant* constant = compilation.symbols.FindConstant(text)) {
        value = constant->value;
    } else if (const Command* entry = FindCatalogueConstant(compilation, text)) {
        value = entry->description;
    }
    if (!IsNumeric(value)) return std::nullopt;
    return ParseNumber(value).value_or(kTooLarge);
}

}  // namespace

void ParseTableHeader(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    ChangeCompileState(compilation, CompileState::Table, line);
    const SplitText split = SplitFirstWord(arguments);
    Symbol* const declared = compilation.symbols.FindOwn(split.first, ParentId::Program);
    const bool isTable = declared != nullptr && declared->table != nullptr;
    compilation.currentTable = isTable ? declared : nullptr;
    compilation.currentTableHasErrors = false;
    TellUndeclaredTable(compilation, line);
    if (split.rest.empty()) return;
    const SplitText symbol = SplitFirstWord(split.rest);
    if (!EqualsIgnoreCase(symbol.first, compilation.GetCommandText(Token::Equal))) {
        compilation.diagnostics.PostError(MessageCode::EqualSignExpected, &line);
        return;
    }
    if (symbol.rest.empty()) return;  // the values stand on the next lines
    ExpandDataList(compilation, symbol.rest, line, CurrentData(compilation));
}

void ParseDataLine(Compilation& compilation, SourceLine& line) {
    ExpandDataList(compilation, line.parsedLine, line, CurrentData(compilation));
}

void ParseReserve(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const std::optional<std::int64_t> count = CountFrom(compilation, arguments);
    if (compilation.states.Current() != CompileState::Table || !count || *count < 1) {
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
    } else if (*count > kLargestReserve) {
        compilation.diagnostics.PostError(MessageCode::ValueOutOfRange, &line, Shorten(arguments));
    } else {
        CurrentData(compilation).AddZeros(static_cast<std::size_t>(*count));
    }
}

void CheckTableEnd(Compilation& compilation, SourceLine& line) {
    const bool isEmpty = CurrentData(compilation).Size() == 0;
    if (isEmpty && !compilation.currentTableHasErrors) {
        compilation.diagnostics.PostError(MessageCode::TableEmpty, &line);
    }
}

}  // namespace zentro
