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

    /// True for the characters that the operators of the language are made of, which stand between
    /// blanks however they were typed.
    bool IsOperatorCharacter(char c) const {
        return isOperatorCharacter_[static_cast<unsigned char>(c)];
    }

    const std::deque<Command>& Entries() const { return entries_; }

  private:
    void AddToFirstWord(const Command& entry);

    std::deque<Command> entries_;  // a deque, so that pointers to its entries stay good
    std::array<const Command*, kTokenCount> byToken_{};
    std::array<bool, 256> isOperatorCharacter_{};
    NameIndex byTokenText_;
    // The entries that begin with a word, in file order, so that a look-up visits only those.
    NameIndex firstWords_;
    std::vector<std::vector<const Command*>> byFirstWord_;
};

}  // namespace zentro
