#include <array>
#include <utility>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

/// The words of the question's line, and what they are.
struct Words {
    explicit Words(const HintQuestion& asked)
        : question(asked),
          places(WordsInLine(asked.compilation.configuration.commands, asked.line.text)) {}

    std::string_view At(std::size_t index) const { return places[index].In(question.line.text); }

    bool Is(std::size_t index, Token token) const {
        return EqualsIgnoreCase(At(index), question.compilation.GetCommandText(token));
    }

    /// The index of the first of the words that is the token's; their number when there is none.
    std::size_t Find(Token token) const {
        std::size_t index = 0;
        while (index < places.size() && !Is(index, token))
            ++index;
        return index;
    }

    const HintQuestion& question;
    std::vector<PlacedWord> places;
};

bool IsLoopCondition(Token token) {
    return token == Token::While || token == Token::Until;
}

/// IF Left = 1 AND Right = 1 THEN
std::optional<Hint> FindJoinedComparisons(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isLoop =
        IsLoopCondition(question.line.token) && question.code == MessageCode::UnexpectedText;
    const bool isIf =
        question.line.token == Token::If && question.code == MessageCode::ThenExpected;
    if (!isLoop && !isIf) return std::nullopt;
    for (const Token token : {Token::And, Token::Or}) {
        const std::size_t at = words.Find(token);
        if (at >= words.places.size()) continue;
        const MessageCode joined =
            token == Token::And ? MessageCode::BothComparisons : MessageCode::EitherComparison;
        return MakeHint(question, isLoop ? MessageCode::ComparisonsOfLoop : joined,
                        {ToUtf8(words.At(at))});
    }
    return std::nullopt;
}

/// IF Speed = 1 THEN STOP MOTORS, WHILE Speed = 1 THEN
std::optional<Hint> FindThen(const Words& words) {
    const HintQuestion& question = words.question;
    const std::size_t at = words.Find(Token::Then);
    if (at >= words.places.size()) return std::nullopt;
    const std::string then = ToUtf8(words.At(at));
    const bool isLast = at + 1 == words.places.size();
    if (question.line.token == Token::If && question.code == MessageCode::ThenExpected && !isLast)
        return MakeHint(question, MessageCode::LinesBelow, {then});
    const bool isTooMuch = question.code == MessageCode::UnexpectedText ||
                           question.code == MessageCode::UnknownOperator;
    if (!IsLoopCondition(question.line.token) || !isTooMuch || !isLast) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::OnlyInIf, {then});
    const std::size_t begin = words.places[at - 1].End();
    if (question.line.text[begin] != ')')
        hint.fix = FixOf(question.line, begin, words.places[at].End() - begin, "");
    return hint;
}

/// UNTIL IsDark() <> TRUE
std::optional<Hint> FindComparedCall(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isCompared = IsLoopCondition(question.line.token) &&
                            question.code == MessageCode::UnknownOperator &&
                            FindOutsideQuotes(question.line.parsedLine, '(') != kNone;
    if (!isCompared) return std::nullopt;
    return MakeHint(question, MessageCode::ConditionOfCall, {});
}

/// IF IsDark() = TRUE THEN
std::optional<Hint> FindComparedCallOfIf(const Words& words) {
    const HintQuestion& question = words.question;
    const Compilation& compilation = question.compilation;
    const std::string_view parsed = question.line.parsedLine;
    const std::size_t close = parsed.rfind(')');
    const bool isIf =
        question.line.token == Token::If && question.code == MessageCode::ThenExpected;
    if (!isIf || close == kNone) return std::nullopt;
    std::string compared(compilation.GetCommandText(Token::Equal));
    for (const Token token : {Token::True, Token::Then})
        compared.append(" ").append(compilation.GetCommandText(token));
    if (!EqualsIgnoreCase(Trim(parsed.substr(close + 1)), compared)) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    std::string instead(statement.substr(0, statement.rfind(')') + 1));
    instead.append(" ").append(words.At(words.places.size() - 1));
    return RewriteStatement(question, instead);
}

