#include "desktop/outline.h"

#include <algorithm>

#include "desktop/block_words.h"
#include "frontend/words.h"

namespace zentro {

namespace {

std::optional<OutlineKind> KindOf(Token token) {
    switch (token) {
        case Token::DefineRoutine: return OutlineKind::Routine;
        case Token::DefineEvent: return OutlineKind::Event;
        case Token::DefineTable: return OutlineKind::Table;
        case Token::BeginProgram: return OutlineKind::Program;
        default: return std::nullopt;
    }
}

/// The word behind the words that open the block.
std::string NameIn(const CommandCatalogue& commands, std::string_view line, Token token) {
    const std::size_t skipped = WordsInLine(commands, commands.GetCommandText(token)).size();
    const std::vector<PlacedWord> words = WordsInLine(commands, line);
    return words.size() > skipped ? std::string(words[skipped].In(line)) : std::string();
}

}  // namespace

std::vector<OutlineEntry> OutlineOf(const CommandCatalogue& commands, std::string_view text) {
    std::vector<OutlineEntry> outline;
    bool isOpen = false;
    int line = 1;
    for (std::size_t begin = 0; begin <= text.size(); ++line) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string_view lineText = text.substr(begin, end - begin);
        const Statement* word = FindBlockWord(commands, lineText);
        if (word != nullptr && !IsInner(word->edge.block)) {
            const bool opens = word->edge.role == BlockRole::Opens;
            if (isOpen) outline.back().lastLine = opens ? line - 1 : line;
            isOpen = opens;
            if (const auto kind = KindOf(word->token)) {
                const bool isNamed = *kind != OutlineKind::Program;
                outline.push_back(
                    {*kind, isNamed ? NameIn(commands, lineText, word->token) : "", line, line});
            }
        }
        begin = end + 1;
    }
    if (isOpen) outline.back().lastLine = line - 1;
    return outline;
}

std::optional<std::size_t> EntryOfLine(const std::vector<OutlineEntry>& outline, int line) {
    const auto after = std::ranges::upper_bound(outline, line, {}, &OutlineEntry::line);
    if (after == outline.begin()) return std::nullopt;
    const auto entry = std::prev(after);
    if (line > entry->lastLine) return std::nullopt;
    return static_cast<std::size_t>(entry - outline.begin());
}

}  // namespace zentro
