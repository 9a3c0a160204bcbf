#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/compilation.h"

namespace zentro {

/// A name that the program itself declares.
struct ProgramName {
    std::string name;
    std::string declaration;  ///< the line that declares it, UTF-8, with single blanks
    bool isRoutine = false;
};

/// What a program declares, each name once, in the order of the alphabet.
std::vector<ProgramName> NamesOf(const Compilation& compilation);

/// Both lists as one; of two with the same name the one of `newer` stays.
std::vector<ProgramName> MergeNames(const std::vector<ProgramName>& newer,
                                    const std::vector<ProgramName>& older);

/// The entry with the name, whose letter case does not matter, or nothing.
const ProgramName* FindName(const std::vector<ProgramName>& names, std::string_view name);

}  // namespace zentro
