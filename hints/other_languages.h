#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"

namespace zentro {

/// A word or sign of other languages and what is said here instead. The configuration has a message
/// for each: "print: {s25} shows a byte", or "!= becomes {M13}: {M13}" where one can be written for
/// the other. {s25} stands for the words of the language with that token, {E16} and {#place} for a
/// page of the handbook.
struct OtherLanguageRow {
    std::string word;
    std::string replacement;  ///< empty when there is none
    std::string text;
};

/// The rows in the order of their numbers. `text` of one that has no ": " is empty.
std::vector<OtherLanguageRow> OtherLanguageRows(const MessageCatalogue& messages);

/// Whether it is about a word, and not a sign.
bool IsWordRow(const OtherLanguageRow& row);

/// The row of the longest sign with which the text begins; null when there is none.
const OtherLanguageRow* RowOfSign(std::span<const OtherLanguageRow> rows, std::string_view text);

/// The row of the words; null when there is none.
const OtherLanguageRow* RowOfWord(std::span<const OtherLanguageRow> rows, std::string_view words);

/// The text as a sentence's piece: the language's words for their tokens, and nothing of what it
/// says about the handbook.
std::string PlainText(const CommandCatalogue& commands, std::string_view text);

}  // namespace zentro
