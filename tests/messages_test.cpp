#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "config/message_code.h"
#include "config/text.h"
#include "tests/support/compile_fixture.h"

namespace zentro {
namespace {

namespace fs = std::filesystem;
using test::Program;
using test::Split;

const std::string kFolder = ZENTRO_TESTS_FOLDER "/messages";

/// The codes by their place: "main.txt:3", or an empty place for those without a line.
using CodesByPlace = std::map<std::string, std::vector<std::string>>;

/// Adds what the comments of a file expect: "; expect E24 E505" against its own line, and
/// "; expect-above", "; expect-at LINE" and "; expect-anywhere" where a comment cannot stand there.
void AddExpectations(const std::string& fileName, const std::string& text, CodesByPlace& expected) {
    int lineNo = 0;
    for (const std::string& line : Split(text, '\n')) {
        ++lineNo;
        const std::size_t at = line.rfind("; expect");
        if (at == std::string::npos) continue;
        std::vector<std::string> words = Split(line.substr(at + 2), ' ');
        std::string place = fileName + ":" + std::to_string(lineNo);
        if (words[0] == "expect-above") place = fileName + ":" + std::to_string(lineNo - 1);
        if (words[0] == "expect-anywhere") place = "";
        if (words[0] == "expect-at") {
            place = ":" + words[1];
            words.erase(words.begin());
        }
        expected[place].insert(expected[place].end(), words.begin() + 1, words.end());
    }
}

CodesByPlace Found(const Program& program) {
    CodesByPlace found;
    for (const std::string& message : program.Messages()) {
        const std::size_t blank = std::min(message.find(' '), message.size() - 1);
        const bool hasPlace = message[blank] == ' ';
        found[hasPlace ? message.substr(blank + 1) : ""].push_back(
            hasPlace ? message.substr(0, blank) : message);
    }
    return found;
}

/// A line for each place, so that a failing test shows the places that differ.
std::string AsText(const CodesByPlace& codes) {
    std::string text;
    for (const auto& [place, list] : codes) {
        text += place;
        for (const std::string& code : list)
            text.append(1, ' ').append(code);
        text += '\n';
    }
    return text;
}

std::string PathOf(const std::string& name) {
    return kFolder + "/" + name + ".txt";
}

/// The programs of a file, which stand between lines that begin with "; ====".
std::vector<std::string> ProgramsOf(const std::string& path) {
    std::vector<std::string> programs{""};
    for (const std::string& line : Split(test::ReadFile(path), '\n')) {
        if (line.starts_with("; ====") && !programs.back().empty()) programs.emplace_back();
        programs.back() += line + "\n";
    }
    return programs;
}

std::vector<std::string> MessageFiles() {
    std::vector<std::string> paths;
    for (const auto& entry : fs::directory_iterator(kFolder)) {
        if (entry.is_regular_file()) paths.push_back(entry.path().stem());
    }
    return paths;
}

/// Codes that no program in messages/ shows, each with its reason.
const std::map<std::string, std::string> kNotHere{
    {"E2", "a table inside a table is met as E12, while reading"},
    {"E7", "nothing open is E511 now"},
    {"E59", "every place that is jumped to is made by the line that is jumped to"},
    {"E61", "in the files of includes/"},
    {"E74", "encoding_test.cpp"},
    {"E3003", "robustness_test.cpp: the object file cannot be written"},
};

TEST(MessageTexts, EveryErrorAndWarningHasAProgramHere) {
    std::set<std::string> shown;
    for (const std::string& name : MessageFiles()) {
        CodesByPlace expected;
        AddExpectations(name, test::ReadFile(PathOf(name)), expected);
        for (const auto& [place, codes] : expected)
            shown.insert(codes.begin(), codes.end());
    }
    for (const MessageCode code : MessageCodes()) {
        const std::string text = MessageCodeText(code);
        const Severity severity = test::ShippedLanguage().messages.Find(code)->errorSeverity;
        const bool isMistake = severity == Severity::Error || severity == Severity::Warning;
        const bool wanted = isMistake && !kNotHere.contains(text);
        EXPECT_EQ(shown.contains(text), wanted) << text;
    }
}

/// The first message with the code contains all of the pieces, which "|" separates.
struct TextRow {
    const char* statement;
    const char* code;
    const char* pieces;
};

TEST(MessageTexts, NameWhatIsWrong) {
    const std::string declarations =
        "DEFINE BYTE Small = 0\nDEFINE WORD Wide = 0\nDEFINE FLAG Lost = TRUE\n"
        "DEFINE POINTER Reader\nDEFINE TABLE Tune = 1\nEND TABLE\nDEFINE CONSTANT Far = 1000\n"
        "DEFINE ROUTINE Halt()\nEND ROUTINE\nDEFINE EVENT Bumped()\nEND EVENT\n";
    for (const TextRow& row : {
             TextRow{"Small = Wide", "E24",
                     "Wide - |Needed here: a BYTE, 0 to 255. Found: a WORD variable."},
             {"Wide = Lost", "E24", "Needed here: a WORD, 0 to 65535. Found: a FLAG."},
             {"Lost = Reader", "E24", "Needed here: a FLAG, TRUE or FALSE. Found: a POINTER."},
             {"WRITE Tune, 1", "E24", "Needed here: a POINTER. Found: a table."},
             {"PLAY TUNE Small", "E24",
              "Needed here: the name of a table. Found: a BYTE variable."},
             {"SET EVENT 3, Halt", "E24", "Needed here: the name of an event. Found: a routine."},
             {"Small = Bumped", "E24", "Needed here: a BYTE, 0 to 255. Found: an event."},
             {"Lost = 5", "E24", "Needed here: a FLAG, TRUE or FALSE. Found: a number or a text."},
             {"Lost = ON", "E24", "Needed here: a FLAG, TRUE or FALSE. Found: a constant."},
             {"Small = Small * 2", "E24", "Sum Variable - "},
             {"SET MOTOR 1, \"f\", 60", "E68", "f|F|B"},
             {"DISPLAY Nobody", "E64", "Nobody"},
         }) {
        Program program("BEGIN PROGRAM\n" + std::string(row.statement) + "\nEND PROGRAM\n" +
                        declarations);
        program.Compile();
        for (const std::string& piece : Split(row.pieces, '|')) {
            EXPECT_THAT(program.TextOf(row.code), testing::HasSubstr(piece)) << row.statement;
        }
    }
}

/// Such signs are blanks to the compiler, so the piece of the line that is shown does not hold
/// them.
TEST(MessageTexts, NameTheSignsOfWordProcessors) {
    const std::string quotes(
        test::ShippedLanguage().messages.GetMessageText(MessageCode::TypographicQuotes));
    const std::string dashes(
        test::ShippedLanguage().messages.GetMessageText(MessageCode::TypographicDashes));
    for (const TextRow& row : std::initializer_list<TextRow>{
             {"SET MOTOR 1, “F”, 50 ; „", "E64", " “ ”"},
             {"SET MOTOR 1, “F\", 50", "E502", " “"},
             {"DISPLAY \"F”", "E502", " ”"},
             {"DISPLAY “it's ‘", "E64", " “ ‘"},
             {"Small = 5 – 1", "E33", " –"},
             {"Small = 5 − 1", "E33", " −"},
             {"Small = –1", "E515", " –"},
             {"Nothing \"“”–\"", "E15", ""},
         }) {
        Program program("BEGIN PROGRAM\n" + std::string(row.statement) +
                        "\nEND PROGRAM\nDEFINE BYTE Small = 0\n");
        program.Compile();
        const bool isDash = std::string(row.statement).starts_with("Small");
        const std::string hint = " " + (isDash ? dashes : quotes) + row.pieces;
        const bool hasHint = program.TextOf(row.code).ends_with(hint);
        EXPECT_EQ(hasHint, *row.pieces != '\0') << row.statement << program.TextOf(row.code);
    }
}

// Words of the compiler's own trade tell a pupil nothing.
TEST(MessageTexts, SpeakTheLanguageOfTheUser) {
    for (const MessageCode code : MessageCodes()) {
        std::string text(test::ShippedLanguage().messages.GetMessageText(code));
        EXPECT_FALSE(text.empty()) << MessageCodeText(code);
        for (char& c : text)
            c = FoldCase(c);
        for (const char* word : {"TOKEN", "ELEMENT", "CLASS", "OPERAND", "IDENTIFIER", "LITERAL"}) {
            EXPECT_EQ(text.find(word), std::string::npos) << MessageCodeText(code);
        }
    }
}

std::size_t Count(std::string_view text, std::string_view piece) {
    std::size_t count = 0;
    for (std::size_t at = text.find(piece); at != std::string_view::npos;
         at = text.find(piece, at + 1))
        ++count;
    return count;
}

/// A child reads one sentence: what is wrong, and behind a colon what to do about it. More causes
/// than two are a list to search, so each of them is a hint, which stands where it is true.
TEST(MessageTexts, OfMistakesAreOneShortSentence) {
    constexpr std::size_t kLongest = 110;
    for (const MessageCode code : MessageCodes()) {
        const ErrorMessage& message = *test::ShippedLanguage().messages.Find(code);
        const bool isMistake =
            message.errorSeverity == Severity::Error || message.errorSeverity == Severity::Warning;
        if (!isMistake || code > MessageCode::EndOfWarnings) continue;
        const std::string& text = message.errorMsg;
        EXPECT_LE(text.size(), kLongest) << text;
        EXPECT_TRUE(text.ends_with(".")) << text;
        EXPECT_EQ(Count(text, ". ") + Count(text, ";"), 0U) << text;
        EXPECT_LE(Count(text, ": "), 1U) << text;
        EXPECT_LE(Count(text, " or "), 1U) << text;
    }
}

/// "word" is a text to a child and a WORD to the language, and there is nothing below 0.
TEST(MessageTexts, NeitherSayWordAloneNorWriteNumbersBelowZero) {
    for (const MessageCode code : MessageCodes()) {
        const std::string text(test::ShippedLanguage().messages.GetMessageText(code));
        EXPECT_EQ(Count(text, "word"),
                  Count(text, "a word of the language") + Count(text, "a word processor"))
            << text;
        EXPECT_EQ(Count(text, "0 - 1"), 0U) << text;
    }
}

TEST(Log, ShowsAWholeRun) {
    // The first line's text has 25 characters, the second's 24; the third message has no line.
    Program program("DISPLAY " + std::string(16, '0') + "1\nJUMP AROUND THE BIG BLOCK\nDISPLAY " +
                    std::string(15, '0') + "1 ; comment\n");
    EXPECT_FALSE(program.Compile());
    const auto text = [](MessageCode code) {
        return std::string(test::ShippedLanguage().messages.GetMessageText(code));
    };
    const std::string never = " E507: " + text(MessageCode::NeverRuns) + "\n";
    const std::vector<std::pair<std::string, LogColour>> expected{
        {"*** Begining to compile 'main.txt' ***\n", LogColour::Black},
        {"\t" + text(MessageCode::LoadStarts) + "\n", LogColour::Grey},
        {"     \tOpening Source File 'src/main.txt'........\n", LogColour::Green},
        {"\t" + text(MessageCode::SourceLineCount) + " 3\n", LogColour::Grey},
        {"\t" + text(MessageCode::LoadEnds) + "\n", LogColour::Grey},
        {"\t" + text(MessageCode::ParseStarts) + "\n", LogColour::Grey},
        {"\t(Double Click on any error message to have related source line highlighted)\n"
         "Line:\tMessage:\n",
         LogColour::Green},
        {"0001\tWARNING: DISPLAY 00000000000000001..." + never, LogColour::Blue},
        {"0002\tERROR:   JUMP AROUND THE BIG BLOCK... E15: " + text(MessageCode::UnknownStatement) +
             " " + text(MessageCode::RemarkNeedsSign) + "\n",
         LogColour::Red},
        {"0003\tWARNING: DISPLAY 0000000000000001    " + never, LogColour::Blue},
        {"0000\tERROR:   \t\t E26: " + text(MessageCode::NoProgram) +
             " The first line that has to run is line 1: write BEGIN PROGRAM above DISPLAY "
             "00000000000000001, and END PROGRAM at the end.\n",
         LogColour::Red},
        {"\t" + text(MessageCode::StageFailed) + "\n", LogColour::Grey},
        {"\t" + text(MessageCode::ParseEnds) + "\n", LogColour::Grey},
        {"\t" + text(MessageCode::RunEnds) + "\n", LogColour::Black},
        {"*** Compile Completed with 2 Errors and 2 Warnings. ***", LogColour::Red}};
    EXPECT_EQ(program.output.pieces, expected);
    EXPECT_EQ(program.output.beeps, 1);
}

TEST(Log, OfARunWithWarningsOnlyEndsInGreenWithoutABeep) {
    Program program("BEGIN PROGRAM\nEND PROGRAM now\n");
    EXPECT_TRUE(program.Compile());
    EXPECT_EQ(program.output.pieces.back().first,
              "*** Compile Completed with 0 Errors and 1 Warnings. ***");
    EXPECT_EQ(program.output.pieces.back().second, LogColour::Green);
    EXPECT_EQ(program.output.beeps, 0);
}

class Messages : public testing::TestWithParam<std::string> {};

TEST_P(Messages, AreThoseOfTheComments) {
    for (const std::string& text : ProgramsOf(PathOf(GetParam()))) {
        Program program(text);
        for (const auto& entry : fs::directory_iterator(kFolder + "/includes")) {
            program.WithFile("includes/" + entry.path().filename().string(),
                             test::ReadFile(entry.path()));
        }
        program.Compile();
        CodesByPlace expected;
        for (const std::string& path : program.files.asked) {
            if (!program.files.texts.contains(path)) continue;
            AddExpectations(path.substr(4), program.files.texts[path], expected);
        }
        EXPECT_EQ(AsText(Found(program)), AsText(expected)) << text.substr(0, text.find('\n'));
    }
}

INSTANTIATE_TEST_SUITE_P(All, Messages, testing::ValuesIn(MessageFiles()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace zentro
