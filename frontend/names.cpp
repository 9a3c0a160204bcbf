#include "frontend/names.h"

#include <algorithm>

#include "config/text.h"
#include "frontend/literal.h"

namespace zentro {

namespace {

constexpr std::size_t kShortestName = 3;

constexpr bool IsNotInNames(char c) {
    constexpr std::string_view kSigns = "+-/*<>,()='\"";
    return kSigns.find(c) != std::string_view::npos;
}

/// The program keeps some names for itself: its words, and those of lines and constants.
bool IsReserved(const CommandCatalogue& commands, std::string_view name) {
    constexpr std::string_view kLine = "Line";
    if (commands.FindCommand(name) != nullptr || EqualsIgnoreCase(name, kProgram)) return true;
    if (StartsWithIgnoreCase(name, "B_") || StartsWithIgnoreCase(name, "W_")) return true;
    return StartsWithIgnoreCase(name, kLine) && name.size() > kLine.size() &&
           std::all_of(name.begin() + kLine.size(), name.end(), IsDigit);
}

bool CheckName(Compilation& compilation, std::string_view name, SourceLine& line) {
    const auto fault = FindNameFault(compilation.configuration.commands, name);
    if (!fault) return true;
    compilation.diagnostics.PostError(*fault, &line, Shorten(name));
    return false;
}

void PostDuplicate(Compilation& compilation, std::string_view name, SourceLine& line) {
    compilation.diagnostics.PostError(MessageCode::DuplicateName, &line, Shorten(name));
}

}  // namespace

std::optional<MessageCode> FindNameFault(const CommandCatalogue& commands, std::string_view name) {
    if (name.empty()) return MessageCode::NameMissing;
    if (name.size() < kShortestName) return MessageCode::NameTooShort;
    const bool holdsSigns = std::any_of(name.begin(), name.end(), [](char c) {
        return !IsLetter(c) && !IsDigit(c) && IsNotInNames(c);
    });
    if (!IsLetter(name.front()) || holdsSigns) return MessageCode::InvalidName;
    if (IsReserved(commands, name)) return MessageCode::NameReserved;
    return std::nullopt;
}

Symbol* DeclareSymbol(Compilation& compilation, Symbol symbol, SourceLine& line) {
    symbol.declareLineNo = line.lineNumber;
    if (!CheckName(compilation, symbol.name, line)) return nullptr;
    const SymbolTable& symbols = compilation.symbols;
    if (symbols.FindOwn(symbol.name, symbol.parent) != nullptr ||
        symbols.FindConstant(symbol.name) != nullptr) {
        PostDuplicate(compilation, symbol.name, line);
        return nullptr;
    }
    return &compilation.symbols.AddSymbol(symbol);
}

void DeclareConstant(Compilation& compilation, std::string_view name, std::string_view value,
                     SourceLine& line) {
    if (!CheckName(compilation, name, line)) return;
    if (compilation.symbols.IsDeclaredAnywhere(name) ||
        compilation.symbols.FindConstant(name) != nullptr) {
        PostDuplicate(compilation, name, line);
        return;
    }
    compilation.symbols.AddConstant(name, value, ConstantKind::NamedOrNumber);
}

}  // namespace zentro
