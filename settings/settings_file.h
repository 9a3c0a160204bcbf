#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "settings/config.h"

namespace zentro {

/// What a settings file holds. The layout is drawn in docs/file-formats.md.
struct ParsedConfig {
    Config config;         ///< the records before the first malformed one
    std::string error;     ///< what is wrong with that one, empty when all is well
    std::size_t line = 0;  ///< the line on which it begins, from 1
};

/// Reads the bytes of a settings file.
ParsedConfig ParseConfig(std::string_view bytes);

/// The bytes of a settings file with these records. Reading them gives the same records.
std::string WriteConfig(const Config& config);

}  // namespace zentro
