#include <algorithm>
#include <array>
#include <vector>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "model/statement.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

/// The line that ends what a block's first line begins; none for other lines.
Token EnderOf(Token opener) {
    switch (opener) {
        case Token::If: return Token::EndIf;
        case Token::While: return Token::EndWhile;
        case Token::Repeat: return Token::Until;
        case Token::Loop: return Token::EndLoop;
        case Token::Select: return Token::EndSelect;
        case Token::DefineRoutine: return Token::EndRoutine;
        case Token::DefineEvent: return Token::EndEvent;
        case Token::DefineTable: return Token::EndTable;
        case Token::BeginProgram: return Token::EndProgram;
        default: return Token::None;
    }
}

bool EndsSome(Token token) {
    const Statement* statement = FindStatement(token);
    return statement != nullptr && statement->edge.role == BlockRole::Ends;
}

bool IsBrace(const SourceLine& line) {
    return StatementOf(line).starts_with('}');
}

/// What is still open above the line, from its words alone: while reading the blocks of a program
/// are not known yet.
const SourceLine* OpenAbove(const HintQuestion& question) {
    std::vector<const SourceLine*> open;
    for (const SourceLine& line : question.compilation.sourceLines) {
        if (&line == &question.line) break;
        if (EnderOf(line.token) != Token::None)
            open.push_back(&line);
        else if ((EndsSome(line.token) || IsBrace(line)) && !open.empty())
            open.pop_back();
    }
    return open.empty() ? nullptr : open.back();
}

std::string Words(const HintQuestion& question, Token token) {
    return std::string(question.compilation.GetCommandText(token));
}

/// }
std::optional<Hint> FindBrace(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    if (question.code != MessageCode::UnknownStatement || statement != "}") return std::nullopt;
    const SourceLine* opener = OpenAbove(question);
    if (opener == nullptr || opener->token == Token::Repeat) return std::nullopt;
    return RewriteStatement(question, Words(question, EnderOf(opener->token)));
}

/// How often the lines between REPEAT 10 and END REPEAT are wanted; nothing when it is no number.
std::optional<std::int32_t> TimesOf(const HintQuestion& question, const SourceLine& line) {
    const std::string_view statement = StatementOf(line);
    const std::string words = Words(question, line.token);
    const bool repeats = line.token == Token::Repeat && StartsWithIgnoreCase(statement, words);
    if (!repeats) return std::nullopt;
    const std::string_view behind = TrimBlanks(statement.substr(words.size()));
    return ParseNumber(behind.substr(0, behind.find(' ')));
}

/// END REPEAT below REPEAT 10
std::optional<Hint> FindEndOfCount(const HintQuestion& question) {
    const std::string typed =
        Words(question, Token::EndPrefix) + " " + Words(question, Token::Repeat);
    if (!EqualsIgnoreCase(StatementOf(question.line), typed)) return std::nullopt;
    const SourceLine* opener = OpenAbove(question);
    const auto times = opener == nullptr ? std::nullopt : TimesOf(question, *opener);
    if (!times) return std::nullopt;
    return MakeHint(question, MessageCode::CountHere,
                    {std::to_string(opener->fileLineNo), std::to_string(*times)});
}

/// REPEAT 10
std::optional<Hint> FindCount(const HintQuestion& question) {
    const auto times = TimesOf(question, question.line);
    if (question.code != MessageCode::UnexpectedText || !times) return std::nullopt;
    return MakeHint(question, MessageCode::CountBelow, {std::to_string(*times)});
}

/// FOR Count = 1 TO 3
struct CountedLoop {
    std::string typed;  ///< as it is called there
    std::string name;   ///< as it can be called here
    std::string first;
    std::string end;  ///< with which it does not run any more
};

