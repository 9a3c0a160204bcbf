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
constexpr std::int32_t kLargestByte = 255;

std::string TextOf(const HintQuestion& question, Token token) {
    return std::string(question.compilation.GetCommandText(token));
}

bool CouldBeName(std::string_view text) {
    constexpr std::size_t kShortest = 3;
    return text.size() >= kShortest && IsLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
}

/// How the line goes on behind the words of its DEFINE, as it was typed.
std::string_view DefinedPart(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string words = TextOf(question, question.line.token);
    const bool isWhole = StartsWithIgnoreCase(statement, words);
    return isWhole ? TrimBlanks(statement.substr(words.size())) : std::string_view();
}

/// DEFINE BYTE, DEFINE WORD or DEFINE FLAG, after the value that the variable is to get.
Token DefinitionOfValue(const HintQuestion& question, std::string_view value) {
    const Compilation& compilation = question.compilation;
    if (const auto number = ParseNumber(value))
        return *number > kLargestByte ? Token::DefineWord : Token::DefineByte;
    for (const Token truth : {Token::True, Token::False}) {
        if (EqualsIgnoreCase(value, compilation.GetCommandText(truth))) return Token::DefineFlag;
    }
    const SplitText split = SplitFirstWord(value);
    const Command* entry = compilation.FindCommand(split.first);
    const bool isFunction = entry != nullptr && entry->family == TokenFamily::Function;
    const Statement* function = isFunction ? FindFunction(entry->id) : nullptr;
    const Symbol* symbol = compilation.symbols.FindSymbol(split.first, question.line.parent);
    const DataType type = function != nullptr ? function->result
                          : symbol != nullptr ? symbol->type
                                              : DataType::Byte;
    switch (type) {
        case DataType::Word: return Token::DefineWord;
        case DataType::Flag: return Token::DefineFlag;
        case DataType::Pointer: return Token::DefinePointer;
        default: return Token::DefineByte;
    }
}

std::string DefinitionOf(const HintQuestion& question, Token token, std::string_view name) {
    std::string line = TextOf(question, token);
    line.append(" ").append(name);
    if (token == Token::DefinePointer) return line;
    line.append(" ").append(TextOf(question, Token::Equal)).append(" ");
    return line + (token == Token::DefineFlag ? TextOf(question, Token::False) : "0");
}

/// The value that a line gives to the variable; empty: it gives it none.
std::string_view GivenValue(const SourceLine& line, std::string_view name) {
    const std::string_view statement = StatementOf(line);
    const std::size_t equal = FindOutsideQuotes(statement, '=');
    if (equal == kNone) return {};
    const std::string_view before = TrimBlanks(statement.substr(0, equal));
    const std::size_t blank = before.find_last_of(" \t");
    const std::string_view target = blank == kNone ? before : before.substr(blank + 1);
    const bool isGiven = EqualsIgnoreCase(target, name);
    return isGiven ? TrimBlanks(statement.substr(equal + 1)) : std::string_view();
}

/// The variable of a routine outside of it.
std::optional<Hint> FindKnownInside(const HintQuestion& question) {
    const Compilation& compilation = question.compilation;
    const Symbol* found = nullptr;
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        const bool isMeant =
            symbol.symbolClass == SymbolClass::Variable && symbol.parent != ParentId::Program &&
            symbol.parent != question.line.parent && EqualsIgnoreCase(symbol.name, question.extra);
        if (isMeant && found != nullptr) return std::nullopt;
        if (isMeant) found = &symbol;
    }
    if (found == nullptr || found->declareLineNo == 0) return std::nullopt;
    const SourceLine& line = compilation.GetSourceLine(found->declareLineNo);
    const auto& lines = compilation.sourceLines;
    const auto header = std::ranges::find_if(lines, [&](const SourceLine& one) {
        const bool opens = one.token == Token::DefineRoutine || one.token == Token::DefineEvent;
        return opens && one.parent == found->parent;
    });
    // What a routine is given has to stay in its first line.
    const bool isMovable = header != lines.end() && line.token != Token::DefineRoutine &&
                           line.file == question.line.file;
    if (!isMovable) return std::nullopt;
    return MakeHint(question, MessageCode::KnownInside,
                    {question.extra, std::to_string(header->fileLineNo),
                     std::to_string(line.fileLineNo), ToUtf8(ShownStatement(line))});
}

