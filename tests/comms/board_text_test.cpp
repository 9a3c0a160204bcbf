#include "comms/board_text.h"

#include <gtest/gtest.h>

#include "comms/escape_sequence.h"

namespace zentro {
namespace {

TEST(BoardTextTest, PassesTextAndTheBoardsOwnSequences) {
    const struct {
        const char* name;
        std::string sent;
        std::string shown;
    } rows[] = {
        {"text", "Loaded 6 bytes\r\n\ta~", "Loaded 6 bytes\r\n\ta~"},
        {"clear, back, up, erase",
         "\x1b"
         "ca\x1b[Db\x1b[8Ac\x1b[0J",
         "\x1b"
         "ca\x1b[Db\x1b[8Ac\x1b[0J"},
        {"in either case",
         "\x1b"
         "C\x1b[d\x1b[0a\x1b[0j",
         "\x1b"
         "c\x1b[D\x1b[0A\x1b[0J"},
        {"title", "a\x1b]0;title\x07z", "a]0;titlez"},
        {"device control", "\x1bP+q544e\x1b\\", "P+q544e\\"},
        {"colour, cursor, report", "\x1b[31m\x1b[2J\x1b[6n\x1b[12A\x1b[?25l",
         "[31m[2J[6n[12A[?25l"},
        {"ESC twice", "\x1b\x1b[D", "\x1b[D"},
        {"broken off", "\x1b[8\x1b[D", "[8\x1b[D"},
        {"control characters", std::string("\0a\x05\x07\x08\x0e\x7f\x18z", 9), "az"},
        {"beyond ASCII", "\xe9\x80\x9b", "\xc3\xa9\xe2\x82\xac\xe2\x80\xba"},
        {"no characters", "\x81\x8d\x8f\x90\x9d", ""},
        {"unfinished", "a\x1b[", "a"},
    };
    for (const auto& row : rows) {
        BoardText whole;
        EXPECT_EQ(whole.Take(row.sent), row.shown) << row.name;
        BoardText bytes;
        std::string shown;
        for (const char byte : row.sent)
            shown += bytes.Take({&byte, 1});
        EXPECT_EQ(shown, row.shown) << row.name << ", byte by byte";
    }
}

}  // namespace
}  // namespace zentro
