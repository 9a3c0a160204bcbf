#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "hints/hint_finders.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using test::Program;
using test::Split;

/// A mistake, the hint behind the first message against its line, and what its fix makes of it.
struct HintRow {
    const char* line;
    const char* hint;   ///< empty: there is none
    const char* fixed;  ///< the line; empty: there is no fix
    const char* after;  ///< the first message of the fixed program; empty: it has none
};

const std::string kAbove =
    "DEFINE BYTE Speed = 0\nDEFINE BYTE Level = 0\nDEFINE WORD Distance = 0\n"
    "DEFINE FLAG Lost = TRUE\nDEFINE CONSTANT Cruise = 60\n"
    "DEFINE BYTE Motor1Speed = 0\nDEFINE BYTE LeftEye = 0\nDEFINE BYTE LeftEar = 0\n"
    "DEFINE ROUTINE Drive(Left BYTE, Right BYTE)\nEND ROUTINE\n"
    "DEFINE ROUTINE Halt()\nEND ROUTINE\n"
    "DEFINE ROUTINE Mean(First BYTE, Second BYTE) RETURNS BYTE\nRETURN First\nEND ROUTINE\n"
    "DEFINE EVENT Bumped()\nEND EVENT\n"
    "DEFINE ROUTINE IsHit() RETURNS FLAG\nRETURN Lost\nEND ROUTINE\n"
    "DEFINE POINTER Reader\nDEFINE POINTER Place\n"
    "DEFINE TABLE Tune\n1, 2, 3\nEND TABLE\n";

/// The number of the line in the program below.
const int kPlace = static_cast<int>(Split(kAbove, '\n').size()) + 2;

std::string ProgramWith(const std::string& line) {
    return kAbove + "BEGIN PROGRAM\n" + line + "\nEND PROGRAM\n";
}

/// The message that is posted first against the line.
const PostedMessage* MessageAt(const Program& program, int line) {
    for (const PostedMessage& message : program.output.messages) {
        if (message.place.sourceLineNo == line) return &message;
    }
    return nullptr;
}

std::string Applied(const std::string& line, const Fix& fix) {
    std::string text = line;
    text.replace(static_cast<std::size_t>(fix.column) - 1, static_cast<std::size_t>(fix.length),
                 fix.text);
    return text;
}

std::string FirstMessageOf(const std::string& text) {
    Program program(text);
    program.Compile();
    const std::vector<std::string> messages = program.Messages();
    return messages.empty() ? "" : messages.front().substr(0, messages.front().find(' '));
}

void Check(const HintRow& row) {
    Program program(ProgramWith(row.line));
    program.Compile();
    const PostedMessage* message = MessageAt(program, kPlace);
    ASSERT_NE(message, nullptr) << row.line;
    const Hint& hint = message->hint;
    EXPECT_EQ(hint.text, row.hint) << row.line << "\n" << message->text;
    if (!hint.text.empty()) {
        EXPECT_THAT(message->text, testing::EndsWith(" " + hint.text)) << row.line;
        EXPECT_THAT(program.output.log, testing::HasSubstr(" " + hint.text + "\n")) << row.line;
    }
    const std::string fixed = hint.fix ? Applied(row.line, *hint.fix) : "";
    EXPECT_EQ(fixed, row.fixed) << row.line;
    if (!hint.fix) return;
    EXPECT_EQ(hint.fix->fileName, "main.txt");
    EXPECT_EQ(hint.fix->line, kPlace) << row.line;
    EXPECT_EQ(FirstMessageOf(ProgramWith(fixed)), row.after) << fixed;
}

void CheckAll(std::initializer_list<HintRow> rows) {
    for (const HintRow& row : rows)
        Check(row);
}

