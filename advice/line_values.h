#pragma once

#include <cstdint>
#include <optional>

#include "model/compilation.h"
#include "model/statement.h"

namespace zentro {

// What finders read off a single line.

/// The number of a constant; nothing for variables.
std::optional<std::int32_t> ValueOf(const LineElement& element);

/// The number that a line gives a variable, as in Speed = 60; nothing for other lines.
std::optional<std::int32_t> NumberAssigned(const Compilation& compilation, const SourceLine& line);

/// IF, WHILE and UNTIL.
bool IsConditionLine(Token token);

bool IsEquality(Token comparison);

/// The two sides of a condition.
struct ComparedSides {
    const LineElement* first = nullptr;
    const LineElement* second = nullptr;
    Token comparison = Token::None;
};

/// Of an IF, WHILE or UNTIL line; nothing for other lines and for calls as conditions.
std::optional<ComparedSides> SidesOf(const Compilation& compilation, const SourceLine& line);

/// A variable that is compared with a number.
struct ComparedWithNumber {
    const LineElement* variable = nullptr;
    std::int32_t number = 0;
};

/// Nothing unless one side is a variable, the other one a number.
std::optional<ComparedWithNumber> WithNumber(const ComparedSides& sides);

/// What the line does to the blocks inside of a routine, an event or the program.
BlockRole InnerRoleOf(const SourceLine& line);

}  // namespace zentro
