#include "config/text_lines.h"

#include <charconv>

namespace zentro {

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines = SplitFields(text, '\n');
    if (lines.back().empty()) lines.pop_back();
    for (std::string_view& line : lines) {
        if (line.ends_with('\r')) line.remove_suffix(1);
    }
    return lines;
}

std::vector<std::string_view> SplitFields(std::string_view text, char separator) {
    std::vector<std::string_view> fields;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator, start)) {
        fields.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    fields.push_back(text.substr(start));
    return fields;
}

std::optional<unsigned long> ReadNumber(std::string_view text, unsigned long largest) {
    unsigned long value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || value > largest) return std::nullopt;
    return value;
}

}  // namespace zentro
