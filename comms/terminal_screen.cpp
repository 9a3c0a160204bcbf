#include "comms/terminal_screen.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "comms/escape_sequence.h"

namespace zentro {

namespace {

constexpr char kCarriageReturn = '\r';
constexpr char kLineFeed = '\n';

constexpr std::array<bool, 256> MakePlainTable() {
    std::array<bool, 256> plain{};
    plain.fill(true);
    for (const char special : {kEscape, kCarriageReturn, kLineFeed}) {
        plain[static_cast<unsigned char>(special)] = false;
    }
    return plain;
}
constexpr std::array<bool, 256> kIsPlain = MakePlainTable();

/// How many characters go to the screen as they are before the next that does not.
std::size_t PlainLength(std::string_view text) {
    const auto isSpecial = [](char c) { return !kIsPlain[static_cast<unsigned char>(c)]; };
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isSpecial) -
                                    text.begin());
}

std::string WithoutNuls(std::string text) {
    std::erase(text, '\0');
    return text;
}

}  // namespace

TerminalScreen::TerminalScreen(LeavingText leaving) : leaving_(std::move(leaving)) {}

void TerminalScreen::ProcessScreenText(std::string_view text) {
    std::string joined;
    if (!pendingEscape_.empty() || text.find('\0') != std::string_view::npos) {
        joined = std::exchange(pendingEscape_, {}) + WithoutNuls(std::string(text));
        text = joined;
    }
    while (!text.empty()) {
        std::size_t taken = PlainLength(text);
        if (taken > 0) {
            text_.append(text.substr(0, taken));
        } else if (text.front() == kEscape) {
            taken = CarryOutEscape(text);
            if (taken == 0) {
                pendingEscape_ = text;
                break;
            }
        } else {
            if (text.front() == kCarriageReturn) AddLineEnd();
            taken = 1;
        }
        cursor_ = text_.size();
        text.remove_prefix(taken);
    }
    Trim();
}

/// `text` begins with ESC. Returns how many characters belong to the sequence, 0 when it has to
/// wait for more.
std::size_t TerminalScreen::CarryOutEscape(std::string_view text) {
    if (const auto sequence = ReadEscapeSequence(text)) {
        switch (sequence->kind) {
            case EscapeKind::ClearScreen: Clear(); break;
            case EscapeKind::OneCharacterBack: TakeCharacterBack(); break;
            case EscapeKind::LinesUp: TakeLinesOffEnd(sequence->lines); break;
            case EscapeKind::EraseToEnd: CutAt(cursor_); break;
        }
        return sequence->length;
    }
    if (text.size() <= kMaxHeldEscape) return 0;
    text_ += kEscape;  // no sequence of ours: its characters are text
    return 1;
}

void TerminalScreen::AddLineEnd() {
    text_ += "\r\n";
    ++screenLineCount_;
}

void TerminalScreen::Clear() {
    if (leaving_ && !text_.empty()) leaving_(text_);
    EmptyText();
}

void TerminalScreen::EmptyText() {
    CutAt(0);
    screenLineCount_ = 1;
}

void TerminalScreen::TakeCharacterBack() {
    if (!text_.empty()) text_.pop_back();
}

void TerminalScreen::TakeLinesOffEnd(std::int32_t lines) {
    std::int32_t lineFeeds = 0;
    std::size_t kept = text_.size();
    while (kept > 0) {
        if (text_[kept - 1] == kLineFeed && ++lineFeeds > lines) break;
        --kept;
    }
    if (kept > 0) {
        CutAt(kept);
    } else {
        EmptyText();
    }
    constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
    screenLineCount_ = std::max(screenLineCount_, kLowest + lineFeeds) - lineFeeds;
}

void TerminalScreen::CutAt(std::size_t position) {
    text_.resize(position);
    cursor_ = position;
}

void TerminalScreen::TakePromptLineOff() {
    const std::size_t lastReturn = text_.rfind(kCarriageReturn);
    if (lastReturn == std::string::npos) {
        EmptyText();
    } else {
        CutAt(lastReturn + 1);
    }
}

void TerminalScreen::SetCursor(std::size_t position) {
    cursor_ = std::min(position, text_.size());
}

/// The length of the first lines that are too many; they are no longer counted.
std::size_t TerminalScreen::LinesToTrim() {
    std::size_t length = 0;
    while (screenLineCount_ > kScreenLines) {
        const std::size_t lineEnd = text_.find(kCarriageReturn, length);
        if (lineEnd == std::string::npos) {
            // Line ends were taken back one character at a time, which does not count them.
            screenLineCount_ = kScreenLines;
            break;
        }
        length = std::min(lineEnd + 2, text_.size());
        --screenLineCount_;
    }
    return length;
}

void TerminalScreen::Trim() {
    std::size_t leaving = LinesToTrim();
    if (text_.size() - leaving > kMaxScreenText) {
        const std::size_t tooLong = text_.size() - kMaxScreenText;
        const auto begin = text_.begin() + static_cast<std::ptrdiff_t>(leaving);
        const auto end = text_.begin() + static_cast<std::ptrdiff_t>(tooLong);
        screenLineCount_ -= static_cast<std::int32_t>(std::count(begin, end, kCarriageReturn));
        leaving = tooLong;
    }
    if (leaving == 0) return;
    if (leaving_) leaving_(std::string_view(text_).substr(0, leaving));
    text_.erase(0, leaving);
    cursor_ -= std::min(cursor_, leaving);
}

}  // namespace zentro
