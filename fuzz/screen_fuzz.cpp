// Whatever arrives on the screen, in whatever pieces: it stays within its bounds, shows the same,
// and nothing is lost.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "comms/terminal_screen.h"

namespace {

struct LoggedScreen {
    std::string log;
    zentro::TerminalScreen screen{[this](std::string_view text) { log += text; }};

    /// `pieces` gives the lengths of the reads, in turn; none: one read.
    void Receive(std::string_view stream, std::string_view pieces) {
        for (std::size_t read = 0; !stream.empty(); ++read) {
            std::size_t length = stream.size();
            if (!pieces.empty()) length = static_cast<unsigned char>(pieces[read % pieces.size()]);
            length = std::min(length + 1, stream.size());
            screen.ProcessScreenText(stream.substr(0, length));
            stream.remove_prefix(length);
            CheckBounds();
        }
    }

    void CheckBounds() const {
        if (screen.Text().size() > zentro::kMaxScreenText) std::abort();
        if (screen.ScreenLineCount() > zentro::kScreenLines) std::abort();
        if (screen.PendingEscape().size() > zentro::kMaxHeldEscape) std::abort();
        if (screen.Cursor() > screen.Text().size()) std::abort();
    }
};

/// So little that none leaves at the top: where a read ends decides what a line-up finds.
std::string_view FewLines(std::string_view stream) {
    stream = stream.substr(0, zentro::kMaxScreenText / 2);
    std::int32_t lines = 0;
    const auto isOneTooMany = [&](char c) { return c == '\r' && ++lines >= zentro::kScreenLines; };
    const auto end = std::find_if(stream.begin(), stream.end(), isOneTooMany);
    return stream.substr(0, static_cast<std::size_t>(end - stream.begin()));
}

void CheckSplits(std::string_view stream, std::string_view pieces) {
    LoggedScreen whole;
    LoggedScreen split;
    whole.Receive(stream, {});
    split.Receive(stream, pieces);
    if (split.screen.Text() != whole.screen.Text()) std::abort();
    if (split.log != whole.log) std::abort();
    if (split.screen.ScreenLineCount() != whole.screen.ScreenLineCount()) std::abort();
    if (split.screen.PendingEscape() != whole.screen.PendingEscape()) std::abort();
    if (split.screen.Cursor() != whole.screen.Cursor()) std::abort();
}

/// Without sequences everything but NULs and line feeds is in the log or on the screen, in order.
void CheckNothingLost(std::string_view stream, std::string_view pieces) {
    constexpr int kTimes = 40;
    std::string text;
    std::string expected;
    for (const char c : stream) {
        if (c == '\x1b') continue;
        text += c;
        if (c != '\0' && c != '\n') expected += c;
        if (c == '\r') expected += '\n';
    }
    LoggedScreen shown;
    std::string allExpected;
    for (int time = 0; time < kTimes; ++time) {
        shown.Receive(text, pieces);
        allExpected += expected;
    }
    if (shown.log + shown.screen.Text() != allExpected) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    constexpr std::size_t kPieces = 4;
    const std::string_view pieces = input.substr(0, kPieces);
    const std::string_view stream = input.substr(pieces.size());
    LoggedScreen().Receive(stream, pieces);
    CheckSplits(FewLines(stream), pieces);
    CheckNothingLost(stream, pieces);
    return 0;
}
