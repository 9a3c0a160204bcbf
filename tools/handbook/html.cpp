#include "tools/handbook/html.h"

#include <algorithm>
#include <set>

#include "config/encoding.h"
#include "config/text.h"

namespace zentro {

namespace {

constexpr char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string InSmallLetters(std::string_view word) {
    std::string text(word);
    for (char& c : text)
        c = Small(c);
    return text;
}

/// "Set Motor".
std::string WithCapitals(std::string_view word) {
    std::string text = InSmallLetters(word);
    bool begins = true;
    for (char& c : text) {
        if (begins) c = FoldCase(c);
        begins = c == ' ';
    }
    return text;
}

std::string LinkTo(std::string_view place, std::string_view shownHtml) {
    return "<a href=\"#" + EscapeHtml(place) + "\">" + std::string(shownHtml) + "</a>";
}

}  // namespace

std::string InCapitals(std::string_view word) {
    std::string text(word);
    std::ranges::transform(text, text.begin(), FoldCase);
    return text;
}

std::string EscapeHtml(std::string_view text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&': html += "&amp;"; break;
            case '<': html += "&lt;"; break;
            case '>': html += "&gt;"; break;
            case '"': html += "&quot;"; break;
            default: html += c;
        }
    }
    return html;
}

std::string AnchorHtml(std::string_view name) {
    return "<a name=\"" + EscapeHtml(name) + "\"></a>";
}

std::string WordAnchorsHtml(std::string_view word) {
    std::string html;
    for (const std::string& spelling :
         std::set<std::string>{InCapitals(word), InSmallLetters(word), WithCapitals(word)})
        html += AnchorHtml(spelling);
    return html;
}

std::string PlaceOfTitle(std::string_view title) {
    std::string place;
    for (const char c : title) {
        if (IsLetter(c) || IsDigit(c)) {
            place += Small(c);
        } else if (!place.empty() && place.back() != '-') {
            place += '-';
        }
    }
    if (place.ends_with('-')) place.pop_back();
    return place;
}

const Command* EntryOf(const CommandCatalogue& commands, std::string_view token) {
    const auto found = std::ranges::find_if(commands.Entries(), [&](const Command& entry) {
        return EqualsIgnoreCase(entry.token, token);
    });
    return found == commands.Entries().end() ? nullptr : &*found;
}

std::string CodeHtml(std::string_view text) {
    return "<code>" + EscapeHtml(text) + "</code>";
}

References::References(const InstructionConfiguration& language, const Manuscript& manuscript)
    : language_(language) {
    for (const Block& block : manuscript.blocks) {
        switch (block.kind) {
            case Block::Kind::Chapter:
            case Block::Kind::Section:
                shown_["#" + PlaceOfTitle(block.name)] = EscapeHtml(block.name);
                break;
            case Block::Kind::Words:
                for (const std::string& token : block.lines)
                    shown_[token] = CodeHtml(Words(token));
                break;
            case Block::Kind::Message:
                for (const std::string& code : block.lines)
                    shown_[code] = code;
                break;
            default: break;
        }
    }
}

std::string References::Words(std::string_view token) const {
    const Command* entry = EntryOf(language_.commands, token);
    return entry == nullptr ? std::string() : ToUtf8(entry->command);
}

std::string References::LinkHtml(std::string_view token) const {
    const auto found = shown_.find(token);
    return found == shown_.end() ? CodeHtml(Words(token)) : LinkTo(token, found->second);
}

/// Empty when there is no such place.
std::string References::ReferenceHtml(std::string_view reference) const {
    const auto found = shown_.find(reference);
    if (found == shown_.end()) return {};
    if (reference.starts_with('#')) reference.remove_prefix(1);
    return LinkTo(reference, found->second);
}

std::string References::TextHtml(std::string_view text, const std::string& place,
                                 std::vector<std::string>& problems) const {
    std::string html;
    while (!text.empty()) {
        const std::size_t begin = std::min(text.find_first_of("`{"), text.size());
        html += EscapeHtml(text.substr(0, begin));
        if (begin == text.size()) break;
        const bool isCode = text[begin] == '`';
        const std::size_t end = text.find(isCode ? '`' : '}', begin + 1);
        if (end == std::string_view::npos) {
            problems.push_back(place + ": " + text[begin] + " is not closed");
            break;
        }
        const std::string_view inner = text.substr(begin + 1, end - begin - 1);
        const std::string piece = isCode ? CodeHtml(inner) : ReferenceHtml(inner);
        if (piece.empty()) problems.push_back(place + ": nothing is called " + std::string(inner));
        html += piece;
        text.remove_prefix(end + 1);
    }
    return html;
}

}  // namespace zentro
