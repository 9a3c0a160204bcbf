// What the editor makes of source text, without a window: colours and spelling, folds, completions,
// the help on statements, the check of unsaved texts.

#include <gmock/gmock.h>

#include "desktop/block_words.h"
#include "desktop/live_check.h"
#include "tests/ui/ui_fixture.h"
#include "ui/editor/completion.h"
#include "ui/editor/source_text_format.h"
#include "ui/editor/statement_help.h"
#include "ui/editor/touched_lines.h"

namespace zentro {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// A letter for each character of the text: K for keywords, C for comments, S for strings.
std::string KindsOf(const std::string& text, const std::vector<TextRun>& runs) {
    std::string kinds(text.size(), '.');
    for (const TextRun& run : runs)
        kinds.replace(run.begin, run.length, run.length, ".KCS"[static_cast<int>(run.kind)]);
    return kinds;
}

TEST(SourceTextFormat, FindsKeywordsCommentsAndStrings) {
    const KeywordList keywords("not first.END.Loop.SET_UP.notLast");
    struct Case {
        std::string text, kinds, respelt;
    };
    const std::vector<Case> cases{
        {"end lOOp ", "KKK.KKKK.", "END Loop "},
        {"end loop", "KKK.....", "END loop"},  // the last word may not be complete
        {"say \"end\" end\n", "....SSSSS.KKK.", "say \"end\" END\n"},
        {"say \"; end\" end\n", "....SSSSSSS.KKK.", "say \"; end\" END\n"},
        {"x;end \" end\nend\n", ".CCCCCCCCCC.KKK.", "x;end \" end\nEND\n"},
        {"x;end\r\nend\r\n", ".CCCC..KKK..", "x;end\r\nEND\r\n"},
        {"\"open\nend ", "SSSSSSSSSS", "\"open\nend "},
        {"\"a\nb\"end\n", "SSSSSKKK.", "\"a\nb\"END\n"},
        {"end1 2end,", "KKK...KKK.", "END1 2END,"},  // a digit ends a word
        {"_end end_ set_up ", "..........KKKKKK.", "_end end_ SET_UP "},
        {"first notLast loo ", "..................", "first notLast loo "},
        {"\xC3\xA4"
         "end ",
         "..KKK.",
         "\xC3\xA4"
         "END "},
        {"", "", ""},
        {";", "C", ";"},
        {"\"", "S", "\""},
    };
    for (const Case& c : cases) {
        const std::vector<TextRun> runs = FormatSourceText(keywords, c.text);
        EXPECT_EQ(KindsOf(c.text, runs), c.kinds) << c.text;
        std::string text = c.text;
        RespellKeywords(text, runs);
        EXPECT_EQ(text, c.respelt);
    }
}

TEST(TouchedLines, MoveWithTheEditsBeforeThem) {
    TouchedLines lines;
    lines.Edit(10, 2);  // 10 to 12
    lines.Edit(4, 3);   // they are 13 to 15 now
    EXPECT_EQ(lines.first, 4);
    EXPECT_EQ(lines.last, 15);
    lines.Edit(5, -20);  // all after it went
    EXPECT_EQ(lines.first, 4);
    EXPECT_EQ(lines.last, 5);
}

class SourceText : public UiTest {
  protected:
    const CommandCatalogue& commands = configuration.commands;
    const std::vector<ProgramName> names{
        {"Distance", "DEFINE WORD Distance = 0", false},
        {"Drive", "DEFINE ROUTINE Drive(Left BYTE, Right BYTE)", true}};