TEST(Hints, GuessTheWordThatWasMeant) {
    CheckAll({
        {"SET MOTER 1, FORWARD, 60", "MOTER is not a word of the language. Did you mean MOTOR?",
         "SET MOTOR 1, FORWARD, 60", ""},
        {"STOP MOTOR", "STOP MOTOR is no statement of the language. Did you mean STOP MOTORS?",
         "STOP MOTORS", ""},
        {"WAITT 100", "WAITT is not a word of the language. Did you mean WAIT?", "WAIT 100", ""},
        {"DISPLY Speed", "DISPLY is not a word of the language. Did you mean DISPLAY?",
         "DISPLAY Speed", ""},
        {"PLAY SUOND 60, 20", "SUOND is not a word of the language. Did you mean SOUND?",
         "PLAY SOUND 60, 20", ""},
        {"ENDIF", "Write END IF instead of ENDIF.", "END IF", "E14"},
        {"SETMOTOR 1, FORWARD, 60",
         "A blank is missing or too much: write SET MOTOR instead of SETMOTOR.",
         "SET MOTOR 1, FORWARD, 60", ""},
        {"DISPLAY Sped", "Did you mean Speed?", "DISPLAY Speed", ""},
        {"Speed = Cruse", "Did you mean Cruise?", "Speed = Cruise", ""},
        {"Spede = 1", "Did you mean Speed?", "Speed = 1", ""},
        {"DISPLAY LeftEx", "", "", ""},
        {"SET MOTOR 1, BACK, 60", "Write BACKWARD instead of BACK.", "SET MOTOR 1, BACKWARD, 60",
         ""},
        {"SET MOTOR 1, \"f\", 60", "Capital letters count here: write \"F\" instead of \"f\".",
         "SET MOTOR 1, \"F\", 60", ""},
        {"CALL Drve(1, 2)", "Did you mean Drive?", "CALL Drive(1, 2)", ""},
        {"Speed = ANALGO(1)", "Did you mean ANALOG?", "Speed = ANALOG(1)", ""},
        {"WAIT 1OO", "1OO has a letter in place of a digit. Did you mean 100?", "WAIT 100", ""},
        {"Speed = Motor2Speed", "", "", ""},
        {"Drive(1, 2)", "Drive is a routine of this program. Call it with CALL Drive(1, 2).",
         "CALL Drive(1, 2)", ""},
        {"Halt", "Halt is a routine of this program. Call it with CALL Halt().", "CALL Halt()", ""},
        {"CALL Halt", "Write CALL Halt() instead of CALL Halt.", "CALL Halt()", ""},
        {"DEFINE BITE Steps = 1", "BITE is not a word of the language. Did you mean BYTE?",
         "DEFINE BYTE Steps = 1", ""},
        {"END LOPP", "LOPP is not a word of the language. Did you mean LOOP?", "END LOOP", "E14"},
        {"UNTILL Speed = 5", "UNTILL is not a word of the language. Did you mean UNTIL?",
         "UNTIL Speed = 5", "E14"},
        {"WHLIE Speed < 5", "WHLIE is not a word of the language. Did you mean WHILE?",
         "WHILE Speed < 5", "E9"},
        {"IFF Speed = 1 THEN", "", "", ""},
        {"foo bar", "", "", ""},
        {"Speed = Other", "", "", ""},
        {"Speed 5", "Write Speed = 5 instead of Speed 5.", "Speed = 5", ""},
        {"IF Speed = 1 THEM", "THEM is not a word of the language. Did you mean THEN?",
         "IF Speed = 1 THEN", "E8"},
    });
}

