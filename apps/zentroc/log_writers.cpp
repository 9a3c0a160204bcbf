#include "apps/zentroc/log_writers.h"

#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace zentro {

namespace {

std::string_view ColourSequence(LogColour colour) {
    switch (colour) {
        case LogColour::Black: return "";
        case LogColour::Grey: return "\033[90m";
        case LogColour::Green: return "\033[32m";
        case LogColour::Blue: return "\033[34m";
        case LogColour::Red: return "\033[31m";
    }
    return "";
}

constexpr std::string_view kPlain = "\033[0m";

std::string_view SeverityName(Severity severity) {
    switch (severity) {
        case Severity::Error: return "error";
        case Severity::Warning: return "warning";
        case Severity::Information: return "information";
        case Severity::Box: return "fatal";
        case Severity::Advice: return "advice";
    }
    return "information";
}

bool IsMistake(const PostedMessage* message) {
    return message != nullptr &&
           (message->severity == Severity::Error || message->severity == Severity::Warning);
}

}  // namespace

TextLog::TextLog(StandardOutput& output, std::string mainFileName, bool inColour, bool quiet)
    : output_(output), headings_(std::move(mainFileName)), inColour_(inColour), quiet_(quiet) {}

void TextLog::Write(std::string_view text, LogColour colour, const PostedMessage* message) {
    if (quiet_ && !IsMistake(message)) return;
    const std::string heading = message == nullptr ? std::string() : headings_.Before(*message);
    if (!heading.empty()) output_.Write(heading + "\n");
    const bool endsLine = text.ends_with('\n');
    if (endsLine) text.remove_suffix(1);
    if (inColour_) output_.Write(ColourSequence(colour));
    output_.Write(text);
    if (inColour_ && !ColourSequence(colour).empty()) output_.Write(kPlain);
    output_.Write("\n");
}

void JsonLog::Write(std::string_view, LogColour, const PostedMessage* message) {
    if (message == nullptr || (quiet_ && !IsMistake(message))) return;
    nlohmann::ordered_json object{
        {"code", MessageCodeText(message->code)}, {"severity", SeverityName(message->severity)},
        {"file", message->place.fileName},        {"path", message->place.pathName},
        {"line", message->place.sourceLineNo},    {"text", message->text},
    };
    if (!message->hint.text.empty()) object["hint"] = message->hint.text;
    if (const std::optional<LineXref>& place = message->hint.place) {
        object["about"] = {
            {"file", place->fileName}, {"path", place->pathName}, {"line", place->sourceLineNo}};
    }
    if (const std::optional<Fix>& fix = message->hint.fix) {
        object["fix"] = {{"file", fix->fileName}, {"path", fix->pathName}, {"line", fix->line},
                         {"column", fix->column}, {"length", fix->length}, {"text", fix->text}};
    }
    using Handler = nlohmann::ordered_json::error_handler_t;
    output_.Write(object.dump(-1, ' ', false, Handler::replace) + "\n");
}

}  // namespace zentro
