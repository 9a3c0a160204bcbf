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

/// An element of a table, which is called by its table and its number.
struct TableElement {
    const Symbol* table;
    std::int32_t address;
};

/// The table element that bears the label of a program-wide name, if one does.
std::optional<TableElement> FindTableElement(const Compilation& compilation,
                                             std::string_view name) {
    // The first character of a name is a letter.
    for (std::size_t digits = 1; IsDigit(name[name.size() - digits]); ++digits) {
        const std::string_view number = name.substr(name.size() - digits);
        const std::optional<std::int32_t> index = ParseNumber(number);
        if (number.front() == '0' || !index) continue;
        const Symbol* symbol =
            compilation.symbols.FindOwn(name.substr(0, name.size() - digits), ParentId::Program);
        if (symbol == nullptr || symbol->table == nullptr) continue;
        if (static_cast<std::size_t>(*index) < symbol->table->bytes.size()) {
            return TableElement{symbol, symbol->label.address + *index};
        }
    }
    return std::nullopt;
}

/// A table's T1 beside a variable named T1: the name means the place that comes first.
void CheckTableElements(Compilation& compilation) {
    for (Symbol& symbol : compilation.symbols.Symbols()) {
        const bool isProgramWide = symbol.parent == ParentId::Program;
        if (!isProgramWide || symbol.symbolClass != SymbolClass::Variable) continue;
        const std::optional<TableElement> element = FindTableElement(compilation, symbol.name);
        if (!element) continue;
        PostTwice(compilation, symbol, *element->table);
        symbol.label.address = std::min(symbol.label.address, element->address);
    }
}

bool JoinsNames(const Symbol& symbol) {
    return symbol.symbolClass != SymbolClass::Variable &&
           symbol.name.find('_') != std::string_view::npos;
}

/// A variable of routine A_B beside one of routine A. Only routines whose names hold the joint can
/// come to the label of another declaration. The name means the place that comes first.
void CheckJoinedNames(Compilation& compilation) {
    auto& symbols = compilation.symbols.Symbols();
    if (std::none_of(symbols.begin(), symbols.end(), JoinsNames)) return;
    std::unordered_map<std::string_view, Symbol*, FoldedHash, FoldedEqual> byLabel;
    for (Symbol& symbol : symbols) {
        const auto [known, isNew] = byLabel.emplace(symbol.ResolvedName(), &symbol);
        if (isNew) continue;
        Symbol& other = *known->second;
        PostTwice(compilation, symbol, other);
        symbol.label.address = other.label.address =
            std::min(symbol.label.address, other.label.address);
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
