#include <algorithm>
#include <array>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

/// The line as one that gives a variable a value.
struct Given {
    explicit Given(const HintQuestion& asked)
        : question(asked), statement(StatementOf(asked.line)) {
        const std::size_t equal = FindOutsideQuotes(statement, '=');
        left = TrimBlanks(statement.substr(0, equal));
        if (equal != kNone) right = TrimBlanks(statement.substr(equal + 1));
        target = Variable(left);
    }

    const Symbol* Variable(std::string_view name) const {
        const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
        return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable ? symbol : nullptr;
    }
    std::string Text(Token token) const {
        return std::string(question.compilation.GetCommandText(token));
    }
    /// Left = 5
    std::string Line(std::string_view name, std::string_view value) const {
        return std::string(name) + " " + Text(Token::Equal) + " " + std::string(value);
    }

    const HintQuestion& question;
    std::string_view statement;
    std::string_view left;
    std::string_view right;
    const Symbol* target = nullptr;
};

std::vector<std::string_view> WordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!(text = TrimBlanks(text)).empty()) {
        const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return words;
}

bool IsSumSign(std::string_view word) {
    return word.size() == 1 && std::string_view("+-*/").find(word) != kNone;
}

/// 60 = Speed
std::optional<Hint> FindExchanged(const Given& given) {
    const bool isExchanged = given.question.code == MessageCode::TargetNotAVariable &&
                             IsKnownValue(given.question, given.left) &&
                             given.Variable(given.right) != nullptr;
    if (!isExchanged) return std::nullopt;
    return RewriteStatement(given.question, given.Line(given.right, given.left));
}

/// Speed 60, SET Speed 60 and Speed + 5 alone
std::optional<Hint> FindWithoutSign(const Given& given) {
    constexpr std::array<std::string_view, 3> kVerbs{"SET", "LET", "MAKE"};
    if (given.question.code != MessageCode::UnknownStatement &&
        given.question.code != MessageCode::EqualSignExpected)
        return std::nullopt;
    std::vector<std::string_view> words = WordsOf(given.statement);
    if (words.size() == 3 && std::ranges::any_of(kVerbs, [&](std::string_view verb) {
            return EqualsIgnoreCase(verb, words.front());
        }))
        words.erase(words.begin());
    if (words.size() < 2 || given.Variable(words.front()) == nullptr ||
        !IsKnownValue(given.question, words.back()))
        return std::nullopt;
    if (words.size() == 2) return RewriteStatement(given.question, given.Line(words[0], words[1]));
    constexpr std::array<std::string_view, 6> kGives{"IS", "EQUALS", "<-", "->", "=>", "BECOMES"};
    const bool gives = words.size() == 3 && std::ranges::any_of(kGives, [&](std::string_view sign) {
                           return EqualsIgnoreCase(sign, words[1]);
                       });
    if (gives) return RewriteStatement(given.question, given.Line(words[0], words[2]));
    if (words.size() != 3 || !IsSumSign(words[1])) return std::nullopt;
    return RewriteStatement(given.question, given.Line(words[0], given.statement));
}

/// Speed = 60 PERCENT, Speed = Speed x 2
std::optional<Hint> FindWordAsSign(const Given& given) {
    const std::vector<std::string_view> words = WordsOf(given.right);
    const bool isAsked = given.question.code == MessageCode::UnknownOperator &&
                         given.target != nullptr && words.size() >= 2 &&
                         IsKnownValue(given.question, words[0]);
    if (!isAsked) return std::nullopt;
    if (words.size() == 3 &&
        (EqualsIgnoreCase(words[1], "x") || EqualsIgnoreCase(words[1], "TIMES")) &&
        IsKnownValue(given.question, words[2]))
        return RewritePiece(given.question, words[1], given.Text(Token::Multiply));
    const bool isUnit =
        words.size() == 2 && IsLetter(words[1].front()) && !IsKnownValue(given.question, words[1]);
    if (!isUnit) return std::nullopt;
    Hint hint =
        MakeHint(given.question, MessageCode::TakeOut, {ToUtf8(words[0]), ToUtf8(words[1])});
    const std::size_t begin = PlaceInLine(given.question.line, words[0]) + words[0].size();
    const std::size_t end = PlaceInLine(given.question.line, words[1]) + words[1].size();
    hint.fix = FixOf(given.question.line, begin, end - begin, "");
    return hint;
}

/// Count = Count++, Count =+ 1
std::optional<Hint> FindStepOfItself(const Given& given) {
    if (given.target == nullptr || given.right.size() < 2) return std::nullopt;
    const std::string_view sign = given.right.substr(given.right.size() - 2);
    const bool isStep =
        (sign == "++" || sign == "--") &&
        EqualsIgnoreCase(TrimBlanks(given.right.substr(0, given.right.size() - 2)), given.left);
    if (isStep)
        return RewriteStatement(
            given.question, given.Text(sign == "++" ? Token::Increment : Token::Decrement) + " " +
                                std::string(given.left));
    const char first = given.right.front();
    const std::string_view value = TrimBlanks(given.right.substr(1));
    const bool isTurned = (first == '+' || first == '-') &&
                          given.statement.find(std::string("=") + first) != kNone &&
                          IsKnownValue(given.question, value);
    if (!isTurned) return std::nullopt;
    return RewriteStatement(
        given.question,
        given.Line(given.left, std::string(given.left) + " " + first + " " + std::string(value)));
}