    /// The help with the marked argument in brackets.
    std::string HelpOn(const std::string& line) {
        CallTip tip = StatementHelp(configuration, names, line, line.size());
        if (tip.markEnd != 0) {
            tip.text.insert(tip.markEnd, "]");
            tip.text.insert(tip.markBegin, "[");
        }
        return tip.text.substr(0, tip.text.find('\n'));
    }
};

TEST_F(SourceText, FoldsEveryKindOfBlock) {
    struct Line {
        const char* text;
        int depth;
        bool isHeader;
    };
    const std::vector<Line> lines{
        {"DEFINE BYTE Speed = 0", 0, false},
        {"DEFINE TABLE Tune = 1", 0, true},
        {"  2, 3", 1, false},
        {"END TABLE", 1, false},
        {"define  routine Drive()", 0, true},  // any case, any blanks
        {"\tIF Speed < 2 THEN ; IF", 1, true},
        {"ELSE", 2, false},
        {"SELECT Speed", 2, true},
        {"CASE 1", 3, false},
        {"CASE ELSE", 3, false},
        {"END SELECT", 3, false},
        {"END IF", 2, false},
        {"LoopCount = 1", 1, false},  // a name that begins as a keyword
        {"END ROUTINE", 1, false},
        {"", 0, false},
        {"DEFINE EVENT Bumped()", 0, true},
        {"WHILE Speed < 3", 1, true},  // not closed
        {"BEGIN PROGRAM", 0, true},
        {"REPEAT", 1, true},
        {"LOOP", 2, true},
        {"END LOOP", 3, false},
        {"UNTIL Speed = 1", 2, false},
        {"END PROGRAM", 1, false},
        {"; after it", 0, false},
    };
    int depth = 0;
    for (const Line& line : lines) {
        const LineFold fold = FoldOf(FindBlockWord(commands, line.text), depth);
        EXPECT_EQ(fold.depth, line.depth) << line.text;
        EXPECT_EQ(fold.isHeader, line.isHeader) << line.text;
        depth = fold.nextDepth;
    }
}

TEST_F(SourceText, CompletesWhatCanStandThere) {
    const auto itemsOf = [&](const char* before) {
        return CompletionsOf(commands, names, before).items;
    };
    EXPECT_THAT(itemsOf("    set m"), ElementsAre("SET MOTOR"));
    EXPECT_EQ(CompletionsOf(commands, names, "    set m").typed, 5U);
    EXPECT_THAT(itemsOf("di"), ElementsAre("DISABLE EVENTS", "DISPLAY", "DISPLAY HEX", "Distance"));
    EXPECT_THAT(itemsOf("Speed = di"), ElementsAre("DIGITAL", "Distance"));
    EXPECT_THAT(itemsOf("CALL dr"), ElementsAre("Drive"));
    EXPECT_THAT(itemsOf("IF Speed < 2 th"), ElementsAre("THEN"));
    EXPECT_THAT(itemsOf("Speed = re"), Not(Contains("RECEIVE")));  // the board does not have it
    EXPECT_THAT(itemsOf("DISPLAY \"di"), IsEmpty());
    EXPECT_THAT(itemsOf("; di"), IsEmpty());
}

TEST_F(SourceText, ExplainsTheArgumentAtTheCaret) {
    EXPECT_EQ(HelpOn("SET MOTOR "),
              R"(SET MOTOR [motor 1 to 4], direction FORWARD or BACKWARD, speed 0 to 100)");
    EXPECT_EQ(HelpOn("  set  motor 1, \",\", "),
              R"(SET MOTOR motor 1 to 4, direction FORWARD or BACKWARD, [speed 0 to 100])");
    EXPECT_EQ(HelpOn("Seen = JOYSTICK(2, "), R"(JOYSTICK(joystick 1 or 2, [axis "X" or "Y"]))");
    EXPECT_EQ(HelpOn("WAIT TOWORD("), "TOWORD([byte])");
    EXPECT_EQ(HelpOn("WAIT TOWORD(1) "), "WAIT [hundredths of a second]");
    EXPECT_EQ(HelpOn("CALL Drive(60, "), "Drive(Left BYTE, [Right BYTE])");
    EXPECT_EQ(HelpOn("CALL Nobody("), "CALL routine(values)");
    EXPECT_EQ(HelpOn("SET MOTO"), "");
    EXPECT_EQ(HelpOn("Speed = 1 ; WAIT "), "");
}

TEST_F(SourceText, ChecksOpenTextsBeforeFiles) {
    WriteFile("main.txt", "BEGIN PROGRAM\nEND PROGRAM\n");
    WriteFile("drive.txt", "DEFINE BYTE Speed = 0\nDEFINE BYTE Speed = 0\n");
    Programs programs{*workbench->disk};
    const FileId id = programs.Add(folder_.path(), "main.txt", [] {
        return "INCLUDE \"drive.txt\"\nINCLUDE \"missing.txt\"\nDEFINE CONSTANT Fast = 90\n"
               "BEGIN PROGRAM\n    Speed = Nothing + 1\n    DISPLAY 300\nEND PROGRAM\n";
    });
    const OpenFile& main = *programs.File(id);
    const ProgramReport report = CheckProgram(configuration, main, *settings, programs);
    EXPECT_FALSE(report.succeeded);
    EXPECT_EQ(report.texts.at(main.key), main.revision);
    const QString drive = FileKey(folder_.path(), "drive.txt");
    EXPECT_EQ(report.texts.at(drive), kTextOnDisk);
    ASSERT_TRUE(report.messages.contains(drive));
    EXPECT_EQ(report.messages.at(drive).front().line, 2);
    // The line that includes the file with the mistake is marked, the missing file, and the
    // statement too.
    QList<int> lines;
    for (const LineMessage& message : report.messages.at(main.key)) {
        lines += message.line;
        const bool isIncluded =
            message.text.startsWith("There is a mistake in drive.txt, line 2: ");
        EXPECT_EQ(isIncluded, message.line == 1) << message.text.toStdString();
    }
    std::ranges::sort(lines);
    EXPECT_EQ(lines, (QList{1, 2, 6}));
    ASSERT_EQ(report.names.size(), 2U);
    EXPECT_EQ(report.names[0].declaration, "DEFINE CONSTANT Fast = 90");
    EXPECT_EQ(report.names[1].name, "Speed");
}

}  // namespace
}  // namespace zentro