TEST(Hints, KnowTheWordsOfOtherLanguages) {
    CheckAll({
        {"print \"Hello\"",
         "print comes from other languages. Here: DISPLAY shows a byte on the number display; "
         "there is no screen for texts.",
         "", ""},
        {"print(Speed)",
         "print comes from other languages. Here: DISPLAY shows a byte on the number display; "
         "there is no screen for texts.",
         "", ""},
        {"for i = 1 to 10",
         "Write Count = 1 here, and REPEAT below it; in place of NEXT write INCREMENT Count and "
         "UNTIL Count = 11, on two lines.",
         "", ""},
        {"goto Start",
         "goto comes from other languages. Here: WHILE, REPEAT and LOOP go back; what is needed in "
         "two places becomes a routine, see DEFINE ROUTINE.",
         "", ""},
        {"elif Speed = 1 then",
         "elif comes from other languages. Here: an IF inside ELSE, or SELECT.", "", ""},
        {"function Turn()",
         "function comes from other languages. Here: DEFINE ROUTINE with RETURNS.", "", ""},
        {"def turn():", "def comes from other languages. Here: DEFINE ROUTINE.", "", ""},
        {"end function", "Write END ROUTINE instead of end function.", "END ROUTINE", "E14"},
        {"repeat 10",
         "REPEAT does not count: write Count = 0, and REPEAT alone below it, INCREMENT Count and "
         "UNTIL Count = 10 where its lines end, and DEFINE BYTE Count = 0 above BEGIN PROGRAM.",
         "", ""},
        {"WHILE TRUE", "WHILE TRUE comes from other languages. Here: LOOP repeats for ever.", "",
         ""},
        {"do", "Write REPEAT instead of do.", "REPEAT", "E10"},
        {"switch Speed", "Write SELECT instead of switch.", "SELECT Speed", "E11"},
        {"wait(1)", "Write wait 1 instead of wait(1).", "wait 1", ""},
        {"sleep(1)",
         "sleep comes from other languages. Here: WAIT, in hundredths of a second: one second is "
         "WAIT 100.",
         "", ""},
        {"delay(500)",
         "delay comes from other languages. Here: WAIT, in hundredths of a second: 1000 "
         "milliseconds are WAIT 100.",
         "", ""},
        {"STOP MOTORS // all of them", "Write ; instead of //.", "STOP MOTORS ; all of them", ""},
        {"# stop", "Write ; instead of #.", "; stop", ""},
        {"// stop", "Write ; instead of //.", "; stop", ""},
        {"IF Speed == 1 THEN", "Write = instead of ==.", "IF Speed = 1 THEN", "E8"},
        {"IF Speed != 1 THEN", "Write <> instead of !=.", "IF Speed <> 1 THEN", "E8"},
        {"Speed += 5", "Write Speed = Speed + 5 instead of Speed += 5.", "Speed = Speed + 5", ""},
        {"Speed++", "Write INCREMENT Speed instead of Speed++.", "INCREMENT Speed", ""},
        {"Speed--", "Write DECREMENT Speed instead of Speed--.", "DECREMENT Speed", ""},
        {"Speed = Speed % 2", "Write MOD instead of %.", "Speed = Speed MOD 2", ""},
        {"IF Speed = 1 && Level = 2 THEN",
         "&& comes from other languages. Here: one IF inside the other.", "", ""},
        {"Speed := 5", "Write = instead of :=.", "Speed = 5", ""},
        {"let Speed = 5", "Write Speed = 5 instead of let Speed = 5.", "Speed = 5", ""},
        {"int count = 5",
         "int comes from other languages. Here: DEFINE BYTE up to 255, DEFINE WORD up to 65535.",
         "", ""},
        {"string Name = \"x\"",
         "string comes from other languages. Here: texts can stand only in tables, see DEFINE "
         "TABLE.",
         "", ""},
        {"digitalWrite(1, HIGH)",
         "digitalWrite comes from other languages. Here: SET LEDS for the LEDs, SET PORT for the "
         "action ports.",
         "", ""},
        {"Speed = analogRead(1)", "Write ANALOG instead of analogRead.", "Speed = ANALOG(1)", ""},
        {"SET LEDS high, low", "Write ON instead of high.", "SET LEDS ON, low", "E64"},
        {"SET MOTOR 1, 'F', 60", "Write \"F\" instead of 'F'.", "SET MOTOR 1, \"F\", 60", ""},
        {"Lost = yes", "Write TRUE instead of yes.", "Lost = TRUE", ""},
        {"REPEAT 10 times",
         "REPEAT does not count: write Count = 0, and REPEAT alone below it, INCREMENT Count and "
         "UNTIL Count = 10 where its lines end, and DEFINE BYTE Count = 0 above BEGIN PROGRAM.",
         "", ""},
        {"Speed = abs(Speed)",
         "abs comes from other languages. Here: compare the two values, then take the smaller one "
         "from the larger one.",
         "", ""},
        {"var Speed",
         "var comes from other languages. Here: DEFINE BYTE, DEFINE WORD, DEFINE FLAG or DEFINE "
         "TABLE.",
         "", ""},
        {"end repeat", "end repeat comes from other languages. Here: UNTIL and a comparison.", "",
         ""},
        {"next i", "next comes from other languages. Here: UNTIL or END WHILE.", "", ""},
    });
}

