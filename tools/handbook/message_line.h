#pragma once

#include <map>
#include <string>
#include <string_view>

#include "config/configuration.h"

namespace zentro {

/// The line of a program, from 1, that the compiler posts a message against; 0 when it posts none,
/// or none against a line of the program itself. `files` are those that it can include, by name.
int LineOfMessage(const InstructionConfiguration& language, const std::string& program,
                  const std::map<std::string, std::string>& files, std::string_view code);

}  // namespace zentro
