#include "compiler/object_file.h"

#include <algorithm>
#include <cstddef>

#include "config/text.h"

namespace zentro {

namespace {

constexpr std::size_t kTooLong = 256;
constexpr std::string_view kLineEnd = "\r\n";

void WriteTable(const ObjectLine& line, std::pmr::string& text) {
    std::int32_t left = kMostBytesWritten - line.address;
    line.table->ForEach([&](std::uint8_t byte) {
        text += ObjectCodeText(byte).View();
        text += kLineEnd;
        return --left > 0;
    });
}

/// About what the text takes, so that it need not move.
std::size_t RoomFor(const Compilation& compilation) {
    constexpr std::size_t kUsualLine = 16;
    constexpr std::size_t kUsualByte = 4;
    std::size_t room = 0;
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.address >= kMostBytesWritten) break;
        const auto left = static_cast<std::size_t>(kMostBytesWritten - line.address);
        room += line.IsTable() ? kUsualByte * std::min(line.Size(), left) : kUsualLine;
    }
    return room;
}

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
    std::pmr::string text(&compilation.memory);
    text.reserve(RoomFor(compilation));
    for (const ObjectLine& line : compilation.objectLines) {
        if (line.address >= kMostBytesWritten) break;
        if (line.IsTable()) {
            WriteTable(line, text);
        } else {
            WriteObjectFileLine(ObjectCodeText(line).View(), text);
        }
        compilation.environment.progress.LetEventsRun();
    }
    return text;
}

}  // namespace zentro