TEST(Hints, KnowTheNumbersThatThereAre) {
    CheckAll({
        {"SET MOTOR 1, FORWARD, -50",
         "There are no numbers below 0. For the other way write SET MOTOR 1, BACKWARD, 50.",
         "SET MOTOR 1, BACKWARD, 50", ""},
        {"Speed = -1",
         "There are no numbers below 0. Values go from 0 up, and motors and servos turn the other "
         "way with BACKWARD.",
         "", ""},
        {"WAIT 0.5", "WAIT counts hundredths of a second: write 50 instead of 0.5.", "WAIT 50", ""},
        {"WAIT 1,5", "WAIT counts hundredths of a second: write 150 instead of 1,5.", "WAIT 150",
         ""},
        {"Speed = 1.5",
         "1.5 is a fraction, but there are only whole numbers. Count in smaller units: WAIT 50 "
         "waits for half a second.",
         "", ""},
        {"Speed = 300", "300 is too large for a byte, which goes up to 255.", "", ""},
        {"Distance = 40000", "40000 is too large: the largest number that can be written is 32767.",
         "", ""},
        {"DEFINE BYTE Steps = 1000",
         "1000 is too large for a byte, which goes up to 255: write DEFINE WORD.",
         "DEFINE WORD Steps = 1000", ""},
        {"DEFINE WORD Steps = 70000",
         "70000 is too large: the largest number that can be written is 32767.", "", ""},
        {"Speed = Speed + 1.5 * 2",
         "1.5 is a fraction, but there are only whole numbers. Count in smaller units: WAIT 50 "
         "waits for half a second.",
         "", ""},
    });
}

TEST(Hints, NameTheFormOfAStatement) {
    CheckAll({
        {"SET MOTOR 1, 60",
         "SET MOTOR needs motor 1 to 4, direction FORWARD or BACKWARD, speed 0 to 100, with commas "
         "between: "
         "the direction is missing.",
         "", ""},
        {"SET MOTOR 1, FORWARD, 60, 5",
         "SET MOTOR needs 3 values with commas between: motor 1 to 4, direction FORWARD or "
         "BACKWARD, "
         "speed 0 to 100. Found: 4.",
         "", ""},
        {"CALL Drive(1)",
         "Line 9 says what it takes: DEFINE ROUTINE Drive(Left BYTE, Right BYTE). Values needed: "
         "2, found: 1.",
         "", ""},
        {"Speed = ANALOG()", "It is written as ANALOG(input 1 to 6). Values needed: 1, found: 0.",
         "", ""},
        {"Speed = Mean(1)",
         "Line 13 says what it takes: DEFINE ROUTINE Mean(First BYTE, Second BYTE) RETURNS BYTE. "
         "Values needed: 2, found: 1.",
         "", ""},
        {"WAIT(100)", "Write WAIT 100 instead of WAIT(100).", "WAIT 100", ""},
        {"IF Speed = 1", "At the end of the line THEN is missing.", "IF Speed = 1 THEN", "E8"},
        {"IF Lost THEN", "Lost is a flag: compare it with TRUE or FALSE, as in Lost = TRUE.",
         "IF Lost = TRUE THEN", "E8"},
        {"WHILE Lost", "Lost is a flag: compare it with TRUE or FALSE, as in Lost = TRUE.",
         "WHILE Lost = TRUE", "E9"},
        {"STOP MOTORS 1", "", "", ""},
        {"SET SERVO 1, FORWARD",
         "SET SERVO needs servo 1 to 3, direction FORWARD or BACKWARD, position 0 to 90, with "
         "commas "
         "between: the position is missing.",
         "", ""},
        {"Speed = random(6)", "It is written as RANDOM(). Values needed: 0, found: 1.", "", ""},
        {"SET PORT 1",
         "SET PORT needs 2 values with commas between: action port 1 to 3, ON or OFF. Found: 1.",
         "", ""},
    });
}

