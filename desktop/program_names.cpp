#include "desktop/program_names.h"

#include <algorithm>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"

namespace zentro {

namespace {

int CompareFolded(std::string_view a, std::string_view b) {
    const std::size_t length = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < length; ++i) {
        if (FoldCase(a[i]) != FoldCase(b[i])) return FoldCase(a[i]) < FoldCase(b[i]) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

/// The first of several with one name stays.
void SortByName(std::vector<ProgramName>& names) {
    std::ranges::stable_sort(names, [](const ProgramName& a, const ProgramName& b) {
        return CompareFolded(a.name, b.name) < 0;
    });
    const auto isSame = [](const ProgramName& a, const ProgramName& b) {
        return EqualsIgnoreCase(a.name, b.name);
    };
    names.erase(std::unique(names.begin(), names.end(), isSame), names.end());
}

/// A constant's own name follows the words of its declaration.
std::string_view DeclaredConstant(const Compilation& compilation, const SourceLine& line) {
    const std::string_view words = compilation.GetCommandText(Token::DefineConstant);
    if (line.parsedLine.size() <= words.size()) return {};
    return SplitFirstWord(Trim(line.parsedLine.substr(words.size()))).first;
}

}  // namespace

std::vector<ProgramName> NamesOf(const Compilation& compilation) {
    std::vector<ProgramName> names;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.declareLineNo == 0) continue;  // the compiler's own
        const SourceLine& line = compilation.GetSourceLine(symbol.declareLineNo);
        names.push_back({std::string(symbol.name), ToUtf8(line.parsedLine),
                         symbol.symbolClass == SymbolClass::Routine});
    }
    for (const SourceLine& line : compilation.sourceLines) {
        if (line.purpose != Purpose::ConstantDeclaration) continue;
        const std::string_view name = DeclaredConstant(compilation, line);
        if (compilation.symbols.FindConstant(name) == nullptr) continue;
        names.push_back({std::string(name), ToUtf8(line.parsedLine), false});
    }
    SortByName(names);
    return names;
}

std::vector<ProgramName> MergeNames(const std::vector<ProgramName>& newer,
                                    const std::vector<ProgramName>& older) {
    std::vector<ProgramName> names = newer;
    names.insert(names.end(), older.begin(), older.end());
    SortByName(names);
    return names;
}

const ProgramName* FindName(const std::vector<ProgramName>& names, std::string_view name) {
    const auto found = std::ranges::lower_bound(
        names, name, [](std::string_view a, std::string_view b) { return CompareFolded(a, b) < 0; },
        &ProgramName::name);
    return found != names.end() && EqualsIgnoreCase(found->name, name) ? &*found : nullptr;
}

}  // namespace zentro
