#include "hints/typed_values.h"

#include <algorithm>

#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_text.h"
#include "model/statement_text.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

}  // namespace

std::string_view TypedPart(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string_view words = question.compilation.GetCommandText(question.line.token);
    const bool isWhole = question.line.token != Token::None && !words.empty() &&
                         StartsWithIgnoreCase(statement, words);
    return isWhole ? TrimBlanks(statement.substr(words.size())) : std::string_view();
}

std::vector<std::string_view> TypedValues(const HintQuestion& question) {
    if (!question.line.IsSystemFunctionCall()) return SplitCommaList(TypedPart(question));
    const std::string_view statement = StatementOf(question.line);
    const std::size_t open = FindOutsideQuotes(statement, '(');
    const std::size_t close = open == kNone ? kNone : FindClosingParenthesis(statement, open);
    if (close == kNone) return {};
    return SplitCommaList(statement.substr(open + 1, close - open - 1));
}

std::vector<std::string_view> PiecesOf(std::string_view values) {
    std::vector<std::string_view> pieces;
    std::size_t begin = kNone;
    bool inQuotes = false;
    for (std::size_t i = 0; i <= values.size(); ++i) {
        const bool isEnd = i == values.size();
        if (!isEnd && values[i] == '"') inQuotes = !inQuotes;
        const bool isBetween = isEnd || (!inQuotes && (IsBlank(values[i]) || values[i] == ','));
        if (!isBetween && begin == kNone) begin = i;
        if (!isBetween || begin == kNone) continue;
        pieces.push_back(values.substr(begin, i - begin));
        begin = kNone;
    }
    return pieces;
}

const Statement* StatementOfValues(const HintQuestion& question) {
    return question.line.IsSystemFunctionCall() ? FindFunction(question.line.token)
                                                : FindValueStatement(question.line.token);
}

std::string ValueBehind(const HintQuestion& question, std::string_view typed) {
    const Compilation& compilation = question.compilation;
    if (IsQuoted(typed)) return std::string(StripQuotes(typed));
    if (ParseNumber(typed)) return std::string(typed);
    const Command* entry = compilation.FindCommand(typed);
    const bool isWord = entry != nullptr && entry->family == TokenFamily::Constant &&
                        EqualsIgnoreCase(entry->command, typed);
    if (isWord) return entry->description;
    const Constant* constant = compilation.symbols.FindConstant(typed);
    return constant == nullptr ? std::string() : std::string(StripQuotes(constant->value));
}

std::string NameOfValue(const HintQuestion& question, std::string_view value) {
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        if (entry.family == TokenFamily::Constant && entry.description == value)
            return entry.command;
    }
    return '"' + std::string(value) + '"';
}

std::string WrittenValue(const HintQuestion& question, std::string_view value) {
    return IsNumeric(value) ? std::string(value) : NameOfValue(question, value);
}

bool Fits(const HintQuestion& question, const StatementValue& slot, std::string_view typed) {
    const std::string value = ValueBehind(question, typed);
    if (!slot.allowed.empty()) return std::ranges::find(slot.allowed, value) != slot.allowed.end();
    if (!value.empty()) return IsNumeric(value);
    const Symbol* symbol = question.compilation.symbols.FindSymbol(typed, question.line.parent);
    return slot.kind == StatementValue::Kind::Operand && symbol != nullptr &&
           symbol->symbolClass == SymbolClass::Variable;
}

std::string FormText(const HintQuestion& question, const Command& entry) {
    return TextOf(question.compilation.configuration.commands, entry).form;
}

bool IsKnownValue(const HintQuestion& question, std::string_view word) {
    if (IsQuoted(word) || ParseNumber(word)) return true;
    const Compilation& compilation = question.compilation;
    const Command* entry = compilation.FindCommand(word);
    return compilation.symbols.FindSymbol(word, question.line.parent) != nullptr ||
           compilation.symbols.FindConstant(word) != nullptr ||
           (entry != nullptr && entry->family == TokenFamily::Constant);
}

}  // namespace zentro
