#include "compiler/file_headings.h"

#include <utility>

namespace zentro {

std::string FileHeadings::Before(const PostedMessage& message) {
    const bool isMistake =
        message.severity == Severity::Error || message.severity == Severity::Warning;
    const std::string& fileName = message.place.fileName;
    if (!isMistake || fileName.empty() || fileName == currentFileName_) return {};
    const bool isFirst = std::exchange(currentFileName_, fileName).empty();
    return isFirst ? std::string() : "In '" + fileName + "':";
}

}  // namespace zentro
