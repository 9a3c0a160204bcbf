#include "frontend/operand.h"

#include <algorithm>
#include <string>

#include "config/text.h"
#include "frontend/literal.h"
#include "frontend/words.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

/// The numbers of lines name places in the object code, which are no values.
bool IsLineLabel(const Compilation& compilation, std::string_view name) {
    constexpr std::string_view kLine = "Line";
    if (!StartsWithIgnoreCase(name, kLine) || name.size() == kLine.size()) return false;
    const std::string_view digits = name.substr(kLine.size());
    const std::optional<std::int32_t> number =
        IsDigit(digits[0]) ? ParseNumber(digits) : std::nullopt;
    const auto lines = static_cast<std::int32_t>(compilation.sourceLines.size());
    if (!number || *number < 1 || *number > lines) return false;
    const Label* label = compilation.GetSourceLine(*number).label;
    return label != nullptr && EqualsIgnoreCase(label->name, name);
}

DataType SmallerType(std::string_view value) {
    if (CheckValueBounds(DataType::Byte, value)) return DataType::Byte;
    return CheckValueBounds(DataType::Word, value) ? DataType::Word : DataType::Any;
}

bool EqualValues(std::string_view a, std::string_view b) {
    const std::optional<std::int32_t> number = ParseNumber(a);
    return number ? number == ParseNumber(b) : a == b;
}

std::string ValueAndList(std::string_view value, std::span<const std::string_view> allowed) {
    std::string text = Shorten(value) + " is not one of ";
    for (const std::string_view& one : allowed) {
        if (&one != allowed.data()) text += ", ";
        text += one;
    }
    return text;
}

void PostMismatch(Compilation& compilation, std::string_view text, SourceLine& line,
                  DataType expected, RangeDescription found) {
    compilation.diagnostics.PostRangeError(line, {SymbolClass::Variable, expected}, Shorten(text),
                                           found);
}

std::optional<LineElement> ParseSymbolOperand(Compilation& compilation, std::string_view text,
                                              SourceLine& line, const Symbol& symbol,
                                              const Expectation& expected) {
    const bool isVariable = symbol.symbolClass == SymbolClass::Variable;
    if (isVariable && expected.needsConstant) {
        compilation.diagnostics.PostError(MessageCode::ConstantNeeded, &line, symbol.name);
        return std::nullopt;
    }
    if (!isVariable || !TypeSuits(expected.type, symbol.type, expected.inArithmetic)) {
        PostMismatch(compilation, text, line, expected.type, {symbol.symbolClass, symbol.type});
        return std::nullopt;
    }
    LineElement element;
    element.type = symbol.type;
    element.use = ElementUse::Read;
    element.location = &symbol.label;
    return element;
}

/// Names of constants that are entered already come first; everything else is read as a literal.
std::optional<Literal> FindOrParseLiteral(Compilation& compilation, std::string_view text,
                                          SourceLine& line) {
    if (!IsNumeric(text)) {
        const Constant* constant = compilation.symbols.FindConstant(text);
        if (constant != nullptr) {
            return Literal{ElementClass::Constant, constant->name, constant->value,
                           ConstantKind::NamedOrNumber};
        }
    }
    return ParseLiteral(compilation, text, line);
}

/// The type under which a constant is used. Posts what does not fit and returns nothing then.
std::optional<DataType> TypeOfConstant(Compilation& compilation, std::string_view text,
                                       SourceLine& line, const Literal& literal,
                                       const Expectation& expected) {
    const SymbolClass symbolClass = literal.elementClass == ElementClass::Constant
                                        ? SymbolClass::Constant
                                        : SymbolClass::Literal;
    const DataType wanted =
        expected.constantType == DataType::Any ? expected.type : expected.constantType;
    if (literal.value.empty()) {
        compilation.diagnostics.PostError(MessageCode::ValueOutOfRange, &line, Shorten(text));
        return std::nullopt;
    }
    if (wanted == DataType::Table) {
        PostMismatch(compilation, text, line, wanted, {symbolClass, DataType::Any});
        return std::nullopt;
    }
    if (wanted == DataType::Flag) {
        if (IsFlagValue(literal.value)) return DataType::Flag;
        PostMismatch(compilation, text, line, wanted, {symbolClass, DataType::Any});
        return std::nullopt;
    }
    const DataType type = wanted == DataType::Any ? SmallerType(literal.value) : wanted;
    if (type == DataType::Any || !CheckValueBounds(type, literal.value)) {
        compilation.diagnostics.PostError(MessageCode::ValueOutOfRange, &line, Shorten(text));
        return std::nullopt;
    }
    return type;
}

std::optional<LineElement> ParseConstantOperand(Compilation& compilation, std::string_view text,
                                                SourceLine& line, const Expectation& expected) {
    const std::optional<Literal> literal = FindOrParseLiteral(compilation, text, line);
    if (!literal) return std::nullopt;
    const std::optional<DataType> type =
        TypeOfConstant(compilation, text, line, *literal, expected);
    if (!type) return std::nullopt;
    const auto isValue = [&](std::string_view one) { return EqualValues(one, literal->value); };
    const auto allowed = expected.allowedValues;
    if (!allowed.empty() && std::none_of(allowed.begin(), allowed.end(), isValue)) {
        compilation.diagnostics.PostError(MessageCode::ValueNotAllowed, &line,
                                          ValueAndList(text, allowed));
        return std::nullopt;
    }
    const Constant& constant =
        compilation.symbols.AddConstant(literal->name, literal->value, literal->kind);
    LineElement element;
    element.type = *type;
    element.elementClass = literal->elementClass;
    element.use = ElementUse::Read;
    element.location = IsByteSized(*type) ? &constant.byte : &constant.word;
    element.constant = &constant;
    return element;
}

