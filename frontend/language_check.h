#pragma once

#include <string>
#include <vector>

#include "config/configuration.h"

namespace zentro {

/// Something in a configuration on which the compiler cannot rely.
struct LanguageFinding {
    std::string text;  ///< for whoever writes the file, UTF-8; names the record
    /// Programs would be read otherwise than they are meant. Else only the words of the record
    /// cannot be used.
    bool spoilsPrograms = false;
};

/// Checks a loaded configuration against every rule on which the compiler relies, so that each
/// breach is told once and not noticed in the programs. A configuration with findings can be used
/// all the same.
std::vector<LanguageFinding> CheckLanguage(const InstructionConfiguration& configuration);

/// The findings as one text, a line each; of many the first ones and how many more there are. Empty
/// when there are none.
std::string TellFindings(const std::vector<LanguageFinding>& findings);

}  // namespace zentro
