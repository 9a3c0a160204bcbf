#include <algorithm>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

const Symbol* VariableOf(const HintQuestion& question, std::string_view name) {
    const Symbol* symbol = question.compilation.symbols.FindSymbol(name, question.line.parent);
    return symbol != nullptr && symbol->symbolClass == SymbolClass::Variable ? symbol : nullptr;
}

/// Behind the first = of the line; empty when there is none.
std::string_view GivenPart(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    const std::size_t equal = FindOutsideQuotes(statement, '=');
    return equal == kNone ? std::string_view() : TrimBlanks(statement.substr(equal + 1));
}

std::string CallText(const HintQuestion& question, Token function, std::string_view name) {
    return std::string(question.compilation.GetCommandText(function)) + "(" + std::string(name) +
           ")";
}

/// The table or pointer that the message is about, if it stands in the line as it does there.
const Symbol* NotANumber(const HintQuestion& question) {
    const Symbol* symbol =
        question.code == MessageCode::TypeMismatch ? VariableOf(question, question.extra) : nullptr;
    const bool isOther =
        symbol != nullptr && (symbol->type == DataType::Table || symbol->type == DataType::Pointer);
    return isOther ? symbol : nullptr;
}

/// PLAY TUNE "Tune" and PLAY TUNE Tune(), where Tune is a table
std::optional<Hint> FindDressedName(const HintQuestion& question) {
    const std::string_view statement = StatementOf(question.line);
    std::string dressed;
    if (question.code == MessageCode::TypeMismatch && IsQuoted(question.extra))
        dressed = question.extra;
    if (question.code == MessageCode::CallInsideStatement && statement.ends_with("()"))
        dressed = statement.substr(statement.find_last_of(" ,=") + 1);
    const std::size_t at = dressed.size() < 3 ? kNone : statement.find(dressed);
    if (at == kNone) return std::nullopt;
    const std::string_view name = dressed.front() == '"'
                                      ? StripQuotes(std::string_view(dressed))
                                      : std::string_view(dressed).substr(0, dressed.size() - 2);
    const Command* entry = question.compilation.FindCommand(name);
    const bool isTruth =
        entry != nullptr && (entry->id == Token::True || entry->id == Token::False);
    if (VariableOf(question, name) == nullptr && !isTruth) return std::nullopt;
    return RewritePiece(question, statement.substr(at, dressed.size()), std::string(name));
}

/// WRITE Tune, 5 and Tune = 5
std::optional<Hint> FindWrittenTable(const HintQuestion& question, const Symbol& table) {
    const std::string_view statement = StatementOf(question.line);
    const std::string_view target = TrimBlanks(statement.substr(0, statement.find('=')));
    const bool isTarget = !GivenPart(question).empty() && EqualsIgnoreCase(target, table.name);
    const std::vector<std::string_view> values = TypedValues(question);
    const bool isWrite = question.line.token == Token::Write && values.size() == 2;
    if (!isTarget && !isWrite) return std::nullopt;
    std::string here(question.compilation.GetCommandText(Token::Write));
    here.append(" Place, ").append(isWrite ? values[1] : GivenPart(question));
    return MakeHint(
        question, MessageCode::TableWritten,
        {question.extra, ToUtf8(CallText(question, Token::AddressOf, table.name)), ToUtf8(here)});
}

/// Speed = Tune, DISPLAY Tune, where Tune is a table
std::optional<Hint> FindTable(const HintQuestion& question) {
    const Symbol* symbol = NotANumber(question);
    if (symbol == nullptr || symbol->type != DataType::Table) return std::nullopt;
    if (std::optional<Hint> written = FindWrittenTable(question, *symbol)) return written;
    return MakeHint(question, MessageCode::TableRead,
                    {question.extra, ToUtf8(CallText(question, Token::AddressOf, symbol->name)),
                     ToUtf8(CallText(question, Token::Read, "Place"))});
}

/// Reader = Tune
std::optional<Hint> FindTableOfPointer(const HintQuestion& question) {
    const std::string_view given = GivenPart(question);
    constexpr std::string_view kInTwo = "ADDRESS OF ";
    if (StartsWithIgnoreCase(given, kInTwo))
        return RewritePiece(
            question, given,
            CallText(question, Token::AddressOf, TrimBlanks(given.substr(kInTwo.size()))));
    const Symbol* symbol =
        question.code == MessageCode::PointerAssigned ? VariableOf(question, given) : nullptr;
    if (symbol == nullptr || symbol->type != DataType::Table) return std::nullopt;
    return RewritePiece(question, given, CallText(question, Token::AddressOf, given));
}

