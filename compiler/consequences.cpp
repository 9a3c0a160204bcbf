#include "compiler/consequences.h"

#include <algorithm>
#include <array>

#include "config/text.h"
#include "frontend/words.h"

namespace zentro {

namespace {

/// What is said of a name, of its kind, type or value, or of a text that can follow from those.
constexpr std::array kAboutNames{
    MessageCode::EqualSignExpected,     MessageCode::NotUnderstood,
    MessageCode::TypeMismatch,          MessageCode::UnknownComparison,
    MessageCode::WrongArgumentCount,    MessageCode::UnknownOperator,
    MessageCode::UnexpectedText,        MessageCode::NothingToReturn,
    MessageCode::NotACondition,         MessageCode::NotAConstant,
    MessageCode::SelectNeedsByteOrWord, MessageCode::UnknownRoutine,
    MessageCode::ConstantNeeded,        MessageCode::ValueOutOfRange,
    MessageCode::KeywordAsValue,        MessageCode::UnknownName,
    MessageCode::PointerAssigned,       MessageCode::TargetNotAVariable,
    MessageCode::DivisionByZero,        MessageCode::NoInitialValue,
    MessageCode::ByteComparedWithWord,  MessageCode::LogicOnOneByte,
    MessageCode::OperatorLine,          MessageCode::TextWithoutQuotes,
};

/// What is said of the blocks that a line is inside of.
constexpr std::array kAboutBlocks{
    MessageCode::BlockOutside,      MessageCode::TableInTable,
    MessageCode::TableInBlock,      MessageCode::RoutineInBlock,
    MessageCode::ProgramInBlock,    MessageCode::SecondProgram,
    MessageCode::NothingToEnd,      MessageCode::IfNotEnded,
    MessageCode::WhileNotEnded,     MessageCode::RepeatNotEnded,
    MessageCode::SelectNotEnded,    MessageCode::TableNotEnded,
    MessageCode::RoutineNotEnded,   MessageCode::ProgramNotEnded,
    MessageCode::CaseWithoutSelect, MessageCode::LoopNotEnded,
    MessageCode::EventNotEnded,     MessageCode::ReturnOutsideRoutine,
    MessageCode::ElseMisplaced,     MessageCode::RoutineEndReached,
    MessageCode::NeverRuns,         MessageCode::EventNotEndedBefore,
    MessageCode::NothingOpenToEnd,  MessageCode::BeforeFirstCase,
};

template <std::size_t count>
bool Holds(const std::array<MessageCode, count>& codes, MessageCode code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool IsInNames(char c) {
    constexpr std::string_view kSigns = "+-/*<>,()='\"";
    return !IsBlank(c) && kSigns.find(c) == std::string_view::npos;
}

/// The words of a text, without what stands in quotes.
std::vector<std::string_view> WordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') i = std::min(text.find('"', i + 1), text.size());
        if (i >= text.size() || !IsInNames(text[i])) continue;
        const std::size_t start = i;
        while (i < text.size() && IsInNames(text[i]))
            ++i;
        words.push_back(text.substr(start, i - start));
        --i;
    }
    return words;
}

std::string InCapitals(std::string_view text) {
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), FoldCase);
    return capitals;
}

std::string_view BehindFirstWord(std::string_view text) {
    return Trim(text.substr(std::min(text.find(' '), text.size())));
}

/// What follows the words that say what is declared. Of mistyped ones the first is left out.
std::string_view DeclaredPart(const Compilation& compilation, const SourceLine& line) {
    if (IsLostDeclaration(compilation, line)) return BehindFirstWord(line.parsedLine);
    return line.parsedLine.substr(compilation.GetCommandText(line.token).size());
}

/// The names that the line means to declare, those of parameters too.
std::vector<std::string_view> NamesDeclaredBy(const Compilation& compilation,
                                              const SourceLine& line) {
    const std::string_view declared = DeclaredPart(compilation, line);
    const std::size_t open = std::min(declared.find('('), declared.size());
    const std::size_t head = std::min({declared.find('='), declared.find('"'), open});
    std::vector<std::string_view> names = WordsOf(declared.substr(0, head));
    // DEFINE BITE Speed: the first of several words was to be the type.
    const bool beginsWithType = IsLostDeclaration(compilation, line) && names.size() > 1;
    if (beginsWithType) names.erase(names.begin());
    const std::size_t close = std::min(declared.find(')', open), declared.size());
    for (const std::string_view parameter : SplitCommaList(declared.substr(open, close - open))) {
        const std::vector<std::string_view> words = WordsOf(parameter);
        if (!words.empty()) names.push_back(words.front());
    }
    return names;
}

/// The words that may be names. What a RETURN may give hangs on the name of its routine.
std::vector<std::string_view> NamesIn(const Compilation& compilation, const SourceLine& line) {
    std::vector<std::string_view> words = WordsOf(line.parsedLine);
    if (line.token == Token::Return) words.push_back(compilation.symbols.NameOf(line.parent));
    return words;
}

