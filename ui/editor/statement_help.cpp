#include "ui/editor/statement_help.h"

#include <algorithm>
#include <optional>
#include <span>

#include "config/encoding.h"
#include "config/text.h"
#include "desktop/block_words.h"
#include "model/statement.h"
#include "model/statement_text.h"
#include "ui/editor/completion.h"

namespace zentro {

namespace {

/// A call whose ")" is not yet written.
struct OpenCall {
    std::string_view name;
    std::size_t argument = 0;  ///< from 0
};

std::string_view NameBefore(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    std::size_t begin = text.size();
    while (begin > 0 && IsNameCharacter(text[begin - 1]))
        --begin;
    return text.substr(begin);
}

/// Calls the function for each character outside quotes, until it returns false.
template <typename Visit>
void ForEachOutsideQuotes(std::string_view text, Visit visit) {
    bool inQuotes = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') inQuotes = !inQuotes;
        if (!inQuotes) visit(i, text[i]);
    }
}

std::optional<OpenCall> InnermostCall(std::string_view before) {
    std::vector<OpenCall> open;
    ForEachOutsideQuotes(before, [&](std::size_t i, char c) {
        if (c == '(') open.push_back({NameBefore(before.substr(0, i)), 0});
        if (c == ')' && !open.empty()) open.pop_back();
        if (c == ',' && !open.empty()) ++open.back().argument;
    });
    if (open.empty()) return std::nullopt;
    return open.back();
}

std::size_t CountCommas(std::string_view text) {
    std::size_t count = 0;
    int depth = 0;
    ForEachOutsideQuotes(text, [&](std::size_t, char c) {
        depth += (c == '(') - (c == ')');
        if (c == ',' && depth == 0) ++count;
    });
    return count;
}

/// Marks the argument among those that stand, with commas between, in a piece of the text. The last
/// piece stands for all that come after it.
void MarkArgument(CallTip& tip, std::size_t begin, std::size_t end, std::size_t argument) {
    tip.markBegin = begin;
    tip.markEnd = end;
    int depth = 0;
    for (std::size_t i = begin; i < end; ++i) {
        depth += (tip.text[i] == '(') - (tip.text[i] == ')');
        if (tip.text[i] != ',' || depth != 0) continue;
        if (argument == 0) {
            tip.markEnd = i;
            return;
        }
        --argument;
        tip.markBegin = std::min(i + 2, end);
    }
}

/// What the statement takes and does, after its words.
CallTip TipOfStatement(const CommandCatalogue& commands, const Command& command,
                       std::string_view before) {
    const StatementText text = TextOf(commands, command);
    if (text.form.empty()) return {};
    CallTip tip;
    tip.text = ToUtf8(command.command) + " ";
    const std::size_t begin = tip.text.size();
    tip.text += ToUtf8(text.form);
    const std::size_t end = tip.text.size();
    tip.text += "\n" + ToUtf8(text.meaning);
    if (FindValueStatement(command.id) != nullptr)
        MarkArgument(tip, begin, end, CountCommas(before));
    return tip;
}

/// "JOYSTICK(joystick, axis): how far it is moved", or what else the text has before the colon.
CallTip TipOfCall(std::string text, std::size_t argument) {
    CallTip tip;
    const std::size_t colon = text.find(": ");
    if (colon != std::string::npos) text.replace(colon, 2, "\n");
    tip.text = std::move(text);
    const std::size_t open = tip.text.find('(');
    const std::size_t close = tip.text.find(')', std::min(open, tip.text.size()));
    if (open != std::string::npos && close != std::string::npos)
        MarkArgument(tip, open + 1, close, argument);
    return tip;
}

const Command* EntryOfWord(const CommandCatalogue& commands, std::string_view name) {
    const Command* command = commands.FindCommand(name);
    return command != nullptr && command->command.size() == name.size() ? command : nullptr;
}

/// The words of a declaration stand before the name.
CallTip TipOfRoutine(const CommandCatalogue& commands, const ProgramName& routine,
                     std::size_t argument) {
    const std::string words = ToUtf8(commands.GetCommandText(Token::DefineRoutine));
    std::string_view text = routine.declaration;
    if (StartsWithIgnoreCase(text, words)) text = Trim(text.substr(words.size()));
    return TipOfCall(std::string(text), argument);
}

CallTip TipOf(const CommandCatalogue& commands, const std::vector<ProgramName>& names,
              const OpenCall& call) {
    const Command* command = EntryOfWord(commands, call.name);
    if (command != nullptr && FindFunction(command->id) != nullptr) {
        const StatementText text = TextOf(commands, *command);
        return TipOfCall(ToUtf8(text.form + ": " + text.meaning), call.argument);
    }
    const ProgramName* own = FindName(names, call.name);
    if (own == nullptr || !own->isRoutine) return {};
    return TipOfRoutine(commands, *own, call.argument);
}

/// A word, a number, a run of signs, a text in quotes or a separator of a line. Positions are
/// bytes.
struct Piece {
    enum class Kind : std::uint8_t { Word, Number, Signs, Other };
    std::size_t begin = 0;
    std::size_t end = 0;
    Kind kind = Kind::Other;

