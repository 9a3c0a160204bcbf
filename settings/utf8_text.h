#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zentro {

/// The bytes as they are when they are valid UTF-8, otherwise read as Windows-1252.
std::string Utf8Text(std::string_view bytes);

/// The path's name in UTF-8.
std::string PathText(const std::filesystem::path& path);

}  // namespace zentro
