#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "config/command_catalogue.h"

namespace zentro {

/// The values of a list as people read them: "1 to 4", "3 to 6 or 9 to 27". What is no number
/// stands as `letterText` has it.
std::string AllowedText(std::span<const std::string_view> allowed,
                        const std::function<std::string(std::string_view)>& letterText);

/// What people are told of an entry of the language, in the program's character set.
struct StatementText {
    /// What it takes: "motor 1 to 4, direction "F" or "B", speed 0 to 100"; of a function with its
    /// word. Empty when that is not known.
    std::string form;
    std::string meaning;  ///< what it does
};

/// The words of the entry's description, and of the table of statements where that does not say
/// what the entry takes.
StatementText TextOf(const Command& entry);

/// The same with the words of the language for single letters: FORWARD for "F".
StatementText TextOf(const CommandCatalogue& commands, const Command& entry);

}  // namespace zentro