TEST(Hints, SayHowALineGoesOn) {
    CheckAll({
        {"IF Speed = 1 AND Level = 2 THEN",
         "AND cannot join two comparisons: write IF Speed = 1 THEN, inside it IF Level = 2 THEN, "
         "and an END IF for each.",
         "", ""},
        {"IF Speed = 1 OR Level = 2 THEN",
         "OR cannot join two comparisons: write the second IF below the first, with the same lines "
         "in it.",
         "", ""},
        {"WHILE Speed < 5 and Level < 5",
         "and cannot join two comparisons: compare one FLAG here, and set it with IF lines.", "",
         ""},
        {"IF Speed = 1 THEN STOP MOTORS",
         "After THEN comes nothing more: write the rest on the lines below.", "", ""},
        {"WHILE Speed < 5 THEN", "THEN stands only at the end of an IF line: take it out.",
         "WHILE Speed < 5", "E9"},
        {"WHILE IsHit() = ON",
         "After the call comes = TRUE, = FALSE or nothing: put any other result in a variable "
         "first.",
         "", ""},
        {"IF IsHit() = TRUE THEN", "Write IF IsHit() THEN instead of IF IsHit() = TRUE THEN.",
         "IF IsHit() THEN", "E8"},
        {"Speed = ANALOG(1) + 5",
         "After Speed = ANALOG(1) comes nothing more: write the rest on the lines below.", "", ""},
        {"Speed = Level + 1 + 2", "A line has one sum: do the rest of it on the next line.", "",
         ""},
        {"BYTE Steps = 5", "Write DEFINE BYTE instead of BYTE.", "DEFINE BYTE Steps = 5", ""},
        {"DEFINE BYTE Steps 5", "Write Steps = 5 instead of Steps 5.", "DEFINE BYTE Steps = 5", ""},
        {"WHILE", "After WHILE comes one comparison.", "", ""},
        {"IF Speed = THEN", "After IF comes one comparison, then THEN.", "", ""},
        {"LOOP 5",
         "LOOP 5 comes from other languages. Here: REPEAT, the lines, INCREMENT Count and UNTIL "
         "Count = 10.",
         "", ""},
        {"END",
         "END alone ends nothing: write what it ends, such as END IF, END LOOP or END PROGRAM.", "",
         ""},
        {"Speed = Level Level", "", "", ""},
    });
}

TEST(Hints, SayWhichKindIsMeant) {
    CheckAll({
        {"Distance = Speed", "Write TOWORD(Speed) instead of Speed.", "Distance = TOWORD(Speed)",
         ""},
        {"Speed = Distance",
         "Distance can hold more than a BYTE: write TOBYTE(Distance) if it never goes over 255.",
         "", ""},

        {"Lost = ON", "Write TRUE instead of ON.", "Lost = TRUE", ""},
        {"Lost = 2", "", "", ""},
        {"Lost = \"ABC\"", "", "", ""},
        {"DISPLAY \"Hello\"",
         "DISPLAY takes a number, and there is no screen for texts: write a number in place of "
         "\"Hello\".",
         "", ""},
        {"Speed = ANALOG",
         "Behind ANALOG comes input 1 to 6 in parentheses: write ANALOG(1), for example.", "", ""},
        {"Speed = Halt()", "Halt gives no result: call it with CALL Halt().", "", ""},
        {"CALL Mean(1, 2)", "Mean gives a result: write a variable and = in place of CALL.", "",
         ""},
        {"Gr\xC3\xB6\xC3\x9F"
         "e = 5",
         "Gr\xC3\xB6\xC3\x9F"
         "e has letters that a name cannot have: use only A to Z, digits and _.",
         "", ""},
        {"DEFINE BYTE Left Light = 0",
         "A name has no blank in it: write LeftLight instead of Left Light, wherever it stands.",
         "DEFINE BYTE LeftLight = 0", ""},
        {"DEFINE BYTE Left+Light = 0", "After DEFINE BYTE comes name = value.", "", ""},
        {"Place = Reader", "Write Reader + 0 instead of Reader.", "Place = Reader + 0", ""},
    });
}

