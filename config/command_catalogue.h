#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "config/name_index.h"
#include "config/token.h"

namespace zentro {

/// What a character is for the line normaliser.
enum class CharacterClass : std::uint8_t {
    Plain,
    Blank,     ///< separates words: blanks, control characters, characters beyond ASCII
    Operator,  ///< part of an operator, which stands between blanks however it was typed
    Quote,
    Comment,  ///< the ";" that begins a comment
};

/// The classes of a language without operators.
std::array<CharacterClass, 256> PlainClasses();

/// The operators of signs, whose characters stand between blanks however they were typed. The
/// others are words, or made of the same characters.
bool IsSignOperator(Token token);

/// One command record of the configuration file.
struct Command {
    std::string token;        ///< the fixed short text: "S4"
    std::string command;      ///< the word or words of the source language; a constant's name
    std::string description;  ///< help text; a constant's value
    Token id = Token::Other;
    TokenFamily family = TokenFamily::Unknown;
};

/// The words of the language, in the order of the configuration file. The order is part of the
/// language: of the entries that begin a text the first one wins.
class CommandCatalogue {
  public:
    /// Appends an entry. False when its token is in the catalogue already; nothing is added then.
    bool AddCommand(Command command);

    /// The first entry whose words begin the text and are followed by its end, a blank or "(".
    /// Nothing when there is none. The entry lives as long as the catalogue.
    const Command* FindCommand(std::string_view sourceText) const;

    /// The token of the entry that FindCommand finds, None when it finds none.
    Token FindCommandToken(std::string_view sourceText) const;

    /// The words of the entry with the token; empty when there is none.
    std::string_view GetCommandText(Token token) const;

    /// The entry with the token, or nothing.
    const Command* ByToken(Token token) const;

    CharacterClass ClassOf(char c) const { return classes_[static_cast<unsigned char>(c)]; }

    const std::deque<Command>& Entries() const { return entries_; }

  private:
    struct FurtherWords {
        std::string_view words;  ///< of the entry, behind its first
        const Command* entry;
    };
    /// The entries that begin with a word, in file order, so that a look-up visits only those.
    struct FirstWordEntries {
        std::string_view word;
        std::vector<FurtherWords> entries;
    };

    std::uint32_t FindFirstWord(const NameKey& word) const;
    void AddToFirstWord(const Command& entry);

    std::deque<Command> entries_;  // a deque, so that pointers to its entries stay good
    std::array<const Command*, kTokenCount> byToken_{};
    std::array<CharacterClass, 256> classes_ = PlainClasses();
    NameIndex byTokenText_;
    NameIndex firstWords_;
    std::vector<FirstWordEntries> byFirstWord_;
};

}  // namespace zentro
