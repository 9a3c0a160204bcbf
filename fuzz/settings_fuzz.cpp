// Any bytes are read as a settings file; what was read must survive being saved.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "settings/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const zentro::Config config = zentro::ParseConfig(bytes).config;
    const std::string saved = zentro::WriteConfig(config);
    const zentro::ParsedConfig again = zentro::ParseConfig(saved);
    const bool same = again.error.empty() && std::ranges::equal(config, again.config) &&
                      zentro::WriteConfig(again.config) == saved;
    if (!same) std::abort();
    return 0;
}
