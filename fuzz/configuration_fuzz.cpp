// Arbitrary bytes as an instruction configuration file: whatever is loaded can be looked up, and a
// fault is told.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "config/configuration.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zentro::InstructionConfiguration configuration;
    const std::string bytes(data, data + size);
    zentro::ParseInstructionConfig(bytes, configuration);
    for (const zentro::Command& command : configuration.commands.Entries()) {
        const zentro::Command* found = configuration.commands.FindCommand(command.command);
        if (found == nullptr) std::abort();
    }
    zentro::MissingEntries(configuration);
    return 0;
}
