#include "desktop/compile_log.h"

#include <algorithm>
#include <utility>

namespace zentro {

namespace {

QString CountText(int count, const QString& noun) {
    const QString number = count == 0 ? "no" : QString::number(count);
    return number + ' ' + noun + (count == 1 ? "" : "s");
}

/// Only LF ends a line of the log. A file's name can hold what the view takes for more of them.
QString LogText(std::string_view utf8) {
    QString text = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    for (QChar& character : text) {
        const char16_t code = character.unicode();
        const bool breaks = code == u'\r' || code == u'\u2028' || code == u'\u2029' ||
                            code == u'\ufdd0' || code == u'\ufdd1';
        if (breaks) character = QChar::ReplacementCharacter;
    }
    return text;
}

}  // namespace

void CompileLog::Write(std::string_view text, LogColour colour, const PostedMessage* message) {
    const std::string heading = message == nullptr ? std::string() : headings_.Before(*message);
    if (!heading.empty()) Append(heading + '\n', LogColour::Green);
    if (message != nullptr && LineThatMatters(*message).sourceLineNo > 0) {
        messages_.push_back(*message);
        messageLines_.push_back(line_);
    }
    if (message != nullptr && message->severity == Severity::Error) {
        ++errorCount_;
        if (!firstErrorLine_) firstErrorLine_ = line_;
    }
    if (message != nullptr && message->severity == Severity::Warning) ++warningCount_;
    Append(text, colour);
}

void CompileLog::Append(std::string_view text, LogColour colour) {
    if (pending_.empty() || pending_.back().colour != colour) pending_.push_back({{}, colour});
    pending_.back().text += LogText(text);
    line_ += static_cast<int>(std::ranges::count(text, '\n'));
    const bool lastIsStarted = !text.empty() && text.back() != '\n';
    lineColours_.resize(static_cast<std::size_t>(line_) + (lastIsStarted ? 1 : 0), colour);
}

std::vector<LogRun> CompileLog::TakePending() {
    return std::exchange(pending_, {});
}

const PostedMessage* CompileLog::MessageInLine(int line) const {
    const auto found = std::ranges::lower_bound(messageLines_, line);
    if (found == messageLines_.end() || *found != line) return nullptr;
    return &messages_[static_cast<std::size_t>(found - messageLines_.begin())];
}

std::optional<int> CompileLog::NextMessage(int line) const {
    if (messageLines_.empty()) return std::nullopt;
    const auto found = std::ranges::upper_bound(messageLines_, line);
    return found == messageLines_.end() ? messageLines_.front() : *found;
}

std::optional<int> CompileLog::PreviousMessage(int line) const {
    if (messageLines_.empty()) return std::nullopt;
    const auto found = std::ranges::lower_bound(messageLines_, line);
    return found == messageLines_.begin() ? messageLines_.back() : *std::prev(found);
}

QString CountsText(int errors, int warnings) {
    QString text = CountText(errors, "error") + ", " + CountText(warnings, "warning");
    text[0] = text[0].toUpper();
    return text;
}

}  // namespace zentro