/// hints.table: a line with a mistake, the hint behind its first message, and what its fix makes of
/// it, with " | " between them.
TEST(Hints, SayWhatTheTableSays) {
    constexpr std::size_t kRows = 340;
    std::size_t rows = 0;
    for (const std::string& row : Split(test::ReadFile(ZENTRO_TESTS_FOLDER "/hints.table"), '\n')) {
        if (row.empty() || row.starts_with(';')) continue;
        const std::string between = " | ";
        const std::size_t first = row.find(between);
        ASSERT_NE(first, std::string::npos) << row;
        const std::size_t second = std::min(row.find(between, first + 1), row.size());
        const std::string line = row.substr(0, first);
        const std::string hint =
            row.substr(first + between.size(), second - first - between.size());
        const std::string fixed = second == row.size() ? "" : row.substr(second + between.size());
        Program program(ProgramWith(line));
        program.Compile();
        const PostedMessage* message = MessageAt(program, kPlace);
        ASSERT_NE(message, nullptr) << line;
        EXPECT_EQ(message->hint.text, hint) << line << "\n" << message->text;
        EXPECT_EQ(message->hint.fix ? Applied(line, *message->hint.fix) : "", fixed) << line;
        ++rows;
    }
    EXPECT_GE(rows, kRows);
}

TEST(Hints, OfAFixCountTheCharactersOfTheFile) {
    // A tab, letters of two and four bytes in the file, and small letters.
    const std::string line = "\tset moter 1, \"\xC3\xA9\xF0\x9F\x98\x80\", waitt";
    Program program(ProgramWith(line));
    program.Compile();
    const PostedMessage* message = MessageAt(program, kPlace);
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(message->hint.fix);
    EXPECT_EQ(message->hint.fix->column, 6);
    EXPECT_EQ(message->hint.fix->length, 5);
    Program behind(ProgramWith("SET MOTOR 1, \"\xC3\xA9\xF0\x9F\x98\x80\", Sped"));
    behind.Compile();
    int fixes = 0;
    for (const PostedMessage& one : behind.output.messages) {
        if (!one.hint.fix) continue;
        EXPECT_EQ(one.hint.fix->column, 20) << one.text;
        ++fixes;
    }
    EXPECT_EQ(fixes, 1);
}

// Two messages against a line with the same cause tell it once.
TEST(Hints, StandOnceALine) {
    Program program(ProgramWith("for i = 1 to 10"));
    program.Compile();
    int hints = 0;
    for (const PostedMessage& message : program.output.messages)
        hints += message.hint.text.empty() ? 0 : 1;
    EXPECT_EQ(hints, 1);
    EXPECT_GT(program.Messages().size(), 1U);
}

