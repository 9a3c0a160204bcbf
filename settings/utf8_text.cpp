#include "settings/utf8_text.h"

#include "config/encoding.h"

namespace zentro {

std::string Utf8Text(std::string_view bytes) {
    return IsUtf8(bytes) ? std::string(bytes) : ToUtf8(bytes);
}

std::string PathText(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

}  // namespace zentro
