#include "compiler/resolve_labels.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "config/text.h"

namespace zentro {

namespace {

using SymbolsByLabel = std::unordered_map<std::string_view, const Symbol*, FoldedHash, FoldedEqual>;

/// The first address of a label stays.
void PlaceLabels(Compilation& compilation) {
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.label == nullptr) continue;
        if (line.label->address == Label::kNowhere) {
            line.label->address = line.address;
        } else {
            compilation.diagnostics.PostError(MessageCode::LabelTwice,
                                              &compilation.GetSourceLine(line.sourceLineNo),
                                              line.label->name);
        }
    }
}

void PostTwice(Compilation& compilation, const Symbol& one, const Symbol& other) {
    const bool oneIsLater = one.declareLineNo > other.declareLineNo;
    const Symbol& later = oneIsLater ? one : other;
    const Symbol& earlier = oneIsLater ? other : one;
    compilation.diagnostics.PostError(MessageCode::LabelTwice,
                                      &compilation.GetSourceLine(later.declareLineNo),
                                      Shorten(later.name) + " and " + Shorten(earlier.name));
}

/// The table one of whose elements bears the name: an element is named by its table and its number.
const Symbol* FindTableWithElement(const SymbolsByLabel& symbols, std::string_view name) {
    for (std::size_t digits = 1; digits < name.size() && IsDigit(name[name.size() - digits]);
         ++digits) {
        const std::string_view number = name.substr(name.size() - digits);
        if (number.front() == '0') continue;
        const auto found = symbols.find(name.substr(0, name.size() - digits));
        const std::optional<std::int32_t> index = ParseNumber(number);
        if (found == symbols.end() || !index) continue;
        const TableData* table = found->second->table;
        if (table != nullptr && static_cast<std::size_t>(*index) < table->bytes.size()) {
            return found->second;
        }
    }
    return nullptr;
}

/// Two declarations can come to the same label: a table's T1 beside a variable named T1, a
/// variable of routine A_B beside one of routine A.
void CheckNames(Compilation& compilation) {
    SymbolsByLabel symbols;
    symbols.reserve(compilation.symbols.Symbols().size());
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        const auto [known, isNew] = symbols.emplace(symbol.ResolvedName(), &symbol);
        if (!isNew) PostTwice(compilation, symbol, *known->second);
    }
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        const Symbol* table = FindTableWithElement(symbols, symbol.ResolvedName());
        if (table != nullptr) PostTwice(compilation, symbol, *table);
    }
}

void CheckReferences(Compilation& compilation) {
    for (const ObjectLine& line : compilation.objectLines) {
        for (std::size_t i = 0; i < line.argCount; ++i) {
            const Label& label = *line.arguments[i];
            if (label.address != Label::kNowhere) continue;
            compilation.diagnostics.PostError(MessageCode::UnknownLabel,
                                              &compilation.GetSourceLine(line.sourceLineNo),
                                              label.name);
        }
        compilation.environment.progress.LetEventsRun();
    }
}

}  // namespace

void ResolveLabels(Compilation& compilation) {
    PlaceLabels(compilation);
    CheckNames(compilation);
    CheckReferences(compilation);
}

LabelTable BuildLabelTable(const Compilation& compilation) {
    LabelTable table;
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.label != nullptr) table.emplace(line.label->name, line.address);
    }
    return table;
}

std::optional<std::int32_t> LookupLabel(const LabelTable& table, std::string_view name) {
    const auto found = table.find(name);
    if (found == table.end()) return std::nullopt;
    return found->second;
}

}  // namespace zentro
