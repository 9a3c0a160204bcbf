// What one goes to in a program: its blocks and its messages.
#include <gtest/gtest.h>

#include "desktop/message_walk.h"
#include "desktop/outline.h"
#include "tests/ui/ui_fixture.h"

namespace zentro {
namespace {

using OutlineTest = UiTest;

TEST_F(OutlineTest, KnowsTheBlocksThatStandByThemselves) {
    struct Case {
        const char* text;
        std::vector<OutlineEntry> outline;
    };
    using enum OutlineKind;
    const std::vector<Case> cases{
        {"", {}},
        {"DEFINE BYTE Speed = 1\n; DEFINE EVENT No()\n\"DEFINE EVENT No()\"", {}},
        {"define  table Tune = 1\n2\nEND TABLE\n\nDEFINE ROUTINE Drive(Way BYTE)\nIF Way = 1 THEN\n"
         "END IF\nEND ROUTINE ; x\nDEFINE EVENT Bumped()\nEND EVENT\nBEGIN PROGRAM\nEND PROGRAM",
         {{Table, "Tune", 1, 3},
          {Routine, "Drive", 5, 8},
          {Event, "Bumped", 9, 10},
          {Program, "", 11, 12}}},
        // While it is being typed.
        {"DEFINE ROUTINE\n\nDEFINE EVENT Bumped\nDISPLAY 1\n",
         {{Routine, "", 1, 2}, {Event, "Bumped", 3, 5}}},
        {"END ROUTINE\nBEGIN PROGRAM", {{Program, "", 2, 2}}},
    };
    for (const Case& one : cases)
        EXPECT_EQ(OutlineOf(configuration.commands, one.text), one.outline) << one.text;
    const std::vector<OutlineEntry>& outline = cases[2].outline;
    const std::vector<std::pair<int, int>> entries{{1, 0}, {3, 0},  {4, -1}, {5, 1},
                                                   {8, 1}, {10, 2}, {12, 3}, {13, -1}};
    for (const auto& [line, entry] : entries) {
        const auto found = EntryOfLine(outline, line);
        EXPECT_EQ(found ? static_cast<int>(*found) : -1, entry) << line;
    }
}

TEST(MessageWalkTest, GoesFromLineToLineThroughAllFilesAndRound) {
    ProgramReport report;
    report.files = {"main", "part", "empty"};
    report.messages["part"] = {{4, Severity::Warning, "d"}};
    // The end of the program may be told before its lines.
    report.messages["main"] = {{7, Severity::Error, "c"},
                               {2, Severity::Error, "a"},
                               {2, Severity::Error, "b"},
                               {1, Severity::Error, "in part", true}};
    EXPECT_EQ(MessageStops(report),
              (std::vector<MessageStop>{{"main", 2, "a\nb"}, {"main", 7, "c"}, {"part", 4, "d"}}));
    struct Case {
        const char* file;
        int line;
        const char* next;
        const char* previous;
    };
    for (const Case& one : {Case{"main", 1, "a\nb", "d"},
                            {"main", 2, "c", "d"},
                            {"main", 5, "c", "a\nb"},
                            {"main", 7, "d", "a\nb"},
                            {"part", 4, "a\nb", "c"},
                            {"part", 9, "a\nb", "d"},
                            {"empty", 1, "a\nb", "d"},
                            {"unknown", 1, "a\nb", "d"}}) {
        EXPECT_EQ(NextStop(report, one.file, one.line, Direction::Forward)->text, one.next)
            << one.file << one.line;
        EXPECT_EQ(NextStop(report, one.file, one.line, Direction::Backward)->text, one.previous)
            << one.file << one.line;
    }
    report.messages.clear();
    EXPECT_FALSE(NextStop(report, "main", 1, Direction::Forward));
}

}  // namespace
}  // namespace zentro
