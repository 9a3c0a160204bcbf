#include "ui/terminal/screen_text.h"

#include <gtest/gtest.h>

namespace zentro {
namespace {

TEST(ScreenText, ShowsALineEndOnceAndFindsItsWayBack) {
    struct Row {
        const char* screen;
        QString text;
    };
    const Row rows[] = {
        {"", ""},
        {"one\r\ntwo", "one\ntwo"},
        {"one\r\n\r\ntwo\r\n", "one\n\ntwo\n"},
        {"one\r", "one\n"},            // Enter was pressed
        {"one\r\r\ntwo", "one\ntwo"},  // and answered
        {"\ntwo", "two"},              // the rest of a line that left at the top
        {"\x80 \xE9", QString::fromUtf8("€ é")},
    };
    for (const Row& row : rows) {
        const ShownScreen shown = ShowScreen(row.screen);
        EXPECT_EQ(shown.text, row.text);
        ASSERT_EQ(shown.positions.size(), static_cast<std::size_t>(shown.text.size()) + 1);
    }
    const ShownScreen shown = ShowScreen("one\r\r\ntwo\r\n");
    EXPECT_EQ(ScreenPosition(shown, 4), 6U);  // the t
    EXPECT_EQ(ShownPosition(shown, 6), 4);
    EXPECT_EQ(ScreenPosition(shown, 8), 11U);  // the end
    EXPECT_EQ(ShownPosition(shown, 11), 8);
}

TEST(ScreenText, EditsAsLittleAsItCan) {
    struct Row {
        const char* before;
        const char* after;
        ScreenEdit edit;
    };
    const Row rows[] = {
        {"", "a", {0, 0}},
        {"one\ntw", "one\ntwo\n", {0, 6}},                   // more arrives
        {"one\ntwo\n", "one\ntwo", {0, 7}},                  // a character goes back
        {"one\ntwo\nthree\n", "two\nthree\nfour", {4, 10}},  // a line leaves at the top
        {"one\ntwo\n", "one\nsix\n", {0, 4}},                // a report is drawn again
        {"abc", "xyz", {0, 0}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FindEdit(row.before, row.after), row.edit) << row.before << "->" << row.after;
}

TEST(ScreenText, FindsTheAddressUnderAClick) {
    const QString text = "at [00a0] x [12G4] [0001";
    for (int position = 3; position <= 9; ++position)
        EXPECT_EQ(FindAddress(text, position), 3) << position;
    for (const int position : {0, 2, 10, 14, 20, 24})
        EXPECT_EQ(FindAddress(text, position), std::nullopt) << position;
}

}  // namespace
}  // namespace zentro
