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

/// What bears a label: the name of a declaration, or the text of a line.
struct Bearer {
    std::string_view text;
    std::int32_t lineNo;
};

void PostTwice(Compilation& compilation, const Bearer& one, const Bearer& other) {
    const bool oneIsLater = one.lineNo > other.lineNo;
    const Bearer& later = oneIsLater ? one : other;
    const Bearer& earlier = oneIsLater ? other : one;
    compilation.diagnostics.PostError(MessageCode::LabelTwice,
                                      &compilation.GetSourceLine(later.lineNo),
                                      Shorten(later.text) + " and " + Shorten(earlier.text));
}

Bearer BearerOf(const Symbol& symbol) {
    return {symbol.name, symbol.declareLineNo};
}

bool IsRoutine(const Symbol& symbol) {
    return symbol.symbolClass == SymbolClass::Routine || symbol.symbolClass == SymbolClass::Event;
}

/// An element of a table, which is called by its table and its number.
struct TableElement {
    const Symbol* table;
    std::int32_t address;
};

/// The table element that bears the label of a program-wide variable with the name, if one does.
std::optional<TableElement> FindTableElement(const Compilation& compilation,
                                             std::string_view name) {
    for (std::size_t digits = 1; digits < name.size() && IsDigit(name[name.size() - digits]);
         ++digits) {
        const std::string_view number = name.substr(name.size() - digits);
        const std::optional<std::int32_t> index = ParseNumber(number);
        if (number.front() == '0' || !index) continue;
        const Symbol* symbol =
            compilation.symbols.FindOwn(name.substr(0, name.size() - digits), ParentId::Program);
        if (symbol == nullptr || symbol->table == nullptr) continue;
        if (static_cast<std::size_t>(*index) < symbol->table->Size()) {
            return TableElement{symbol, symbol->label.address + *index};
        }
    }
    return std::nullopt;
}

/// The name of the program-wide variable that would have the symbol's label; empty when none would.
std::string_view NameOfVariableLike(const Symbol& symbol) {
    constexpr std::string_view kJoined = "Program_";
    if (!IsRoutine(symbol))
        return symbol.parent == ParentId::Program ? symbol.name : std::string_view();
    const bool isJoined = StartsWithIgnoreCase(symbol.name, kJoined);
    return isJoined ? symbol.name.substr(kJoined.size()) : std::string_view();
}

/// A table's T1 beside a variable named T1 or a routine named Program_T1: the name means the place
/// that comes first.
void CheckTableElements(Compilation& compilation) {
    for (Symbol& symbol : compilation.symbols.Symbols()) {
        const auto element = FindTableElement(compilation, NameOfVariableLike(symbol));
        if (!element) continue;
        PostTwice(compilation, BearerOf(symbol), BearerOf(*element->table));
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
        PostTwice(compilation, BearerOf(symbol), BearerOf(other));
        symbol.label.address = other.label.address =
            std::min(symbol.label.address, other.label.address);
    }
}

/// A routine Line7a beside line 7, whose values come together at a label of that name.
void CheckCaseJoins(Compilation& compilation) {
    constexpr std::string_view kLine = "Line";
    for (Symbol& symbol : compilation.symbols.Symbols()) {
        if (!IsRoutine(symbol) || !StartsWithIgnoreCase(symbol.name, kLine)) continue;
        const auto join = std::ranges::find_if(compilation.labels, [&](const Label& label) {
            return EqualsIgnoreCase(label.name, symbol.name);
        });
        if (join == compilation.labels.end()) continue;
        const std::string_view number = symbol.name.substr(kLine.size());
        const std::int32_t lineNo =
            ParseNumber(number.substr(0, number.size() - 1)).value_or(symbol.declareLineNo);
        const Bearer line{compilation.GetSourceLine(lineNo).parsedLine, lineNo};
        PostTwice(compilation, BearerOf(symbol), line);
        symbol.label.address = join->address = std::min(symbol.label.address, join->address);
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
    CheckCaseJoins(compilation);
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
