#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "config/command_catalogue.h"
#include "config/message_catalogue.h"

namespace zentro {

/// The language as data: its words and the compiler's messages. Built once, read-only afterwards.
struct InstructionConfiguration {
    CommandCatalogue commands;
    MessageCatalogue messages;
};

/// Reads the instruction configuration file into the catalogues. Returns the text to show when
/// something is wrong with the file, empty when all is well; the records read before the fault
/// stay in the catalogues. A last record that is incomplete is dropped without a word.
std::string LoadInstructionConfig(const std::string& path, InstructionConfiguration& configuration);

/// The same for the file's content.
std::string ParseInstructionConfig(std::string bytes, InstructionConfiguration& configuration);

/// The fixed texts of the tokens and messages that the compiler relies on and that the
/// configuration lacks: a file cut short, or one made for another version.
std::vector<std::string> MissingEntries(const InstructionConfiguration& configuration);

/// The same as a sentence for the user; empty when nothing is missing.
std::string TellMissingEntries(const InstructionConfiguration& configuration);

}  // namespace zentro
