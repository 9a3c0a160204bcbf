#include "tools/handbook/handbook.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "board/board.h"
#include "board/loader.h"
#include "board/text.h"
#include "config/encoding.h"
#include "config/text.h"
#include "tests/support/compile_fixture.h"
#include "tools/handbook/html.h"

namespace zentro {
namespace {

using test::Program;
using testing::ElementsAre;
using testing::HasSubstr;
using Kind = Block::Kind;
using Role = Block::Role;

const Manuscript& TheManuscript() {
    static const Manuscript manuscript = ReadManuscriptFolder(ZENTRO_HANDBOOK_FOLDER);
    return manuscript;
}

const Handbook& TheHandbook() {
    static const Handbook handbook = MakeHandbook(test::ShippedLanguage(), TheManuscript());
    return handbook;
}

/// The tokens and codes that have a page, each as often as it has one.
std::multiset<std::string> Pages(Kind kind) {
    std::multiset<std::string> pages;
    for (const Block& block : TheManuscript().blocks) {
        if (block.kind == kind) pages.insert(block.lines.begin(), block.lines.end());
    }
    return pages;
}

std::set<std::string> CodesOf(const std::vector<std::string>& messages) {
    std::set<std::string> codes;
    for (const std::string& message : messages)
        codes.insert(message.substr(0, message.find(' ')));
    return codes;
}

bool IsAdvice(const std::string& page) {
    const auto code = std::ranges::find(MessageCodes(), page, MessageCodeText);
    return code != MessageCodes().end() &&
           test::ShippedLanguage().messages.Find(*code)->errorSeverity == Severity::Advice;
}

/// Programs beside a mistake are cut to what it is about, and use little of what they define.
bool IsCutShort(const Block& block) {
    const bool isOfMessage = block.page.starts_with("E") && IsDigit(block.page[1]);
    return isOfMessage && !IsAdvice(block.page);
}

/// Messages that never come alone, with the one that comes before them.
const std::map<std::string, std::string> kCompany{{"E45", "E8"}};

TEST(HandbookPrograms, DoWhatTheirPagesSay) {
    std::map<std::string, std::string> included;
    int programs = 0;
    for (const Block& block : TheManuscript().blocks) {
        if (block.kind != Kind::Program) continue;
        if (block.role == Role::File) {
            included[block.name] = ProgramText(block);
            continue;
        }
        Program program(ProgramText(block));
        for (const auto& [name, text] : included)
            program.WithFile(name, text);
        included.clear();
        program.Compile();
        std::set<std::string> expected;
        if (block.role == Role::Wrong) {
            expected.insert(block.page);
            if (kCompany.contains(block.page)) expected.insert(kCompany.at(block.page));
        }
        std::set<std::string> advice;
        if (IsAdvice(block.page)) advice.swap(expected);
        EXPECT_EQ(CodesOf(program.Messages()), expected) << block.place << "\n"
                                                         << ProgramText(block);
        if (!IsCutShort(block)) {
            EXPECT_EQ(CodesOf(program.Advice()), advice) << block.place << "\n"
                                                         << ProgramText(block);
        }
        ++programs;
    }
    EXPECT_GT(programs, 0);
    EXPECT_TRUE(included.empty());
}

// A pupil who tries an example on the virtual board must not meet a fault.
TEST(HandbookPrograms, RunWithoutAFault) {
    constexpr int kTicks = 200;
    constexpr std::uint64_t kInstructions = 200;  // in a tick
    std::map<std::string, std::string> included;
    for (const Block& block : TheManuscript().blocks) {
        if (block.kind != Kind::Program || block.role == Role::Wrong) continue;
        if (block.role == Role::File) included[block.name] = ProgramText(block);
        if (block.role == Role::File) continue;
        Program program(ProgramText(block));
        for (const auto& [name, text] : included)
            program.WithFile(name, text);
        ASSERT_TRUE(program.Compile()) << block.place;
        Board board;
        ASSERT_EQ(LoadObjectText(board, program.object.text), "") << block.place;
        StartProgram(board);
        for (int tick = 0; tick < kTicks; ++tick) {
            RunInstructions(board, kInstructions);
            AdvanceTick(board);
        }
        EXPECT_EQ(board.processor.fault, Fault::None) << block.place;
    }
}

/// The programs of a page that are what it is about.
std::string ProgramsOf(const std::string& page) {
    std::string text;
    for (const Block& block : TheManuscript().blocks) {
        if (block.kind == Kind::Program && block.page == page && block.role != Role::Wrong)
            text += ProgramText(block);
    }
    return text;
}

// What this board does not have, and what the user never writes, needs no example.
const std::set<std::string> kWithoutExample{"S8",  "s15", "s16", "F2", "F3",
                                            "F24", "F25", "F26", "F0"};

TEST(HandbookPages, ShowEveryWordOfTheLanguage) {
    const std::multiset<std::string> pages = Pages(Kind::Words);
    std::size_t entries = 0;
    for (const Command& entry : test::ShippedLanguage().commands.Entries()) {
        if (entry.id == Token::KeywordList) continue;
        ++entries;
        EXPECT_EQ(pages.count(entry.token), 1U) << entry.token << " " << entry.command;
    }
    EXPECT_EQ(pages.size(), entries);
    for (const Block& block : TheManuscript().blocks) {
        if (block.kind != Kind::Words) continue;
        const std::string programs = ProgramsOf(block.page);
        for (const std::string& token : block.lines) {
            if (kWithoutExample.contains(token)) continue;
            const Command* entry = EntryOf(test::ShippedLanguage().commands, token);
            ASSERT_NE(entry, nullptr) << block.place;
            EXPECT_THAT(programs, HasSubstr(entry->command)) << block.place;
        }
    }
}

TEST(HandbookPages, ShowEveryMessageWithBothPrograms) {
    // Codes that no program can provoke.
    const std::set<std::string> unreachable{"E2", "E7", "E59"};
    std::multiset<std::string> expected;
    for (const MessageCode code : MessageCodes()) {
        const Severity severity = test::ShippedLanguage().messages.Find(code)->errorSeverity;
        const bool isMistake = severity == Severity::Error || severity == Severity::Warning ||
                               severity == Severity::Advice;
        const std::string text = MessageCodeText(code);
        if (isMistake && !unreachable.contains(text)) expected.insert(text);
    }
    EXPECT_EQ(Pages(Kind::Message), expected);
    for (const std::string& code : expected) {
        std::vector<Role> roles;
        for (const Block& block : TheManuscript().blocks) {
            if (block.kind == Kind::Program && block.page == code && block.role != Role::File)
                roles.push_back(block.role);
        }
        const bool canBeProvoked = code != "E3003";
        EXPECT_EQ(roles.empty(), !canBeProvoked) << code;
        for (std::size_t i = 0; i < roles.size(); ++i)
            EXPECT_EQ(roles[i], i % 2 == 0 ? Role::Wrong : Role::Mended) << code;
        EXPECT_EQ(roles.size() % 2, 0U) << code;
    }
}

std::string Unescaped(std::string text) {
    const std::pair<const char*, const char*> kEntities[] = {
        {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}};
    for (const auto& [entity, character] : kEntities)
        text = std::regex_replace(text, std::regex(entity), character);
    return text;
}

/// What stands in the quotes behind the text, wherever the page has it.
std::multiset<std::string> Attributes(const std::string& before) {
    std::multiset<std::string> found;
    const std::string& html = TheHandbook().html;
    const std::regex pattern(before + "\"([^\"]*)\"");
    for (std::sregex_iterator it(html.begin(), html.end(), pattern), end; it != end; ++it)
        found.insert(Unescaped((*it)[1].str()));
    return found;
}

TEST(HandbookLinks, LeadToPlacesThatExistOnce) {
    EXPECT_THAT(TheHandbook().problems, ElementsAre());
    const std::multiset<std::string> places = Attributes("<a name=");
    for (const std::string& link : Attributes("<a href=")) {
        ASSERT_TRUE(link.starts_with('#')) << link;
        EXPECT_EQ(places.count(link.substr(1)), 1U) << link;
    }
    for (const std::string& place : places)
        EXPECT_EQ(places.count(place), 1U) << place;
}

// F1 sends the word as it is written in the program.
TEST(HandbookLinks, FindEveryWordOfTheEditor) {
    const CommandCatalogue& commands = test::ShippedLanguage().commands;
    const std::multiset<std::string> places = Attributes("<a name=");
    std::vector<std::string> words = KeywordsOf(commands);
    EXPECT_THAT(words, testing::IsSupersetOf({"MOTOR", "SET", "IF", "ON", "ANALOG"}));
    for (const Command& entry : commands.Entries()) {
        if (entry.id != Token::KeywordList) words.push_back(entry.command);
    }
    for (const std::string& word : words) {
        std::string small = word;
        std::ranges::transform(small, small.begin(),
                               [](char c) { return IsLetter(c) ? static_cast<char>(c | 32) : c; });
        EXPECT_TRUE(places.contains(word)) << word;
        EXPECT_TRUE(places.contains(small)) << small;
    }
    EXPECT_TRUE(places.contains("Motor"));
    EXPECT_TRUE(places.contains("Set Motor"));
    // A word of one statement leads to its page, which also has the statement's own name.
    EXPECT_THAT(TheHandbook().html, HasSubstr("<h3><a name=\"s19\"></a><a name=\"MOTOR\">"));
}

TEST(HandbookPages, TakeTheirFactsFromTheCompiler) {
    const auto pageOf = [](const std::string& token) {
        const std::string& html = TheHandbook().html;
        const std::size_t begin = html.find("<h3><a name=\"" + token + "\">");
        return html.substr(begin, html.find("<h3>", begin + 1) - begin);
    };
    const std::string setEvent = pageOf("s35");
    EXPECT_THAT(setEvent, HasSubstr("<td>3 to 6 or 9 to 27; "));
    EXPECT_THAT(setEvent, HasSubstr("<td>the name of an event of your program</td>"));
    EXPECT_THAT(pageOf("s19"), HasSubstr("<td><code>FORWARD</code> (or <code>&quot;F&quot;</code>) "
                                         "or <code>BACKWARD</code>"));
    EXPECT_THAT(pageOf("F6"), HasSubstr("<td>1 or 2; "));
    EXPECT_THAT(pageOf("F22"), HasSubstr("It gives a word."));
    EXPECT_THAT(pageOf("s34"), HasSubstr("a number from 0 to 32767"));
    EXPECT_THAT(pageOf("E77"), HasSubstr("Nothing can be divided by 0:"));
    EXPECT_THAT(pageOf("E77"), HasSubstr("the message names line 4"));
    EXPECT_THAT(pageOf("E77"), HasSubstr("<u>Share = Share / 0</u>"));
    EXPECT_THAT(pageOf("C1"), HasSubstr("<code>TRUE</code> has the value <code>255</code>"));
}

TEST(HandbookPages, NameEveryFaultOfTheBoard) {
    for (Fault fault = Fault::UnknownOpcode; fault <= Fault::NoEventToComplete;
         fault = static_cast<Fault>(static_cast<int>(fault) + 1))
        EXPECT_THAT(TheHandbook().html, HasSubstr(FaultText(fault)));
}

TEST(Manuscripts, ThatAreWrongNameThePlace) {
    for (const auto& [text, problem] : std::vector<std::pair<std::string, std::string>>{
             {"See {s99}.\n", "a.txt:1: nothing is called s99"},
             {"\nSee `this.\n", "a.txt:2: ` is not closed"},
             {"@ s98\n", "a.txt:1: the configuration has no entry s98"},
             {"@ E78\n", "a.txt:1: the configuration has no message E78"},
             {"@ s32 s34\n", "a.txt:1: what stands on one page takes the same values"},
             {"@unheard of\n", "a.txt:1: @unheard is not known"},
         }) {
        Manuscript manuscript;
        ReadManuscript("a.txt", text, manuscript);
        const Handbook handbook = MakeHandbook(test::ShippedLanguage(), manuscript);
        EXPECT_THAT(handbook.problems, ElementsAre(problem)) << text;
    }
}

TEST(Manuscripts, TakeTheWordsOfOtherLanguagesFromTheConfiguration) {
    std::string records;
    for (const std::string& record : test::Split(test::ReadFile(ZENTRO_SHIPPED_CONFIG), '\n')) {
        if (!std::regex_search(record, std::regex("^\"E2[12][0-9]{2}\""))) records += record + "\n";
    }
    InstructionConfiguration language;
    records += "\"E2100\",\"lines becomes {s18}: they say\",\"2\"\n\"E2299\",\"bare\",\"2\"\n";
    ASSERT_EQ(ParseInstructionConfig(records, language), "");
    Manuscript manuscript;
    ReadManuscript("a.txt", "# Lines\n\n@other-words\n| a | table |\n", manuscript);
    const Handbook handbook = MakeHandbook(language, manuscript);
    EXPECT_THAT(handbook.problems, ElementsAre("nothing is said of the word bare",
                                               "a.txt:3: lines is a title as well"));
    EXPECT_THAT(handbook.html, HasSubstr("<code>lines</code></td><td>"));
    EXPECT_THAT(handbook.html, HasSubstr("<td>they say</td>"));
}

TEST(Manuscripts, KeepProgramsAsTheyStand) {
    Manuscript manuscript;
    ReadManuscript("a.txt", "Text\n    IF 1 < 2 THEN\n\n        STOP\n\nmore\ntext\n", manuscript);
    ASSERT_EQ(manuscript.blocks.size(), 3U);
    EXPECT_EQ(ProgramText(manuscript.blocks[1]), "IF 1 < 2 THEN\n\n    STOP\n");
    EXPECT_THAT(manuscript.blocks[2].lines, ElementsAre("more text"));
    EXPECT_THAT(MakeHandbook(test::ShippedLanguage(), manuscript).html, HasSubstr(" 1 &lt; 2 "));
}

TEST(Manuscripts, InAFolderThatIsMissingAreAProblem) {
    EXPECT_EQ(ReadManuscriptFolder("/nowhere").problems.size(), 1U);
}

}  // namespace
}  // namespace zentro
