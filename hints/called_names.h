#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hints/hint_finders.h"

namespace zentro {

/// What the name stands for where the line is; null: nothing.
const Symbol* SymbolOf(const HintQuestion& question, std::string_view name);

/// The line that declares a routine.
const SourceLine& HeaderOf(const HintQuestion& question, const Symbol& routine);

bool GivesResult(const HintQuestion& question, const Symbol& routine);

/// The names of what a routine takes: "First, Second"
std::string ParametersOf(const HintQuestion& question, const Symbol& routine);

/// A word of the line that names a routine, an event or a variable, with what it names.
struct NamedWord {
    std::string_view text;
    const Symbol* symbol = nullptr;
};

/// The last of them that names such a thing.
std::optional<NamedWord> LastNamed(const HintQuestion& question, SymbolClass wanted);

}  // namespace zentro
