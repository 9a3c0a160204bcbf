// The terminal's screen beside libvterm on the same bytes, in turn and in one run.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>
#include <vterm.h>

#include "comms/terminal_screen.h"

namespace {

constexpr std::size_t kBytes = std::size_t{8} << 20;  // of each kind of text
constexpr std::size_t kRead = 12'000;                 // the most that one read of the port takes
constexpr int kRounds = 7;                            // the fastest counts
constexpr int kRows = 25;
constexpr int kColumns = 80;

struct Sample {
    const char* name;
    std::string bytes;
};

std::string ShortLines() {
    std::string text;
    for (unsigned number = 0; text.size() < kBytes; ++number) {
        text += "[" + std::to_string(1000 + number % 9000) + "] Distance " +
                std::to_string(number % 256) + "\r\n";
    }
    return text;
}

std::string LongLines() {
    constexpr std::size_t kLength = 1000;
    std::string text;
    for (char letter = 'a'; text.size() < kBytes; letter = letter == 'z' ? 'a' : char(letter + 1)) {
        text += std::string(kLength, letter) + "\r\n";
    }
    return text;
}

std::string InputReports() {
    std::string text;
    for (unsigned number = 0; text.size() < kBytes; ++number) {
        // Always as long, for the other does not erase what stood there.
        const std::string value = std::to_string(100 + number % 156);
        if (number > 0) text += "\x1b[8A";
        text.append("Digital    0 255 0 0\r\nButtons    0 0 0 0 0 255\r\nAnalogue   ")
            .append(value)
            .append(" 12 0 0 0 0\r\nTimed      0 0 0 0\r\nPulses     ")
            .append(value)
            .append(" 0 0 0\r\nJoysticks  128 128 ")
            .append(value)
            .append(" 128\r\nBattery    255\r\nProgram    1\r\n");
    }
    return text;
}

void InReads(std::string_view bytes, const std::function<void(std::string_view)>& take) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(kRead, bytes.size()))) {
        take(bytes.substr(0, kRead));
    }
}

double Seconds(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The last `count` lines that end and are not blank, each without blanks at its right.
std::vector<std::string> LastLines(std::string_view text, std::size_t count) {
    std::vector<std::string> lines;
    for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos;) {
        const std::string_view line = text.substr(0, end);
        const std::size_t last = line.find_last_not_of(" \r");
        if (last != std::string_view::npos) lines.emplace_back(line.substr(0, last + 1));
        text.remove_prefix(end + 1);
    }
    return {lines.end() - static_cast<std::ptrdiff_t>(std::min(count, lines.size())), lines.end()};
}

double OurSeconds(const Sample& sample, std::string& shown) {
    std::size_t left = 0;
    zentro::TerminalScreen screen([&](std::string_view text) { left += text.size(); });
    const double seconds =
        Seconds([&] { InReads(sample.bytes, [&](auto read) { screen.ProcessScreenText(read); }); });
    shown = screen.Text();
    return seconds;
}

double VtermSeconds(const Sample& sample, std::string& shown) {
    VTerm* terminal = vterm_new(kRows, kColumns);
    VTermScreen* screen = vterm_obtain_screen(terminal);
    vterm_screen_set_damage_merge(screen, VTERM_DAMAGE_SCROLL);
    vterm_screen_reset(screen, 1);
    const double seconds = Seconds([&] {
        InReads(sample.bytes,
                [&](auto read) { vterm_input_write(terminal, read.data(), read.size()); });
    });
    shown.assign(std::size_t{kRows} * kColumns * 2, '\0');
    shown.resize(vterm_screen_get_text(
        screen, shown.data(), shown.size(),
        {.start_row = 0, .end_row = kRows, .start_col = 0, .end_col = kColumns}));
    vterm_free(terminal);
    return seconds;
}

void Compare(const Sample& sample, std::size_t linesToCompare) {
    double ours = 1e9;
    double theirs = 1e9;
    std::string ourText;
    std::string theirText;
    for (int round = 0; round < kRounds; ++round) {
        ours = std::min(ours, OurSeconds(sample, ourText));
        theirs = std::min(theirs, VtermSeconds(sample, theirText));
    }
    if (LastLines(ourText, linesToCompare) != LastLines(theirText, linesToCompare)) {
        std::printf("%s: the two screens differ\n", sample.name);
        std::exit(1);
    }
    const double megabytes = static_cast<double>(sample.bytes.size()) / 1e6;
    std::printf("result\tscreen, %s, libvterm\t%.0f MB/s\t%.1f MB/s\t%.2f\t>= 3\n", sample.name,
                megabytes / ours, megabytes / theirs, theirs / ours);
}

}  // namespace

int main() {
    Compare({"short lines", ShortLines()}, 24);
    Compare({"long lines", LongLines()}, 0);  // the other wraps them
    Compare({"input report", InputReports()}, 8);
}
