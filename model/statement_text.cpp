#include "model/statement_text.h"

#include <vector>

#include "config/text.h"
#include "model/statement.h"

namespace zentro {

namespace {

/// "1, 2 or 3".
std::string JoinWithOr(const std::vector<std::string>& pieces) {
    std::string text;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0) text += i + 1 == pieces.size() ? " or " : ", ";
        text += pieces[i];
    }
    return text;
}

/// "motor 1 to 4, direction "F" or "B", speed 0 to 100".
std::string ValuesText(const Statement& statement) {
    const auto quote = [](std::string_view letter) { return "\"" + std::string(letter) + "\""; };
    std::string text;
    for (const StatementValue& value : statement.Values()) {
        text.append(text.empty() ? "" : ", ").append(value.name);
        if (!value.allowed.empty()) text += " " + AllowedText(value.allowed, quote);
        if (value.mostMeant > 0) text += " 0 to " + std::to_string(value.mostMeant);
    }
    return text;
}

}  // namespace

std::string AllowedText(std::span<const std::string_view> allowed,
                        const std::function<std::string(std::string_view)>& letterText) {
    std::vector<std::string> pieces;
    for (std::size_t first = 0; first < allowed.size();) {
        std::size_t last = first;
        if (!IsNumeric(allowed[first])) {
            pieces.push_back(letterText(allowed[first]));
        } else {
            while (last + 1 < allowed.size() &&
                   *ParseNumber(allowed[last + 1]) == *ParseNumber(allowed[last]) + 1)
                ++last;
            pieces.emplace_back(allowed[first]);
            if (last > first)
                pieces.back().append(last > first + 1 ? " to " : " or ").append(allowed[last]);
        }
        first = last + 1;
    }
    return JoinWithOr(pieces);
}

StatementText TextOf(const Command& entry) {
    const std::string call = entry.command + "(";
    const Statement* function = FindFunction(entry.id);
    const std::size_t colon = entry.description.find(": ");
    const bool saysForm = colon != std::string::npos &&
                          (function == nullptr || StartsWithIgnoreCase(entry.description, call));
    if (saysForm) return {entry.description.substr(0, colon), entry.description.substr(colon + 2)};
    if (function != nullptr) return {call + ValuesText(*function) + ")", entry.description};
    const Statement* statement = FindValueStatement(entry.id);
    return {statement == nullptr ? "" : ValuesText(*statement), entry.description};
}

StatementText TextOf(const CommandCatalogue& commands, const Command& entry) {
    StatementText text = TextOf(entry);
    for (const Command& constant : commands.Entries()) {
        if (constant.family != TokenFamily::Constant) continue;
        const std::string letter = '"' + constant.description + '"';
        const std::size_t at = text.form.find(letter);
        if (at != std::string::npos) text.form.replace(at, letter.size(), constant.command);
    }
    return text;
}

}  // namespace zentro
