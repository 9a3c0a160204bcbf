#include "desktop/message_walk.h"

#include <algorithm>

namespace zentro {

namespace {

std::size_t OrderOf(const ProgramReport& report, const QString& file) {
    return static_cast<std::size_t>(std::ranges::find(report.files, file) - report.files.begin());
}

/// The lines of one file with mistakes: advice is read where it stands.
std::vector<MessageStop> StopsOf(const QString& file, std::vector<LineMessage> messages) {
    std::erase_if(messages, [](const LineMessage& message) {
        return message.isAboutInclude || message.severity == Severity::Advice;
    });
    std::ranges::stable_sort(messages, {}, &LineMessage::line);
    std::vector<MessageStop> stops;
    for (const LineMessage& message : messages) {
        if (stops.empty() || stops.back().line != message.line) {
            stops.push_back({file, message.line, message.text});
        } else {
            stops.back().text += '\n' + message.text;
        }
    }
    return stops;
}

}  // namespace

std::vector<MessageStop> MessageStops(const ProgramReport& report) {
    std::vector<MessageStop> stops;
    for (const QString& file : report.files) {
        const auto messages = report.messages.find(file);
        if (messages == report.messages.end()) continue;
        const std::vector<MessageStop> ofFile = StopsOf(file, messages->second);
        stops.insert(stops.end(), ofFile.begin(), ofFile.end());
    }
    return stops;
}

std::optional<MessageStop> NextStop(const ProgramReport& report, const QString& file, int line,
                                    Direction direction) {
    std::vector<MessageStop> stops = MessageStops(report);
    if (stops.empty()) return std::nullopt;
    const auto place = [&](const QString& of, int at) {
        return std::pair(OrderOf(report, of), at);
    };
    const auto here = place(file, line);
    const auto isAfter = [&](const MessageStop& stop) {
        return place(stop.file, stop.line) > here;
    };
    const auto isBefore = [&](const MessageStop& stop) {
        return place(stop.file, stop.line) < here;
    };
    if (direction == Direction::Forward) {
        const auto found = std::ranges::find_if(stops, isAfter);
        return found == stops.end() ? stops.front() : *found;
    }
    const auto found = std::find_if(stops.rbegin(), stops.rend(), isBefore);
    return found == stops.rend() ? stops.back() : *found;
}

}  // namespace zentro
