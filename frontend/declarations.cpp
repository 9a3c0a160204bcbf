#include "frontend/declarations.h"

#include <optional>

#include "config/text.h"
#include "frontend/literal.h"
#include "frontend/names.h"
#include "frontend/words.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

/// The text after the "=" of a declaration; nothing when it does not begin with one.
std::optional<std::string_view> ValueText(const Compilation& compilation, std::string_view rest) {
    const std::string_view equal = compilation.GetCommandText(Token::Equal);
    if (!StartsWithIgnoreCase(rest, equal)) return std::nullopt;
    return Trim(rest.substr(equal.size()));
}

Symbol NewVariable(const SourceLine& line, std::string_view name, DataType type) {
    Symbol symbol;
    symbol.name = name;
    symbol.parent = line.parent;
    symbol.type = type;
    symbol.scope = line.scope;
    return symbol;
}

bool SuitsAsDefault(DataType type, std::string_view value) {
    return CheckValueBounds(type, value) && (type != DataType::Flag || IsFlagValue(value));
}

/// The initial value that a text names; empty when there is none to be had.
std::string_view ParseDefault(Compilation& compilation, DataType type, std::string_view text,
                              SourceLine& line) {
    const auto mismatch = [&] {
        compilation.diagnostics.PostError(MessageCode::TypeMismatch, &line, Shorten(text));
        return std::string_view();
    };
    constexpr std::string_view kEmptyText = "\"\"";
    if (text == kEmptyText) return mismatch();
    std::string_view value;
    if (const Constant* constant = compilation.symbols.FindConstant(text)) {
        value = constant->value;
    } else {
        const std::optional<Literal> literal = ParseLiteral(compilation, text, line);
        if (!literal) return mismatch();
        if (literal->elementClass == ElementClass::Call) {
            compilation.diagnostics.PostError(MessageCode::NoInitialValue, &line);
            return {};
        }
        value = literal->value;
    }
    if (!SuitsAsDefault(type, value)) return mismatch();
    return value;
}

void DeclareVariable(Compilation& compilation, SourceLine& line, std::string_view arguments,
                     DataType type) {
    const SplitText split = SplitFirstWord(arguments);
    Symbol symbol = NewVariable(line, split.first, type);
    if (split.rest.empty()) {
        compilation.diagnostics.PostError(MessageCode::NoInitialValue, &line);
    } else if (const auto text = ValueText(compilation, split.rest)) {
        symbol.defaultValue = ParseDefault(compilation, type, *text, line);
    } else {
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
    }
    DeclareSymbol(compilation, symbol, line);
}

/// The value of a named constant, whether or not it suits one; empty when there is none.
std::string_view ParseConstantValue(Compilation& compilation, std::string_view text,
                                    SourceLine& line) {
    if (IsQuoted(text)) return ParseQuoted(compilation, StripQuotes(text), line).value_or("");
    if (IsHexadecimal(text)) return ParseHexadecimal(compilation, text, line).value_or("");
    if (IsNumeric(text)) return text;
    if (const Constant* constant = compilation.symbols.FindConstant(text)) {
        return constant->value;
    }
    if (const Command* constant = FindCatalogueConstant(compilation, text)) {
        return constant->description;
    }
    compilation.diagnostics.PostError(MessageCode::UnknownName, &line, Shorten(text));
    return {};
}

}  // namespace

void DeclareByte(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    DeclareVariable(compilation, line, arguments, DataType::Byte);
}

void DeclareWord(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    DeclareVariable(compilation, line, arguments, DataType::Word);
}

void DeclareFlag(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    DeclareVariable(compilation, line, arguments, DataType::Flag);
}

void DeclarePointer(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const SplitText split = SplitFirstWord(arguments);
    if (!split.rest.empty()) {
        compilation.diagnostics.PostError(MessageCode::PointerWithValue, &line);
    }
    DeclareSymbol(compilation, NewVariable(line, split.first, DataType::Pointer), line);
}

void DeclareNamedConstant(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    Diagnostics& diagnostics = compilation.diagnostics;
    const SplitText split = SplitFirstWord(arguments);
    const std::optional<std::string_view> text = ValueText(compilation, split.rest);
    std::string_view value;
    if (split.rest.empty()) {
        diagnostics.PostError(MessageCode::ConstantWithoutValue, &line);
    } else if (!text) {
        diagnostics.PostError(MessageCode::NotUnderstood, &line);
    } else if (StripQuotes(*text).empty()) {
        diagnostics.PostError(MessageCode::UnexpectedText, &line);
    } else {
        value = ParseConstantValue(compilation, *text, line);
        if (!value.empty() && !CheckValueBounds(DataType::Word, value)) {
            diagnostics.PostError(MessageCode::ValueOutOfRange, &line, Shorten(value));
        }
    }
    DeclareConstant(compilation, split.first, value, line);
}

void DeclareTable(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const std::string_view name = SplitFirstWord(arguments).first;
    if (name.empty()) {
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
        return;
    }
    Symbol table = NewVariable(line, name, DataType::Table);
    table.parent = ParentId::Program;
    DeclareSymbol(compilation, table, line);
}

}  // namespace zentro
