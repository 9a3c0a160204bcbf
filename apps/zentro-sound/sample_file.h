#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace zentro {

/// Writes samples of one channel into a WAV file. False: it cannot be written.
bool WriteSampleFile(const std::string& path, const std::vector<std::int16_t>& samples);

}  // namespace zentro
