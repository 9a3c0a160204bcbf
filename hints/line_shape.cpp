#include <algorithm>

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

/// The two IF lines in place of one, when both sides are whole comparisons.
std::optional<Hint> BothComparisonsOf(const Words& words, std::size_t at) {
    const HintQuestion& question = words.question;
    const std::size_t last = words.places.size() - 1;
    if (!words.Is(last, Token::Then) || at < 2 || at + 2 > last) return std::nullopt;
    const std::string_view line = question.line.text;
    const auto between = [&](std::size_t begin, std::size_t end) {
        return std::string(TrimBlanks(line.substr(begin, end - begin)));
    };
    const std::string first = between(words.places[1].begin, words.places[at].begin);
    const std::string second = between(words.places[at].End(), words.places[last].begin);
    const auto isWhole = [](std::string_view comparison) {
        const bool hasSign = comparison.find_first_of("=<>") != kNone;
        const std::string_view signs = "=<>";
        return hasSign && signs.find(comparison.front()) == kNone &&
               signs.find(comparison.back()) == kNone && comparison.find('(') == kNone;
    };
    if (!isWhole(first) || !isWhole(second)) return std::nullopt;
    const std::string begin = std::string(words.At(0)) + " ";
    const std::string end = " " + std::string(words.At(last));
    return MakeHint(
        question, MessageCode::BothComparisonsShown,
        {ToUtf8(words.At(at)), ToUtf8(begin + first + end), ToUtf8(begin + second + end)});
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
        if (isIf && token == Token::And) {
            if (std::optional<Hint> shown = BothComparisonsOf(words, at)) return shown;
        }
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
    if (question.code == MessageCode::NotUnderstood && words.places.size() == 1)
        return MakeHint(question, MessageCode::OnlyInIf, {then});
    const bool isTooMuch = question.code == MessageCode::UnexpectedText ||
                           question.code == MessageCode::UnknownOperator;
    if (!IsLoopCondition(question.line.token) || !isTooMuch || !isLast) return std::nullopt;
    Hint hint = MakeHint(question, MessageCode::OnlyInIf, {then});
    const std::size_t begin = words.places[at - 1].End();
    if (question.line.text[begin] != ')')
        hint.fix = FixOf(question.line, begin, words.places[at].End() - begin, "");
    return hint;
}

/// IF 5 < Speed < 10 THEN
std::optional<Hint> FindRange(const Words& words) {
    const HintQuestion& question = words.question;
    const std::string_view line = question.line.parsedLine;
    const bool isIf =
        question.line.token == Token::If && question.code == MessageCode::ThenExpected;
    if (!isIf || line.find_first_of("(\"") != kNone) return std::nullopt;
    std::vector<std::string_view> pieces;
    for (SplitText split = SplitFirstWord(line); !split.first.empty();
         split = SplitFirstWord(split.rest))
        pieces.push_back(split.first);
    constexpr std::size_t kPieces = 7;  // IF 5 < Speed < 10 THEN
    const auto isSign = [](std::string_view text) {
        return text.find_first_not_of("<>=") == kNone;
    };
    if (pieces.size() != kPieces || !isSign(pieces[2]) || !isSign(pieces[4])) return std::nullopt;
    const auto comparison = [&](std::size_t begin) {
        std::string text(pieces[0]);
        for (std::size_t i = begin; i < begin + 3; ++i)
            text.append(" ").append(pieces[i]);
        return ToUtf8(text.append(" ").append(pieces[kPieces - 1]));
    };
    return MakeHint(question, MessageCode::ComparisonInTwo, {comparison(1), comparison(3)});
}

/// IF Speed + 1 > 5 THEN
std::optional<Hint> FindSumInComparison(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isAsked =
        question.line.token == Token::If
            ? question.code == MessageCode::ThenExpected
            : IsLoopCondition(question.line.token) && question.code == MessageCode::UnexpectedText;
    const std::string_view line = question.line.parsedLine;
    if (!isAsked || line.find_first_of("(\"") != kNone) return std::nullopt;
    constexpr std::string_view kSigns = "+-*/";
    std::vector<std::string_view> pieces;
    for (std::string_view rest = line; !rest.empty();) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        if (end > 0) pieces.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    for (std::size_t i = 2; i + 1 < pieces.size(); ++i) {
        const bool isSign = pieces[i].size() == 1 && kSigns.find(pieces[i]) != kNone;
        if (!isSign) continue;
        std::string sum(pieces[i - 1]);
        sum.append(" ").append(pieces[i]).append(" ").append(pieces[i + 1]);
        return MakeHint(question, MessageCode::SumInStatement, {ToUtf8(sum)});
    }
    return std::nullopt;
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
                         question.line.token == Token::RoutineCall ||
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

/// BYTE Speed = 5, CONSTANT Cruise = 60, ROUTINE Turn()
std::optional<Hint> FindMissingDefine(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isAboutName =
        question.code == MessageCode::UnknownName && EqualsIgnoreCase(question.extra, words.At(0));
    const bool isAsked = question.code == MessageCode::NotUnderstood || isAboutName ||
                         question.code == MessageCode::UnknownStatement ||
                         question.code == MessageCode::UnknownCall ||
                         question.code == MessageCode::EqualSignExpected;
    if (!isAsked || words.places.size() < 2) return std::nullopt;
    const std::string prefix =
        std::string(question.compilation.GetCommandText(Token::DefinePrefix)) + " ";
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        const bool isMeant = entry.family == TokenFamily::Declaration &&
                             StartsWithIgnoreCase(entry.command, prefix) &&
                             EqualsIgnoreCase(entry.command.substr(prefix.size()), words.At(0));
        if (isMeant) return RewritePiece(question, words.At(0), entry.command);
    }
    return std::nullopt;
}

