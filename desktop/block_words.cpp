#include "desktop/block_words.h"

#include <algorithm>
#include <array>

#include "config/text.h"

namespace zentro {

namespace {

using enum BlockRole;

constexpr std::array kBlockWords{
    BlockWord{Token::DefineTable, Opens, true, 0},
    BlockWord{Token::EndTable, Ends, true, 0},
    BlockWord{Token::DefineRoutine, Opens, true, 0},
    BlockWord{Token::EndRoutine, Ends, true, 0},
    BlockWord{Token::DefineEvent, Opens, true, 0},
    BlockWord{Token::EndEvent, Ends, true, 0},
    BlockWord{Token::BeginProgram, Opens, true, 0},
    BlockWord{Token::EndProgram, Ends, true, 0},
    BlockWord{Token::If, Opens, false, 0},
    BlockWord{Token::Else, Continues, false, 0},
    BlockWord{Token::EndIf, Ends, false, 0},
    BlockWord{Token::While, Opens, false, 0},
    BlockWord{Token::EndWhile, Ends, false, 0},
    BlockWord{Token::Repeat, Opens, false, 0},
    BlockWord{Token::Until, Ends, false, 0},
    BlockWord{Token::Select, Opens, false, 0},
    BlockWord{Token::Case, Continues, false, 1},
    BlockWord{Token::CaseElse, Continues, false, 1},
    BlockWord{Token::EndSelect, Ends, false, 0},
    BlockWord{Token::Loop, Opens, false, 0},
    BlockWord{Token::EndLoop, Ends, false, 0},
};

constexpr std::array<const BlockWord*, kTokenCount> MakeBlockWordTable() {
    std::array<const BlockWord*, kTokenCount> table{};
    for (const BlockWord& word : kBlockWords)
        table[static_cast<std::size_t>(word.token)] = &word;
    return table;
}
constexpr std::array<const BlockWord*, kTokenCount> kByToken = MakeBlockWordTable();

}  // namespace

std::string CollapsedStart(std::string_view line) {
    constexpr std::size_t kLongest = 64;  // more than any words of the language
    std::string start;
    start.reserve(kLongest);
    for (const char c : line) {
        if (c == ';' || start.size() == kLongest) break;
        if (!IsBlank(c)) {
            start += c;
        } else if (!start.empty() && start.back() != ' ') {
            start += ' ';
        }
    }
    if (!start.empty() && start.back() == ' ') start.pop_back();
    return start;
}

const BlockWord* FindBlockWord(const CommandCatalogue& commands, std::string_view line) {
    const std::string start = CollapsedStart(line);
    if (start.empty()) return nullptr;
    const Command* command = commands.FindCommand(start);
    return command == nullptr ? nullptr : kByToken[static_cast<std::size_t>(command->id)];
}

bool IsBlockWordAlone(const CommandCatalogue& commands, const BlockWord& word,
                      std::string_view line) {
    return EqualsIgnoreCase(CollapsedStart(line), commands.GetCommandText(word.token));
}

LineFold FoldOf(const BlockWord* word, int depth) {
    if (word == nullptr || word->role == Continues) return {depth, false, depth};
    if (word->role == Ends) return {depth, false, word->isOutermost ? 0 : std::max(depth - 1, 0)};
    const int own = word->isOutermost ? 0 : depth;
    return {own, true, own + 1};
}

}  // namespace zentro
