#include "comms/download.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "comms/link.h"
#include "config/file.h"

namespace zentro {

namespace {

using std::chrono::microseconds;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kEndProgram = "X\rZ\r";  // leaves debug mode, stops what runs
constexpr std::string_view kStartLoader = "L";
constexpr std::string_view kLoaderEcho = "Z\r\nL";  // of the end of kEndProgram and of kStartLoader
constexpr char kEndOfLoad = ']';
constexpr std::string_view kEndLoad = "]\r";
constexpr std::size_t kLongestVerdict = 256;
constexpr std::string_view kClearScreen =
    "\x1b"
    "c";
constexpr std::size_t kLinesPerProgress = 25;
constexpr std::string_view kLoaded = "Loaded ";
constexpr std::string_view kBytes = " bytes";
constexpr std::string_view kNotLoaded = "Not loaded";

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Of "Loaded 230 bytes" the 230.
std::optional<std::size_t> BytesIn(std::string_view verdict) {
    if (!verdict.starts_with(kLoaded) || !verdict.ends_with(kBytes)) return std::nullopt;
    std::size_t bytes = 0;
    const char* const begin = verdict.data() + kLoaded.size();
    const char* const end = verdict.data() + verdict.size() - kBytes.size();
    if (begin >= end) return std::nullopt;
    const auto [stop, error] = std::from_chars(begin, end, bytes);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return bytes;
}

/// What the user is told beside the board's own words, in lines that the terminal's first size
/// holds; empty: nothing.
std::string FurtherLines(const DownloadResult& result) {
    switch (result.outcome) {
        case DownloadOutcome::WrongCount:
            return "The board holds " + std::to_string(result.bytesLoaded.value_or(0)) +
                   " bytes of the program's " + std::to_string(result.bytesInFile.value_or(0)) +
                   ".\r\nPlease download it again.";
        case DownloadOutcome::Refused:
            return "The board does not hold the program.\r\n"
                   "Please download it again, or compile it once more.";
        case DownloadOutcome::NoVerdict:
            return "The board has not said whether it holds the program.";
        case DownloadOutcome::Cancelled:
            if (!result.replacedProgram) break;
            return "The board does not hold the whole program.\r\n"
                   "Please download it again before you run it.";
        case DownloadOutcome::LineLost:
            return "The connection was lost.\r\n"
                   "The board does not hold the program.\r\n"
                   "Please download it again.";
        case DownloadOutcome::None:
        case DownloadOutcome::Whole:
        case DownloadOutcome::FileUnreadable: break;
    }
    return {};
}

}  // namespace

microseconds TimeOnTheWire(std::size_t characters) {
    constexpr std::int64_t kBitsPerCharacter = 10;
    constexpr std::int64_t kMicroseconds = 1'000'000;
    const auto bits = static_cast<std::int64_t>(characters) * kBitsPerCharacter;
    return microseconds((bits * kMicroseconds + kBaud - 1) / kBaud);
}

bool IsVerdict(std::string_view line) {
    return line.starts_with(kNotLoaded) || BytesIn(line);
}

bool HoldsNothing(std::string_view verdict) {
    return BytesIn(verdict).value_or(0) == 0;
}

std::optional<std::size_t> CountBytes(std::string_view objectCode) {
    std::size_t bytes = 0;
    bool inNumber = false;
    for (const char character : objectCode) {
        const bool isDigit = IsDigit(character);
        if (!isDigit && std::string_view(", \t\r\n").find(character) == std::string_view::npos)
            return std::nullopt;
        if (isDigit && !inNumber) ++bytes;
        inNumber = isDigit;
    }
    return bytes;
}

Download::Download(const std::string& path, std::optional<std::string> text,
                   DownloadTerminal terminal)
    : terminal_(std::move(terminal)), given_(std::move(text)) {
    result_.path = path;
}

microseconds Download::Step() {
    switch (state_) {
        case State::Beginning: return Begin();
        case State::StartingLoader: return StartLoader();
        case State::SendingLines: return SendLine();
        case State::AwaitingVerdict:
        case State::Over: break;
    }
    return {};
}

void Download::Hear(std::string_view received) {
    if (state_ == State::Beginning || IsOver()) return;
    heard_ += received;
    if (!loaderStarted_) LookForEcho(received);
    if (state_ == State::AwaitingVerdict || loadEnded_) {
        LookForVerdict();
    } else {
        heard_.clear();
    }
}

/// What the board said before it started the loader is no answer to this load.
void Download::LookForEcho(std::string_view received) {
    echoBegin_ += received;
    const std::size_t echo = echoBegin_.rfind(kLoaderEcho);  // the newest one
    loaderStarted_ = echo != std::string::npos;
    if (loaderStarted_) {
        heard_ = echoBegin_.substr(echo + kLoaderEcho.size());
        result_.verdict.clear();
    } else if (echoBegin_.size() >= kLoaderEcho.size()) {
        echoBegin_.erase(0, echoBegin_.size() - kLoaderEcho.size() + 1);
    }
}

void Download::LookForVerdict() {
    for (std::size_t end = heard_.find(kLineEnd); end != std::string::npos;
         end = heard_.find(kLineEnd)) {
        const std::string line = heard_.substr(0, end);
        heard_.erase(0, end + kLineEnd.size());
        if (!IsVerdict(line) || hasVerdict_) continue;
        result_.verdict = line;
        hasVerdict_ = loaderStarted_;
    }
    if (hasVerdict_ && state_ == State::AwaitingVerdict) return Judge();
    if (heard_.size() > kLongestVerdict) heard_.erase(0, heard_.size() - kLongestVerdict);
}

void Download::Judge() {
    result_.bytesLoaded = BytesIn(result_.verdict);
    if (!result_.bytesLoaded) return End(DownloadOutcome::Refused);
    const bool isWhole = !result_.bytesInFile || *result_.bytesInFile == *result_.bytesLoaded;
    End(isWhole ? DownloadOutcome::Whole : DownloadOutcome::WrongCount);
}

void Download::LoseLine() {
    lineLost_ = true;
    if (state_ == State::AwaitingVerdict) End(DownloadOutcome::LineLost);
}

void Download::Cancel() {
    if (IsOver()) return;
    if (state_ == State::AwaitingVerdict) {
        if (!result_.verdict.empty()) return Judge();
        return End(DownloadOutcome::NoVerdict);
    }
    Write(kCancelCharacter + std::string(kEndLoad));
    terminal_.writeToScreen(std::string(kLineEnd) + "Download Cancelled. Sent " +
                            std::to_string(linesSent_) + " Lines. ");
    End(DownloadOutcome::Cancelled);
}

/// Whatever else happened, a line that was lost has kept the program from the board.
void Download::End(DownloadOutcome outcome) {
    state_ = State::Over;
    result_.outcome = lineLost_ ? DownloadOutcome::LineLost : outcome;
    const std::string further = FurtherLines(result_);
    if (!further.empty()) terminal_.writeToScreen(std::string(kLineEnd) + further + "\r\n");
}

double Download::Fraction() const {
    if (text_.empty()) return IsSending() ? 0 : 1;
    return static_cast<double>(position_) / static_cast<double>(text_.size());
}

bool Download::Write(std::string_view text) {
    const bool isWritten = terminal_.write(text);
    lineLost_ = lineLost_ || !isWritten;
    return isWritten;
}

bool Download::ReadText() {
    if (given_) {
        text_ = std::move(*given_);
        return true;
    }
    FileContent file = ReadWholeFile(result_.path);
    if (file.status != FileContent::Status::Read) {
        terminal_.showMessage("Error Dowloading file. Error text is: " + file.problem);
        return false;
    }
    text_ = std::move(file.bytes);
    return true;
}

microseconds Download::Begin() {
    if (!ReadText()) {
        End(DownloadOutcome::FileUnreadable);
        return {};
    }
    result_.bytesInFile = CountBytes(text_);
    // What is left to be read of an earlier load has its own echo and verdict.
    if (terminal_.hearArrived) terminal_.hearArrived();
    state_ = State::StartingLoader;
    if (!Write(kEndProgram)) End(DownloadOutcome::LineLost);
    return kLoaderDelay;
}

microseconds Download::StartLoader() {
    terminal_.writeToScreen(std::string(kClearScreen) + "Downloading Program to Kinetron......");
    state_ = State::SendingLines;
    result_.replacedProgram = true;
    if (!Write(kStartLoader)) End(DownloadOutcome::LineLost);
    return TimeOnTheWire(kStartLoader.size()) + kLineGap;
}

microseconds Download::SendLine() {
    if (position_ == text_.size()) {
        Complete();
        return {};
    }
    const std::string line = std::string(TakeLine()).append(kLineEnd);
    loadEnded_ = loadEnded_ || line.find(kEndOfLoad) != std::string::npos;
    const bool isWritten = Write(line);  // the next one is sent all the same
    ++linesSent_;
    if (linesSent_ % kLinesPerProgress == 0) {
        terminal_.writeToScreen(std::string(kLineEnd) + "Working.... " +
                                std::to_string(linesSent_) + "  Lines Sent  ");
    }
    // Nobody need wait for a board that nothing reaches.
    return isWritten ? TimeOnTheWire(line.size()) + kLineGap : microseconds{0};
}

void Download::Complete() {
    terminal_.writeToScreen(std::string(kLineEnd) + "Download Complete. Sent " +
                            std::to_string(linesSent_) + " Lines in total. ");
    if (terminal_.hearArrived) terminal_.hearArrived();
    Write(kEndLoad);
    state_ = State::AwaitingVerdict;
    if (lineLost_) return End(DownloadOutcome::LineLost);
    LookForVerdict();  // of a file that ends the load itself
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
