#include "desktop/file_text.h"

#include <algorithm>

#include "config/encoding.h"

namespace zentro {

namespace {

/// The first line end of the text, or the system's when there is none.
std::string_view LineEndOf(std::string_view text) {
    const std::size_t at = text.find_first_of("\r\n");
    if (at == std::string_view::npos) return SystemLineEnd();
    if (text[at] == '\n') return "\n";
    return text.substr(at).starts_with("\r\n") ? "\r\n" : "\r";
}

std::string WithLineFeeds(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && text.substr(i + 1).starts_with('\n')) continue;
        result += text[i] == '\r' ? '\n' : text[i];
    }
    return result;
}

}  // namespace

std::string_view SystemLineEnd() {
#ifdef _WIN32
    return "\r\n";
#else
    return "\n";
#endif
}

FileText FromFileBytes(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::string converted;
    if (!IsUtf8(bytes)) {
        converted = ToUtf8(bytes);
        bytes = converted;
    } else if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    FileText file{WithLineFeeds(bytes), std::string(LineEndOf(bytes))};
    file.isLastLineEnded = file.text.ends_with('\n');
    if (file.isLastLineEnded) file.text.pop_back();
    return file;
}

std::string ToFileBytes(const FileText& file) {
    if (file.lineEnd == "\n") return file.text + "\n";
    std::string bytes;
    bytes.reserve(file.text.size() + file.text.size() / 16);
    for (const char c : file.text) {
        if (c == '\n') {
            bytes += file.lineEnd;
        } else {
            bytes += c;
        }
    }
    return bytes + file.lineEnd;
}

}  // namespace zentro
