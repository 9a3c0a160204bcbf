#include "tools/handbook/program_html.h"

#include <algorithm>

#include "tools/handbook/html.h"

namespace zentro {

namespace {

bool IsWordCharacter(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_';
}

/// The length of the word, text in quotes, comment or single character that the line begins with.
std::size_t PieceLength(std::string_view line) {
    if (line.front() == ';') return line.size();
    if (line.front() == '"') {
        const std::size_t end = line.find('"', 1);
        return end == std::string_view::npos ? line.size() : end + 1;
    }
    std::size_t length = 0;
    while (length < line.size() && IsWordCharacter(line[length]))
        ++length;
    return std::max<std::size_t>(length, 1);
}

std::string LineHtml(std::string_view line, const Keywords& keywords) {
    std::string html;
    while (!line.empty()) {
        const std::string_view piece = line.substr(0, PieceLength(line));
        const std::string text = EscapeHtml(piece);
        if (piece.front() == ';') {
            html += "<font color=\"#4d6a3a\">" + text + "</font>";
        } else if (keywords.Contains(piece)) {
            html += "<font color=\"#1b4f91\">" + text + "</font>";
        } else {
            html += text;
        }
        line.remove_prefix(piece.size());
    }
    return html;
}

}  // namespace

Keywords::Keywords(const std::vector<std::string>& words) {
    for (const std::string& word : words)
        words_.insert(InCapitals(word));
}

bool Keywords::Contains(std::string_view word) const {
    return words_.contains(InCapitals(word));
}

std::string ProgramHtml(const std::vector<std::string>& lines, const Keywords& keywords,
                        const ProgramLook& look) {
    std::string html;
    int number = 0;
    for (const std::string& line : lines) {
        if (++number > 1) html += '\n';
        const std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
        const std::string text = LineHtml(line.substr(indent), keywords);
        html += line.substr(0, indent);
        html += number == look.underlined ? "<u>" + text + "</u>" : text;
    }
    return BoxHtml(html, look.ground);
}

std::string BoxHtml(std::string_view textHtml, std::string_view ground) {
    return "<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" bgcolor=\"" +
           std::string(ground) + "\"><tr><td><pre style=\"color: #202020\">" +
           std::string(textHtml) + "</pre></td></tr></table>\n<p></p>\n";
}

}  // namespace zentro
