#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "config/configuration.h"
#include "config/encoding.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

/// What the loader made of a file's content: "token=words=description" for each command, in order.
struct Loaded {
    explicit Loaded(std::string bytes)
        : problem(ParseInstructionConfig(std::move(bytes), configuration)) {
        for (const Command& command : configuration.commands.Entries()) {
            if (!text.empty()) text += '|';
            text += command.token + "=" + command.command + "=" + command.description;
        }
    }
    InstructionConfiguration configuration;
    std::string problem;
    std::string text;
};

struct FileRow {
    const char* bytes;
    const char* commands;
};

TEST(ConfigurationFile, RecordsAreThreeFieldsHoweverTheyAreLaidOut) {
    for (const FileRow& row : {
             FileRow{"\"S4\",\"END TABLE\",\"ends, a table\"\n", "S4=END TABLE=ends, a table"},
             {"S4,END TABLE,ends\nS5,END IF,x\n", "S4=END TABLE=ends|S5=END IF=x"},
             {"S4,END TABLE,ends\r\nS5,END IF,x\r\n", "S4=END TABLE=ends|S5=END IF=x"},
             {"S4,END TABLE,ends\rS5,END IF,x", "S4=END TABLE=ends|S5=END IF=x"},
             {"  S4 ,  \" END TABLE \" , ends  \n", "S4=END TABLE=ends"},
             {"S4\nEND TABLE\nends\nS5,END IF\nx", "S4=END TABLE=ends|S5=END IF=x"},
             {"S4,END TABLE,ends,S5,END IF,x\n", "S4=END TABLE=ends|S5=END IF=x"},
             {"S4,,\"\"\n", "S4=="},
             {"S4,END TABLE,ends\nS5,END IF", "S4=END TABLE=ends"},
             {"S4,END TABLE,ends\nS5", "S4=END TABLE=ends"},
             {"S4,END TABLE,ends\n\"S5", "S4=END TABLE=ends"},
             {"S4,END TABLE,ends\nS5,\"END IF\",\"he", "S4=END TABLE=ends"},
             {"S4,END TABLE,ends\nS5,\"END\r\n", "S4=END TABLE=ends"},
             {"S4,END TABLE,\"\xC3\xA9\"\n", "S4=END TABLE=\xE9"},
             {"S4,END TABLE,\xE9\n", "S4=END TABLE=\xE9"},
             {"\xEF\xBB\xBFS4,END TABLE,ends\n", "S4=END TABLE=ends"},
             {"", ""},
         }) {
        const Loaded loaded(row.bytes);
        EXPECT_EQ(loaded.problem, "") << row.bytes;
        EXPECT_EQ(loaded.text, row.commands) << row.bytes;
    }
}

TEST(ConfigurationFile, FaultsEndTheLoadAndNameTheirLine) {
    constexpr const char* kCorrupt = "Could Not open ZentroCode.Cfg - File corrupt or missing - ";
    for (const FileRow& row : {
             FileRow{"S4,A,b\nS5,B,c\ns4,C,d\nS6,D,e\n", kCorrupt},
             {"S4,A,b\nS5,B,c\n\"S6,C,d\nS7,D,e\n", kCorrupt},
             {"S4,A,b\nS5,B,c\nE1,text,abc\nS6,D,e\n",
              "Error reading Configuration file for E1: text. File is corrupted"},
         }) {
        const Loaded loaded(row.bytes);
        EXPECT_THAT(loaded.problem, AllOf(StartsWith(row.commands), HasSubstr("line 3")));
        EXPECT_EQ(loaded.text, "S4=A=b|S5=B=c");
    }
    const Loaded twice("E1,a,0\ne1,b,0\n");
    EXPECT_THAT(twice.problem, AllOf(StartsWith(kCorrupt), HasSubstr("line 2")));
    EXPECT_EQ(twice.configuration.messages.Find("E1")->errorMsg, "a");
    InstructionConfiguration configuration;
    EXPECT_THAT(LoadInstructionConfig("/nowhere/at/all.cfg", configuration), StartsWith(kCorrupt));
}