/// Count = Count + 1 without a DEFINE line. A name that no line gives a value may be a slip for
/// another one.
std::optional<Hint> FindUndefined(const HintQuestion& question) {
    if (question.code != MessageCode::UnknownName || !CouldBeName(question.extra))
        return std::nullopt;
    const Token token = question.line.token;
    const std::string_view then = question.compilation.GetCommandText(Token::Then);
    const std::string_view statement = StatementOf(question.line);
    const bool isCondition =
        token == Token::None && statement.size() > then.size() &&
        EqualsIgnoreCase(statement.substr(statement.size() - then.size()), then);
    if (isCondition) return std::nullopt;
    if (std::optional<Hint> inside = FindKnownInside(question)) return inside;
    std::string_view value = GivenValue(question.line, question.extra);
    for (const SourceLine& line : question.compilation.sourceLines) {
        if (value.empty() && line.file == question.line.file)
            value = GivenValue(line, question.extra);
    }
    const bool isStep = token == Token::Increment || token == Token::Decrement;
    if (value.empty() && !isStep) return std::nullopt;
    const Token define = DefinitionOfValue(question, value);
    return MakeHint(question, MessageCode::DefineAbove,
                    {question.extra, ToUtf8(DefinitionOf(question, define, question.extra))});
}

/// DEFINE BYTE Steps = ANALOG(1), = Speed and = 5 + 1
std::optional<Hint> FindComputedFirstValue(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isVariable = token == Token::DefineByte || token == Token::DefineWord;
    const bool isAsked =
        question.code == MessageCode::UnknownName || question.code == MessageCode::NoInitialValue;
    const std::string_view part = DefinedPart(question);
    const std::size_t equal = part.find('=');
    if (!isVariable || !isAsked || equal == kNone) return std::nullopt;
    const std::string_view name = TrimBlanks(part.substr(0, equal));
    const std::string_view value = TrimBlanks(part.substr(equal + 1));
    const std::string_view first = value.substr(0, value.find_first_of(" (+-*/"));
    const Command* entry = question.compilation.FindCommand(first);
    const bool isComputed =
        question.compilation.symbols.FindSymbol(first, ParentId::Program) != nullptr ||
        (entry != nullptr && entry->family == TokenFamily::Function) ||
        (ParseNumber(first) && value.find_first_of("+-*/") != kNone);
    if (!isComputed || value.find_first_of(",\"") != kNone || !CouldBeName(name))
        return std::nullopt;
    const std::string later = std::string(name) + " = " + std::string(value);
    return MakeHint(question, MessageCode::FirstValueOnly,
                    {ToUtf8(DefinitionOf(question, token, name)), ToUtf8(later)});
}

/// DEFINE Steps = 5
std::optional<Hint> FindMissingKind(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string define = TextOf(question, Token::DefinePrefix);
    const bool isAsked = question.code == MessageCode::NotUnderstood &&
                         question.line.token == Token::DefinePrefix &&
                         StartsWithIgnoreCase(statement, define + " ");
    if (!isAsked) return std::nullopt;
    const std::string_view part = TrimBlanks(statement.substr(define.size()));
    const std::size_t equal = part.find('=');
    if (equal == kNone || !CouldBeName(TrimBlanks(part.substr(0, equal)))) return std::nullopt;
    const std::string_view value = TrimBlanks(part.substr(equal + 1));
    const Token token = DefinitionOfValue(question, value);
    if (!ParseNumber(value) && token != Token::DefineFlag) return std::nullopt;
    return RewritePiece(question, statement.substr(0, define.size()), TextOf(question, token));
}

/// DEFINE INT Steps = 5
std::optional<Hint> FindUnknownKind(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::string define = TextOf(question, Token::DefinePrefix) + " ";
    const std::size_t equal = statement.find('=');
    const bool isAsked = question.code == MessageCode::NotUnderstood &&
                         question.line.token == Token::DefinePrefix && equal != kNone &&
                         StartsWithIgnoreCase(statement, define);
    if (!isAsked) return std::nullopt;
    const std::string_view names =
        TrimBlanks(statement.substr(define.size(), equal - define.size()));
    const std::size_t blank = names.find(' ');
    if (blank == kNone || !CouldBeName(TrimBlanks(names.substr(blank)))) return std::nullopt;
    const std::string_view typed = statement.substr(0, define.size() + blank);
    const OtherLanguageRow* row = RowOfWord(question.otherLanguages, names.substr(0, blank));
    const std::string meant =
        row == nullptr ? std::string()
                       : PlainText(question.compilation.configuration.commands, row->replacement);
    if (StartsWithIgnoreCase(meant, define)) return RewritePiece(question, typed, meant);
    const std::string_view value = TrimBlanks(statement.substr(equal + 1));
    const Token token = DefinitionOfValue(question, value);
    if (!ParseNumber(value) && token != Token::DefineFlag) return std::nullopt;
    return RewritePiece(question, typed, TextOf(question, token));
}

