#include "comms/session_log.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "config/file.h"

namespace zentro {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

}  // namespace

SessionLog::SessionLog(std::function<void(const std::string&)> tellFailure)
    : tellFailure_(std::move(tellFailure)) {}

std::string SessionLog::Start(const std::string& path, std::string_view longDate) {
    file_.close();
    path_ = path;
    unwritten_.clear();
    lostBytes_ = 0;
    failureTold_ = false;
    file_.setFileName(QFile::decodeName(path.c_str()));
    // To open a pipe that nobody reads would wait for a reader, and so would a write to one.
    std::error_code unknown;  // then opening it says why
    if (std::filesystem::is_fifo(path, unknown)) {
        return "Error writing the session log " + std::exchange(path_, {}) +
               ". Error text is: " + std::string(kNotARegularFile);
    }
    bool started = file_.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    if (started) {
        unwritten_.append("Log Started ").append(longDate).append(kLineEnd);
        started = WriteUnwritten();
    }
    if (started) return {};
    std::string message = FailureMessage();
    file_.close();
    path_.clear();
    return message;
}

void SessionLog::Write(std::string_view text) {
    if (!IsOpen()) return;
    unwritten_ += text;
    if (WriteUnwritten()) {
        failureTold_ = false;
        return;
    }
    if (unwritten_.size() > kMaxUnwritten) {
        const std::size_t tooMuch = unwritten_.size() - kMaxUnwritten;
        unwritten_.erase(0, tooMuch);
        lostBytes_ += tooMuch;
    }
    if (std::exchange(failureTold_, true)) return;
    tellFailure_(FailureMessage() +
                 "\nWhat is missing is written as soon as that is possible again.");
}

std::string SessionLog::End(std::string_view screenText) {
    if (!IsOpen()) return {};
    unwritten_.append(screenText).append(kLineEnd);
    std::string message;
    if (!WriteUnwritten()) message = FailureMessage();
    file_.close();
    if (const std::size_t missing = lostBytes_ + unwritten_.size(); missing > 0) {
        if (message.empty()) message = "The session log " + path_ + " is not complete.";
        message += "\n" + std::to_string(missing) + " characters are missing.";
    }
    unwritten_.clear();
    path_.clear();
    return message;
}

/// False when something is left over.
bool SessionLog::WriteUnwritten() {
    while (!unwritten_.empty()) {
        const qint64 written =
            file_.write(unwritten_.data(), static_cast<qint64>(unwritten_.size()));
        if (written <= 0) return false;
        unwritten_.erase(0, static_cast<std::size_t>(written));
    }
    return true;
}

std::string SessionLog::FailureMessage() const {
    return "Error writing the session log " + path_ +
           ". Error text is: " + file_.errorString().toStdString();
}

std::string SessionLogFileName(int year, int month, int day) {
    std::string date = std::to_string(year * 10'000 + month * 100 + day);
    constexpr std::size_t kDateLength = 8;
    date.insert(0, kDateLength - std::min(kDateLength, date.size()), '0');
    return "KineTronLog" + date + ".Log";
}

}  // namespace zentro
