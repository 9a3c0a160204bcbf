#include "world/named_world.h"

#include <algorithm>
#include <system_error>

namespace zentro::world {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kWord = "world:";

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool BeginsWithWord(std::string_view text) {
    return text.size() >= kWord.size() &&
           std::ranges::equal(text.substr(0, kWord.size()), kWord, {}, Lower);
}

struct Comment {
    std::string_view name;
    std::optional<std::size_t> line;  ///< nothing: there is no such comment
};

Comment CommentOf(std::string_view source) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";  // of UTF-8
    if (source.starts_with(kMark)) source.remove_prefix(kMark.size());
    for (std::size_t number = 0; !source.empty(); ++number) {
        const std::size_t end = std::min(source.find('\n'), source.size());
        const std::string_view line = Trimmed(source.substr(0, end));
        source.remove_prefix(std::min(end + 1, source.size()));
        if (line.empty()) continue;
        if (line.front() != ';') break;
        const std::string_view comment = Trimmed(line.substr(1));
        if (BeginsWithWord(comment)) return {Trimmed(comment.substr(kWord.size())), number};
    }
    return {};
}

bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

}  // namespace

std::string WorldNamedIn(std::string_view source) {
    return std::string(CommentOf(source).name);
}

std::optional<std::size_t> LineOfWorld(std::string_view source) {
    return CommentOf(source).line;
}

fs::path FindWorld(std::string_view name, const fs::path& programFolder,
                   const fs::path& shippedWorlds) {
    fs::path beside = programFolder / name;
    if (Exists(beside)) return beside;
    fs::path shipped = shippedWorlds / name;
    return Exists(shipped) ? shipped : beside;
}

}  // namespace zentro::world
