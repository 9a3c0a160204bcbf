// Where advice is given and, more of it, where it is not: few false alarms matter more than many
// kinds. The programs of tests/mistakes/ have one of each kind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using test::Program;
using testing::ElementsAre;

struct AdviceCase {
    const char* body;  ///< of the program
    const char* code;  ///< of its only advice; empty: it draws none
};

const std::string kAbove =
    "DEFINE BYTE Light = 0\nDEFINE BYTE Other = 0\nDEFINE BYTE Count = 0\nDEFINE BYTE Step = 0\n"
    "DEFINE WORD Time = 0\nDEFINE WORD Start = 0\nDEFINE FLAG Done = FALSE\n"
    "DEFINE EVENT Pressed()\nPLAY SOUND 60, 10\nEND EVENT\n"
    "DEFINE TABLE Song\n60, 20\n0, 0\nEND TABLE\nDEFINE ROUTINE Look()\nLight = ANALOG(1)\nWAIT "
    "1\nEND ROUTINE\n";

/// What has to do with the kinds of this file; that something is not used is not meant here.
std::vector<std::string> AdviceOn(const std::string& body) {
    Program program(kAbove + "BEGIN PROGRAM\n" + body + "END PROGRAM\n");
    EXPECT_TRUE(program.Compile()) << body << program.output.log;
    std::vector<std::string> advice;
    for (const std::string& message : program.Advice()) {
        const std::string code = message.substr(0, message.find(' '));
        if (code != "E600" && code != "E602" && code != "E603") advice.push_back(code);
    }
    return advice;
}

void Check(const std::vector<AdviceCase>& cases) {
    for (const AdviceCase& one : cases) {
        const std::vector<std::string> advice = AdviceOn(one.body);
        if (*one.code == '\0') {
            EXPECT_THAT(advice, testing::IsEmpty()) << one.body;
        } else {
            EXPECT_THAT(advice, ElementsAre(one.code)) << one.body;
        }
    }
}

TEST(Advice, OnChoicesThatChooseNothing) {
    Check({
        {"Light = ANALOG(1)\nIF Light > 9 THEN\nSET LEDS ON, OFF\nWAIT 5\nELSE\nWAIT 5\n"
         "SET LEDS ON, OFF\nEND IF\n",
         ""},
        {"Light = ANALOG(1)\nIF Light > 9 THEN\nDISPLAY 1\nELSE\nIF Light > 5 THEN\nDISPLAY 1\n"
         "END IF\nEND IF\n",
         ""},
        {"Light = ANALOG(1)\nIF Light > 9 THEN\nIF Light > 9 THEN\nDISPLAY 1\nEND IF\nEND IF\n",
         "E632"},
        {"Light = ANALOG(1)\nIF Light > 9 THEN\nWAIT 5\nLight = ANALOG(1)\nIF Light > 9 THEN\n"
         "DISPLAY 1\nEND IF\nEND IF\n",
         ""},
        // Read above the LOOP, and in it as well: by a routine, or in the LOOP around.
        {"Light = ANALOG(1)\nLOOP\nIF Light > 9 THEN\nDISPLAY 1\nEND IF\nCALL Look()\nEND LOOP\n",
         ""},
        {"LOOP\nLight = ANALOG(1)\nCount = 0\nREPEAT\nIF Light > 9 THEN\nDISPLAY 1\nEND IF\n"
         "WAIT 5\nINCREMENT Count\nUNTIL Count = 5\nEND LOOP\n",
         ""},
        // A switch that says what is to be done is often read only once.
        {"Light = DIGITAL(1)\nLOOP\nIF Light = TRUE THEN\nDISPLAY 1\nEND IF\nWAIT 5\nEND LOOP\n",
         ""},
        {"Light = 5\nLOOP\nIF Light > 9 THEN\nDISPLAY 1\nEND IF\nWAIT 5\nEND LOOP\n", ""},
        {"LOOP\nSELECT Step\nCASE 1\nDISPLAY 1\nEND SELECT\nWAIT 5\nEND LOOP\n", "E625"},
    });
}

TEST(Advice, OnVariablesThatAreMadeEqual) {
    Check({
        {"REPEAT\nLight = ANALOG(1)\nOther = Light\nUNTIL Light <> Other\n", "E633"},
        {"REPEAT\nOther = Light\nLight = ANALOG(1)\nUNTIL Light <> Other\n", ""},
        {"Light = ANALOG(1)\nOther = Light\nIF Other > 5 THEN\nDISPLAY 1\nEND IF\n", ""},
        {"Light = ANALOG(1)\nOther = Light\nLight = Count\nDISPLAY Other\n", ""},
        {"Light = ANALOG(1)\nOther = Light\nWHILE Other = Light\nLight = ANALOG(1)\nEND WHILE\n",
         ""},
    });
}

TEST(Advice, OnTheClockAndOnLoopsThatTakeNoTime) {
    Check({
        {"REPEAT\nTime = CLOCK()\nUNTIL Time = 500\n", "E635"},
        {"REPEAT\nTime = CLOCK()\nUNTIL Time >= 500\n", ""},
        {"Start = CLOCK()\nREPEAT\nWAIT 1\nINCREMENT Count\nUNTIL Count = 5\n", ""},
        {"REPEAT\nINCREMENT Count\nDISPLAY Count\nUNTIL Count = 5\n", "E637"},
        {"REPEAT\nINCREMENT Count\nDISPLAY Count\nCALL Look()\nUNTIL Count = 5\n", ""},
        {"REPEAT\nLight = BUTTON(1)\nIF Light <> 0 THEN\nINCREMENT Count\nDISPLAY Count\nEND IF\n"
         "UNTIL Count = 5\n",
         ""},
        {"REPEAT\nINCREMENT Count\nDISPLAY Light\nUNTIL Count = 5\n", ""},
        {"WAIT 0\n", "E618"},
        {"PLAY TUNE Song\nSTOP SOUND\n", "E638"},
        {"PLAY TUNE Song\nWAIT 100\nSTOP SOUND\n", ""},
        {"REPEAT\nWAIT 1\nUNTIL Done = TRUE\n", "E616"},
        {"WHILE Done = FALSE\nWAIT 1\nEND WHILE\n", ""},
    });
}

TEST(Advice, OnProgramsThatEndTooSoon) {
    const std::string set = "SET EVENT 9, Pressed\nENABLE EVENTS\n";
    const std::string drive = "SET MOTOR 1, FORWARD, 40\nLight = ANALOG(1)\n";
    const std::string stop = "IF Light > 9 THEN\nSTOP MOTORS\nEND IF\n";
    const std::vector<std::pair<std::string, std::string>> cases{
        {set, "E636"},
        {set + "SET LEDS ON, ON\n", "E636"},
        {set + "WAIT 500\n", ""},
        {set + "CALL Look()\n", ""},
        {set + "RAISE EVENT 9\n", ""},
        {set + "LOOP\nWAIT 10\nEND LOOP\n", ""},
        {drive + stop, "E639"},
        {"LOOP\n" + drive + stop + "END LOOP\n", ""},
        {drive + "WAIT 10\n" + stop, ""},
        {"Light = ANALOG(1)\nIF Light > 9 THEN\nSET LEDS ON, ON\nEND IF\n", ""},
    };
    for (const auto& [body, code] : cases)
        Check({{body.c_str(), code.c_str()}});
}

}  // namespace
}  // namespace zentro
