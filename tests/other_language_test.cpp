// A language of other words, of other numbers of words and of other signs: programs mean the same
// in it. And languages that are not in order: what is wrong is told, and nothing worse comes of it.
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "config/text.h"
#include "frontend/language_check.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using test::Program;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::unique_ptr<InstructionConfiguration> Parsed(std::string text) {
    auto language = std::make_unique<InstructionConfiguration>();
    EXPECT_EQ(ParseInstructionConfig(std::move(text), *language), "");
    return language;
}

/// German words with the messages as shipped.
const InstructionConfiguration& German() {
    static const auto* const kLanguage = [] {
        const std::string shipped = test::ReadFile(ZENTRO_SHIPPED_CONFIG);
        return Parsed(test::ReadFile("data/german.cfg") + shipped.substr(shipped.find("\"E0\"")))
            .release();
    }();
    return *kLanguage;
}

bool IsInName(char c) {
    return IsLetter(c) || IsDigit(c) || c == '_';
}

/// The entry whose words stand at the place: of several the longest.
const Command* EntryAt(std::string_view line, std::size_t place) {
    const Command* longest = nullptr;
    for (const Command& entry : test::ShippedLanguage().commands.Entries()) {
        if (entry.id == Token::KeywordList || entry.id == Token::RoutineCall) continue;
        if (!StartsWithIgnoreCase(line.substr(place), entry.command)) continue;
        const std::size_t end = place + entry.command.size();
        const bool isWord = IsInName(line[place]);
        if (isWord && end < line.size() && IsInName(line[end])) continue;
        if (longest == nullptr || entry.command.size() > longest->command.size()) longest = &entry;
    }
    return longest;
}

std::string GermanLine(std::string_view line) {
    std::string german;
    bool inQuotes = false;
    for (std::size_t i = 0; i < line.size();) {
        if (line[i] == '"') inQuotes = !inQuotes;
        if (line[i] == ';' && !inQuotes) break;
        const bool continuesName = i > 0 && IsInName(line[i]) && IsInName(line[i - 1]);
        const Command* entry = inQuotes || continuesName ? nullptr : EntryAt(line, i);
        if (entry == nullptr) {
            german += line[i++];
            continue;
        }
        for (const Command& other : German().commands.Entries()) {
            if (EqualsIgnoreCase(other.token, entry->token)) german += " " + other.command + " ";
        }
        i += entry->command.size();
        // What follows this one is no word of the file's.
        if (entry->id == Token::SharedParameters) return german.append(line.substr(i));
    }
    return german;
}

std::string GermanText(const std::string& english) {
    std::string german;
    for (const std::string& line : test::Split(english, '\n'))
        german += GermanLine(line) + "\n";
    return german;
}

std::map<std::string, std::string> EnglishPrograms() {
    std::map<std::string, std::string> texts;
    for (const char* folder : {ZENTRO_EXAMPLES_FOLDER, ZENTRO_RUNS_FOLDER,
                               ZENTRO_TESTS_FOLDER "/programs", ZENTRO_TESTS_FOLDER "/data"}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".txt") continue;
            texts[fs::relative(entry.path(), folder).string()] = test::ReadFile(entry.path());
        }
    }
    return texts;
}

TEST(OtherLanguage, ProgramsHaveTheSameObjectCode) {
    EXPECT_THAT(TellFindings(CheckLanguage(German())), IsEmpty());
    const std::map<std::string, std::string> texts = EnglishPrograms();
    std::map<std::string, std::string> translated;
    for (const auto& [name, text] : texts)
        translated[name] = GermanText(text);
    int compared = 0;
    for (const auto& [name, text] : texts) {
        Program english(text);
        Program german(translated[name], German());
        for (const auto& [other, included] : texts) {
            if (other.find('/') == std::string::npos) continue;
            english.WithFile(other, included);
            german.WithFile(other, translated[other]);
        }
        english.Compile();
        if (english.object.text.empty()) continue;  // a part of a program, or one with mistakes
        german.Compile();
        EXPECT_EQ(german.Messages(), english.Messages()) << name;
        EXPECT_EQ(german.object.text, english.object.text) << name << "\n" << translated[name];
        ++compared;
    }
    EXPECT_GE(compared, 50);
}

struct FindingRow {
    const char* change;  ///< records that stand before those as shipped and take their place
    const char* says;
    bool spoilsPrograms;
};

/// The shipped language, in which records take the place of those with the same token. A record of
/// a token alone takes it away.
std::unique_ptr<InstructionConfiguration> Changed(const std::string& changes) {
    std::string text;
    std::vector<std::string> taken;
    for (const std::string& line : test::Split(changes, '\n')) {
        const std::size_t comma = line.find(',');
        taken.push_back("\"" + line.substr(0, comma) + "\",");
        if (comma != std::string::npos) text += line + "\n";
    }
    for (const std::string& line : test::Split(test::ReadFile(ZENTRO_SHIPPED_CONFIG), '\n')) {
        const auto isOfLine = [&](const std::string& token) { return line.starts_with(token); };
        if (std::ranges::none_of(taken, isOfLine)) text += line + "\n";
    }
    return Parsed(text);
}