TEST(Hints, NameTheBlockThatIsOpen) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"BEGIN PROGRAM\n  LOOP ; for ever\n  IF 1 = 1 THEN\n  END LOOP\nEND PROGRAM\n",
         "E8: What begins in line 3 is still open: IF 1 = 1 THEN."},
        {"BEGIN PROGRAM\nLOOP\nEND PROGRAM\n", "E51: What begins in line 2 is still open: LOOP."},
        {"DEFINE TABLE Tune = 1, 2\nDEFINE BYTE Speed = 0\nBEGIN PROGRAM\nEND PROGRAM\n",
         "E12: What begins in line 1 is still open: DEFINE TABLE Tune = 1, 2."},
        {"DEFINE ROUTINE Halt()\nBEGIN PROGRAM\nEND PROGRAM\n",
         "E12: What begins in line 1 is still open: DEFINE ROUTINE Halt()."},
        {"BEGIN PROGRAM\nWHILE 1 = 1\n",
         "E9: What begins in this line has no end: write END WHILE below the last line of it."},
        {"BEGIN PROGRAM\nIF 1 = 1 THEN\nELSE IF 1 = 2 THEN\nEND IF\nEND PROGRAM\n",
         "E34: Write ELSE here, IF 1 = 2 THEN on the line below, and one END IF more where this "
         "choice ends."},
        {"BEGIN PROGRAM\nFOREVER\nEND FOREVER\nEND PROGRAM\n",
         "E22: Write LOOP instead of FOREVER in line 2, and END LOOP here."},
        {"FUNCTION Blink()\nEND FUNCTION\nBEGIN PROGRAM\nEND PROGRAM\n",
         "E22: Write DEFINE ROUTINE instead of FUNCTION in line 1, and END ROUTINE here."},
        {"BEGIN PROGRAM\nREPEAT UNTIL 1 = 1\nEND REPEAT\nEND PROGRAM\n",
         "E22: Write UNTIL 1 = 1 here, and REPEAT alone in line 2."},
        {"BEGIN PROGRAM\nREPEAT 7\nEND REPEAT\nEND PROGRAM\n",
         "E22: Write INCREMENT Count and UNTIL Count = 7 here, on two lines, only REPEAT in line "
         "2, Count = 0 above it, and DEFINE BYTE Count = 0 above BEGIN PROGRAM."},
        {"DEFINE BYTE Steps = 0\nBEGIN PROGRAM\nFOR Steps = 1 TO 3\nEND FOR\nEND PROGRAM\n",
         "E22: Write INCREMENT Steps and UNTIL Steps = 4 here, on two lines, Steps = 1 in line 3, "
         "and REPEAT below it."},
        {"DEFINE ROUTINE Look()\nDEFINE BYTE Light = 0\nLight = ANALOG(1)\nEND ROUTINE\nBEGIN "
         "PROGRAM\nDISPLAY Light\nEND PROGRAM\n",
         "E64: Light is known only in what begins in line 1: move line 2, DEFINE BYTE Light = 0, "
         "above line 1."},
        {"BEGIN PROGRAM\n{\n}\nEND PROGRAM\n",
         "E15: { comes from other languages. Here: a block needs no braces: it ends with a line of "
         "its own."},
    };
    for (const auto& [text, expected] : rows) {
        Program program(text);
        program.Compile();
        std::string found;
        for (const PostedMessage& message : program.output.messages) {
            if (message.severity == Severity::Error && found.empty())
                found = MessageCodeText(message.code) + ": " + message.hint.text;
        }
        EXPECT_EQ(found, expected) << text;
    }
}

std::vector<std::string> ValidPrograms() {
    std::vector<std::string> paths;
    for (const std::string folder :
         {ZENTRO_EXAMPLES_FOLDER, ZENTRO_RUNS_FOLDER, ZENTRO_TESTS_FOLDER "/programs"}) {
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() == ".txt") paths.push_back(entry.path().string());
        }
    }
    return paths;
}

TEST(Hints, AreNotGivenToValidPrograms) {
    for (const std::string& path : ValidPrograms()) {
        Program program(test::ReadFile(path));
        const fs::path folder = fs::path(path).parent_path();
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.is_regular_file())
                program.WithFile(fs::relative(entry.path(), folder).string(),
                                 test::ReadFile(entry.path().string()));
        }
        program.Compile();
        for (const PostedMessage& message : program.output.messages) {
            // A warning can have one, as what it is about should be put right.
            if (message.severity == Severity::Warning) continue;
            EXPECT_EQ(message.hint.text, "") << path << ":" << message.place.sourceLineNo;
        }
    }
}

/// Of the finders that look for something that the line holds; those that say how a line of its
/// kind goes on are right about every line that a message is about.
void ExpectNoHint(const HintQuestion& question) {
    for (const auto find : {FindForeignSign, FindForeignWord, FindNumberHint, FindNearSpelling,
                            FindValuesHint, FindKindHint})
        EXPECT_FALSE(find(question)) << question.line.text;
}

/// What is right is never taken for a sign or a word of other languages, whatever is said of its
/// line.
TEST(Hints, TakeNothingThatIsRightForForeign) {
    for (const std::string& path : ValidPrograms()) {
        Program program(test::ReadFile(path));
        program.Compile();
        const auto rows = OtherLanguageRows(program.compilation.configuration.messages);
        for (const SourceLine& line : program.compilation.sourceLines) {
            if (line.parsedLine.empty() || line.purpose == Purpose::Unclassified) continue;
            for (const MessageCode code :
                 {MessageCode::UnknownStatement, MessageCode::UnknownOperator,
                  MessageCode::EqualSignExpected, MessageCode::UnexpectedText,
                  MessageCode::BlankInCalledName, MessageCode::KeywordAsValue})
                ExpectNoHint({program.compilation, rows, code, line, ""});
        }
    }
}

}  // namespace
}  // namespace zentro