std::optional<CountedLoop> CountedLoopOf(std::string_view statement) {
    std::string text(statement);
    std::ranges::replace(text, '\t', ' ');
    const std::size_t equal = text.find('=');
    if (equal == kNone) return std::nullopt;
    const SplitText head = SplitFirstWord(std::string_view(text).substr(0, equal));
    const SplitText values = SplitFirstWord(std::string_view(text).substr(equal + 1));
    const SplitText to = SplitFirstWord(values.rest);
    const auto first = ParseNumber(values.first);
    const auto last = ParseNumber(to.rest);
    const bool isFor = EqualsIgnoreCase(head.first, "FOR") && EqualsIgnoreCase(to.first, "TO");
    constexpr std::int32_t kLargestByte = 255;
    constexpr std::size_t kShortestName = 3;
    const bool isName = !head.rest.empty() && head.rest.find(' ') == kNone;
    if (!isFor || !isName || !first || !last || *first > *last || *last >= kLargestByte)
        return std::nullopt;
    const std::string typed(head.rest);
    return CountedLoop{typed, typed.size() < kShortestName ? "Count" : typed,
                       std::string(values.first), std::to_string(*last + 1)};
}

std::optional<Hint> FindCountedLoop(const HintQuestion& question) {
    const auto loop = CountedLoopOf(StatementOf(question.line));
    if (!loop) return std::nullopt;
    return MakeHint(question, MessageCode::CountedLoop,
                    {ToUtf8(loop->name), loop->first, loop->end, "NEXT"});
}

/// NEXT Count
std::optional<Hint> FindEndOfCountedLoop(const HintQuestion& question) {
    const SplitText next = SplitFirstWord(StatementOf(question.line));
    const bool isNext =
        EqualsIgnoreCase(next.first, "NEXT") && (question.code == MessageCode::UnknownStatement ||
                                                 question.code == MessageCode::UnknownName);
    if (!isNext) return std::nullopt;
    std::optional<CountedLoop> loop;
    for (const SourceLine& line : question.compilation.sourceLines) {
        if (&line == &question.line) break;
        const auto one = CountedLoopOf(StatementOf(line));
        if (one && (next.rest.empty() || EqualsIgnoreCase(next.rest, one->typed))) loop = one;
    }
    if (!loop) return std::nullopt;
    return MakeHint(question, MessageCode::EndOfCountedLoop, {ToUtf8(loop->name), loop->end});
}

/// What other languages have for the word; empty when there are no words for it here.
std::string ReplacementOf(const HintQuestion& question, std::string_view words) {
    const auto row = std::ranges::find_if(
        question.otherLanguages,
        [&](const OtherLanguageRow& one) { return EqualsIgnoreCase(one.word, words); });
    if (row == question.otherLanguages.end()) return {};
    // function: {D7} with `RETURNS`
    const bool isDefinition = row->replacement.empty() && row->text.starts_with("{D");
    const std::string_view meant =
        isDefinition ? std::string_view(row->text).substr(0, row->text.find('}') + 1)
                     : std::string_view(row->replacement);
    return PlainText(question.compilation.configuration.commands, meant);
}

/// The last line above the question's that begins with the word.
const SourceLine* LastThatBegins(const HintQuestion& question, std::string_view word) {
    const SourceLine* found = nullptr;
    for (const SourceLine& line : question.compilation.sourceLines) {
        if (&line == &question.line) break;
        if (EqualsIgnoreCase(SplitFirstWord(StatementOf(line)).first, word)) found = &line;
    }
    return found != nullptr && found->file == question.line.file ? found : nullptr;
}

/// END REPEAT below REPEAT UNTIL Count = 5
std::optional<Hint> EndOfUntil(const HintQuestion& question, const SourceLine& opener) {
    const std::string_view statement = StatementOf(opener);
    const std::string words =
        Words(question, Token::Repeat) + " " + Words(question, Token::Until) + " ";
    if (!StartsWithIgnoreCase(statement, words)) return std::nullopt;
    return MakeHint(
        question, MessageCode::EndOfUntil,
        {ToUtf8(TrimBlanks(statement.substr(words.size()))), std::to_string(opener.fileLineNo)});
}

