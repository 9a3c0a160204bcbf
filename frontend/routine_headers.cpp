#include <array>
#include <optional>

#include "config/text.h"
#include "frontend/declarations.h"
#include "frontend/literal.h"
#include "frontend/names.h"
#include "frontend/words.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

struct TypeWord {
    Token parameter;
    Token result;
    DataType type;
};

constexpr std::array kTypeWords{
    TypeWord{Token::ParameterByte, Token::ReturnsByte, DataType::Byte},
    TypeWord{Token::ParameterWord, Token::ReturnsWord, DataType::Word},
    TypeWord{Token::ParameterFlag, Token::ReturnsFlag, DataType::Flag},
    TypeWord{Token::ParameterPointer, Token::ReturnsPointer, DataType::Pointer},
};

/// The type that the words name, by one of the two columns of type words; nothing when none does.
std::optional<DataType> TypeFromWords(const Compilation& compilation, std::string_view words,
                                      Token TypeWord::*column) {
    const Command* entry = compilation.FindCommand(words);
    if (entry == nullptr || entry->command.size() != words.size()) return std::nullopt;
    for (const TypeWord& row : kTypeWords) {
        if (entry->id == row.*column) return row.type;
    }
    return std::nullopt;
}

/// A header cut at its name: what stands between the "(" and the end of the line.
struct Header {
    std::string_view name;
    std::string_view rest;
    bool hasParenthesis = false;  ///< else the rest is all that follows the name
};

Header SplitHeader(std::string_view arguments) {
    const std::string_view name = SplitFirstWord(arguments).first;
    const std::string_view rest = Trim(arguments.substr(name.size()));
    const bool hasParenthesis = rest.starts_with('(');
    return {name, hasParenthesis ? Trim(rest.substr(1)) : rest, hasParenthesis};
}

/// One parameter: name TYPE
void DeclareParameter(Compilation& compilation, SourceLine& line, ParentId routine,
                      std::string_view item) {
    const SplitText split = SplitFirstWord(item);
    const auto type = TypeFromWords(compilation, split.rest, &TypeWord::parameter);
    if (!type) {
        compilation.diagnostics.PostError(MessageCode::UnknownParameterType, &line, Shorten(item));
    }
    Symbol symbol;
    symbol.name = split.first;
    symbol.parent = compilation.sharedParameters ? ParentId::Program : routine;
    symbol.scope = compilation.sharedParameters ? Scope::Program : Scope::Local;
    symbol.type = type.value_or(DataType::Any);
    const Symbol* declared = DeclareSymbol(compilation, symbol, line);
    LineElement element;
    element.type = symbol.type;
    element.use = ElementUse::Read;
    element.location = declared == nullptr ? nullptr : &declared->label;
    compilation.AddElement(line, element);
}

void ParseReturnType(Compilation& compilation, SourceLine& line, std::string_view words) {
    if (words.empty()) return;
    const auto type = TypeFromWords(compilation, words, &TypeWord::result);
    if (!type) {
        compilation.diagnostics.PostError(MessageCode::UnknownReturnType, &line, Shorten(words));
    }
    LineElement element;
    element.type = type.value_or(DataType::Any);
    element.use = ElementUse::Written;
    compilation.AddElement(line, element);
}

/// The parameters and the return type: what stands after the "(" of a header.
void ParseParameterList(Compilation& compilation, SourceLine& line, const Header& header) {
    const std::string_view rest = header.rest;
    const std::size_t closing = rest.find(')');
    const bool endsUnopened =
        !header.hasParenthesis && closing != kNone && rest.find('(') > closing;
    const bool isSeparated = rest.starts_with(',');
    if (rest.empty() || endsUnopened || isSeparated) {
        compilation.diagnostics.PostError(MessageCode::NotUnderstood, &line);
        return;
    }
    constexpr std::size_t kShortestParameter = 2;
    if (closing == kNone || (closing > 0 && closing < kShortestParameter)) {
        compilation.diagnostics.PostError(MessageCode::ParameterListNotClosed, &line);
        return;
    }
    for (const std::string_view item : SplitCommaList(rest.substr(0, closing))) {
        DeclareParameter(compilation, line, compilation.currentParent, item);
    }
    ParseReturnType(compilation, line, Trim(rest.substr(closing + 1)));
}

void DeclareHeader(Compilation& compilation, SourceLine& line, std::string_view name,
                   SymbolClass symbolClass) {
    Symbol symbol;
    symbol.name = name;
    symbol.symbolClass = symbolClass;
    DeclareSymbol(compilation, symbol, line);
}

}  // namespace

void DeclareRoutine(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const Header header = SplitHeader(arguments);
    compilation.currentParent = compilation.symbols.ParentWithName(header.name);
    ParseParameterList(compilation, line, header);
    DeclareHeader(compilation, line, header.name, SymbolClass::Routine);
}

void DeclareEvent(Compilation& compilation, SourceLine& line, std::string_view arguments) {
    const Header header = SplitHeader(arguments);
    compilation.currentParent = compilation.symbols.ParentWithName(header.name);
    if (!header.hasParenthesis || header.rest != ")") {
        compilation.diagnostics.PostError(MessageCode::EventWithParameters, &line);
    }
    DeclareHeader(compilation, line, header.name, SymbolClass::Event);
}

}  // namespace zentro