    bool IsName() const { return kind == Kind::Word || kind == Kind::Number; }
};

Piece::Kind KindOf(char c) {
    constexpr std::string_view kSeparators = "(),\"";
    if (IsDigit(c)) return Piece::Kind::Number;
    if (IsNameCharacter(c)) return Piece::Kind::Word;
    const bool isSign = !IsBlank(c) && kSeparators.find(c) == std::string_view::npos;
    return isSign ? Piece::Kind::Signs : Piece::Kind::Other;
}

std::size_t EndOfPiece(std::string_view line, const Piece& piece) {
    std::size_t end = piece.begin + 1;
    if (line[piece.begin] == '"') return std::min(line.find('"', end), line.size() - 1) + 1;
    if (piece.kind == Piece::Kind::Other) return end;
    while (end < line.size() &&
           (piece.IsName() ? IsNameCharacter(line[end]) : KindOf(line[end]) == piece.kind))
        ++end;
    return end;
}

std::vector<Piece> PiecesOf(std::string_view line) {
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < line.size();) {
        Piece piece{i, i, KindOf(line[i])};
        piece.end = EndOfPiece(line, piece);
        i = piece.end;
        if (!IsBlank(line[piece.begin])) pieces.push_back(piece);
    }
    return pieces;
}

/// The phrases of neighbouring words with the word at `index` in them, the longest first.
std::vector<std::string> PhrasesAround(std::string_view line, const std::vector<Piece>& pieces,
                                       std::size_t index) {
    constexpr std::size_t kMostWords = 4;
    std::size_t first = index;
    std::size_t end = index + 1;
    while (first > 0 && pieces[first - 1].IsName())
        --first;
    while (end < pieces.size() && pieces[end].IsName())
        ++end;
    std::vector<std::string> phrases;
    for (std::size_t count = std::min(kMostWords, end - first); count > 0; --count) {
        for (std::size_t from = first; from <= index && from + count <= end; ++from) {
            if (from + count <= index) continue;
            std::string phrase;
            for (const Piece& piece : std::span(pieces).subspan(from, count))
                phrase.append(phrase.empty() ? "" : " ")
                    .append(line.substr(piece.begin, piece.end - piece.begin));
            phrases.push_back(std::move(phrase));
        }
    }
    return phrases;
}

/// The runs of neighbouring signs with the one at the column in them, the longest first.
std::vector<std::string> SignsAround(std::string_view signs, std::size_t column) {
    constexpr std::size_t kMostSigns = 4;
    std::vector<std::string> runs;
    const std::size_t at = std::min(column, signs.size() - 1);
    for (std::size_t count = std::min(kMostSigns, signs.size()); count > 0; --count) {
        for (std::size_t from = 0; from <= at && from + count <= signs.size(); ++from)
            if (from + count > at) runs.emplace_back(signs.substr(from, count));
    }
    return runs;
}