/// END FOREVER, END FUNCTION, END FOR, END REPEAT: the message about the line that opens the block
/// comes later, or only when this one is mended.
std::optional<Hint> FindEndOfForeignBlock(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const SplitText end = SplitFirstWord(statement);
    const bool isEnd = question.code == MessageCode::NotUnderstood &&
                       EqualsIgnoreCase(end.first, Words(question, Token::EndPrefix)) &&
                       !end.rest.empty() && end.rest.find(' ') == kNone;
    const SourceLine* opener = isEnd ? LastThatBegins(question, end.rest) : nullptr;
    if (opener == nullptr) return std::nullopt;
    if (std::optional<Hint> until = EndOfUntil(question, *opener)) return until;
    const std::string line = std::to_string(opener->fileLineNo);
    if (const auto loop = CountedLoopOf(StatementOf(*opener)))
        return MakeHint(question, MessageCode::EndOfForeignCount,
                        {ToUtf8(loop->name), loop->end, loop->first, line});
    const std::string ends = ReplacementOf(question, statement);
    const std::string begins = ReplacementOf(question, end.rest);
    if (ends.empty() || begins.empty()) return std::nullopt;
    Hint hint = RewriteStatement(question, ends);
    hint.text = MakeHint(question, MessageCode::ForeignBlock,
                         {ToUtf8(begins), ToUtf8(SplitFirstWord(StatementOf(*opener)).first), line,
                          ToUtf8(ends)})
                    .text;
    return hint;
}

/// ELSE IF Light > 100 THEN, elif Light > 100:
std::optional<Hint> FindElseIf(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    constexpr std::array<std::string_view, 4> kBeginnings{"ELSE IF ", "ELSEIF ", "ELSIF ", "ELIF "};
    const auto* beginning = std::ranges::find_if(
        kBeginnings, [&](std::string_view one) { return StartsWithIgnoreCase(statement, one); });
    const bool hasBlock = beginning != kBeginnings.end() && OpenAbove(question) != nullptr &&
                          OpenAbove(question)->token == Token::If;
    if (!hasBlock) return std::nullopt;
    std::string_view condition = TrimBlanks(statement.substr(beginning->size()));
    while (condition.ends_with('{') || condition.ends_with(':'))
        condition = TrimBlanks(condition.substr(0, condition.size() - 1));
    const std::string then = " " + Words(question, Token::Then);
    std::string inner = Words(question, Token::If) + " " + std::string(condition);
    if (!StartsWithIgnoreCase(inner.substr(inner.size() - std::min(inner.size(), then.size())),
                              then))
        inner += then;
    return MakeHint(question, MessageCode::ElseIfInTwo, {ToUtf8(inner)});
}

/// WHILE Count > 0 DO, WHILE Count > 0:
std::optional<Hint> FindEndOfCondition(const HintQuestion& question) {
    const bool isLoop = question.line.token == Token::While || question.line.token == Token::Until;
    const std::string_view statement = StatementOf(question.line);
    const bool isDo =
        statement.size() > 3 && EqualsIgnoreCase(statement.substr(statement.size() - 3), " DO");
    const bool isColon = statement.ends_with(':');
    if (!isLoop || (!isDo && !isColon)) return std::nullopt;
    const std::size_t length = isDo ? 2 : 1;
    const std::string_view typed = statement.substr(statement.size() - length);
    const std::string_view kept = TrimBlanks(statement.substr(0, statement.size() - length));
    Hint hint = RewriteStatement(question, std::string(kept));
    hint.text = MakeHint(question, MessageCode::NothingBehind, {ToUtf8(typed)}).text;
    return hint;
}

}  // namespace

std::optional<Hint> FindRewrittenBlock(const HintQuestion& question) {
    for (const auto find :
         {FindBrace, FindEndOfCount, FindCount, FindCountedLoop, FindEndOfCountedLoop,
          FindEndOfForeignBlock, FindElseIf, FindEndOfCondition}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
