#include "ui/editor/completion.h"

#include <algorithm>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/parse_source_line.h"
#include "model/statement.h"

namespace zentro {

namespace {

bool BeginsLine(const Command& entry) {
    return IsSupportedStatement(entry.id);
}

/// Words that are no statements but can stand inside one.
bool StandsInLine(const Command& entry) {
    switch (entry.family) {
        case TokenFamily::Function: return FindFunction(entry.id) != nullptr;
        case TokenFamily::Operator:
            return !entry.command.empty() && IsLetter(entry.command.front());
        case TokenFamily::Constant: return true;
        case TokenFamily::Reserved:
            return entry.id != Token::KeywordList && entry.id != Token::DefinePrefix &&
                   entry.id != Token::EndPrefix && entry.id != Token::Reserve;
        case TokenFamily::Declaration:
        case TokenFamily::Directive:
        case TokenFamily::Statement:
        case TokenFamily::Unknown: return false;
    }
    return false;
}

template <typename Wanted>
void AddEntries(std::vector<std::string>& items, const CommandCatalogue& commands,
                std::string_view typed, Wanted isWanted) {
    for (const Command& entry : commands.Entries()) {
        if (isWanted(entry) && StartsWithIgnoreCase(entry.command, typed))
            items.push_back(ToUtf8(entry.command));
    }
}

void SortItems(std::vector<std::string>& items) {
    const auto folded = [](std::string text) {
        std::ranges::transform(text, text.begin(), FoldCase);
        return text;
    };
    std::ranges::sort(items, {}, folded);
    items.erase(std::unique(items.begin(), items.end(),
                            [](const auto& a, const auto& b) { return EqualsIgnoreCase(a, b); }),
                items.end());
}

}  // namespace

bool IsNameCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_';
}

bool EndsInCommentOrString(std::string_view line) {
    bool inQuotes = false;
    for (const char c : line) {
        if (c == ';' && !inQuotes) return true;
        if (c == '"') inQuotes = !inQuotes;
    }
    return inQuotes;
}

Completion CompletionsOf(const CommandCatalogue& commands, const std::vector<ProgramName>& names,
                         std::string_view beforeCaret) {
    Completion completion;
    if (EndsInCommentOrString(beforeCaret)) return completion;
    std::size_t lineStart = 0;
    while (lineStart < beforeCaret.size() && IsBlank(beforeCaret[lineStart]))
        ++lineStart;
    std::size_t wordStart = beforeCaret.size();
    while (wordStart > lineStart && IsNameCharacter(beforeCaret[wordStart - 1]))
        --wordStart;

    const std::string_view line = beforeCaret.substr(lineStart);
    const std::string_view word = beforeCaret.substr(wordStart);
    if (!line.empty()) AddEntries(completion.items, commands, line, BeginsLine);
    completion.typed = line.size();
    // The second word of a statement stands for the whole of it; anything else is a word alone.
    if (completion.items.empty() || wordStart == lineStart) {
        completion.typed = word.size();
        if (wordStart != lineStart) AddEntries(completion.items, commands, word, StandsInLine);
        for (const ProgramName& name : names) {
            if (StartsWithIgnoreCase(name.name, word)) completion.items.push_back(name.name);
        }
    }
    SortItems(completion.items);
    return completion;
}

}  // namespace zentro
