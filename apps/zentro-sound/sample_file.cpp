#include "apps/zentro-sound/sample_file.h"

#include <fstream>

#include "sound/tone_generator.h"

namespace zentro {

namespace {

/// The low byte first, whatever the machine does.
void Put(std::string& bytes, std::uint32_t number, int count) {
    for (int index = 0; index < count; ++index)
        bytes += static_cast<char>(number >> (8 * index) & 0xFF);
}

}  // namespace

bool WriteSampleFile(const std::string& path, const std::vector<std::int16_t>& samples) {
    constexpr std::uint32_t kBytesPerSample = 2;
    const auto size = static_cast<std::uint32_t>(samples.size() * kBytesPerSample);
    std::string bytes = "RIFF";
    Put(bytes, 36 + size, 4);
    bytes += "WAVEfmt ";
    Put(bytes, 16, 4);  // the size of the format
    Put(bytes, 1, 2);   // plain samples
    Put(bytes, 1, 2);   // channels
    Put(bytes, kSamplesPerSecond, 4);
    Put(bytes, kSamplesPerSecond * kBytesPerSample, 4);
    Put(bytes, kBytesPerSample, 2);
    Put(bytes, 8 * kBytesPerSample, 2);
    bytes += "data";
    Put(bytes, size, 4);
    for (const std::int16_t sample : samples)
        Put(bytes, static_cast<std::uint16_t>(sample), kBytesPerSample);
    std::ofstream file(path, std::ios::binary);
    file << bytes << std::flush;
    return static_cast<bool>(file);
}

}  // namespace zentro