/// DEFINE Light AS BYTE = 0, DIM Light AS BYTE
std::optional<Hint> FindKindBehindName(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const SplitText first = SplitFirstWord(statement);
    const SplitText second = SplitFirstWord(first.rest);
    const SplitText third = SplitFirstWord(second.rest);
    const SplitText fourth = SplitFirstWord(third.rest);
    if (!EqualsIgnoreCase(third.first, "AS") || !CouldBeName(second.first)) return std::nullopt;
    const std::string define = TextOf(question, Token::DefinePrefix);
    const std::string meant = define + " " + std::string(fourth.first);
    for (const Token token : {Token::DefineByte, Token::DefineWord, Token::DefineFlag}) {
        if (!EqualsIgnoreCase(meant, TextOf(question, token))) continue;
        const std::string_view value = fourth.rest;
        std::string line = DefinitionOf(question, token, second.first);
        if (!value.empty())
            line = TextOf(question, token) + " " + std::string(second.first) + " " +
                   std::string(value);
        return RewriteStatement(question, line);
    }
    return std::nullopt;
}

/// DEFINE BYTE Light 0 and DEFINE BYTE Light, 0
std::optional<Hint> FindMissingEqual(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isVariable = token == Token::DefineByte || token == Token::DefineWord ||
                            token == Token::DefineFlag || token == Token::DefineConstant;
    const std::string_view part = isVariable ? DefinedPart(question) : std::string_view();
    const std::size_t blank = part.find_first_of(" ,");
    const bool isAsked = question.code == MessageCode::NotUnderstood && blank != kNone;
    if (!isAsked || !CouldBeName(part.substr(0, blank))) return std::nullopt;
    std::string_view value = TrimBlanks(part.substr(blank));
    if (value.starts_with(',')) value = TrimBlanks(value.substr(1));
    if (!ParseNumber(value)) return std::nullopt;
    const std::string instead = std::string(part.substr(0, blank)) + " " +
                                TextOf(question, Token::Equal) + " " + std::string(value);
    return RewritePiece(question, part, instead);
}

/// DEFINE BYTE Left-Eye = 0, DEFINE BYTE 2Light = 0
std::optional<Hint> FindNameToMend(const HintQuestion& question) {
    const std::string_view part = DefinedPart(question);
    const std::string_view typed = TrimBlanks(part.substr(0, part.find_first_of("=(")));
    const bool isAsked =
        question.code == MessageCode::NotUnderstood || question.code == MessageCode::InvalidName;
    if (!isAsked || typed.empty() || typed.find_first_of(" \t\",") != kNone) return std::nullopt;
    const std::size_t letter = std::min(typed.find_first_not_of("0123456789_"), typed.size());
    std::string mended = std::string(typed.substr(letter)) + std::string(typed.substr(0, letter));
    std::ranges::replace_if(
        mended, [](char c) { return std::string_view("-.'?!").find(c) != kNone; }, '_');
    if (mended == typed || !CouldBeName(mended)) return std::nullopt;
    return MakeHint(question, MessageCode::NameMended, {ToUtf8(typed), mended});
}

/// DEFINE BYTE Light, Dark = 0
std::optional<Hint> FindTwoNames(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isVariable =
        token == Token::DefineByte || token == Token::DefineWord || token == Token::DefineFlag;
    const std::string_view part = DefinedPart(question);
    const std::size_t comma = FindOutsideQuotes(part, ',');
    const bool isAsked =
        question.code == MessageCode::NotUnderstood || question.code == MessageCode::UnknownName;
    if (!isVariable || !isAsked || comma == kNone) return std::nullopt;
    std::array<std::string, 2> lines{TextOf(question, token), TextOf(question, token)};
    const std::array pieces{part.substr(0, comma), part.substr(comma + 1)};
    const std::size_t lastEqual = part.rfind('=');
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::string_view piece = TrimBlanks(pieces.at(i));
        const std::string_view name = TrimBlanks(piece.substr(0, piece.find('=')));
        if (!CouldBeName(name) || piece.find(',') != kNone) return std::nullopt;
        lines.at(i).append(" ").append(piece);
        if (piece.find('=') == kNone)
            lines.at(i).append(" ").append(lastEqual == kNone ? "= 0" : part.substr(lastEqual));
    }
    return MakeHint(question, MessageCode::LineForEach, {ToUtf8(lines[0]), ToUtf8(lines[1])});
}

/// DEFINE ROUTINE Turn, DEFINE EVENT Bumped
std::optional<Hint> FindMissingList(const HintQuestion& question) {
    const bool isHeader =
        question.line.token == Token::DefineRoutine || question.line.token == Token::DefineEvent;
    const bool isAsked = question.code == MessageCode::NotUnderstood ||
                         question.code == MessageCode::EventWithParameters ||
                         question.code == MessageCode::ParameterListNotClosed;
    const std::string_view name = DefinedPart(question);
    if (!isHeader || !isAsked || !CouldBeName(name)) return std::nullopt;
    return RewriteStatement(question, std::string(StatementOf(question.line)) + "()");
}

