#include "compiler/object_file.h"

#include <algorithm>
#include <cstddef>

#include "config/text.h"

namespace zentro {

namespace {

constexpr std::size_t kTooLong = 256;
constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

void WriteObjectFileLine(std::string_view objectCode, std::pmr::string& text) {
    if (objectCode.size() < kTooLong) {
        text += objectCode;
        text += kLineEnd;
        return;
    }
    for (std::size_t start = 0; start <= objectCode.size();) {
        const std::size_t comma = std::min(objectCode.find(',', start), objectCode.size());
        text += Trim(objectCode.substr(start, comma - start));
        text += kLineEnd;
        start = comma + 1;
    }
}

std::pmr::string ObjectFileText(Compilation& compilation) {
    constexpr std::size_t kUsualLine = 16;
    std::pmr::string text(&compilation.memory);
    text.reserve(compilation.objectLines.size() * kUsualLine);
    for (const ObjectLine& line : compilation.objectLines) {
        WriteObjectFileLine(ObjectCodeText(line).View(), text);
        compilation.environment.progress.LetEventsRun();
    }
    return text;
}

}  // namespace zentro