/// The same without the words that begin the statement.
std::vector<std::string_view> NamesBehindStatement(const Compilation& compilation,
                                                   const SourceLine& line) {
    const std::string_view own = compilation.GetCommandText(line.token);
    const bool beginsWithIt = StartsWithIgnoreCase(line.parsedLine, own);
    return WordsOf(line.parsedLine.substr(beginsWithIt ? own.size() : 0));
}

bool IsVariableOrTable(Token token) {
    constexpr std::array kTokens{Token::DefineByte, Token::DefineWord, Token::DefineFlag,
                                 Token::DefinePointer, Token::DefineTable};
    return std::find(kTokens.begin(), kTokens.end(), token) != kTokens.end();
}

bool IsDeclaration(Token token) {
    return IsVariableOrTable(token) || token == Token::DefineConstant ||
           token == Token::DefineRoutine || token == Token::DefineEvent;
}

}  // namespace

bool IsLostDeclaration(const Compilation& compilation, const SourceLine& line) {
    if (line.token == Token::DefinePrefix) return true;
    if (line.token != Token::None || line.parsedLine.empty()) return false;
    const std::string_view rest = BehindFirstWord(line.parsedLine);
    if (rest.empty() || !IsLetter(rest.front())) return false;
    const Command* command = compilation.FindCommand(
        std::string(compilation.GetCommandText(Token::DefinePrefix)) + ' ' + std::string(rest));
    return command != nullptr && IsDeclaration(command->id);
}

void ConsequenceFilter::DeclarationsRead(bool wholly) {
    readsDeclarations_ = false;
    if (!wholly) namesMayBeMissing_ = true;
    for (const SourceLine& line : compilation_.sourceLines) {
        if (line.token == Token::None && IsLostDeclaration(compilation_, line))
            NoteDeclaration(line);
    }
}

bool ConsequenceFilter::HoldsBack(const PostedMessage& message, const SourceLine& line) {
    const MessageCode code = message.code;
    if (code == MessageCode::FileNotOpened || code == MessageCode::IncludedTooDeep)
        namesMayBeMissing_ = true;
    const bool holdsBack = IsConsequence(code, line);
    const bool isMistake = message.severity == Severity::Error || PreventsObjectCode(code);
    if (readsDeclarations_ && isMistake) NoteDeclaration(line);
    if (!holdsBack) posted_.emplace_back(line.lineNumber, message);
    return holdsBack;
}

/// A line may declare nothing, or not what it was to declare.
void ConsequenceFilter::NoteDeclaration(const SourceLine& line) {
    if (line.token == Token::EndPrefix && lostEndLineNo_ == 0) lostEndLineNo_ = line.lineNumber;
    if (line.lineNumber == lastNoted_) return;
    lastNoted_ = line.lineNumber;
    if (!IsDeclaration(line.token) && !IsLostDeclaration(compilation_, line)) return;
    const bool isLocal = IsVariableOrTable(line.token) && line.scope == Scope::Local;
    const ParentId parent = isLocal ? line.parent : ParentId::Program;
    for (const std::string_view name : NamesDeclaredBy(compilation_, line)) {
        doubtful_[InCapitals(name)].push_back({line.lineNumber, parent});
    }
}

bool ConsequenceFilter::IsConsequence(MessageCode code, const SourceLine& line) const {
    if (Holds(kAboutBlocks, code)) return lostEndLineNo_ != 0 && line.lineNumber > lostEndLineNo_;
    if (!Holds(kAboutNames, code)) return false;
    if (std::ranges::any_of(NamesIn(compilation_, line),
                            [&](std::string_view name) { return IsDoubtful(name, line); }))
        return true;
    return namesMayBeMissing_ &&
           std::ranges::any_of(NamesBehindStatement(compilation_, line),
                               [&](std::string_view name) { return IsUnknown(name, line); });
}

bool ConsequenceFilter::IsDoubtful(std::string_view name, const SourceLine& line) const {
    const auto found = doubtful_.find(InCapitals(name));
    if (found == doubtful_.end()) return false;
    const auto counts = [&](const Declaration& declaration) {
        const bool isSeen =
            declaration.parent == ParentId::Program || declaration.parent == line.parent;
        return isSeen && declaration.lineNo != line.lineNumber &&
               !IsDeclaredByLine(name, declaration.lineNo);
    };
    return std::any_of(found->second.begin(), found->second.end(), counts);
}

/// A variable or table is what its line says even when its first value is wrong.
bool ConsequenceFilter::IsDeclaredByLine(std::string_view name, std::int32_t lineNo) const {
    const SourceLine& line = compilation_.GetSourceLine(lineNo);
    if (!IsVariableOrTable(line.token)) return false;
    const ParentId parent = line.token == Token::DefineTable ? ParentId::Program : line.parent;
    const Symbol* symbol = compilation_.symbols.FindOwn(name, parent);
    return symbol != nullptr && symbol->declareLineNo == lineNo;
}

bool ConsequenceFilter::IsUnknown(std::string_view name, const SourceLine& line) const {
    return IsLetter(name.front()) &&
           compilation_.symbols.FindSymbol(name, line.parent) == nullptr &&
           compilation_.symbols.FindConstant(name) == nullptr &&
           compilation_.FindCommand(name) == nullptr;
}

}  // namespace zentro
