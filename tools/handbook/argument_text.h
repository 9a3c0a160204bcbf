#pragma once

#include <span>
#include <string>

#include "config/command_catalogue.h"
#include "model/statement.h"

namespace zentro {

/// What may stand in an argument, as a pupil reads it: "1 to 4", "a word: a variable, ...". HTML.
std::string ArgumentHtml(const CommandCatalogue& commands, const StatementValue& argument);

/// What a function gives: "a byte".
std::string ResultText(DataType type);

/// The arguments of a statement or function of the language; nothing for other tokens.
std::span<const StatementValue> ArgumentsOf(Token token);

}  // namespace zentro