/// Speed = Reader, DISPLAY Reader, where Reader is a pointer
std::optional<Hint> FindPointer(const HintQuestion& question) {
    const Symbol* symbol = NotANumber(question);
    if (symbol == nullptr || symbol->type != DataType::Pointer) return std::nullopt;
    const std::string read = CallText(question, Token::Read, symbol->name);
    const std::string_view given = GivenPart(question);
    const bool isGiven =
        EqualsIgnoreCase(given, symbol->name) && question.line.purpose == Purpose::Assignment;
    if (isGiven) return RewritePiece(question, given, read);
    const Statement* statement = FindValueStatement(question.line.token);
    const bool takesByte = statement != nullptr && statement->Values().size() == 1 &&
                           statement->Values().front().type == DataType::Byte &&
                           VariableOf(question, "Reading") == nullptr;
    if (!takesByte) return std::nullopt;
    std::string definition(question.compilation.GetCommandText(Token::DefineByte));
    definition += " Reading = 0";
    std::string here(question.compilation.GetCommandText(question.line.token));
    here += " Reading";
    return MakeHint(question, MessageCode::ValueInVariable,
                    {ToUtf8(definition), ToUtf8("Reading = " + read), ToUtf8(here)});
}

/// Speed = DISPLAY 5
std::optional<Hint> FindStatementAsValue(const HintQuestion& question) {
    const std::string_view given = GivenPart(question);
    const Command* entry = given.empty() ? nullptr : question.compilation.FindCommand(given);
    const bool isStatement = entry != nullptr && entry->family == TokenFamily::Statement;
    if (!isStatement || question.line.token == Token::Call || entry->id == Token::Call)
        return std::nullopt;
    return MakeHint(question, MessageCode::StatementAsValue, {ToUtf8(entry->command)});
}

/// Area = Side * 10, where both are bytes
std::optional<Hint> FindProduct(const HintQuestion& question) {
    const std::string_view given = GivenPart(question);
    const std::string_view statement = StatementOf(question.line);
    const std::string_view target =
        TrimBlanks(statement.substr(0, FindOutsideQuotes(statement, '=')));
    const std::string_view sign = question.compilation.GetCommandText(Token::Multiply);
    const bool isProduct = question.code == MessageCode::TypeMismatch && !given.empty() &&
                           given.find(sign) != kNone && given.find('(') == kNone;
    const Symbol* symbol = isProduct ? VariableOf(question, target) : nullptr;
    if (symbol == nullptr || symbol->type != DataType::Byte ||
        VariableOf(question, "Product") != nullptr)
        return std::nullopt;
    std::string narrow(target);
    narrow.append(" = ").append(CallText(question, Token::ToByte, "Product"));
    return MakeHint(question, MessageCode::ProductIsWord, {ToUtf8(given), ToUtf8(narrow)});
}

/// DEFINE BYTE Speed
std::optional<Hint> FindFirstValue(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool isAsked =
        question.code == MessageCode::NoInitialValue &&
        (token == Token::DefineByte || token == Token::DefineWord || token == Token::DefineFlag);
    const std::string_view name = TypedPart(question);
    const bool isName = !name.empty() && std::ranges::all_of(name, [](char c) {
        return IsLetter(c) || IsDigit(c) || c == '_';
    });
    if (!isAsked || !isName) return std::nullopt;
    const Compilation& compilation = question.compilation;
    std::string instead(StatementOf(question.line));
    instead.append(" ").append(compilation.GetCommandText(Token::Equal)).append(" ");
    instead += token == Token::DefineFlag ? compilation.GetCommandText(Token::False)
                                          : std::string_view("0");
    Hint hint = RewriteStatement(question, instead);
    hint.text = MakeHint(question, MessageCode::FirstValueMissing, {ToUtf8(instead)}).text;
    return hint;
}

/// IF Small < Large THEN, where one is a BYTE and the other a WORD
std::optional<Hint> FindByteAndWord(const HintQuestion& question) {
    if (question.code != MessageCode::ByteComparedWithWord ||
        VariableOf(question, "Wide") != nullptr)
        return std::nullopt;
    const std::string_view line = question.line.text;
    std::string_view small;
    for (const PlacedWord& word : WordsInLine(question.compilation.configuration.commands, line)) {
        const Symbol* symbol = VariableOf(question, word.In(line));
        if (symbol == nullptr || symbol->type != DataType::Byte) continue;
        if (!small.empty()) return std::nullopt;
        small = word.In(line);
    }
    if (small.empty()) return std::nullopt;
    const std::string_view statement = StatementOf(question.line);
    std::string here(statement);
    here.replace(static_cast<std::size_t>(small.data() - statement.data()), small.size(), "Wide");
    std::string definition(question.compilation.GetCommandText(Token::DefineWord));
    definition += " Wide = 0";
    const std::string above = "Wide = " + CallText(question, Token::ToWord, small);
    return MakeHint(question,
                    question.line.token == Token::While ? MessageCode::ValueInVariableOfLoop
                                                        : MessageCode::ValueInVariable,
                    {ToUtf8(definition), ToUtf8(above), ToUtf8(here)});
}

}  // namespace

std::optional<Hint> FindOtherThing(const HintQuestion& question) {
    for (const auto find : {FindDressedName, FindTable, FindTableOfPointer, FindPointer,
                            FindStatementAsValue, FindProduct, FindFirstValue, FindByteAndWord}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
