#include "comms/terminal_screen.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace zentro {
namespace {

using namespace std::string_literals;

/// A screen and all that has left it.
struct LoggedScreen {
    std::string log;
    TerminalScreen screen{[this](std::string_view text) { log += text; }};

    LoggedScreen() = default;
    explicit LoggedScreen(const std::vector<std::string>& reads) {
        for (const std::string& read : reads)
            screen.ProcessScreenText(read);
    }
};

std::string Lines(int first, int last) {
    std::string text;
    for (int number = first; number <= last; ++number)
        text += std::to_string(number) + "\r\n";
    return text;
}

std::string Repeated(const std::string& piece, int times) {
    std::string text;
    for (int time = 0; time < times; ++time)
        text += piece;
    return text;
}

struct ScreenCase {
    std::string name;
    std::vector<std::string> reads;
    std::string text;
    int lineCount;
    std::string log;
    std::string pending;
};
void PrintTo(const ScreenCase& row, std::ostream* out) {
    *out << row.name;
}

// A "|" in `reads` stands for ESC.
const std::vector<ScreenCase> kScreenCases{
    {"text", {"ab"}, "ab", 0, "", ""},
    {"line end", {"|cab\r\ncd"}, "ab\r\ncd", 2, "", ""},
    {"a line feed alone is nothing", {"a\nb\n\n"}, "ab", 0, "", ""},
    {"a return alone is a line end", {"a\r\rb"}, "a\r\n\r\nb", 2, "", ""},
    {"other characters are text", {"\a\b\t\x7f\xff\x9b"}, "\a\b\t\x7f\xff\x9b", 0, "", ""},
    {"no NULs", {"a\0\0b|\0[\0"s, "\0D\0"s}, "a", 0, "", ""},
    {"clear", {"ab\r\ncd|cx"}, "x", 1, "ab\r\ncd", ""},
    {"clear, capital", {"ab|C"}, "", 1, "ab", ""},
    {"clear what is empty", {"|c|c"}, "", 1, "", ""},
    {"back", {"abc|[D|[d"}, "a", 0, "", ""},
    {"back on an empty screen", {"|[D|[Da"}, "a", 0, "", ""},
    {"back over a line end takes the line feed", {"|ca\r\n|[D"}, "a\r", 2, "", ""},
    {"up one whole line", {"|c1\r\n2\r\n3\r\n|[1A"}, "1\r\n2\r\n", 2, "", ""},
    {"up two of three", {"|c1\r\n2\r\n3\r\n|[2A"}, "1\r\n", 1, "", ""},
    {"up, small letter", {"|c1\r\n2\r\n3\r\n|[2a"}, "1\r\n", 1, "", ""},
    {"up takes the unfinished line too", {"|c1\r\n2\r\n3|[1A"}, "1\r\n", 1, "", ""},
    {"up none", {"|c1\r\n2\r\n|[0A"}, "1\r\n2\r\n", 2, "", ""},
    {"up none, unfinished line", {"|c1\r\n2|[0A"}, "1\r\n", 1, "", ""},
    {"up as many as there are", {"|c1\r\n2\r\n|[2A"}, "", -1, "", ""},
    {"up more than there are", {"|c1\r\n2\r\n|[9Ax"}, "x", -1, "", ""},
    {"up on an empty screen", {"|[5A"}, "", 1, "", ""},
    {"report over report", {"|c", Lines(1, 8), "|[8A" + Lines(11, 18)}, Lines(11, 18), 1, "", ""},
    {"report below a line",
     {"|cR\r\n", Lines(1, 8), "|[8A" + Lines(11, 18)},
     "R\r\n" + Lines(11, 18),
     9,
     "",
     ""},
    {"cut at the end is nothing", {"ab|[0J|[0jc"}, "abc", 0, "", ""},
    {"held ESC", {"ab|"}, "ab", 0, "", "|"},
    {"held sequence, carried out later", {"ab|", "[", "0", "Jc"}, "abc", 0, "", ""},
    {"held line up", {"|c1\r\n2\r\n|[", "1", "A"}, "1\r\n", 1, "", ""},
    {"unknown, 16 held", {"a|[2J567890123456"}, "a", 0, "", "|[2J567890123456"},
    {"unknown, 17 are text", {"a|[2J567890123456", "7"}, "a|[2J5678901234567", 0, "", ""},
    {"unknown, then one of ours",
     {"a|[2Jbcdefghijklmn", "op|cq\r"},
     "q\r\n",
     2,
     "a|[2Jbcdefghijklmnop",
     ""},
    {"two digits are unknown", {"|[10A5678901234567"}, "|[10A5678901234567", 0, "", ""},
    {"a sign is no digit", {"|[+A45678901234567"}, "|[+A45678901234567", 0, "", ""},
    {"25 lines stay", {"|c" + Lines(1, 24)}, Lines(1, 24), 25, "", ""},
    {"one too many", {"|c" + Lines(1, 24), "\r\n"}, Lines(2, 24) + "\r\n", 25, "1\r\n", ""},
    {"30 lines", {"|c" + Lines(1, 30)}, Lines(7, 30), 25, Lines(1, 6), ""},
    {"30 lines, not cleared before", {Lines(1, 30)}, Lines(6, 30), 25, Lines(1, 5), ""},
    {"line ends that were taken back",
     {std::string(30, '\r') + Repeated("|[D", 60) + "b"},
     "b",
     25,
     "",
     ""},
};

std::string WithEscapes(std::string text) {
    std::replace(text.begin(), text.end(), '|', '\x1b');
    return text;
}

class ScreenTest : public ::testing::TestWithParam<ScreenCase> {};

TEST_P(ScreenTest, Shows) {
    LoggedScreen shown;
    for (const std::string& read : GetParam().reads)
        shown.screen.ProcessScreenText(WithEscapes(read));
    EXPECT_EQ(shown.screen.Text(), WithEscapes(GetParam().text));
    EXPECT_EQ(shown.screen.ScreenLineCount(), GetParam().lineCount);
    EXPECT_EQ(shown.log, WithEscapes(GetParam().log));
    EXPECT_EQ(shown.screen.PendingEscape(), WithEscapes(GetParam().pending));
    EXPECT_EQ(shown.screen.Cursor(), shown.screen.Text().size());
}
INSTANTIATE_TEST_SUITE_P(Rules, ScreenTest, ::testing::ValuesIn(kScreenCases));

TEST(TerminalScreenTest, CutsAtTheCursorOfTheUser) {
    LoggedScreen shown({"abcdef"});
    shown.screen.SetCursor(99);
    EXPECT_EQ(shown.screen.Cursor(), 6U);
    shown.screen.SetCursor(2);
    shown.screen.ProcessScreenText("\x1b[0Jx");
    EXPECT_EQ(shown.screen.Text(), "abx");
    shown.screen.SetCursor(1);
    shown.screen.ProcessScreenText("\n\x1b[0J");
    EXPECT_EQ(shown.screen.Text(), "abx") << "a line feed moves the cursor to the end";
}

TEST(TerminalScreenTest, EnterTakesThePromptLineOff) {
    LoggedScreen shown(
        {"\x1b"
         "c1\r\n2\r\nprompt>"});
    shown.screen.TakePromptLineOff();
    EXPECT_EQ(shown.screen.Text(), "1\r\n2\r");
    EXPECT_EQ(shown.screen.Cursor(), 5U);
    shown.screen.ProcessScreenText("\r\nanswer");
    EXPECT_EQ(shown.screen.Text(), "1\r\n2\r\r\nanswer");
    TerminalScreen screen;
    screen.ProcessScreenText("prompt>");
    screen.TakePromptLineOff();
    EXPECT_EQ(screen.Text(), "");
    EXPECT_EQ(screen.ScreenLineCount(), 1);
    TerminalScreen alone;  // nobody takes the lines that leave it
    alone.ProcessScreenText(Lines(1, 2000));
    EXPECT_EQ(alone.Text(), LoggedScreen({Lines(1, 2000)}).screen.Text());
}

TEST(TerminalScreenTest, IsTheSameHoweverTheReadsFall) {
    const std::string stream = WithEscapes(
        "old|cone\r\ntwo\r\nthree|[D\r\n|[1A|[0Jx\0y|[\0d|C|[2J unknown to us|[d\r\n|[8a"s +
        Lines(1, 8) + "|[8A" + Lines(11, 18) + "\xff|[0jend\r\n" + Lines(1, 30) + "|[1");
    const LoggedScreen whole({stream});
    for (std::size_t first = 0; first <= stream.size(); ++first) {
        const std::size_t second = std::min(first + 1 + first % 7, stream.size());
        const LoggedScreen split(
            {stream.substr(0, first), stream.substr(first, second - first), stream.substr(second)});
        ASSERT_EQ(split.screen.Text(), whole.screen.Text()) << "split at " << first;
        ASSERT_EQ(split.screen.ScreenLineCount(), whole.screen.ScreenLineCount());
        ASSERT_EQ(split.screen.PendingEscape(), whole.screen.PendingEscape());
        ASSERT_EQ(split.log, whole.log) << "split at " << first;
    }
}

TEST(TerminalScreenTest, EveryLineIsOnceInTheLogOrOnTheScreen) {
    std::mt19937 random(1);
    for (int stream = 0; stream < 200; ++stream) {
        LoggedScreen shown;
        std::string all;
        for (int number = 0; number < 200; ++number) {
            std::string piece = std::to_string(number) + std::string(random() % 60, 'x') + "\r\n";
            all += piece;
            if (random() % 50 == 0)
                piece +=
                    "\x1b"
                    "c";
            for (std::size_t at = 0; at < piece.size();) {
                const std::size_t length = 1 + random() % 90;
                shown.screen.ProcessScreenText(std::string_view(piece).substr(at, length));
                at += length;
            }
            ASSERT_LE(shown.screen.ScreenLineCount(), kScreenLines);
        }
        ASSERT_EQ(shown.log + shown.screen.Text(), all);
    }
}

TEST(TerminalScreenTest, ALineWithoutEndLeavesAtTheTop) {
    LoggedScreen shown;
    std::string all;
    for (int read = 0; read < 100; ++read) {
        const std::string text(12'000, static_cast<char>('a' + read % 26));
        shown.screen.ProcessScreenText(text);
        all += text;
        ASSERT_LE(shown.screen.Text().size(), kMaxScreenText);
    }
    EXPECT_EQ(shown.log + shown.screen.Text(), all);
    EXPECT_EQ(shown.screen.Text().size(), kMaxScreenText);
}

TEST(TerminalScreenTest, LongLinesThatLeftAreNotCounted) {
    LoggedScreen shown;
    for (int line = 0; line < 20; ++line) {
        shown.screen.ProcessScreenText(std::string(10'000, 'x') + "\r\n");
    }
    shown.screen.ProcessScreenText(Lines(1, 15));
    const std::string& text = shown.screen.Text();
    EXPECT_EQ(text.substr(text.find('1')), Lines(1, 15));
    EXPECT_EQ(shown.screen.ScreenLineCount(), std::count(text.begin(), text.end(), '\r'));
}

}  // namespace
}  // namespace zentro
