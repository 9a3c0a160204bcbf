#include "desktop/break_condition.h"

#include <QCoreApplication>
#include <array>
#include <vector>

#include "config/encoding.h"
#include "config/text.h"
#include "desktop/variable_values.h"
#include "frontend/literal.h"
#include "frontend/names.h"
#include "frontend/words.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

struct ConditionTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::BreakCondition)
};

struct ComparisonRow {
    Token token;
    bool less;     ///< whether it holds when the first value is the smaller one
    bool equal;    ///< when both are the same
    bool greater;  ///< when the first value is the greater one
};

constexpr std::array kComparisons{
    ComparisonRow{Token::Equal, false, true, false},
    ComparisonRow{Token::NotEqual, true, false, true},
    ComparisonRow{Token::GreaterOrLess, true, false, true},
    ComparisonRow{Token::Less, true, false, false},
    ComparisonRow{Token::Greater, false, false, true},
    ComparisonRow{Token::LessOrEqual, true, true, false},
    ComparisonRow{Token::EqualOrLess, true, true, false},
    ComparisonRow{Token::GreaterOrEqual, false, true, true},
    ComparisonRow{Token::EqualOrGreater, false, true, true},
};

const ComparisonRow* RowOf(Token token) {
    for (const ComparisonRow& row : kComparisons) {
        if (row.token == token) return &row;
    }
    return nullptr;
}

/// The words of a condition, however they were typed: operators are words of their own, a text in
/// quotes is one.
std::vector<std::string> WordsIn(const std::string& text, const CommandCatalogue& commands) {
    std::vector<std::string> words;
    CharacterClass last = CharacterClass::Blank;
    bool isQuoted = false;
    for (const char c : text) {
        const CharacterClass now = isQuoted ? CharacterClass::Plain : commands.ClassOf(c);
        const bool isQuote = commands.ClassOf(c) == CharacterClass::Quote;
        if (now == CharacterClass::Blank) {
            last = now;
            continue;
        }
        if (isQuote && !isQuoted) last = CharacterClass::Blank;
        const CharacterClass kind = isQuote ? CharacterClass::Plain : now;
        if (words.empty() || kind != last) words.emplace_back();
        words.back() += c;
        last = kind;
        if (isQuote) isQuoted = !isQuoted;
    }
    return words;
}

QString Shown(const std::string& word) {
    return QString::fromStdString(ToUtf8(word));
}

/// The number that a text of one or two characters stands for.
std::optional<unsigned> NumberOfText(std::string_view text) {
    if (text.empty() || text.size() > 2) return std::nullopt;
    unsigned number = 0;
    for (const char c : text)
        number = number * 256 + static_cast<unsigned char>(c);
    return number;
}

/// A value as it is written: 42, 0FFH, "A" or a constant of the language.
std::optional<unsigned> WrittenValue(const std::string& word, const CommandCatalogue& commands) {
    if (IsQuoted(word)) return NumberOfText(StripQuotes(word));
    if (IsNumeric(word)) {
        const auto number = ParseNumber(word);
        const bool fits = number && *number >= 0 && *number <= 0xFFFF;
        return fits ? std::optional(static_cast<unsigned>(*number)) : std::nullopt;
    }
    if (IsHexadecimal(word)) {
        const auto number = HexadecimalNumber(word);
        return number && *number <= 0xFFFF ? std::optional(*number) : std::nullopt;
    }
    const Command* command = commands.FindCommand(word);
    if (command == nullptr || command->family != TokenFamily::Constant) return std::nullopt;
    const auto number = ParseNumber(command->description);
    return number ? std::optional(static_cast<unsigned>(*number))
                  : NumberOfText(command->description);
}

bool IsName(const std::string& word) {
    return !word.empty() && IsLetter(word.front());
}

using ValueOf = std::function<unsigned(const Board&)>;

/// Where the value of an operand comes from.
struct BoundOperand {
    ValueOf value;
    QString problem;
};

std::optional<unsigned> ConstantOf(const Compilation& compilation, const std::string& name) {
    const Constant* constant = compilation.symbols.FindConstant(std::string_view(name));
    if (constant == nullptr) return std::nullopt;
    if (const auto number = ParseNumber(constant->value))
        return static_cast<unsigned>(*number) & 0xFFFFU;
    return NumberOfText(constant->value);
}

BoundOperand BindVariable(const Symbol& variable) {
    const auto address = static_cast<std::uint32_t>(variable.label.address);
    if (variable.type == DataType::Table)
        return {{},
                ConditionTexts::tr("%1 is a table, and a condition compares single values.")
                    .arg(Shown(std::string(variable.name)))};
    if (IsWordSized(variable.type))
        return {[address](const Board& board) { return unsigned{board.memory.Word(address)}; }, {}};
    return {[address](const Board& board) { return unsigned{board.memory.Byte(address)}; }, {}};
}

BoundOperand BindOperand(const std::string& utf8, const Compilation& compilation, ParentId scope) {
    const std::string word = DecodeText(utf8);
    if (const Symbol* variable = FindVariable(compilation, word, scope))
        return BindVariable(*variable);
    auto number = ConstantOf(compilation, word);
    if (!number) number = WrittenValue(word, compilation.configuration.commands);
    if (number) return {[value = *number](const Board&) { return value; }, {}};
    return {{},
            ConditionTexts::tr("The program on the board has no variable and no constant %1 that "
                               "this line can use.")
                .arg(Shown(word))};
}

}  // namespace

ReadCondition ReadBreakCondition(const QString& text, const CommandCatalogue& commands) {
    const std::vector<std::string> words = WordsIn(DecodeText(text.toStdString()), commands);
    if (words.size() != 3)
        return {std::nullopt,
                ConditionTexts::tr("A condition is one comparison, such as Count > 10.")};
    const Token comparison = commands.FindCommandToken(words[1]);
    if (RowOf(comparison) == nullptr)
        return {std::nullopt, ConditionTexts::tr("%1 does not compare anything. Write =, <>, <, >, "
                                                 "<= or >= between the two values.")
                                  .arg(Shown(words[1]))};
    for (const std::string& word : {words[0], words[2]}) {
        if (!WrittenValue(word, commands) && !IsName(word))
            return {std::nullopt,
                    ConditionTexts::tr("%1 is neither a name nor a value from 0 to 65535.")
                        .arg(Shown(word))};
    }
    return {BreakCondition{ToUtf8(words[0]), comparison, ToUtf8(words[2])}, {}};
}

std::vector<std::string> NamesIn(const BreakCondition& condition,
                                 const CommandCatalogue& commands) {
    std::vector<std::string> names;
    for (const std::string& operand : {condition.first, condition.second}) {
        if (!WrittenValue(DecodeText(operand), commands)) names.push_back(operand);
    }
    return names;
}

BoundCondition BindCondition(const BreakCondition& condition, const Compilation& compilation,
                             ParentId scope) {
    BoundOperand first = BindOperand(condition.first, compilation, scope);
    BoundOperand second = BindOperand(condition.second, compilation, scope);
    if (!first.value) return {{}, first.problem};
    if (!second.value) return {{}, second.problem};
    const ComparisonRow& row = *RowOf(condition.comparison);
    return {[row, first = std::move(first.value),
             second = std::move(second.value)](const Board& board) {
                const unsigned a = first(board);
                const unsigned b = second(board);
                return a < b ? row.less : a > b ? row.greater : row.equal;
            },
            {}};
}

}  // namespace zentro
