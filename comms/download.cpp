#include "comms/download.h"

#include <algorithm>
#include <utility>

#include "comms/link.h"
#include "config/file.h"

namespace zentro {

namespace {

using std::chrono::microseconds;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kEndProgram = "X\rZ\r";  // leaves debug mode, stops what runs
constexpr std::string_view kStartLoader = "L";
constexpr std::string_view kEndLoad = "]\r";
constexpr std::string_view kClearScreen =
    "\x1b"
    "c";
constexpr std::size_t kLinesPerProgress = 25;

}  // namespace

microseconds TimeOnTheWire(std::size_t characters) {
    constexpr std::int64_t kBitsPerCharacter = 10;
    constexpr std::int64_t kMicroseconds = 1'000'000;
    const auto bits = static_cast<std::int64_t>(characters) * kBitsPerCharacter;
    return microseconds((bits * kMicroseconds + kBaud - 1) / kBaud);
}

Download::Download(const std::string& path, DownloadTerminal terminal)
    : path_(path), terminal_(std::move(terminal)) {}

microseconds Download::Step() {
    switch (state_) {
        case State::Beginning: return Begin();
        case State::StartingLoader: return StartLoader();
        case State::SendingLines: return SendLine();
        case State::Over: break;
    }
    return {};
}

void Download::Cancel() {
    if (IsOver()) return;
    state_ = State::Over;
    terminal_.write(kEndLoad);
    terminal_.writeToScreen(std::string(kLineEnd) + "Download Cancelled. Sent " +
                            std::to_string(linesSent_) + " Lines. ");
}

double Download::Fraction() const {
    if (text_.empty()) return state_ == State::Over ? 1 : 0;
    return static_cast<double>(position_) / static_cast<double>(text_.size());
}

microseconds Download::Begin() {
    FileContent file = ReadWholeFile(path_);
    if (file.status != FileContent::Status::Read) {
        state_ = State::Over;
        terminal_.showMessage("Error Dowloading file. Error text is: " + file.problem);
        return {};
    }
    text_ = std::move(file.bytes);
    state_ = State::StartingLoader;
    if (!terminal_.write(kEndProgram)) state_ = State::Over;
    return kLoaderDelay;
}

microseconds Download::StartLoader() {
    terminal_.writeToScreen(std::string(kClearScreen) + "Downloading Program to Kinetron......");
    state_ = State::SendingLines;
    if (!terminal_.write(kStartLoader)) state_ = State::Over;
    return TimeOnTheWire(kStartLoader.size()) + kLineGap;
}

microseconds Download::SendLine() {
    if (position_ == text_.size()) {
        Complete();
        return {};
    }
    const std::string line = std::string(TakeLine()).append(kLineEnd);
    terminal_.write(line);  // the next one is sent all the same
    ++linesSent_;
    if (linesSent_ % kLinesPerProgress == 0) {
        terminal_.writeToScreen(std::string(kLineEnd) + "Working.... " +
                                std::to_string(linesSent_) + "  Lines Sent  ");
    }
    return TimeOnTheWire(line.size()) + kLineGap;
}

void Download::Complete() {
    state_ = State::Over;
    terminal_.writeToScreen(std::string(kLineEnd) + "Download Complete. Sent " +
                            std::to_string(linesSent_) + " Lines in total. ");
    complete_ = terminal_.write(kEndLoad);
}

/// The next line without its end: CR, LF, both, or the end of the file.
std::string_view Download::TakeLine() {
    const std::string_view rest = std::string_view(text_).substr(position_);
    const std::size_t length = std::min(rest.find_first_of(kLineEnd), rest.size());
    const bool hasBoth = rest.substr(length, kLineEnd.size()) == kLineEnd;
    position_ += std::min(length + (hasBoth ? kLineEnd.size() : 1), rest.size());
    return rest.substr(0, length);
}

}  // namespace zentro
