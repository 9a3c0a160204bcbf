#include "frontend/literal.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "config/text.h"
#include "frontend/words.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

constexpr std::uint32_t kBeyondWords = 0x10000;

std::optional<Literal> Refuse(Compilation& compilation, MessageCode code, std::string_view text,
                              SourceLine& line) {
    compilation.diagnostics.PostError(code, &line, Shorten(text));
    return std::nullopt;
}

std::optional<Literal> ParseTextLiteral(Compilation& compilation, std::string_view text,
                                        SourceLine& line) {
    const std::string_view inner = StripQuotes(text);
    const std::optional<std::string_view> value = ParseQuoted(compilation, inner, line);
    if (!value) return std::nullopt;
    const bool isDigit = IsNumeric(inner);
    const std::string_view name = isDigit ? compilation.texts.Concat(inner, "$") : inner;
    return Literal{ElementClass::Literal, name, *value, ConstantKind::Text};
}

std::optional<Literal> ParseWord(Compilation& compilation, std::string_view text,
                                 SourceLine& line) {
    if (const Command* constant = FindCatalogueConstant(compilation, text)) {
        return Literal{ElementClass::Constant, text, constant->description,
                       ConstantKind::NamedOrNumber};
    }
    const Command* entry = compilation.FindCommand(text);
    const bool isKeyword = entry != nullptr && entry->family != TokenFamily::Constant;
    return Refuse(compilation, isKeyword ? MessageCode::KeywordAsValue : MessageCode::UnknownName,
                  text, line);
}

}  // namespace

bool IsHexadecimal(std::string_view text) {
    return text.size() > 1 && text.front() == '0' && FoldCase(text.back()) == 'H';
}

std::optional<std::uint32_t> HexadecimalNumber(std::string_view text) {
    constexpr int kHexadecimal = 16;
    const std::string_view digits = text.substr(1, text.size() - 2);
    const char* const digitsEnd = digits.data() + digits.size();
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digitsEnd, number, kHexadecimal);
    if (error == std::errc::invalid_argument || end != digitsEnd) return std::nullopt;
    return error == std::errc{} ? std::min(number, kBeyondWords) : kBeyondWords;
}

std::optional<std::string_view> ParseHexadecimal(Compilation& compilation, std::string_view text,
                                                 SourceLine& line) {
    const std::optional<std::uint32_t> number = HexadecimalNumber(text);
    if (number && *number < kBeyondWords) {
        return compilation.texts.Store(std::to_string(static_cast<std::int16_t>(*number)));
    }
    const MessageCode code = number ? MessageCode::ValueOutOfRange : MessageCode::UnknownName;
    compilation.diagnostics.PostError(code, &line, Shorten(text));
    return std::nullopt;
}

std::optional<std::string_view> ParseQuoted(Compilation& compilation, std::string_view inner,
                                            SourceLine& line) {
    if (!IsNumeric(inner)) return inner;
    if (inner.size() > 1) {
        compilation.diagnostics.PostError(MessageCode::ValueOutOfRange, &line, Shorten(inner));
        return std::nullopt;
    }
    return compilation.texts.Store(std::to_string(static_cast<unsigned char>(inner.front())));
}

const Command* FindCatalogueConstant(const Compilation& compilation, std::string_view name) {
    const Command* entry = compilation.FindCommand(name);
    const bool isConstant = entry != nullptr && entry->family == TokenFamily::Constant;
    return isConstant && entry->command.size() == name.size() ? entry : nullptr;
}

std::optional<Literal> ParseLiteral(Compilation& compilation, std::string_view text,
                                    SourceLine& line) {
    if (text.starts_with('"')) return ParseTextLiteral(compilation, text, line);
    if (const std::size_t open = FindOutsideQuotes(text, '('); open != std::string_view::npos) {
        return Literal{
            ElementClass::Call, Trim(text.substr(0, open)), {}, ConstantKind::NamedOrNumber};
    }
    if (IsHexadecimal(text)) {
        const std::optional<std::string_view> number = ParseHexadecimal(compilation, text, line);
        if (!number) return std::nullopt;
        return Literal{ElementClass::Literal, *number, *number, ConstantKind::NamedOrNumber};
    }
    if (IsNumeric(text)) {
        return Literal{ElementClass::Literal, text, text, ConstantKind::NamedOrNumber};
    }
    return ParseWord(compilation, text, line);
}

}  // namespace zentro
