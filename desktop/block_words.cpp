#include "desktop/block_words.h"

#include <algorithm>

#include "config/text.h"

namespace zentro {

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

const Statement* FindBlockWord(const CommandCatalogue& commands, std::string_view line) {
    const std::string start = CollapsedStart(line);
    if (start.empty()) return nullptr;
    const Command* command = commands.FindCommand(start);
    const Statement* statement = command == nullptr ? nullptr : FindStatement(command->id);
    return statement == nullptr || statement->edge.role == BlockRole::None ? nullptr : statement;
}

int StepsOf(const BlockEdge& edge) {
    return edge.role == BlockRole::Continues && edge.block == CompileState::Select ? 1 : 0;
}

bool IsBlockWordAlone(const CommandCatalogue& commands, const Statement& word,
                      std::string_view line) {
    return EqualsIgnoreCase(CollapsedStart(line), commands.GetCommandText(word.token));
}

LineFold FoldOf(const Statement* word, int depth) {
    if (word == nullptr || word->edge.role == BlockRole::Continues) return {depth, false, depth};
    const bool isInner = IsInner(word->edge.block);
    if (word->edge.role == BlockRole::Ends)
        return {depth, false, isInner ? std::max(depth - 1, 0) : 0};
    const int own = isInner ? depth : 0;
    return {own, true, own + 1};
}

}  // namespace zentro
