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

/// The table one of whose elements bears the label of a program-wide name: an element is called by
/// its table and its number.
const Symbol* FindTableWithElement(const Compilation& compilation, std::string_view name) {
    for (std::size_t digits = 1; digits < name.size() && IsDigit(name[name.size() - digits]);
         ++digits) {
        const std::string_view number = name.substr(name.size() - digits);
        const std::optional<std::int32_t> index = ParseNumber(number);
        if (number.front() == '0' || !index) continue;
        const Symbol* symbol =
            compilation.symbols.FindOwn(name.substr(0, name.size() - digits), ParentId::Program);
        if (symbol == nullptr || symbol->table == nullptr) continue;
        if (static_cast<std::size_t>(*index) < symbol->table->bytes.size()) return symbol;
    }
    return nullptr;
}

/// A table's T1 beside a variable named T1.
void CheckTableElements(Compilation& compilation) {
    for (const Symbol* symbol = compilation.symbols.FirstOf(ParentId::Program); symbol != nullptr;
         symbol = symbol->nextOfParent) {
        if (symbol->symbolClass != SymbolClass::Variable) continue;
        const Symbol* table = FindTableWithElement(compilation, symbol->name);
        if (table != nullptr) PostTwice(compilation, *symbol, *table);
    }
}

bool JoinsNames(const Symbol& symbol) {
    return symbol.symbolClass != SymbolClass::Variable &&
           symbol.name.find('_') != std::string_view::npos;
}

/// A variable of routine A_B beside one of routine A. Only routines whose names hold the joint can
/// come to the label of another declaration.
void CheckJoinedNames(Compilation& compilation) {
    const auto& symbols = compilation.symbols.Symbols();
    if (std::none_of(symbols.begin(), symbols.end(), JoinsNames)) return;
    std::unordered_map<std::string_view, const Symbol*, FoldedHash, FoldedEqual> byLabel;
    for (const Symbol& symbol : symbols) {
        const auto [known, isNew] = byLabel.emplace(symbol.ResolvedName(), &symbol);
        if (!isNew) PostTwice(compilation, symbol, *known->second);
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
    CheckJoinedNames(compilation);
    CheckTableElements(compilation);
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
