#include "config/command_catalogue.h"

#include <algorithm>
#include <utility>

namespace zentro {

namespace {

/// The operators of signs. The others are words, or made of the same characters.
constexpr std::array kSignOperators{Token::Plus,     Token::Equal, Token::Divide, Token::Minus,
                                    Token::Multiply, Token::Less,  Token::Greater};

/// Up to the first blank or "(", the characters that may follow an entry's words in a text.
std::string_view FirstWord(std::string_view text) {
    const auto* end =
        std::find_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '('; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

bool BeginsAsWholeWord(std::string_view text, std::string_view words) {
    if (!StartsWithIgnoreCase(text, words)) return false;
    if (text.size() == words.size()) return true;
    const char next = text[words.size()];
    return next == ' ' || next == '(';
}

}  // namespace

bool CommandCatalogue::AddCommand(Command command) {
    if (byTokenText_.contains(command.token)) return false;
    command.id = TokenFromText(command.token);
    command.family = FamilyOf(command.token);
    const Command& entry = entries_.emplace_back(std::move(command));
    byTokenText_.emplace(entry.token, &entry);
    if (entry.id != Token::Other) byToken_[static_cast<std::size_t>(entry.id)] = &entry;
    byFirstWord_[std::string(FirstWord(entry.command))].push_back(&entry);
    if (std::find(kSignOperators.begin(), kSignOperators.end(), entry.id) != kSignOperators.end()) {
        for (const char c : entry.command) isOperatorCharacter_[static_cast<unsigned char>(c)] = true;
    }
    return true;
}

const Command* CommandCatalogue::FindCommand(std::string_view sourceText) const {
    const auto found = byFirstWord_.find(FirstWord(sourceText));
    if (found == byFirstWord_.end()) return nullptr;
    for (const Command* entry : found->second) {
        if (BeginsAsWholeWord(sourceText, entry->command)) return entry;
    }
    return nullptr;
}

Token CommandCatalogue::FindCommandToken(std::string_view sourceText) const {
    const Command* entry = FindCommand(sourceText);
    return entry == nullptr ? Token::None : entry->id;
}

std::string_view CommandCatalogue::GetCommandText(Token token) const {
    const Command* entry = ByToken(token);
    return entry == nullptr ? std::string_view() : std::string_view(entry->command);
}

const Command* CommandCatalogue::ByToken(Token token) const {
    return byToken_[static_cast<std::size_t>(token)];
}

}  // namespace zentro
