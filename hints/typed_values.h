#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hints/hint_finders.h"
#include "model/statement.h"

namespace zentro {

/// What stands behind the words of the line's statement, as it was typed, without the comment;
/// empty when the line has no statement, or its words stand there in another way.
std::string_view TypedPart(const HintQuestion& question);

/// The values of the line's statement, or of the function on the right of its =, as they were
/// typed.
std::vector<std::string_view> TypedValues(const HintQuestion& question);

/// The words and texts of a list of values, without the commas and blanks between them.
std::vector<std::string_view> PiecesOf(std::string_view values);

/// The statement or function whose values those are; nothing when there is none.
const Statement* StatementOfValues(const HintQuestion& question);

/// What a value stands for: that of a word of the language or of a constant, the number, or the
/// text without its quotes; empty for names of other things.
std::string ValueBehind(const HintQuestion& question, std::string_view typed);

/// The word of the language that stands for the value; in quotes where there is none.
std::string NameOfValue(const HintQuestion& question, std::string_view value);

/// How a value of a list is written: a number as it is, everything else as the word for it.
std::string WrittenValue(const HintQuestion& question, std::string_view value);

/// Whether the value can stand there for certain.
bool Fits(const HintQuestion& question, const StatementValue& slot, std::string_view typed);

/// Whether it is a text, a number, or a name or word that stands for a value.
bool IsKnownValue(const HintQuestion& question, std::string_view word);

/// "direction FORWARD or BACKWARD": what the statement takes, in the words of the language.
std::string FormText(const HintQuestion& question, const Command& entry);

}  // namespace zentro