const Command* EntryNamed(const CommandCatalogue& commands, std::string_view words) {
    const auto found = std::ranges::find_if(commands.Entries(), [&](const Command& entry) {
        return entry.id != Token::KeywordList && EqualsIgnoreCase(entry.command, words);
    });
    return found == commands.Entries().end() ? nullptr : &*found;
}

/// The places of those texts: that of an entry, or of the word as the handbook has it.
std::vector<std::string> PagesOf(const CommandCatalogue& commands,
                                 const std::vector<std::string>& texts, bool onlyEntries) {
    std::vector<std::string> pages;
    for (const std::string& text : texts) {
        if (const Command* entry = EntryNamed(commands, text)) {
            pages.push_back(ToUtf8(entry->command));
        } else if (!onlyEntries) {
            pages.push_back(text);
        }
    }
    return pages;
}

/// The function in whose call the column stands, or the statement of the line, or its first word.
std::vector<std::string> PagesAround(const CommandCatalogue& commands,
                                     const std::vector<ProgramName>& names, std::string_view line,
                                     std::size_t column) {
    const std::string start = CollapsedStart(line);
    const Command* entry = nullptr;
    if (const auto call = InnermostCall(line.substr(0, column)))
        entry = EntryNamed(commands, call->name);
    if (entry == nullptr) entry = commands.FindCommand(start);
    if (entry != nullptr) return {ToUtf8(entry->command)};
    const std::string word = start.substr(0, start.find(' '));  // perhaps of another language
    if (word.empty() || FindName(names, word) != nullptr) return {};
    return {word};
}

}  // namespace

HelpTopic HelpTopicAt(const CommandCatalogue& commands, const std::vector<ProgramName>& names,
                      std::string_view line, std::size_t column) {
    const std::vector<Piece> pieces = PiecesOf(line);
    const auto touched = [&](Piece::Kind kind) {
        return std::ranges::find_if(pieces, [&](const Piece& piece) {
            return piece.kind == kind && piece.begin <= column && column <= piece.end;
        });
    };
    HelpTopic topic;
    if (const auto word = touched(Piece::Kind::Word); word != pieces.end()) {
        topic.word = line.substr(word->begin, word->end - word->begin);
        const bool isOwn = FindName(names, topic.word) != nullptr;
        const auto index = static_cast<std::size_t>(word - pieces.begin());
        topic.pages = PagesOf(commands, PhrasesAround(line, pieces, index), isOwn);
    } else if (const auto signs = touched(Piece::Kind::Signs); signs != pieces.end()) {
        topic.word = line.substr(signs->begin, signs->end - signs->begin);
        topic.pages = PagesOf(commands, SignsAround(topic.word, column - signs->begin), false);
    } else {
        topic.pages = PagesAround(commands, names, line, column);
    }
    return topic;
}

CallTip StatementHelp(const InstructionConfiguration& configuration,
                      const std::vector<ProgramName>& names, std::string_view line,
                      std::size_t column) {
    const CommandCatalogue& commands = configuration.commands;
    const std::string_view before = line.substr(0, column);
    if (FindComment(before) < before.size()) return {};
    const std::string start = CollapsedStart(before);
    const Command* command = commands.FindCommand(start);
    const bool declares = command != nullptr && command->family == TokenFamily::Declaration;
    if (const auto call = declares ? std::nullopt : InnermostCall(before)) {
        CallTip tip = TipOf(commands, names, *call);
        if (!tip.text.empty()) return tip;
    }
    const bool isPastWords = command != nullptr && !before.empty() &&
                             (start.size() > command->command.size() || IsBlank(before.back()));
    if (!isPastWords || command->family == TokenFamily::Function) return {};
    return TipOfStatement(commands, *command, before);
}

}  // namespace zentro