bool HasWord(std::string_view command, std::string_view word) {
    for (SplitText split = SplitFirstWord(command); !split.first.empty();
         split = SplitFirstWord(split.rest)) {
        if (EqualsIgnoreCase(split.first, word)) return true;
    }
    return false;
}

/// STOP, MOTOR 1 ON: the statements that have the line's first word.
std::optional<Hint> FindStatementsWithWord(const Words& words) {
    const HintQuestion& question = words.question;
    const bool isAsked = question.code == MessageCode::UnknownStatement ||
                         (question.code == MessageCode::UnknownName &&
                          EqualsIgnoreCase(question.extra, words.At(0)));
    if (!isAsked || question.compilation.FindCommand(words.At(0)) != nullptr) return std::nullopt;
    constexpr std::size_t kMost = 4;
    std::string list;
    std::size_t count = 0;
    for (const Command& entry : question.compilation.configuration.commands.Entries()) {
        const bool isMeant = entry.family == TokenFamily::Statement &&
                             !entry.description.starts_with("not available") &&
                             HasWord(entry.command, words.At(0));
        if (!isMeant) continue;
        ++count;
        list.append(list.empty() ? "" : ", ").append(entry.command);
    }
    if (count == 0 || count > kMost) return std::nullopt;
    return MakeHint(question, MessageCode::StatementsWithWord, {ToUtf8(words.At(0)), ToUtf8(list)});
}

/// Whether the first word begins a statement, if with other words behind it.
bool BeginsStatements(const Words& words) {
    const auto& entries = words.question.compilation.configuration.commands.Entries();
    return std::ranges::any_of(entries, [&](const Command& entry) {
        return entry.family == TokenFamily::Statement &&
               EqualsIgnoreCase(SplitFirstWord(entry.command).first, words.At(0));
    });
}

/// this makes light: words alone, of which the first is none of the language's
std::optional<Hint> FindRemark(const Words& words) {
    const HintQuestion& question = words.question;
    constexpr std::size_t kFewest = 4;
    const std::string_view statement = StatementOf(question.line);
    const bool isAsked = question.code == MessageCode::UnknownStatement &&
                         words.places.size() >= kFewest && !BeginsStatements(words) &&
                         statement.find_first_of("=()\"<>+*/") == kNone;
    return isAsked ? std::optional(MakeHint(question, MessageCode::RemarkNeedsSign, {}))
                   : std::nullopt;
}

/// SET MOTOR LEFT, FORWARD, 60; PLAY SOUND C, 20: what must be chosen, or cannot be a name
std::optional<Hint> FindFormOfChoice(const Words& words) {
    const HintQuestion& question = words.question;
    const Statement* expected = FindValueStatement(question.line.token);
    const Command* entry = question.compilation.configuration.commands.ByToken(question.line.token);
    const bool isAsked =
        question.code == MessageCode::UnknownName || question.code == MessageCode::KeywordAsValue;
    if (expected == nullptr || entry == nullptr || !isAsked || FormText(question, *entry).empty())
        return std::nullopt;
    const auto values = SplitCommaList(question.line.parsedLine.substr(entry->command.size()));
    constexpr std::size_t kShortestName = 3;
    for (std::size_t i = 0; i < std::min<std::size_t>(values.size(), expected->Values().size());
         ++i) {
        const bool isChoice =
            expected->Values().size() > 1 || question.extra.size() < kShortestName;
        if (isChoice && EqualsIgnoreCase(values[i], question.extra))
            return MakeHint(question, MessageCode::FormOfStatement,
                            {ToUtf8(entry->command), ToUtf8(FormText(question, *entry))});
    }
    return std::nullopt;
}

/// What the statement takes: RETURN 5 6, DEFINE ROUTINE Halt, LOOP 5
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
    const std::string form = ToUtf8(FormText(question, *entry));
    const bool isForm = token == Token::If || token == Token::While || token == Token::Until ||
                        token == Token::Select || token == Token::Case || token == Token::Return ||
                        entry->family == TokenFamily::Declaration;
    if (form.empty() || !isForm) return std::nullopt;
    return MakeHint(question, MessageCode::FormOfStatement, {ToUtf8(entry->command), form});
}

}  // namespace

std::optional<Hint> FindShapeHint(const HintQuestion& question) {
    const Words words(question);
    if (words.places.empty()) return std::nullopt;
    for (const auto find :
         {FindJoinedComparisons, FindThen, FindRange, FindSumInComparison, FindComparedCall,
          FindComparedCallOfIf, FindRestOfCall, FindSecondSum, FindMissingDefine,
          FindStatementsWithWord, FindRemark, FindFormOfChoice, FindForm}) {
        if (std::optional<Hint> hint = find(words)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
