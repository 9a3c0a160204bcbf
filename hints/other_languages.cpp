#include "hints/other_languages.h"

#include <algorithm>
#include <utility>

#include "config/text.h"

namespace zentro {

namespace {

constexpr auto kNone = std::string_view::npos;

const Command* EntryWithToken(const CommandCatalogue& commands, std::string_view token) {
    const auto& entries = commands.Entries();
    const auto found = std::ranges::find(entries, token, &Command::token);
    return found == entries.end() ? nullptr : &*found;
}

OtherLanguageRow RowOf(std::string_view message) {
    constexpr std::string_view kBecomes = " becomes ";
    constexpr std::string_view kColon = ": ";
    const std::size_t colon = std::min(message.find(kColon), message.size());
    const std::string_view head = message.substr(0, colon);
    OtherLanguageRow row;
    if (colon < message.size()) row.text = message.substr(colon + kColon.size());
    const std::size_t becomes = head.find(kBecomes);
    row.word = head.substr(0, becomes);
    if (becomes != kNone) row.replacement = head.substr(becomes + kBecomes.size());
    return row;
}

}  // namespace

std::vector<OtherLanguageRow> OtherLanguageRows(const MessageCatalogue& messages) {
    std::vector<OtherLanguageRow> rows;
    const auto last = static_cast<unsigned>(MessageCode::LastOtherLanguageRow);
    for (auto code = static_cast<unsigned>(MessageCode::FirstOtherLanguageRow); code <= last;
         ++code) {
        const std::string_view text = messages.GetMessageText(static_cast<MessageCode>(code));
        if (!text.empty()) rows.push_back(RowOf(text));
    }
    return rows;
}

bool IsWordRow(const OtherLanguageRow& row) {
    return !row.word.empty() && IsLetter(row.word.front());
}

const OtherLanguageRow* RowOfSign(std::span<const OtherLanguageRow> rows, std::string_view text) {
    const OtherLanguageRow* longest = nullptr;
    for (const OtherLanguageRow& row : rows) {
        if (row.word.empty() || IsWordRow(row) || !text.starts_with(row.word)) continue;
        if (longest == nullptr || row.word.size() > longest->word.size()) longest = &row;
    }
    return longest;
}

const OtherLanguageRow* RowOfWord(std::span<const OtherLanguageRow> rows, std::string_view words) {
    const auto found = std::ranges::find_if(rows, [&](const OtherLanguageRow& row) {
        return IsWordRow(row) && EqualsIgnoreCase(row.word, words);
    });
    return found == rows.end() ? nullptr : &*found;
}

std::string PlainText(const CommandCatalogue& commands, std::string_view text) {
    constexpr std::string_view kSee = ", see {";
    std::string plain;
    while (!text.empty()) {
        const bool isSee = text.starts_with(kSee);
        if (isSee || text.front() == '{') {
            const std::size_t open = isSee ? kSee.size() - 1 : 0;
            const std::size_t close = text.find('}');
            if (close == kNone) break;
            const Command* entry =
                EntryWithToken(commands, text.substr(open + 1, close - open - 1));
            if (entry != nullptr) plain += (isSee ? ", see " : "") + entry->command;
            text.remove_prefix(close + 1);
            continue;
        }
        if (text.front() != '`') plain += text.front();
        text.remove_prefix(1);
    }
    return plain;
}

}  // namespace zentro