TEST(LanguageCheck, TellsWhatTheCompilerCannotRelyOn) {
    EXPECT_THAT(CheckLanguage(test::ShippedLanguage()), IsEmpty());
    for (const FindingRow& row : {
             FindingRow{"D4,TABLE,x",
                        "record D4, \"TABLE\": it must begin with the words of R11, "
                        "\"DEFINE\", or of R12, \"END\"",
                        true},
             {"D7,ROUTINE,x", "record D7, \"ROUTINE\": it must begin", true},
             {"D8,EVENT,x", "record D8, \"EVENT\": it must begin", true},
             {"CO1,SHARED,x", "record CO1, \"SHARED\": it must begin", true},
             {"S4,TABLE END,x", "record S4, \"TABLE END\": it must begin", true},
             {"S1,END IT,x", "record S1, \"END IT\": it begins with the words of R12", false},
             {"C7,INCLUDED,1", "record C7, \"INCLUDED\": it begins with the words of CD1", false},
             {"s20,DEFINED,x", "record s20, \"DEFINED\": it begins with the words of R11", false},
             {"s19,SET,x\ns27,SET SERVO,x",
              "record s27, \"SET SERVO\": these words are never found, because record s19, \"SET\" "
              "stands before it",
              false},
             {"F1,ANALOG,x", "record F8, \"ANALOG\": these words are never found", false},
             {"s34,WAIT;NOW,x", "the compiler reads them as \"WAIT\"", false},
             {"s34,WAIT=NOW,x", "the compiler reads them as \"WAIT = NOW\"", false},
             {"s34,WAIT  NOW,x", "the compiler reads them as \"WAIT NOW\"", false},
             {"s34,HÖR,x", "the compiler reads them as \"H R\"", false},
             {"s34,,x", "record s34, \"\": the words are missing", false},
             {"F7,DIGITAL INPUT,x", "record F7, \"DIGITAL INPUT\": it must be a single word",
              false},
             {"M6,REST OF,x", "record M6, \"REST OF\": it must be a single word", false},
             {"C4,NOT ON,0", "record C4, \"NOT ON\": it must be a single word", false},
             {"F7,\"DIGI,TAL\",x", "parentheses and commas cannot be in it", false},
             {"F7,DIGI(TAL,x", "parentheses and commas cannot be in it", false},
             {"M5,x,x", "record M5, \"x\": this operator must be made of signs", true},
             {"M1,;,x", "record M1, \";\": this operator must be made of signs", true},
             {"M2,(,x", "record M2, \"(\": this operator must be made of signs", true},
             {"M3,÷,x", "record M3, \"÷\": this operator must be made of signs", true},
             {"C7,12,1", "record C7, \"12\": a number cannot be the name", false},
             {"C7,FAR,40000", "record C7, \"FAR\": the value \"40000\" is neither", false},
             {"C1,TRUE,1", "record C1, \"TRUE\": its value must be 255", false},
             {"C2,FALSE,-1", "record C2, \"FALSE\": its value must be 0", false},
             {"E24,,0", "record E24: the message has no text", false},
             {"S4", "the entry S4 is missing", true},
             {"E515", "the entry E515 is missing", true},
         }) {
        const auto findings = CheckLanguage(*Changed(row.change));
        const auto isMeant =
            AllOf(testing::Field(&LanguageFinding::text, HasSubstr(row.says)),
                  testing::Field(&LanguageFinding::spoilsPrograms, row.spoilsPrograms));
        EXPECT_THAT(findings, Contains(isMeant).Times(1)) << row.change << TellFindings(findings);
    }
}

struct DamageRow {
    const char* change;
    const char* program;
    std::vector<std::string> messages;
    std::vector<std::string> boxes;
};

// What works in spite of a finding, and what does not is told: nothing is left out of a program.
TEST(LanguageCheck, NothingIsLostOfAProgramWithoutAMessage) {
    const std::string table = "Compiler error. DataTable Data encountered for unknown Data Table";
    for (const DamageRow& row : std::vector<DamageRow>{
             {"D4,TABLE,x",
              "TABLE Tune = 1\n2\nEND TABLE\nBEGIN PROGRAM\nSTOP MOTORS\nEND PROGRAM\n",
              {"E22 main.txt:1"},
              {table}},
             {"D8,EVENT,x",
              "EVENT Bumped()\nSTOP MOTORS\nEND EVENT\nBEGIN PROGRAM\nEND PROGRAM\n",
              {"E22 main.txt:1"},
              {}},
             {"D7,ROUTINE,x",
              "ROUTINE Halt()\nSTOP MOTORS\nEND ROUTINE\nBEGIN PROGRAM\nEND PROGRAM\n",
              {"E22 main.txt:1"},
              {}},
             {"D1,BYTE IS,x",
              "BYTE IS Speed = 1\nBEGIN PROGRAM\nEND PROGRAM\n",
              {"E22 main.txt:1"},
              {}},
             {"CO1,SHARED,x", "SHARED ON\nBEGIN PROGRAM\nEND PROGRAM\n", {"E22 main.txt:1"}, {}},
             {"R11,,x\nR12,,x", "BEGIN PROGRAM\nSTOP MOTORS\nEND PROGRAM\n", {}, {}},
             {"R12", "BEGIN PROGRAM\nSTOP MOTORS\nEND PROGRAM\n", {}, {}},
             {"C2,NO,-1", "BEGIN PROGRAM\nSTOP SOUND\nEND PROGRAM\n", {}, {}},
             {"M1,;,x\nM4,\"\t\",x",
              "DEFINE BYTE Speed = 1 ; text\nBEGIN PROGRAM\nEND PROGRAM\n",
              {},
              {}},
         }) {
        const auto language = Changed(row.change);
        Program program(row.program, *language);
        program.Compile();
        EXPECT_EQ(program.Messages(), row.messages) << row.change;
        EXPECT_EQ(program.prompts.shown, row.boxes) << row.change;
        Program edited(row.program, *language);
        edited.CheckForEditor();
        EXPECT_EQ(edited.Messages(), row.messages) << row.change;
    }
}

}  // namespace
}  // namespace zentro
