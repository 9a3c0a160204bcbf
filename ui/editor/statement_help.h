#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/configuration.h"
#include "desktop/program_names.h"
#include "ui/support/help_topic.h"

namespace zentro {

/// What a statement or a call takes, to be shown while it is typed.
struct CallTip {
    std::string text;           ///< UTF-8; empty: there is nothing to say
    std::size_t markBegin = 0;  ///< the argument at the caret; without one both are 0
    std::size_t markEnd = 0;
};

/// What is to be looked up for a line's column (in bytes, from 0): the longest words of the
/// language that the column touches, or a word or sign that only the handbook may know. Where
/// neither stands there, the call or the statement around it. A name of the program has no page.
HelpTopic HelpTopicAt(const CommandCatalogue& commands, const std::vector<ProgramName>& names,
                      std::string_view line, std::size_t column);

/// The help on the statement, or on the innermost call, in which a line's column (in bytes, from 0)
/// stands.
CallTip StatementHelp(const InstructionConfiguration& configuration,
                      const std::vector<ProgramName>& names, std::string_view line,
                      std::size_t column);

}  // namespace zentro