/// Speed = Speed +
std::optional<Hint> FindOpenSum(const Given& given) {
    const bool isOpen = given.target != nullptr && given.right.size() > 1 &&
                        IsSumSign(given.right.substr(given.right.size() - 1));
    if (!isOpen) return std::nullopt;
    return MakeHint(given.question, MessageCode::MissingAtEnd, {"a number or a name"});
}

/// Speed = Light = 5 and Speed, Light = 5
std::optional<Hint> FindTwoTargets(const Given& given) {
    const bool isAsked = given.question.code == MessageCode::UnknownOperator ||
                         given.question.code == MessageCode::EqualSignExpected;
    const std::size_t comma = given.left.find(',');
    const std::size_t equal = given.right.find('=');
    if (!isAsked || (comma == kNone) == (equal == kNone)) return std::nullopt;
    const std::string_view first = TrimBlanks(given.left.substr(0, comma));
    const std::string_view second =
        TrimBlanks(comma != kNone ? given.left.substr(comma + 1) : given.right.substr(0, equal));
    const std::string_view value =
        comma != kNone ? given.right : TrimBlanks(given.right.substr(equal + 1));
    if (given.Variable(first) == nullptr || given.Variable(second) == nullptr ||
        !IsKnownValue(given.question, value))
        return std::nullopt;
    return MakeHint(given.question, MessageCode::LineForEach,
                    {ToUtf8(given.Line(first, value)), ToUtf8(given.Line(second, value))});
}

/// Lost = Light > 5, Lost = NOT(Light > 5)
std::optional<Hint> FindComparisonToFlag(const Given& given) {
    const bool isNegated = StartsWithIgnoreCase(given.right, "NOT") && given.right.ends_with(')');
    std::string_view comparison = TrimBlanks(given.right.substr(isNegated ? 3 : 0));
    if (comparison.starts_with('(') && comparison.ends_with(')'))
        comparison = TrimBlanks(comparison.substr(1, comparison.size() - 2));
    const std::vector<std::string_view> words = WordsOf(comparison);
    const MessageCode code = given.question.code;
    const bool isAsked = code == MessageCode::UnknownOperator || code == MessageCode::UnknownName ||
                         code == MessageCode::CallWithoutName;
    const bool isMeant = isAsked && given.target != nullptr &&
                         given.target->type == DataType::Flag && words.size() == 3 &&
                         words[1].find_first_not_of("<>=") == kNone;
    if (!isMeant) return std::nullopt;
    const Token then = isNegated ? Token::False : Token::True;
    const Token otherwise = isNegated ? Token::True : Token::False;
    std::string condition = given.Text(Token::If) + " " + std::string(comparison);
    condition += " " + given.Text(Token::Then);
    return MakeHint(given.question, MessageCode::ComparisonToFlag,
                    {ToUtf8(condition), ToUtf8(given.Line(given.left, given.Text(then))),
                     ToUtf8(given.Line(given.left, given.Text(otherwise)))});
}

/// Time = Time + Speed, where Speed is a BYTE
std::optional<Hint> FindByteInWordSum(const Given& given) {
    const Symbol* added = given.Variable(given.question.extra);
    const bool isMeant = given.question.code == MessageCode::TypeMismatch &&
                         given.target != nullptr && given.target->type == DataType::Word &&
                         added != nullptr && added->type == DataType::Byte &&
                         given.right.find_first_of("+-*/") != kNone;
    if (!isMeant) return std::nullopt;
    return MakeHint(given.question, MessageCode::ByteInWordSum,
                    {given.question.extra,
                     ToUtf8(given.Text(Token::DefineWord) + " " + std::string(added->name)),
                     ToUtf8(given.Text(Token::ToWord) + "(" + std::string(added->name) + ")")});
}

/// Light = CLOCK(), where Light is a BYTE
std::optional<Hint> FindWordResult(const Given& given) {
    const Command* entry = given.question.compilation.FindCommand(given.question.extra);
    const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function;
    const Statement* function = isFunction ? FindFunction(entry->id) : nullptr;
    const bool isMeant = given.question.code == MessageCode::TypeMismatch && function != nullptr &&
                         function->result == DataType::Word && given.target != nullptr &&
                         given.target->type == DataType::Byte;
    if (!isMeant) return std::nullopt;
    return MakeHint(given.question, MessageCode::ResultIsWord,
                    {ToUtf8(entry->command), ToUtf8(given.left),
                     ToUtf8(given.Text(Token::DefineWord) + " " + std::string(given.left))});
}

/// Speed = "60", ANALOG("1")
std::optional<Hint> FindQuotedNumber(const Given& given) {
    const HintQuestion& question = given.question;
    const bool isAsked = question.code == MessageCode::ValueOutOfRange ||
                         question.code == MessageCode::ValueNotAllowed;
    std::string_view number = question.extra.substr(0, question.extra.find(' '));
    if (IsQuoted(number)) number = StripQuotes(number);
    if (!isAsked || !ParseNumber(number)) return std::nullopt;
    const std::string quoted = '"' + std::string(number) + '"';
    const std::size_t at = given.statement.find(quoted);
    if (at == kNone) return std::nullopt;
    return RewritePiece(question, given.statement.substr(at, quoted.size()), std::string(number));
}

}  // namespace

std::optional<Hint> FindAssignedValue(const HintQuestion& question) {
    const Given given(question);
    for (const auto find : {FindExchanged, FindWithoutSign, FindWordAsSign, FindStepOfItself,
                            FindOpenSum, FindTwoTargets, FindComparisonToFlag, FindByteInWordSum,
                            FindWordResult, FindQuotedNumber}) {
        if (std::optional<Hint> hint = find(given)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