/// DEFINE ROUTINE Turn(Speed), DEFINE ROUTINE Turn(BYTE Speed)
std::optional<Hint> FindParameterKind(const HintQuestion& question) {
    if (question.code != MessageCode::UnknownParameterType) return std::nullopt;
    const SplitText split = SplitFirstWord(question.extra);
    const std::string_view statement = StatementOf(question.line);
    const std::size_t at = statement.find(question.extra);
    if (at == kNone || question.extra.empty()) return std::nullopt;
    const std::string_view typed = statement.substr(at, question.extra.size());
    const bool isKind = std::ranges::any_of(
        std::array{Token::ParameterByte, Token::ParameterWord, Token::ParameterFlag,
                   Token::ParameterPointer},
        [&](Token kind) { return EqualsIgnoreCase(split.first, TextOf(question, kind)); });
    if (split.rest.empty() && isKind) return std::nullopt;  // the message says it all
    if (split.rest.empty() && CouldBeName(split.first))
        return RewritePiece(question, typed,
                            std::string(typed) + " " + TextOf(question, Token::ParameterByte));
    for (const Token kind : {Token::ParameterByte, Token::ParameterWord, Token::ParameterFlag,
                             Token::ParameterPointer}) {
        if (EqualsIgnoreCase(split.first, TextOf(question, kind)) && CouldBeName(split.rest))
            return RewritePiece(question, typed,
                                std::string(split.rest) + " " + TextOf(question, kind));
    }
    return std::nullopt;
}

/// A second DEFINE line for a name.
std::optional<Hint> FindTaken(const HintQuestion& question) {
    if (question.code != MessageCode::DuplicateName) return std::nullopt;
    const Compilation& compilation = question.compilation;
    const Symbol* symbol = compilation.symbols.FindSymbol(question.extra, question.line.parent);
    if (symbol == nullptr || symbol->declareLineNo == 0) return std::nullopt;
    const SourceLine& other = compilation.GetSourceLine(symbol->declareLineNo);
    if (other.file != question.line.file || &other == &question.line) return std::nullopt;
    const std::string number = std::to_string(other.fileLineNo);
    const std::string_view part = DefinedPart(question);
    const bool isSame = other.token == question.line.token && compilation.mainBlockSeen &&
                        part.find('=') != kNone && question.line.token != Token::DefineTable;
    if (isSame)
        return MakeHint(question, MessageCode::GiveAnotherValue,
                        {number, question.extra, ToUtf8(part)});
    return MakeHint(question, MessageCode::NameTakenBy, {number, ToUtf8(StatementOf(other))});
}

/// WAIT Count where Count is a BYTE, DISPLAY Distance where it is a WORD
std::optional<Hint> FindOtherKind(const HintQuestion& question) {
    if (question.code != MessageCode::TypeMismatch) return std::nullopt;
    const Compilation& compilation = question.compilation;
    const Symbol* found = compilation.symbols.FindSymbol(question.extra, question.line.parent);
    if (found == nullptr || found->symbolClass != SymbolClass::Variable) return std::nullopt;
    const Statement* expected = FindValueStatement(question.line.token);
    if (expected == nullptr || expected->Values().empty()) return std::nullopt;
    const std::string statement = TextOf(question, question.line.token);
    const auto values = SplitCommaList(question.line.parsedLine.substr(statement.size()));
    const auto place = std::ranges::find_if(
        values, [&](std::string_view value) { return EqualsIgnoreCase(value, question.extra); });
    const auto index = static_cast<std::size_t>(place - values.begin());
    if (index >= expected->Values().size()) return std::nullopt;
    const DataType needed = expected->Values()[index].type;
    const bool isWide = needed == DataType::Word && found->type == DataType::Byte;
    const bool isNarrow = needed == DataType::Byte && found->type == DataType::Word;
    if (!isWide && !isNarrow) return std::nullopt;
    const Token define = isWide ? Token::DefineWord : Token::DefineByte;
    const std::string mended = TextOf(question, define) + " " + std::string(found->name);
    return MakeHint(question, isWide ? MessageCode::WordIsWanted : MessageCode::ByteIsWanted,
                    {question.extra, ToUtf8(statement), ToUtf8(mended)});
}

/// DEFINE BYTE i = 0: the lines below are not read yet.
std::optional<Hint> FindShortName(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::NameTooShort && !question.extra.empty() &&
                         IsLetter(question.extra.front());
    return isAsked ? std::optional(MakeHint(question, MessageCode::NameElsewhere, {question.extra}))
                   : std::nullopt;
}

}  // namespace

std::optional<Hint> FindDefinitionHint(const HintQuestion& question) {
    for (const auto find :
         {FindTaken, FindShortName, FindKindBehindName, FindMissingKind, FindUnknownKind,
          FindMissingEqual, FindNameToMend, FindTwoNames, FindMissingList, FindParameterKind,
          FindComputedFirstValue, FindOtherKind, FindUndefined}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
