#include "config/input_files.h"

#include <algorithm>

namespace zentro {

void InputFiles::Add(std::string_view path, const FileContent& content) {
    if (content.identity) inputs_.push_back({std::string(path), *content.identity});
}

void InputFiles::Add(const std::string& path) {
    if (const auto identity = IdentityOf(path)) inputs_.push_back({path, *identity});
}

std::optional<std::string> InputFiles::ReplacedBy(const std::string& path) const {
    const std::optional<FileIdentity> written = IdentityOf(path);
    if (!written) return std::nullopt;
    const auto found = std::ranges::find(inputs_, *written, &Input::identity);
    return found == inputs_.end() ? std::nullopt : std::optional(found->path);
}

}  // namespace zentro
