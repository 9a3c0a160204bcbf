#include "frontend/words.h"

#include "config/text.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

constexpr bool IsDelimiter(char c) {
    // Letters and digits, which are most characters, need one comparison.
    return c <= ',' && (c == ' ' || c == '(' || c == ')' || c == ',' || c == '"');
}

/// The length of the text literal at the start of the text; 0 when there is none.
std::size_t LiteralLength(std::string_view text) {
    if (text.empty() || text.front() != '"') return 0;
    const std::size_t end = text.find('"', 1);
    return end == kNone ? 0 : end + 1;
}

}  // namespace

SplitText SplitFirstWord(std::string_view text, bool keepLeadingDelimiter) {
    text = Trim(text);
    if (const std::size_t literal = LiteralLength(text)) {
        return {text.substr(0, literal), Trim(text.substr(literal))};
    }
    std::size_t end = keepLeadingDelimiter && !text.empty() ? 1 : 0;
    while (end < text.size() && !IsDelimiter(text[end]))
        ++end;
    if (end == text.size()) return {text, {}};
    const std::size_t restStart = text[end] == '"' ? end : end + 1;
    return {Trim(text.substr(0, end)), Trim(text.substr(restStart))};
}

std::vector<std::string_view> SplitCommaList(std::string_view text) {
    std::vector<std::string_view> items;
    if (Trim(text).empty()) return items;
    constexpr std::size_t kUsualItems = 4;
    items.reserve(kUsualItems);
    for (std::size_t comma = FindOutsideQuotes(text, ','); comma != kNone;
         comma = FindOutsideQuotes(text, ',')) {
        items.push_back(Trim(text.substr(0, comma)));
        text.remove_prefix(comma + 1);
    }
    items.push_back(Trim(text));
    return items;
}

std::vector<PlacedWord> WordsInLine(const CommandCatalogue& commands, std::string_view line) {
    const auto isInWord = [&](char c) {
        return commands.ClassOf(c) == CharacterClass::Plain && !IsDelimiter(c);
    };
    std::vector<PlacedWord> words;
    std::size_t i = 0;
    while (i < line.size() && commands.ClassOf(line[i]) != CharacterClass::Comment) {
        const std::size_t begin = i;
        if (commands.ClassOf(line[i]) == CharacterClass::Quote) {
            i = line.find('"', i + 1);
            if (i == kNone) break;
        } else if (isInWord(line[i])) {
            while (i < line.size() && isInWord(line[i]))
                ++i;
            words.push_back({begin, i - begin});
            continue;
        }
        ++i;
    }
    return words;
}

std::string_view StripQuotes(std::string_view text) {
    if (text.size() > 1 && text.front() == '"') text.remove_prefix(1);
    if (text.ends_with('"')) text.remove_suffix(1);
    return text;
}

bool IsQuoted(std::string_view text) {
    return text.size() > 1 && text.front() == '"' && text.back() == '"';
}

std::size_t FindOutsideQuotes(std::string_view text, char wanted, std::size_t start) {
    if (text.find(wanted, start) == kNone) return kNone;
    bool inQuotes = false;
    for (std::size_t i = start; i < text.size(); ++i) {
        if (!inQuotes && text[i] == wanted) return i;
        if (text[i] == '"') inQuotes = !inQuotes;
    }
    return kNone;
}

bool HasCallParenthesis(std::string_view text) {
    const std::size_t open = text.find('(');
    return open != kNone && text.find('"') > open;
}

std::size_t FindClosingParenthesis(std::string_view text, std::size_t open) {
    std::size_t last = kNone;
    int depth = 0;
    bool inQuotes = false;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '"') inQuotes = !inQuotes;
        if (inQuotes) continue;
        if (text[i] == '(') ++depth;
        if (text[i] != ')') continue;
        last = i;
        if (--depth == 0) return i;
    }
    return last;
}

}  // namespace zentro
