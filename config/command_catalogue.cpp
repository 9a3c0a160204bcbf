#include "config/command_catalogue.h"

#include <algorithm>
#include <utility>

#include "config/text.h"

namespace zentro {

namespace {

/// Up to the first blank or "(", the characters that may follow an entry's words in a text.
std::string_view FirstWord(std::string_view text) {
    const auto* end =
        std::find_if(text.begin(), text.end(), [](char c) { return c == ' ' || c == '('; });
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// The words must begin the text and end where one of its words ends.
bool BeginsAsWholeWords(std::string_view text, std::string_view words) {
    if (!StartsWithIgnoreCase(text, words)) return false;
    if (text.size() == words.size()) return true;
    const char next = text[words.size()];
    return next == ' ' || next == '(';
}

}  // namespace

std::array<CharacterClass, 256> PlainClasses() {
    std::array<CharacterClass, 256> classes{};
    for (std::size_t code = 0; code < classes.size(); ++code) {
        if (IsBlank(static_cast<char>(code))) classes[code] = CharacterClass::Blank;
    }
    classes['"'] = CharacterClass::Quote;
    classes[';'] = CharacterClass::Comment;
    return classes;
}

bool IsSignOperator(Token token) {
    constexpr std::array kSignOperators{Token::Plus,     Token::Equal, Token::Divide, Token::Minus,
                                        Token::Multiply, Token::Less,  Token::Greater};
    return std::ranges::find(kSignOperators, token) != kSignOperators.end();
}

bool CommandCatalogue::AddCommand(Command command) {
    const NameKey key(command.token);
    const auto isSame = [&](std::uint32_t place) {
        return EqualsIgnoreCase(entries_[place].token, key.name);
    };
    if (byTokenText_.Find(key.hash, isSame) != NameIndex::kNone) return false;
    byTokenText_.Add(key.hash, static_cast<std::uint32_t>(entries_.size()));
    command.id = TokenFromText(command.token);
    command.family = FamilyOf(command.token);
    const Command& entry = entries_.emplace_back(std::move(command));
    if (entry.id != Token::Other) byToken_[static_cast<std::size_t>(entry.id)] = &entry;
    AddToFirstWord(entry);
    if (IsSignOperator(entry.id)) {
        for (const char c : entry.command) {
            // A quote, a ";" or a blank stays what it is.
            CharacterClass& known = classes_[static_cast<unsigned char>(c)];
            if (known == CharacterClass::Plain) known = CharacterClass::Operator;
        }
    }
    return true;
}

std::uint32_t CommandCatalogue::FindFirstWord(const NameKey& word) const {
    return firstWords_.Find(word.hash, [&](std::uint32_t place) {
        return EqualsIgnoreCase(byFirstWord_[place].word, word.name);
    });
}

void CommandCatalogue::AddToFirstWord(const Command& entry) {
    const NameKey word(FirstWord(entry.command));
    std::uint32_t place = FindFirstWord(word);
    if (place == NameIndex::kNone) {
        place = static_cast<std::uint32_t>(byFirstWord_.size());
        byFirstWord_.push_back({word.name, {}});
        firstWords_.Add(word.hash, place);
    }
    const std::string_view furtherWords = std::string_view(entry.command).substr(word.name.size());
    byFirstWord_[place].entries.push_back({furtherWords, &entry});
}

const Command* CommandCatalogue::FindCommand(std::string_view sourceText) const {
    const std::string_view word = FirstWord(sourceText);
    const std::uint32_t place = FindFirstWord(word);
    if (place == NameIndex::kNone) return nullptr;
    const std::string_view rest = sourceText.substr(word.size());
    for (const auto& [furtherWords, entry] : byFirstWord_[place].entries) {
        if (BeginsAsWholeWords(rest, furtherWords)) return entry;
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