const LineElement* AddVariable(Compilation& compilation, std::string_view text, SourceLine& line,
                               ElementUse use) {
    const Symbol* symbol = compilation.symbols.FindSymbol(text, line.parent);
    if (symbol == nullptr) {
        if (SketchOperand(compilation, text, line).kind == OperandSketch::Kind::Constant) {
            compilation.diagnostics.PostError(MessageCode::TargetNotAVariable, &line,
                                              Shorten(text));
        } else {
            ParseOperand(compilation, text, line, {});  // tells what is wrong with it
        }
        return nullptr;
    }
    std::optional<LineElement> element = ParseSymbolOperand(compilation, text, line, *symbol, {});
    if (!element) return nullptr;
    element->use = use;
    compilation.AddElement(line, *element);
    return &compilation.elements.back();
}

}  // namespace

bool TypeSuits(DataType expected, DataType found, bool inArithmetic) {
    switch (expected) {
        case DataType::Any: return found != DataType::Table;
        case DataType::Byte: return IsByteSized(found);
        case DataType::Word: return IsWordSized(found);
        case DataType::Pointer:
            return found == DataType::Pointer || (inArithmetic && found == DataType::Word);
        case DataType::Flag:
        case DataType::Table: return found == expected;
    }
    return false;
}

std::optional<LineElement> ParseOperand(Compilation& compilation, std::string_view text,
                                        SourceLine& line, const Expectation& expected) {
    if (const Symbol* symbol = compilation.symbols.FindSymbol(text, line.parent)) {
        return ParseSymbolOperand(compilation, text, line, *symbol, expected);
    }
    if (IsLineLabel(compilation, text)) {
        PostMismatch(compilation, text, line, expected.type,
                     {SymbolClass::LineLabel, DataType::Word});
        return std::nullopt;
    }
    return ParseConstantOperand(compilation, text, line, expected);
}

const LineElement* AddOperand(Compilation& compilation, std::string_view text, SourceLine& line,
                              const Expectation& expected) {
    const std::optional<LineElement> element = ParseOperand(compilation, text, line, expected);
    if (!element) return nullptr;
    compilation.AddElement(line, *element);
    return &compilation.elements.back();
}

const LineElement* AddTarget(Compilation& compilation, std::string_view text, SourceLine& line) {
    return AddVariable(compilation, text, line, ElementUse::Written);
}

void AddChangedVariable(Compilation& compilation, std::string_view text, SourceLine& line) {
    AddVariable(compilation, text, line, ElementUse::Read);
}

void AddEventHandler(Compilation& compilation, std::string_view text, SourceLine& line) {
    const Symbol* symbol = compilation.symbols.FindSymbol(text, line.parent);
    if (symbol != nullptr && symbol->symbolClass == SymbolClass::Event) {
        LineElement element;
        element.use = ElementUse::Read;
        element.location = &symbol->label;
        compilation.AddElement(line, element);
        return;
    }
    RangeDescription found{SymbolClass::Literal, DataType::Any};
    if (symbol != nullptr) {
        found = {symbol->symbolClass, symbol->type};
    } else if (SketchOperand(compilation, text, line).kind == OperandSketch::Kind::Unknown) {
        ParseOperand(compilation, text, line, {});  // tells what is wrong with it
        return;
    }
    compilation.diagnostics.PostRangeError(line, {SymbolClass::Event, DataType::Any}, Shorten(text),
                                           found);
}

OperandSketch SketchOperand(const Compilation& compilation, std::string_view text,
                            const SourceLine& line) {
    using Kind = OperandSketch::Kind;
    if (const Symbol* symbol = compilation.symbols.FindSymbol(text, line.parent)) {
        const bool isVariable = symbol->symbolClass == SymbolClass::Variable;
        return {isVariable ? Kind::Variable : Kind::Unknown, symbol->type};
    }
    if (const Constant* constant = compilation.symbols.FindConstant(text)) {
        return {Kind::Constant, SmallerType(constant->value)};
    }
    if (const Command* constant = FindCatalogueConstant(compilation, text)) {
        return {Kind::Constant, SmallerType(constant->description)};
    }
    if (IsQuoted(text)) {
        const std::string_view inner = StripQuotes(text);
        return {Kind::Constant, inner.size() > 1 ? DataType::Word : DataType::Byte};
    }
    if (IsHexadecimal(text)) {
        const std::optional<std::uint32_t> number = HexadecimalNumber(text);
        if (!number) return {};
        return {Kind::Constant, SmallerType(std::to_string(*number))};
    }
    return {IsNumeric(text) ? Kind::Constant : Kind::Unknown, SmallerType(text)};
}

bool RefuseCall(Compilation& compilation, std::string_view text, SourceLine& line) {
    if (FindOutsideQuotes(text, '(') == std::string_view::npos) return false;
    compilation.diagnostics.PostError(MessageCode::CallInsideStatement, &line);
    return true;
}

}  // namespace zentro