TEST(ConfigurationFile, TokensThatBeginWithEAreMessages) {
    const Loaded loaded("e24,lower,1\nE25,\"with, comma\",3\nE26,other,7\nE27,text,-1\n");
    EXPECT_EQ(loaded.problem, "");
    EXPECT_EQ(loaded.text, "");
    const auto severity = [&](const char* code) {
        return loaded.configuration.messages.Find(code)->errorSeverity;
    };
    EXPECT_EQ(severity("E24"), Severity::Warning);
    EXPECT_EQ(severity("E25"), Severity::Box);
    EXPECT_EQ(severity("E26"), Severity::Information);
    EXPECT_EQ(severity("E27"), Severity::Information);
    EXPECT_EQ(loaded.configuration.messages.Find("e25")->errorMsg, "with, comma");
    EXPECT_EQ(loaded.configuration.messages.Find("E28"), nullptr);
}

struct FindRow {
    const char* text;
    const char* token;  ///< empty: nothing is found
};

TEST(FindCommand, TakesTheFirstEntryThatBeginsTheTextAsAWord) {
    const Loaded loaded(
        "s41,IF,\nS49,IF BYTE,\nS48,SET MOTOR PERCENT,\nS7,SET MOTOR,\nS8,SET,\n"
        "M1,+,\nC1,ONE TWO,1\nX9,NEW,\n");
    for (const FindRow& row : {FindRow{"IF BYTE x", "s41"},
                               {"if", "s41"},
                               {"IFX", ""},
                               {"IF,", ""},
                               {"SET", "S8"},
                               {"SET(1)", "S8"},
                               {"SETX 1", ""},
                               {"set motor percent 5", "S48"},
                               {"SET MOTOR PERCENTS", "S7"},
                               {"SET MOTOR(", "S7"},
                               {"SET MOTORS", "S8"},
                               {"+ 1", "M1"},
                               {"+1", ""},
                               {"ONE", ""},
                               {"ONE TWO", "C1"},
                               {"NEW", "X9"},
                               {"", ""},
                               {" IF", ""},
                               {"SET  MOTOR", "S8"}}) {
        const Command* found = loaded.configuration.commands.FindCommand(row.text);
        EXPECT_EQ(found == nullptr ? "" : found->token, row.token) << row.text;
    }
    EXPECT_EQ(loaded.configuration.commands.GetCommandText(Token::If), "");
    EXPECT_EQ(loaded.configuration.commands.GetCommandText(Token::While), "IF BYTE");
}

TEST(ShippedFile, IsComplete) {
    EXPECT_THAT(MissingEntries(test::ShippedLanguage()), testing::IsEmpty());
    const Loaded empty("S4,END TABLE,x\n");
    EXPECT_THAT(MissingEntries(empty.configuration),
                AllOf(testing::Contains("S5"), testing::Contains("E24"),
                      testing::Not(testing::Contains("S4"))));
}

TEST(ShippedFile, EveryEntryIsFoundByItsOwnWords) {
    for (const Command& entry : test::ShippedLanguage().commands.Entries()) {
        const Command* found = test::ShippedLanguage().commands.FindCommand(entry.command);
        EXPECT_EQ(found, &entry) << entry.token << " hides behind " << found->token;
    }
}

TEST(ShippedFile, TheKeywordListHoldsEveryWordOnce) {
    std::multiset<std::string> words;
    for (const Command& entry : test::ShippedLanguage().commands.Entries()) {
        if (entry.id == Token::KeywordList || entry.id == Token::RoutineCall) continue;
        for (const std::string& word : test::Split(entry.command, ' ')) {
            const bool isWord =
                word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
            if (isWord && !words.contains(word)) words.insert(word);
        }
    }
    std::string list = ".";
    for (const std::string& word : words)
        list += word + ".";
    EXPECT_EQ(test::ShippedLanguage().commands.GetCommandText(Token::KeywordList), list);
}

TEST(Encoding, TextIsUtf8OrWindows1252) {
    for (const FileRow& row : {FileRow{"plain", "plain"},
                               {"\xC3\xA9", "\xE9"},
                               {"\xE9", "\xE9"},
                               {"\xEF\xBB\xBF\xE2\x82\xAC", "\x80"},
                               {"\x80", "\x80"},
                               {"\xE2\x98\x83", "?"},
                               {"\xC3", "\xC3"},
                               {"\xC0\xAF", "\xC0\xAF"},
                               {"\xED\xA0\x80", "\xED\xA0\x80"},
                               {"\xF0\x9F\x98\x80!", "?!"}}) {
        EXPECT_EQ(DecodeText(row.bytes), row.commands);
    }
    EXPECT_EQ(ToUtf8("\x80\xE9"
                     "a"),
              "\xE2\x82\xAC\xC3\xA9"
              "a");
}

}  // namespace
}  // namespace zentro