/// Light = ANALOG(1) + 5, CALL Halt() now
std::optional<Hint> FindRestOfCall(const Words& words) {
    const HintQuestion& question = words.question;
    const std::string_view statement = StatementOf(question.line);
    const std::size_t open = FindOutsideQuotes(statement, '(');
    const bool mayCall = question.line.token == Token::None || question.line.token == Token::Call ||
                         question.line.IsSystemFunctionCall();
    const bool isCall = question.code == MessageCode::UnexpectedText && open != kNone && mayCall;
    const std::size_t close = isCall ? FindClosingParenthesis(statement, open) : kNone;
    if (close == kNone || close + 1 == statement.size()) return std::nullopt;
    return MakeHint(question, MessageCode::LinesBelow, {ToUtf8(statement.substr(0, close + 1))});
}

/// Sum = 1 + 2 + 3: of the signs in the line, which stand between blanks, the first is the =.
std::optional<Hint> FindSecondSum(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isSum = question.code == MessageCode::WrongArgumentCount &&
                       question.line.token == Token::None &&
                       question.line.parsedLine.find_first_of("(\"") == kNone;
    if (!isSum) return std::nullopt;
    std::size_t signs = 0;
    for (std::string_view rest = question.line.parsedLine; !rest.empty();) {
        const SplitText split = SplitFirstWord(rest);
        const Command* entry = question.compilation.FindCommand(split.first);
        if (entry != nullptr && entry->family == TokenFamily::Operator) ++signs;
        rest = split.rest;
    }
    constexpr std::size_t kOneSum = 2;
    return signs > kOneSum ? std::optional(MakeHint(question, MessageCode::OneSumALine, {}))
                           : std::nullopt;
}

/// BYTE Speed = 5
std::optional<Hint> FindMissingDefine(const Words& words) {
    const HintQuestion& question = words.question;
    constexpr std::array kKinds{std::pair{Token::ParameterByte, Token::DefineByte},
                                std::pair{Token::ParameterWord, Token::DefineWord},
                                std::pair{Token::ParameterFlag, Token::DefineFlag},
                                std::pair{Token::ParameterPointer, Token::DefinePointer}};
    if (question.code != MessageCode::NotUnderstood || words.places.size() < 2) return std::nullopt;
    for (const auto& [kind, define] : kKinds) {
        if (words.Is(0, kind))
            return RewritePiece(question, words.At(0),
                                std::string(question.compilation.GetCommandText(define)));
    }
    return std::nullopt;
}

/// What the language's description says of the statement: RETURN 5 6, DEFINE ROUTINE Halt, LOOP 5
std::optional<Hint> FindForm(const Words& words) {
    const HintQuestion& question = words.question;
    const Token token = question.line.token;
    const Command* entry = question.compilation.configuration.commands.ByToken(token);
    const bool isAboutForm = question.code == MessageCode::NotUnderstood ||
                             question.code == MessageCode::UnexpectedText ||
                             question.code == MessageCode::ConditionIncomplete ||
                             question.code == MessageCode::WrongArgumentCount;
    if (entry == nullptr || !isAboutForm) return std::nullopt;
    if (token == Token::Return && question.code == MessageCode::WrongArgumentCount)
        return MakeHint(question, MessageCode::ResultMissing, {ToUtf8(entry->command)});
    if (token == Token::Loop || token == Token::Repeat || token == Token::Else)
        return MakeHint(question, MessageCode::NothingMore, {ToUtf8(entry->command)});
    const std::string_view form = FormOf(*entry);
    const bool isForm = token == Token::If || token == Token::While || token == Token::Until ||
                        token == Token::Select || token == Token::Case || token == Token::Return ||
                        entry->family == TokenFamily::Declaration;
    if (form.empty() || !isForm) return std::nullopt;
    return MakeHint(question, MessageCode::FormOfStatement, {ToUtf8(entry->command), ToUtf8(form)});
}

}  // namespace

std::optional<Hint> FindShapeHint(const HintQuestion& question) {
    const Words words(question);
    if (words.places.empty()) return std::nullopt;
    for (const auto find : {FindJoinedComparisons, FindThen, FindComparedCall, FindComparedCallOfIf,
                            FindRestOfCall, FindSecondSum, FindMissingDefine, FindForm}) {
        if (std::optional<Hint> hint = find(words)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
